#include "platform/layers/CALayerContents.h"

#include "platform/graphics/UIColor.h"
#include "platform/graphics/UIGraphics.h"
#include "platform/graphics/UIImage.h"

#include <cmath>

namespace {

// A length that is a whole number of pixels but for rounding makes exactly that many.
int pixels(double length) { return static_cast<int>(std::ceil(length - 1e-6)); }

bool makesBitmap(const CGSize& size, double scale)
{
    const double width = size.width() * scale;
    const double height = size.height() * scale;
    return width > 0 && height > 0 && width <= UIImage::maximumSide && height <= UIImage::maximumSide;
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
    if (!(rect.width() > 0 && rect.height() > 0))
        return {};
    const QColor tint = shown.contentsTintColor ? shown.contentsTintColor->qColor() : QColor();
    return FrameImage { isDrawn ? m_drawn : m_image->qImage(), rect, tint };
}

CGRect CALayerContents::rectFor(const CGSize& size, const CGRect& bounds) const
{
    if (m_gravity == CAContentsGravity::Resize || size == bounds.size())
        return bounds;
    if (m_gravity == CAContentsGravity::Center) {
        const auto onPixel = [this](double length) { return std::round(length * m_scale) / m_scale; };
        return { bounds.x() + onPixel((bounds.width() - size.width()) / 2),
            bounds.y() + onPixel((bounds.height() - size.height()) / 2), size.width(), size.height() };
    }
    const bool fills = m_gravity == CAContentsGravity::ResizeAspectFill;
    const CGSize scaled
        = size.scaled(bounds.size(), fills ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio);
    return { bounds.center() - CGPoint(scaled.width() / 2, scaled.height() / 2), scaled };
}
