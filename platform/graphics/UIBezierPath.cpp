#include "platform/graphics/UIBezierPath.h"

#include "platform/graphics/FiniteNumbers.h"

#include <numbers>

namespace {

constexpr double wholeTurn = 2 * std::numbers::pi;

// How far to turn from start to end in the positive direction: 0 to one whole turn. A difference that is
// a whole turn but for rounding (3π/2 to 7π/2) counts as one.
double positiveSweep(double start, double end)
{
    constexpr double tolerance = 1e-9;
    const double difference = end - start;
    if (difference >= wholeTurn - tolerance)
        return wholeTurn;
    const double sweep = std::fmod(difference, wholeTurn);
    return sweep < 0 ? sweep + wholeTurn : sweep;
}

template <typename Build> std::shared_ptr<UIBezierPath> built(Build build)
{
    auto path = UIBezierPath::bezierPath();
    QPainterPath shape;
    build(shape);
    path->appendPath(shape);
    return path;
}

} // namespace

std::shared_ptr<UIBezierPath> UIBezierPath::bezierPath() { return make<UIBezierPath>(); }

std::shared_ptr<UIBezierPath> UIBezierPath::bezierPathWithRect(const CGRect& rect)
{
    return built([&](QPainterPath& path) {
        if (isFinite(rect))
            path.addRect(rect);
    });
}

std::shared_ptr<UIBezierPath> UIBezierPath::bezierPathWithOvalInRect(const CGRect& rect)
{
    return built([&](QPainterPath& path) {
        if (isFinite(rect))
            path.addEllipse(rect);
    });
}

std::shared_ptr<UIBezierPath> UIBezierPath::bezierPathWithRoundedRect(
    const CGRect& rect, CGFloat cornerRadius)
{
    return built([&](QPainterPath& path) {
        if (!isFinite(rect) || !(cornerRadius >= 0))
            return;
        const double limit = std::min(std::abs(rect.width()), std::abs(rect.height())) / 2;
        const double radius = std::min(cornerRadius, limit);
        if (radius == 0) {
            path.addRect(rect.normalized());
            return;
        }
        const CGRect box = rect.normalized();
        const double side = 2 * radius;
        path.moveTo(box.left() + radius, box.top());
        path.arcTo(CGRect(box.right() - side, box.top(), side, side), 90, -90);
        path.arcTo(CGRect(box.right() - side, box.bottom() - side, side, side), 0, -90);
        path.arcTo(CGRect(box.left(), box.bottom() - side, side, side), 270, -90);
        path.arcTo(CGRect(box.left(), box.top(), side, side), 180, -90);
        path.closeSubpath();
    });
}

std::shared_ptr<UIBezierPath> UIBezierPath::bezierPathWithArcCenter(
    const CGPoint& center, CGFloat radius, CGFloat startAngle, CGFloat endAngle, bool clockwise)
{
    auto path = bezierPath();
    path->addArc(center, radius, startAngle, endAngle, clockwise);
    return path;
}

void UIBezierPath::moveToPoint(const CGPoint& point)
{
    if (isFinite(point))
        changing().moveTo(point);
}

void UIBezierPath::addLineToPoint(const CGPoint& point)
{
    if (isFinite(point))
        changing().lineTo(point);
}

void UIBezierPath::addCurveToPoint(
    const CGPoint& end, const CGPoint& controlPoint1, const CGPoint& controlPoint2)
{
    if (isFinite(end) && isFinite(controlPoint1) && isFinite(controlPoint2))
        changing().cubicTo(controlPoint1, controlPoint2, end);
}

void UIBezierPath::addQuadCurveToPoint(const CGPoint& end, const CGPoint& controlPoint)
{
    if (isFinite(end) && isFinite(controlPoint))
        changing().quadTo(controlPoint, end);
}

void UIBezierPath::addArc(
    const CGPoint& center, CGFloat radius, CGFloat startAngle, CGFloat endAngle, bool clockwise)
{
    if (!isFinite(center) || !std::isfinite(radius) || radius <= 0 || !std::isfinite(startAngle)
        || !std::isfinite(endAngle))
        return;
    const double sweep
        = clockwise ? positiveSweep(startAngle, endAngle) : -positiveSweep(endAngle, startAngle);
    // The painter's angles are degrees and grow the other way round.
    const double start = -qRadiansToDegrees(std::fmod(startAngle, wholeTurn));
    const CGRect circle(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
    QPainterPath& path = changing();
    if (path.elementCount() == 0)
        path.arcMoveTo(circle, start);
    path.arcTo(circle, start, -qRadiansToDegrees(sweep));
}

void UIBezierPath::closePath() { changing().closeSubpath(); }

void UIBezierPath::appendPath(const UIBezierPath& other) { appendPath(QPainterPath(other.m_path)); }

void UIBezierPath::appendPath(const QPainterPath& path) { changing().addPath(path); }

void UIBezierPath::applyTransform(const CGAffineTransform& transform)
{
    const QPainterPath changed = transform.map(m_path);
    if (isFinite(changed.controlPointRect()))
        changing() = changed;
}

CGPathRef UIBezierPath::cgPath() const
{
    if (!m_snapshot)
        m_snapshot = std::make_shared<const QPainterPath>(m_path);
    return m_snapshot;
}

QPainterPath& UIBezierPath::changing()
{
    m_snapshot.reset();
    return m_path;
}
