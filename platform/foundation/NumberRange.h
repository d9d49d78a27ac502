// How a floating-point number is converted where an integer is needed; every conversion uses this rule.
//
// The largest value of a 64-bit integer is no double, so a comparison with it is off by one; the power of two
// after it is exact. A cast of what lies outside is undefined.
#pragma once

#include <cmath>
#include <concepts>
#include <limits>

// Whether the number lies between the least and the largest value of the type; not-a-number does not.
template <std::integral Integer> bool isInRange(double number)
{
    using Limits = std::numeric_limits<Integer>;
    return number >= static_cast<double>(Limits::min()) && number < std::ldexp(1.0, Limits::digits);
}

// The number without its fraction, or the value of the type that is nearest to it; 0 for not-a-number.
template <std::integral Integer> Integer nearestInteger(double number)
{
    if (isInRange<Integer>(number))
        return static_cast<Integer>(number);
    if (std::isnan(number))
        return 0;
    return number < 0 ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
}
