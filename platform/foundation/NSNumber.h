// A number of any kind as one value: truth value, signed or unsigned integer, double, exact decimal.
//
// It never loses a bit of what it was made from. Conversions to a type that cannot hold the value
// end at that type's nearest value; not-a-number converts to 0.
#pragma once

#include "platform/foundation/NSDecimalNumber.h"

#include <concepts>
#include <cstdint>
#include <type_traits>
#include <variant>

class NSNumber {
public:
    template <std::integral Integer>
    NSNumber(Integer value)
        : m_value(stored(value))
    {
    }
    // numberWithDouble:
    NSNumber(double value)
        : m_value(value)
    {
    }
    NSNumber(const NSDecimalNumber& value)
        : m_value(value)
    {
    }

    // The integer that is written there, with or without a sign; the nearest double where 64 bits are too
    // few.
    static NSNumber withDecimalDigits(const QByteArray& digits);

    bool boolValue() const; // anything but zero
    std::int64_t integerValue() const;
    std::uint64_t unsignedIntegerValue() const; // a negative number gives 0
    double doubleValue() const;
    // Exactly this number in base ten.
    NSDecimalNumber decimalValue() const;
    NSString stringValue() const { return decimalValue().stringValue(); }

    // By exact value, whatever the kinds.
    bool operator==(const NSNumber& other) const { return decimalValue() == other.decimalValue(); }
    std::partial_ordering operator<=>(const NSNumber& other) const
    {
        return decimalValue() <=> other.decimalValue();
    }

private:
    using Value = std::variant<bool, std::int64_t, std::uint64_t, double, NSDecimalNumber>;

    template <std::integral Integer> static Value stored(Integer value)
    {
        if constexpr (std::is_same_v<Integer, bool>)
            return Value { std::in_place_type<bool>, value };
        else if constexpr (std::is_signed_v<Integer>)
            return Value { std::in_place_type<std::int64_t>, value };
        else
            return Value { std::in_place_type<std::uint64_t>, value };
    }

    Value m_value;
};
