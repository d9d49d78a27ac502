#include "platform/host/FramePainter.h"

#include "platform/graphics/UIImage.h"
#include "platform/host/FrameGeometry.h"
#include "platform/host/TrimmedPath.h"

#include <QPainter>

using namespace FrameGeometry;

namespace {

constexpr double sharpestCorner = 2; // in line widths, as far as FrameGeometry expects a stroke to reach

QPainterPath roundedBounds(const FrameItem& item, double scale)
{
    const double radius = effectiveCornerRadius(item) * scale;
    QPainterPath path;
    path.addRoundedRect(deviceRect(item.bounds, scale), radius, radius);
    return path;
}

QPen penOf(const FrameShape& shape)
{
    QPen pen(shape.strokeColor, shape.lineWidth, Qt::SolidLine, shape.lineCap, Qt::MiterJoin);
    pen.setMiterLimit(sharpestCorner);
    return pen;
}

} // namespace

QImage FramePainter::paintScreen() const
{
    const QSize size = wholePixels(deviceRect({ CGPoint(), m_list.size }, m_list.scale)).size();
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    if (!m_list.items.empty())
        paintPlaced(painter, 0, {});
    return image;
}

FramePicture FramePainter::paintSubtree(int index) const
{
    const QRect rect = wholePixels(subtreeExtent(m_list, index));
    const bool opaque = isCovered(m_list, index, rect);
    return paint(
        index, Depth::Subtree, rect, opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
}

FramePicture FramePainter::paintItem(int index) const
{
    const QRect rect = wholePixels(ownExtent(m_list.items[std::size_t(index)], m_list.scale));
    return paint(index, Depth::Item, rect, QImage::Format_ARGB32_Premultiplied);
}

FramePicture FramePainter::paint(int index, Depth depth, const QRect& rect, QImage::Format format) const
{
    if (rect.isEmpty() || qint64(rect.width()) * rect.height() > UIImage::maximumPixels)
        return {};
    QImage image(rect.size(), format);
    if (format != QImage::Format_RGB32)
        image.fill(Qt::transparent);
    QPainter painter(&image);
    const Place place { CGAffineTransform::fromTranslate(-rect.x(), -rect.y()), 1 };
    if (clipsRoundedly(m_list.items[std::size_t(index)]))
        paintAsOnePicture(painter, index, place, depth);
    else
        paintPlain(painter, index, place, depth);
    return { image, rect };
}

void FramePainter::paintPlaced(QPainter& painter, int index, const Place& parent) const
{
    const FrameItem& item = m_list.items[std::size_t(index)];
    if (item.opacity <= 0)
        return;
    const Place place { deviceTransform(item, m_list.scale) * parent.transform,
        parent.opacity * std::min(item.opacity, 1.0) };
    const bool fadesAsGroup = item.opacity < 1 && drawsSeveralThings(index);
    if (fadesAsGroup || clipsRoundedly(item))
        paintAsOnePicture(painter, index, place, Depth::Subtree);
    else
        paintPlain(painter, index, place, Depth::Subtree);
}

// Paints apart, cuts the corners off with a soft edge, and lays the result down with the opacity.
void FramePainter::paintAsOnePicture(QPainter& painter, int index, const Place& place, Depth depth) const
{
    const FrameItem& item = m_list.items[std::size_t(index)];
    const CGRect extent = depth == Depth::Item ? ownExtent(item, m_list.scale) : subtreeExtent(m_list, index);
    const QRect device(0, 0, painter.device()->width(), painter.device()->height());
    const QRect rect = wholePixels(place.transform.mapRect(extent)).intersected(device);
    if (rect.isEmpty())
        return;
    QImage image(rect.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        const Place inner { place.transform * CGAffineTransform::fromTranslate(-rect.x(), -rect.y()), 1 };
        QPainter innerPainter(&image);
        paintPlain(innerPainter, index, inner, depth);
        if (clipsRoundedly(item)) {
            QImage mask(rect.size(), QImage::Format_ARGB32_Premultiplied);
            mask.fill(Qt::transparent);
            QPainter maskPainter(&mask);
            maskPainter.setRenderHint(QPainter::Antialiasing);
            maskPainter.setTransform(inner.transform);
            maskPainter.fillPath(roundedBounds(item, m_list.scale), Qt::black);
            maskPainter.end();
            innerPainter.resetTransform();
            innerPainter.setOpacity(1);
            innerPainter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
            innerPainter.drawImage(0, 0, mask);
        }
    }
    painter.resetTransform();
    painter.setOpacity(place.opacity);
    painter.drawImage(rect.topLeft(), image);
}

void FramePainter::paintPlain(QPainter& painter, int index, const Place& place, Depth depth) const
{
    const FrameItem& item = m_list.items[std::size_t(index)];
    const auto enter = [&] {
        painter.setTransform(place.transform);
        painter.setOpacity(place.opacity);
    };
    painter.save();
    enter();
    paintBackground(painter, item);
    // Round corners are cut by the caller: a painter's own clip would leave stairs.
    if (item.clipsToBounds)
        painter.setClipRect(deviceRect(item.bounds, m_list.scale), Qt::IntersectClip);
    paintContent(painter, item);
    if (depth == Depth::Subtree)
        forEachChild(m_list, index, [&](int child) { paintPlaced(painter, child, place); });
    painter.restore();
}

void FramePainter::paintBackground(QPainter& painter, const FrameItem& item) const
{
    if (!drawsBackground(item))
        return;
    if (effectiveCornerRadius(item) <= 0 || item.clipsToBounds) {
        painter.fillRect(deviceRect(item.bounds, m_list.scale), item.backgroundColor);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(roundedBounds(item, m_list.scale), item.backgroundColor);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void FramePainter::paintContent(QPainter& painter, const FrameItem& item) const
{
    if (!drawsContent(item))
        return;
    if (const auto* image = std::get_if<FrameImage>(&item.content))
        paintImage(painter, *image);
    else
        paintShape(painter, std::get<FrameShape>(item.content));
}

void FramePainter::paintImage(QPainter& painter, const FrameImage& image) const
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QImage picture = image.tint.isValid() ? tinted(image.image, image.tint) : image.image;
    painter.drawImage(deviceRect(image.rect, m_list.scale), picture, CGRect(picture.rect()));
}

void FramePainter::paintShape(QPainter& painter, const FrameShape& shape) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(m_list.scale, m_list.scale);
    if (shape.fillColor.isValid())
        painter.fillPath(*shape.path, shape.fillColor);
    if (shape.strokeColor.isValid() && shape.lineWidth > 0)
        painter.strokePath(trimmedPath(*shape.path, shape.strokeStart, shape.strokeEnd), penOf(shape));
    painter.restore();
}

QImage FramePainter::paintStroke(
    const FrameShape& shape, const QPainterPath& part, double scale, const QRect& rect)
{
    QImage image(rect.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (shape.lineWidth > 0) {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-rect.topLeft());
        painter.scale(scale, scale);
        painter.strokePath(part, penOf(shape));
    }
    return image;
}

// Whether the subtree draws more than one thing, which must then fade as one. A shape's line lies on its
// filling.
bool FramePainter::drawsSeveralThings(int index) const
{
    int things = 0;
    const int end = m_list.items[std::size_t(index)].subtreeEnd;
    for (int i = index; i < end && things < 2; ++i) {
        const FrameItem& item = m_list.items[std::size_t(i)];
        const auto* shape = std::get_if<FrameShape>(&item.content);
        const bool isTwo = shape && shape->fillColor.isValid() && shape->strokeColor.isValid();
        things += int(drawsBackground(item)) + int(drawsContent(item)) + int(isTwo);
    }
    return things > 1;
}

QImage FramePainter::tinted(const QImage& image, const QColor& tint)
{
    QImage result = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRectF(QPointF(), result.deviceIndependentSize()), tint);
    return result;
}
