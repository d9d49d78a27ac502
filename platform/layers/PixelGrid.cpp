#include "platform/layers/PixelGrid.h"

#include <cmath>

namespace {

// A place half way between two pixel edges counts as half way in spite of rounding errors.
constexpr double tolerance = 1e-6;
// What lies farther from the screen, or nowhere (not a number), is not aligned.
constexpr double farthestPixel = 1e9;

// Halves go the same way on both sides of 0: what moves by whole pixels keeps its shape.
double nearestPixel(double place) { return std::floor(place + 0.5 + tolerance); }

// The edges of the rectangle that are drawn, where those at rest are not the shown ones.
CGRect movedAlong(const CGRect& shown, const CGRect& rest, const CGRect& drawnAtRest)
{
    return shown.adjusted(drawnAtRest.left() - rest.left(), drawnAtRest.top() - rest.top(),
        drawnAtRest.right() - rest.right(), drawnAtRest.bottom() - rest.bottom());
}

bool isPixelForPixel(double length, int pixels) { return std::abs(length - pixels) < 0.01; }

} // namespace

PixelGrid::Axis PixelGrid::Axis::inLayer(double frameOrigin, double translation, double scrolled) const
{
    const double begin = place + frameOrigin + nearestPixel(translation);
    const double wholeScrolled = nearestPixel(scrolled);
    return { begin - wholeScrolled, nearestPixel(begin) - wholeScrolled };
}

double PixelGrid::Axis::edge(double position) const { return nearestPixel(place + position) - pixel; }

double PixelGrid::Axis::farEdge(double position, double size) const
{
    const double begin = edge(position);
    return size > tolerance ? std::max(edge(position + size), begin + 1) : begin;
}

bool PixelGrid::Axis::isCountable() const { return std::abs(place) < farthestPixel; }

PixelGrid::PixelGrid(double scale)
    : m_scale(scale)
{
}

double PixelGrid::nearestWholeDistance(double distance, double scale)
{
    return nearestPixel(distance * scale) / scale;
}

PixelGrid PixelGrid::inLayer(const CALayerValues& rest) const
{
    PixelGrid grid(m_scale);
    const CGRect& bounds = rest.bounds;
    const double left = rest.position.x() - rest.anchorPoint.x() * bounds.width();
    const double top = rest.position.y() - rest.anchorPoint.y() * bounds.height();
    grid.m_x = m_x.inLayer(left * m_scale, rest.transform.dx() * m_scale, bounds.x() * m_scale);
    grid.m_y = m_y.inLayer(top * m_scale, rest.transform.dy() * m_scale, bounds.y() * m_scale);
    grid.m_isAligned = m_isAligned && rest.transform.type() <= CGAffineTransform::TxTranslate
        && grid.m_x.isCountable() && grid.m_y.isCountable();
    return grid;
}

bool PixelGrid::placesAs(const PixelGrid& other) const
{
    const auto isSame = [](const Axis& first, const Axis& second) {
        return std::abs(first.partOfPixel() - second.partOfPixel()) < tolerance / 10;
    };
    return m_scale == other.m_scale && m_isAligned == other.m_isAligned
        && (!m_isAligned || (isSame(m_x, other.m_x) && isSame(m_y, other.m_y)));
}

CGAffineTransform PixelGrid::transformToSuperlayer(
    const PixelGrid& superlayer, const CALayerValues& rest, const CALayerValues& shown) const
{
    if (!m_isAligned)
        return shown.transformToSuperlayer();
    const double x = (m_x.pixel - superlayer.m_x.pixel) / m_scale;
    const double y = (m_y.pixel - superlayer.m_y.pixel) / m_scale;
    if (&shown == &rest)
        return CGAffineTransform::fromTranslate(x, y);
    const CGAffineTransform resting = rest.transformToSuperlayer();
    const CGAffineTransform moving = shown.transformToSuperlayer();
    return { moving.m11(), moving.m12(), moving.m21(), moving.m22(), moving.dx() + (x - resting.dx()),
        moving.dy() + (y - resting.dy()) };
}

CGRect PixelGrid::bounds(const CALayerValues& rest, const CALayerValues& shown) const
{
    if (!m_isAligned)
        return shown.bounds;
    const CGRect& bounds = rest.bounds;
    const double left = nearestPixel(bounds.x() * m_scale);
    const double top = nearestPixel(bounds.y() * m_scale);
    const CGPoint begin(left, top);
    const CGPoint end(
        m_x.farEdge(left, bounds.width() * m_scale), m_y.farEdge(top, bounds.height() * m_scale));
    const CGRect drawn(begin / m_scale, end / m_scale);
    return shown.bounds == bounds ? drawn : movedAlong(shown.bounds, bounds, drawn);
}

CGRect PixelGrid::pictureRect(
    const FrameImage& picture, const CALayerValues& rest, const CALayerValues& shown) const
{
    CGRect rect = picture.rect;
    if (!m_isAligned)
        return rect;
    const QSizeF pixels = rect.size() * m_scale;
    if (shown.bounds == rest.bounds) {
        const CGPoint origin = rect.topLeft() - rest.bounds.topLeft();
        const double left = nearestPixel(rest.bounds.x() * m_scale) + origin.x() * m_scale;
        const double top = nearestPixel(rest.bounds.y() * m_scale) + origin.y() * m_scale;
        rect = { CGPoint(m_x.edge(left), m_y.edge(top)) / m_scale,
            CGPoint(m_x.farEdge(left, pixels.width()), m_y.farEdge(top, pixels.height())) / m_scale };
    } else {
        rect = movedAlong(rect, shown.bounds, bounds(rest, shown));
    }
    if (isPixelForPixel(pixels.width(), picture.image.width()))
        rect.setWidth(picture.image.width() / m_scale);
    if (isPixelForPixel(pixels.height(), picture.image.height()))
        rect.setHeight(picture.image.height() / m_scale);
    return rect;
}
