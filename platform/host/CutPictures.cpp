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
    m_parent = &parent;
    m_before = nullptr;
    m_partsShown = 0;
    m_hasMoved = false;
    m_drawnRect = {};
    collect(list, index, {}, std::nullopt, textures);
    for (std::size_t part = m_partsShown; part < m_parts.size(); ++part)
        removeNode(m_parts[part]);
    m_parts.resize(m_partsShown);
    return m_hasMoved;
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

// The next part, in drawing order; most are as they were.
void CutPictures::put(
    const CGRect& rect, const CGRect& source, const QColor& color, const SharedTexture& texture)
{
    if (m_partsShown == m_parts.size())
        m_parts.emplace_back();
    Part& part = m_parts[m_partsShown++];
    if (rect.isEmpty()) {
        removeNode(part);
        return;
    }
    m_drawnRect |= rect;
    const bool isSame = part.node() && isSameRect(part.rect, rect) && isSameRect(part.source, source)
        && part.texture == texture && part.color == color;
    if (!isSame)
        showPart(part, rect, source, color, texture);
    m_before = part.node();
}

void CutPictures::showPart(
    Part& part, const CGRect& rect, const CGRect& source, const QColor& color, const SharedTexture& texture)
{
    if (bool(part.texture) != bool(texture))
        removeNode(part);
    const bool isNew = !part.node();
    m_hasMoved = m_hasMoved || isNew || !isSameRect(part.rect, rect);
    if (isNew && texture) {
        part.image = m_window.createImageNode();
        part.image->setOwnsTexture(false);
        part.image->setFiltering(QSGTexture::Linear);
    } else if (isNew) {
        part.rectangle = m_window.createRectangleNode();
    }
    if (part.image) {
        if (part.texture != texture)
            part.image->setTexture(texture.get());
        if (isNew || part.source != source)
            part.image->setSourceRect(source);
        if (isNew || part.rect != rect)
            part.image->setRect(rect);
    } else {
        if (isNew || part.color != color)
            part.rectangle->setColor(color);
        if (isNew || part.rect != rect)
            part.rectangle->setRect(rect);
    }
    part.rect = rect;
    part.source = source;
    part.color = color;
    part.texture = texture;
    if (!isNew)
        return;
    part.node()->setFlag(QSGNode::OwnedByParent);
    if (m_before)
        m_parent->insertChildNodeAfter(part.node(), m_before);
    else
        m_parent->prependChildNode(part.node());
}

void CutPictures::removeNode(Part& part)
{
    delete std::exchange(part.rectangle, nullptr);
    delete std::exchange(part.image, nullptr);
    part.texture.reset();
}

QSGNode* CutPictures::Part::node() const { return image ? static_cast<QSGNode*>(image) : rectangle; }
