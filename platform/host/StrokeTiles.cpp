#include "platform/host/StrokeTiles.h"

#include "platform/host/FrameGeometry.h"
#include "platform/host/FramePainter.h"

#include <QQuickWindow>

#include <algorithm>
#include <utility>

using namespace FrameGeometry;

namespace {

// An end that moves on has one or two of them painted: the smaller they are, the less is painted and drawn
// again, and the more nodes there are.
constexpr int tileSize = 32; // device pixels
constexpr int mostTiles = 64;

constexpr double smoothReach = 0.5; // line widths
constexpr double sharpCornersReach = 2; // as FrameGeometry expects
constexpr double softEdge = 2; // device pixels: antialiasing, and how far a curve leaves its chords

QRect wholeExtent(const FrameShape& stroke, double scale)
{
    return wholePixels(strokedRect(stroke, stroke.path->boundingRect(), scale));
}

CGRect inPoints(const CGRect& device, double scale)
{
    return { device.topLeft() / scale, device.size() / scale };
}

int tilesAlong(int length) { return (length + tileSize - 1) / tileSize; }

PathPart partOf(const FrameShape& stroke) { return { stroke.strokeStart, stroke.strokeEnd }; }

PathPart between(double first, double second) { return { std::min(first, second), std::max(first, second) }; }

} // namespace

const FrameShape* StrokeTiles::strokeOf(const FrameItem& item, double scale)
{
    const auto* const shape = std::get_if<FrameShape>(&item.content);
    if (!shape || shape->fillColor.isValid() || !shape->strokeColor.isValid() || shape->path->isEmpty()
        || item.clipsToBounds || drawsBackground(item))
        return nullptr;
    const QRect extent = wholeExtent(*shape, scale);
    const double tiles = double(tilesAlong(extent.width())) * tilesAlong(extent.height());
    return tiles > 0 && tiles <= mostTiles ? shape : nullptr;
}

bool StrokeTiles::differInEnds(const FrameShape& first, const FrameShape& second)
{
    FrameShape same = first;
    same.strokeStart = second.strokeStart;
    same.strokeEnd = second.strokeEnd;
    return same == second;
}

StrokeTiles::StrokeTiles(QQuickWindow& window, const FrameShape& stroke, double scale)
    : m_window(window)
    , m_stroke(stroke)
    , m_scale(scale)
    , m_path(*stroke.path)
{
    const QRect extent = wholeExtent(stroke, scale);
    m_rect = extent;
    for (int y = extent.top(); y <= extent.bottom(); y += tileSize)
        for (int x = extent.left(); x <= extent.right(); x += tileSize)
            m_tiles.push_back({ QRect(x, y, tileSize, tileSize).intersected(extent), nullptr });
}

StrokeTiles::~StrokeTiles()
{
    for (Tile& tile : m_tiles)
        delete tile.node; // before its texture goes
}

bool StrokeTiles::canShow(const FrameShape& stroke, double scale) const
{
    return scale == m_scale && differInEnds(stroke, m_stroke);
}

void StrokeTiles::show(const FrameShape& stroke, TextureCache& textures)
{
    const PathPart before = partOf(m_stroke);
    const PathPart now = partOf(stroke);
    m_stroke = stroke;
    // What is whole may be closed: its ends then meet in a corner instead of in two caps.
    const bool changesAll = !std::exchange(m_isShown, true) || before.isWhole() != now.isWhole()
        || before.isEmpty() != now.isEmpty();
    const CGRect atStart = deviceRect(around(m_path.boundingRect(between(before.start, now.start))), m_scale);
    const CGRect atEnd = deviceRect(around(m_path.boundingRect(between(before.end, now.end))), m_scale);
    for (Tile& tile : m_tiles) {
        const bool changes = changesAll || (before.start != now.start && atStart.intersects(tile.rect))
            || (before.end != now.end && atEnd.intersects(tile.rect));
        if (changes)
            paint(tile, textures);
    }
}

// What the stroke may cover of a part of the path in the rectangle, in points. Without corners, those of
// square caps among them, it reaches no farther than half its width.
CGRect StrokeTiles::around(const CGRect& ofPath) const
{
    const bool hasCorners = m_path.hasCorners() || m_stroke.lineCap == Qt::SquareCap;
    const double reach = m_stroke.lineWidth * (hasCorners ? sharpCornersReach : smoothReach);
    const double all = reach + softEdge / m_scale;
    return ofPath.adjusted(-all, -all, all, all);
}

void StrokeTiles::paint(Tile& tile, TextureCache& textures)
{
    const PathPart all = partOf(m_stroke);
    const PathPart near = m_path.partNear(around(inPoints(tile.rect, m_scale)), all);
    const PathPart part = all.isWhole() && !near.isEmpty() ? all : near; // which may be closed
    if (part.isEmpty()) {
        delete std::exchange(tile.node, nullptr);
        tile.texture.reset();
        return;
    }
    const bool isNew = !tile.node;
    if (isNew) {
        tile.node = m_window.createImageNode();
        tile.node->setFlag(OwnedByParent);
        tile.node->setOwnsTexture(false);
        tile.node->setFiltering(QSGTexture::Linear); // costs nothing where pixels meet pixels
        tile.node->setRect(tile.rect);
    }
    const SharedTexture texture
        = textures.makeTexture(FramePainter::paintStroke(m_stroke, m_path.cut(part), m_scale, tile.rect));
    tile.node->setTexture(texture.get());
    tile.node->setSourceRect(CGRect(CGPoint(), texture->textureSize()));
    tile.texture = texture;
    if (isNew)
        appendChildNode(tile.node);
}
