// Whether all the numbers of a value are finite: what every geometry demands that is set.
#pragma once

#include "platform/graphics/Geometry.h"

#include <cmath>

inline bool isFinite(double number) { return std::isfinite(number); }
inline bool isFinite(const CGPoint& point) { return isFinite(point.x()) && isFinite(point.y()); }
inline bool isFinite(const CGSize& size) { return isFinite(size.width()) && isFinite(size.height()); }
inline bool isFinite(const CGRect& rect) { return isFinite(rect.topLeft()) && isFinite(rect.size()); }
inline bool isFinite(const UIEdgeInsets& insets)
{
    return isFinite(insets.top) && isFinite(insets.left) && isFinite(insets.bottom) && isFinite(insets.right);
}
inline bool isFinite(const CGAffineTransform& transform)
{
    return isFinite(transform.m11()) && isFinite(transform.m12()) && isFinite(transform.m21())
        && isFinite(transform.m22()) && isFinite(transform.dx()) && isFinite(transform.dy());
}
