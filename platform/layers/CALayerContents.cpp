#include "platform/layers/CALayerContents.h"

#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIGraphics.h"
#include "platform/graphics/UIImage.h"

#include <cmath>
#include <optional>

namespace {

// A length that is a whole number of pixels but for rounding makes exactly that many.
int pixels(double length) { return static_cast<int>(std::ceil(length - 1e-6)); }

bool makesBitmap(const CGSize& size, double scale)
{
    const double width = size.width() * scale;
    const double height = size.height() * scale;
    return width > 0 && height > 0 && width <= UIImage::maximumSide && height <= UIImage::maximumSide;
}

// Where a picture that keeps its size lies: the part of the free room that is left of it, and above it.
struct Place {
    double x;
    double y;
};

std::optional<Place> placeOf(CAContentsGravity gravity)
{
    using enum CAContentsGravity;
    switch (gravity) {
    case Center:
        return Place { 0.5, 0.5 };
    case Top:
        return Place { 0.5, 0 };
    case Bottom:
        return Place { 0.5, 1 };
    case Left:
        return Place { 0, 0.5 };
    case Right:
        return Place { 1, 0.5 };
    case TopLeft:
        return Place { 0, 0 };
    case TopRight:
        return Place { 1, 0 };
    case BottomLeft:
        return Place { 0, 1 };
    case BottomRight:
        return Place { 1, 1 };
    case Resize:
    case ResizeAspect:
    case ResizeAspectFill:
        break;
    }
    return std::nullopt;
}

} // namespace

bool CALayerContents::repeatsImage() const
{
    return m_image && m_image->resizingMode() == UIImageResizingMode::Tile;
}

void CALayerContents::draw(const CGRect& bounds, const std::function<void(CGContext&)>& drawing)
{
    dropDrawn();
    if (!makesBitmap(bounds.size(), m_scale))
        return;
    m_drawnFor = bounds.size();
    m_drawnScale = m_scale;
    QImage bitmap(pixels(bounds.width() * m_scale), pixels(bounds.height() * m_scale),
        QImage::Format_ARGB32_Premultiplied);
    if (bitmap.isNull())
        return;
    bitmap.fill(Qt::transparent);
    {
        QPainter painter(&bitmap);
        painter.scale(m_scale, m_scale);
        painter.translate(-bounds.topLeft());
        CGContext context(painter);
        const CurrentContextGuard current(context);
        drawing(context);
    }
    m_drawn = std::move(bitmap);
}

FrameContent CALayerContents::frameContent(const CALayerValues& shown) const
{
    const bool isDrawn = hasDrawn();
    const bool hasPicture = isDrawn || (m_image && !repeatsImage());
    if (!hasPicture || !(shown.bounds.width() > 0 && shown.bounds.height() > 0))
        return {};
    const CGSize size = isDrawn ? m_drawnFor : m_image->size();
    CGRect rect = rectFor(size, shown.bounds);
    if (isDrawn) // the bitmap's last row and column may reach beyond the bounds by a part of a pixel
        rect.setSize({ rect.width() * (m_drawn.width() / m_drawnScale / size.width()),
            rect.height() * (m_drawn.height() / m_drawnScale / size.height()) });
    else
        rect = m_image->rectOfPixels(rect);
    if (!(rect.width() > 0 && rect.height() > 0))
        return {};
    const QColor tint = shown.contentsTintColor ? shown.contentsTintColor->qColor() : QColor();
    return FrameImage { isDrawn ? m_drawn : m_image->qImage(), rect, tint };
}

CGRect CALayerContents::rectFor(const CGSize& size, const CGRect& bounds) const
{
    if (m_gravity == CAContentsGravity::Resize || size == bounds.size())
        return bounds;
    if (const auto place = placeOf(m_gravity))
        return { bounds.x() + (bounds.width() - size.width()) * place->x,
            bounds.y() + (bounds.height() - size.height()) * place->y, size.width(), size.height() };
    const bool fills = m_gravity == CAContentsGravity::ResizeAspectFill;
    const CGSize scaled
        = size.scaled(bounds.size(), fills ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio);
    return { bounds.center() - CGPoint(scaled.width() / 2, scaled.height() / 2), scaled };
}
