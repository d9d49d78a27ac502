#include "platform/foundation/NSNumber.h"

#include "platform/foundation/NumberRange.h"

namespace {

template <typename Integer> Integer nearest(double value) { return nearestInteger<Integer>(value); }

template <typename Integer> Integer nearest(std::int64_t value)
{
    return std::in_range<Integer>(value) ? static_cast<Integer>(value) : Integer { 0 };
}

template <typename Integer> Integer nearest(std::uint64_t value)
{
    return std::in_range<Integer>(value) ? static_cast<Integer>(value) : std::numeric_limits<Integer>::max();
}

template <typename Integer> Integer nearest(bool value) { return value ? 1 : 0; }

template <typename Integer> Integer nearest(const NSDecimalNumber& value)
{
    if (value.isNotANumber())
        return 0;
    const NSDecimalNumberHandler whole { NSRoundingMode::Down, 0 };
    const NSString digits = value.multiplyingByPowerOf10(0, whole).stringValue();
    bool fits = false;
    const Integer result = std::is_signed_v<Integer> ? static_cast<Integer>(digits.toLongLong(&fits))
                                                     : static_cast<Integer>(digits.toULongLong(&fits));
    if (fits)
        return result;
    return value.isNegative() ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
}

} // namespace

NSNumber NSNumber::withDecimalDigits(const QByteArray& digits)
{
    bool fits = false;
    if (const qlonglong value = digits.toLongLong(&fits); fits)
        return value;
    if (const qulonglong value = digits.toULongLong(&fits); fits)
        return value;
    return NSString::fromLatin1(digits).toDouble(); // a byte array gives 0 for what is too large
}

bool NSNumber::boolValue() const
{
    if (const double* value = std::get_if<double>(&m_value))
        return *value != 0;
    return !decimalValue().isZero();
}

std::int64_t NSNumber::integerValue() const
{
    return std::visit([](const auto& value) { return nearest<std::int64_t>(value); }, m_value);
}

std::uint64_t NSNumber::unsignedIntegerValue() const
{
    return std::visit([](const auto& value) { return nearest<std::uint64_t>(value); }, m_value);
}

double NSNumber::doubleValue() const
{
    return std::visit(
        [](const auto& value) {
            if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(value)>>)
                return static_cast<double>(value);
            else
                return value.doubleValue();
        },
        m_value);
}

NSDecimalNumber NSNumber::decimalValue() const
{
    return std::visit([](const auto& value) { return NSDecimalNumber(value); }, m_value);
}
