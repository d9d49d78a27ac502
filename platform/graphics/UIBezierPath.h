// A path of lines and curves, built step by step, read as an unchanging snapshot.
//
// Angles are radians, 0 to the right, growing clockwise as seen on screen. A shape that cannot be drawn
// (a negative radius, a number that is not finite) is the empty path and no error.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/graphics/Geometry.h"

#include <QPainterPath>

// CGPath — never null where a path is; the object never changes, so the same pointer is the same path.
using CGPathRef = std::shared_ptr<const QPainterPath>;

class UIBezierPath final : public NSObject {
public:
    static std::shared_ptr<UIBezierPath> bezierPath();
    static std::shared_ptr<UIBezierPath> bezierPathWithRect(const CGRect&);
    static std::shared_ptr<UIBezierPath> bezierPathWithOvalInRect(const CGRect&);
    // bezierPathWithRoundedRect:cornerRadius: — a radius beyond half a side is that half. Starts at the
    // left end of the top edge.
    static std::shared_ptr<UIBezierPath> bezierPathWithRoundedRect(const CGRect&, CGFloat cornerRadius);
    // bezierPathWithArcCenter:radius:startAngle:endAngle:clockwise:
    static std::shared_ptr<UIBezierPath> bezierPathWithArcCenter(
        const CGPoint& center, CGFloat radius, CGFloat startAngle, CGFloat endAngle, bool clockwise);

    void moveToPoint(const CGPoint&);
    // Lines and curves need a point to start from; without one they begin at the origin.
    void addLineToPoint(const CGPoint&);
    void addCurveToPoint(const CGPoint& end, const CGPoint& controlPoint1, const CGPoint& controlPoint2);
    void addQuadCurveToPoint(const CGPoint& end, const CGPoint& controlPoint);
    // addArcWithCenter:radius:startAngle:endAngle:clockwise: — joined by a line to what is there. Angles
    // that differ by a whole turn or more in the given direction make the full circle.
    void addArc(const CGPoint& center, CGFloat radius, CGFloat startAngle, CGFloat endAngle, bool clockwise);
    void closePath();
    void appendPath(const UIBezierPath&);
    void appendPath(const QPainterPath&);
    void applyTransform(const CGAffineTransform&);

    bool isEmpty() const { return m_path.isEmpty(); }
    CGRect bounds() const { return m_path.boundingRect(); }
    CGPoint currentPoint() const { return m_path.currentPosition(); }
    // containsPoint:
    bool containsPoint(const CGPoint& point) const { return m_path.contains(point); }
    // CGPath — the path as it is now; the same object until the path is changed.
    CGPathRef cgPath() const;

private:
    QPainterPath& changing();

    QPainterPath m_path;
    mutable CGPathRef m_snapshot; // null after a change
};
