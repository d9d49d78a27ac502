#include "platform/host/CutPictures.h"

#include "platform/host/FrameGeometry.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>

#include <cmath>
#include <utility>

using namespace FrameGeometry;

namespace {

// A column is cut, or is not: the narrower it is, the less is drawn again, and the more nodes there are.
constexpr int columnWidth = 32; // device pixels
// All of them are looked at when one changes; what scrolls more than these is worth a node for itself.
constexpr int mostItems = 4;
constexpr double pixelTolerance = 1e-3;

bool isNearlyEqual(double first, double second) { return std::abs(first - second) < pixelTolerance; }

// Sums of motions that cancel each other out end on the same number each time.
double onPixel(double value) { return isNearlyEqual(value, std::round(value)) ? std::round(value) : value; }

CGRect cut(const CGRect& rect, const std::optional<CGRect>& clip)
{
    return clip ? rect.intersected(*clip) : rect;
}

bool isPixelForPixel(const FrameImage& image, double scale)
{
    return isNearlyEqual(image.rect.width() * scale, image.image.width())
        && isNearlyEqual(image.rect.height() * scale, image.image.height());
}

} // namespace

bool CutPictures::canShow(const FrameList& list, int index)
{
    const FrameItem& clipping = list.items[std::size_t(index)];
    if (!clipping.clipsToBounds || clipping.subtreeEnd - index > mostItems)
        return false;
    bool hasPicture = false;
    for (int below = index; below < clipping.subtreeEnd; ++below) {
        const FrameItem& item = list.items[std::size_t(below)];
        const auto* const image = std::get_if<FrameImage>(&item.content);
        if (!isTranslation(item.transform) || needsPainter(item) || (below > index && item.opacity < 1)
            || (image && drawsContent(item) && !isPixelForPixel(*image, list.scale)))
            return false;
        hasPicture = hasPicture || (image && drawsContent(item));
    }
    return hasPicture;
}

CutPictures::~CutPictures()
{
    for (Part& part : m_parts)
        removeNode(part);
}

bool CutPictures::show(
    const FrameList& list, int index, NodeEdges edges, TextureCache& textures, QSGNode& parent)
{
    m_edges = edges;
    m_wanted.clear();
    m_drawnRect = {};
    collect(list, index, {}, std::nullopt, textures);
    bool hasMoved = m_wanted.size() != m_parts.size();
    if (hasMoved) {
        for (Part& part : m_parts)
            removeNode(part);
        m_parts.assign(m_wanted.size(), Part {});
    }
    QSGNode* before = nullptr;
    for (std::size_t part = 0; part < m_parts.size(); ++part) {
        hasMoved = showPart(m_parts[part], m_wanted[part], parent, before) || hasMoved;
        if (QSGNode* const node = m_parts[part].node())
            before = node;
    }
    m_wanted.clear();
    return hasMoved;
}

void CutPictures::collect(const FrameList& list, int index, const CGPoint& origin,
    const std::optional<CGRect>& clip, TextureCache& textures)
{
    const FrameItem& item = list.items[std::size_t(index)];
    const CGAffineTransform transform = placed(deviceTransform(item, list.scale), m_edges);
    const CGPoint place = origin + CGPoint(transform.dx(), transform.dy());
    const CGRect bounds = placed(deviceRect(item.bounds, list.scale), m_edges).translated(place);
    if (drawsBackground(item))
        put(cut(bounds, clip), {}, item.backgroundColor, nullptr);
    const std::optional<CGRect> inside = item.clipsToBounds ? cut(CGRect(bounds.toRect()), clip) : clip;
    if (drawsContent(item)) {
        const auto& image = std::get<FrameImage>(item.content);
        const CGRect rect = placed(deviceRect(image.rect, list.scale), m_edges).translated(place);
        collectColumns(
            { onPixel(rect.x()), onPixel(rect.y()), std::round(rect.width()), std::round(rect.height()) },
            inside, textures.texture(image));
    }
    forEachChild(list, index, [&](int child) { collect(list, child, place, inside, textures); });
}

void CutPictures::collectColumns(
    const CGRect& rect, const std::optional<CGRect>& clip, const SharedTexture& texture)
{
    for (double x = 0; x < rect.width(); x += columnWidth) {
        const CGRect column(
            rect.x() + x, rect.y(), std::min<double>(columnWidth, rect.width() - x), rect.height());
        const CGRect visible = cut(column, clip);
        put(visible, visible.translated(-rect.topLeft()), {}, texture);
    }
}

void CutPictures::put(
    const CGRect& rect, const CGRect& source, const QColor& color, const SharedTexture& texture)
{
    m_drawnRect |= rect;
    m_wanted.push_back({ rect.isEmpty() ? CGRect() : rect, source, color, texture });
}

// Answers whether the part lies elsewhere than before.
bool CutPictures::showPart(Part& part, const Part& wanted, QSGNode& parent, QSGNode* before)
{
    if (wanted.rect.isEmpty() || bool(wanted.texture) != bool(part.texture))
        removeNode(part);
    if (wanted.rect.isEmpty())
        return false;
    const bool isNew = !part.node();
    if (isNew && wanted.texture) {
        part.image = m_window.createImageNode();
        part.image->setOwnsTexture(false);
        part.image->setFiltering(QSGTexture::Linear);
    } else if (isNew) {
        part.rectangle = m_window.createRectangleNode();
    }
    if (part.image) {
        if (isNew || part.texture != wanted.texture)
            part.image->setTexture(wanted.texture.get());
        if (isNew || part.source != wanted.source)
            part.image->setSourceRect(wanted.source);
        if (isNew || part.rect != wanted.rect)
            part.image->setRect(wanted.rect);
    } else {
        if (isNew || part.color != wanted.color)
            part.rectangle->setColor(wanted.color);
        if (isNew || part.rect != wanted.rect)
            part.rectangle->setRect(wanted.rect);
    }
    const bool hasMoved = isNew || part.rect != wanted.rect;
    part.rect = wanted.rect;
    part.source = wanted.source;
    part.color = wanted.color;
    part.texture = wanted.texture;
    if (!isNew)
        return hasMoved;
    part.node()->setFlag(QSGNode::OwnedByParent);
    if (before)
        parent.insertChildNodeAfter(part.node(), before);
    else
        parent.prependChildNode(part.node());
    return hasMoved;
}

void CutPictures::removeNode(Part& part)
{
    delete std::exchange(part.rectangle, nullptr);
    delete std::exchange(part.image, nullptr);
    part.texture.reset();
}

QSGNode* CutPictures::Part::node() const { return image ? static_cast<QSGNode*>(image) : rectangle; }
