// The value of an animatable property, or a missing one.
//
// Numbers, points, sizes, rectangles, affine transforms, colours and paths can be animated. Arithmetic on two
// values of different kinds has no meaning: it answers the first operand unchanged.
#pragma once

#include "platform/graphics/Geometry.h"
#include "platform/graphics/UIBezierPath.h"

#include <memory>
#include <variant>

class UIColor;

using CAValue = std::variant<std::monostate, double, CGPoint, CGSize, CGRect, CGAffineTransform,
    std::shared_ptr<UIColor>, CGPathRef>;

namespace CAValues {

inline bool isMissing(const CAValue& value) { return std::holds_alternative<std::monostate>(value); }

// Exact, where the value types' own comparison takes what is nearly equal for equal. Colours are the same
// when they look the same.
bool isSame(const CAValue& first, const CAValue& second);
inline bool isSame(double first, double second) { return first == second; }
inline bool isSame(const CGPoint& first, const CGPoint& second)
{
    return first.x() == second.x() && first.y() == second.y();
}
inline bool isSame(const CGSize& first, const CGSize& second)
{
    return first.width() == second.width() && first.height() == second.height();
}
inline bool isSame(const CGRect& first, const CGRect& second)
{
    return isSame(first.topLeft(), second.topLeft()) && isSame(first.size(), second.size());
}
inline bool isSame(const CGAffineTransform& first, const CGAffineTransform& second)
{
    return first == second;
}
bool isSame(const std::shared_ptr<UIColor>& first, const std::shared_ptr<UIColor>& second);
inline bool isSame(const CGPathRef& first, const CGPathRef& second)
{
    return first == second || (first && second && *first == *second);
}

// What changes nothing when it is added: zero, the identity transform, a clear colour.
CAValue neutral(const CAValue& kind);
// Transforms are concatenated, the first one applied first; colours are added part by part.
CAValue sum(const CAValue& first, const CAValue& second);
CAValue difference(const CAValue& first, const CAValue& second);
// From the first value at 0 to the second at 1; fractions outside lead beyond the ends. Transforms turn
// and scale on the way instead of shearing; colours are mixed as light, so a fade to clear does not darken;
// paths of the same lines and curves go over point by point, others are the second from the start.
CAValue interpolate(const CAValue& from, const CAValue& to, double fraction);

} // namespace CAValues
