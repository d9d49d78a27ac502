// An exact base-10 number: a sign, up to 38 digits and a power of ten.
//
// A double becomes the shortest decimal that reads back as the same double, so 0.1 is one tenth and
// nothing else. Nothing here raises an error: what is no finite number is "not a number", which equals
// nothing and is neither below nor above anything.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <compare>
#include <concepts>
#include <cstdint>

enum class NSRoundingMode {
    Plain, // to the nearest, halves away from zero
    Down, // towards zero
};

// How a result is fitted.
struct NSDecimalNumberHandler {
    NSRoundingMode roundingMode = NSRoundingMode::Plain;
    int scale = 10; // digits kept after the point
};

class NSDecimalNumber {
public:
    NSDecimalNumber() = default; // zero
    template <std::integral Integer>
    explicit NSDecimalNumber(Integer value)
        : NSDecimalNumber(magnitudeOf(value), value < Integer {})
    {
    }
    explicit NSDecimalNumber(double);
    // mantissa x 10^exponent, negated on demand.
    static NSDecimalNumber withMantissa(std::uint64_t mantissa, int exponent, bool isNegative);
    static NSDecimalNumber notANumber();
    static NSDecimalNumber powerOfTen(int exponent) { return withMantissa(1, exponent, false); }

    bool isNotANumber() const { return m_isNotANumber; }
    bool isNegative() const { return m_isNegative; }
    bool isZero() const { return m_mantissa == 0 && !m_isNotANumber; }

    // decimalNumberByMultiplyingByPowerOf10:withBehavior:
    NSDecimalNumber multiplyingByPowerOf10(int power, const NSDecimalNumberHandler&) const;
    NSDecimalNumber negated() const;

    std::partial_ordering operator<=>(const NSDecimalNumber&) const; // by value: 1.0 equals 1
    bool operator==(const NSDecimalNumber& other) const { return (*this <=> other) == 0; }

    // "-1234.5": all digits, no exponent, a point whatever the locale; "NaN".
    NSString stringValue() const;
    double doubleValue() const;

private:
    __extension__ using Mantissa = unsigned __int128; // holds every number of 38 digits

    NSDecimalNumber(std::uint64_t magnitude, bool isNegative);
    template <std::integral Integer> static std::uint64_t magnitudeOf(Integer value)
    {
        const auto bits = static_cast<std::uint64_t>(value);
        return value < Integer {} ? 0 - bits : bits;
    }
    void normalize();
    NSString digits() const;

    Mantissa m_mantissa = 0; // without trailing zeros
    int m_exponent = 0;
    bool m_isNegative = false; // never for zero
    bool m_isNotANumber = false;
};
