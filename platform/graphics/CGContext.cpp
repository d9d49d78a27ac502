#include "platform/graphics/CGContext.h"

namespace {

constexpr bool combineWithCurrent = true;

// The rasteriser counts in integers: what lies far outside of every picture must not reach it.
constexpr CGFloat farthest = 1'000'000;

bool isDrawable(const CGRect& rect)
{
    const auto isNear = [](CGFloat edge) { return std::abs(edge) <= farthest; }; // false for not a number
    return isNear(rect.left()) && isNear(rect.top()) && isNear(rect.right()) && isNear(rect.bottom())
        && !rect.isEmpty();
}

QImage tintedPixels(const QImage& pixels, const QBrush& tint)
{
    QImage result = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(result.rect(), tint);
    return result;
}

// Interpolating between neighbours skips pixels where a picture shrinks to less than half, so such a
// picture is averaged to its final size first.
QImage reduced(const QImage& pixels, const CGRect& deviceRect)
{
    const QSize target(std::max(1, qCeil(deviceRect.width())), std::max(1, qCeil(deviceRect.height())));
    if (pixels.width() <= 2 * target.width() && pixels.height() <= 2 * target.height())
        return pixels;
    return pixels.scaled(target.boundedTo(pixels.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

CGContext::CGContext(QPainter& painter)
    : m_painter(painter)
{
    m_painter.setRenderHints(
        QPainter::Antialiasing | QPainter::SmoothPixmapTransform | QPainter::TextAntialiasing);
}

void CGContext::translate(CGFloat x, CGFloat y) { concatenate(QTransform::fromTranslate(x, y)); }

void CGContext::scale(CGFloat x, CGFloat y) { concatenate(QTransform::fromScale(x, y)); }

void CGContext::concatenate(const CGAffineTransform& transform)
{
    const CGPoint movement(transform.dx(), transform.dy());
    if (std::isfinite(transform.determinant()) && std::isfinite(movement.manhattanLength()))
        m_painter.setTransform(transform, combineWithCurrent);
}

void CGContext::clipToRect(const CGRect& rect)
{
    m_painter.setClipRect(isDrawable(rect) ? rect : CGRect(0, 0, 0, 0), Qt::IntersectClip);
}

void CGContext::clipToPath(const QPainterPath& path) { m_painter.setClipPath(path, Qt::IntersectClip); }

void CGContext::setAlpha(double alpha)
{
    m_painter.setOpacity(m_painter.opacity() * std::clamp(alpha, 0.0, 1.0));
}

void CGContext::fillRect(const CGRect& rect, const UIColor& color)
{
    if (isDrawable(rect))
        m_painter.fillRect(rect, color.qBrush());
}

void CGContext::fillPath(const QPainterPath& path, const UIColor& color)
{
    if (isDrawable(path.controlPointRect()))
        m_painter.fillPath(path, color.qBrush());
}

void CGContext::strokePath(const QPainterPath& path, const UIColor& color, CGFloat lineWidth)
{
    const CGRect outline = path.controlPointRect().adjusted(-lineWidth, -lineWidth, lineWidth, lineWidth);
    if (!(lineWidth > 0) || !isDrawable(outline))
        return;
    m_painter.strokePath(path, QPen(color.qBrush(), lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

void CGContext::clearRect(const CGRect& rect)
{
    if (!isDrawable(rect))
        return;
    const SavedState saved(*this);
    m_painter.setCompositionMode(QPainter::CompositionMode_Clear);
    m_painter.fillRect(rect, Qt::transparent);
}

void CGContext::drawImage(const UIImage& image, const CGRect& rect, const UIColor* tint)
{
    if (!isDrawable(rect))
        return;
    const QImage pixels = tint ? tintedPixels(image.qImage(), tint->qBrush()) : image.qImage();
    if (image.resizingMode() == UIImageResizingMode::Tile) {
        QBrush tiles(pixels);
        tiles.setTransform(
            QTransform::fromTranslate(rect.x(), rect.y()).scale(1 / image.scale(), 1 / image.scale()));
        m_painter.fillRect(rect, tiles);
        return;
    }
    const CGRect target = image.rectOfPixels(rect);
    m_painter.drawImage(target, reduced(pixels, m_painter.deviceTransform().mapRect(target)));
}
