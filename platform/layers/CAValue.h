// The value of an animatable property, or a missing one.
//
// Numbers, points, sizes, rectangles, affine transforms and colours can be animated. Arithmetic on two
// values of different kinds has no meaning: it answers the first operand unchanged.
#pragma once

#include "platform/graphics/Geometry.h"

#include <memory>
#include <variant>

class UIColor;

using CAValue = std::variant<std::monostate, double, CGPoint, CGSize, CGRect, CGAffineTransform,
    std::shared_ptr<UIColor>>;

namespace CAValues {

inline bool isMissing(const CAValue& value) { return std::holds_alternative<std::monostate>(value); }

// What changes nothing when it is added: zero, the identity transform, a clear colour.
CAValue neutral(const CAValue& kind);
// Transforms are concatenated, the first one applied first; colours are added part by part.
CAValue sum(const CAValue& first, const CAValue& second);
CAValue difference(const CAValue& first, const CAValue& second);
// From the first value at 0 to the second at 1; fractions outside lead beyond the ends. Transforms turn
// and scale on the way instead of shearing; colours are mixed as light, so a fade to clear does not darken.
CAValue interpolate(const CAValue& from, const CAValue& to, double fraction);

} // namespace CAValues
