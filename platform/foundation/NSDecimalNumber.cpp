#include "platform/foundation/NSDecimalNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr int largestExponent = 9999; // far beyond every double; keeps printed numbers short

} // namespace

NSDecimalNumber::NSDecimalNumber(std::uint64_t magnitude, bool isNegative)
    : m_mantissa(magnitude)
    , m_isNegative(isNegative)
{
    normalize();
}

NSDecimalNumber::NSDecimalNumber(double value)
{
    if (!std::isfinite(value)) {
        m_isNotANumber = true;
        return;
    }
    // The shortest form that reads back as the same double: "d.ddde±xx", at most 17 digits.
    std::array<char, 32> text {};
    const char* const end = std::to_chars(
        text.data(), text.data() + text.size(), std::abs(value), std::chars_format::scientific)
                                .ptr;
    const char* position = text.data();
    int digitsAfterPoint = 0;
    bool isAfterPoint = false;
    for (; *position != 'e'; ++position) {
        if (*position == '.') {
            isAfterPoint = true;
            continue;
        }
        m_mantissa = m_mantissa * 10 + static_cast<unsigned>(*position - '0');
        digitsAfterPoint += isAfterPoint;
    }
    ++position;
    if (*position == '+')
        ++position; // from_chars reads a minus sign only
    std::from_chars(position, end, m_exponent);
    m_exponent -= digitsAfterPoint;
    m_isNegative = std::signbit(value);
    normalize();
}

NSDecimalNumber NSDecimalNumber::withMantissa(std::uint64_t mantissa, int exponent, bool isNegative)
{
    return NSDecimalNumber(mantissa, isNegative)
        .multiplyingByPowerOf10(exponent, { .scale = largestExponent });
}

NSDecimalNumber NSDecimalNumber::notANumber()
{
    return NSDecimalNumber(std::numeric_limits<double>::quiet_NaN());
}

void NSDecimalNumber::normalize()
{
    while (m_mantissa != 0 && m_mantissa % 10 == 0) {
        m_mantissa /= 10;
        ++m_exponent;
    }
    if (m_mantissa == 0) {
        m_exponent = 0;
        m_isNegative = false;
    }
}

NSDecimalNumber NSDecimalNumber::multiplyingByPowerOf10(
    int power, const NSDecimalNumberHandler& behavior) const
{
    if (m_isNotANumber || isZero())
        return *this;
    NSDecimalNumber result = *this;
    std::int64_t exponent = std::int64_t { m_exponent } + power;
    std::int64_t surplus = -std::int64_t { behavior.scale } - exponent; // digits beyond the scale
    unsigned lastDropped = 0;
    for (; surplus > 0 && result.m_mantissa != 0; --surplus, ++exponent) {
        lastDropped = static_cast<unsigned>(result.m_mantissa % 10);
        result.m_mantissa /= 10;
    }
    const bool allDroppedAreKnown = surplus <= 0; // else zeros stand before the first dropped digit
    if (behavior.roundingMode == NSRoundingMode::Plain && allDroppedAreKnown && lastDropped >= 5)
        ++result.m_mantissa;
    if (result.m_mantissa != 0 && exponent > largestExponent)
        return notANumber();
    result.m_exponent = result.m_mantissa == 0 ? 0 : static_cast<int>(exponent);
    result.normalize();
    return result;
}

NSDecimalNumber NSDecimalNumber::negated() const
{
    NSDecimalNumber result = *this;
    result.m_isNegative = !m_isNegative && !isZero() && !m_isNotANumber;
    return result;
}

std::partial_ordering NSDecimalNumber::operator<=>(const NSDecimalNumber& other) const
{
    if (m_isNotANumber || other.m_isNotANumber)
        return std::partial_ordering::unordered;
    const auto sign = [](const NSDecimalNumber& number) {
        return number.isZero() ? 0 : number.m_isNegative ? -1 : 1;
    };
    if (sign(*this) != sign(other) || isZero())
        return sign(*this) <=> sign(other);

    const NSDecimalNumber& greaterIfPositive = m_isNegative ? other : *this;
    const NSDecimalNumber& counterpart = m_isNegative ? *this : other;
    const NSString first = greaterIfPositive.digits();
    const NSString second = counterpart.digits();
    const auto firstMagnitude = first.size() + greaterIfPositive.m_exponent;
    const auto secondMagnitude = second.size() + counterpart.m_exponent;
    if (firstMagnitude != secondMagnitude)
        return firstMagnitude <=> secondMagnitude;
    return first.compare(second) <=> 0; // of one magnitude: the order of the digits is that of the numbers
}

NSString NSDecimalNumber::digits() const
{
    NSString text;
    for (Mantissa rest = m_mantissa; rest != 0; rest /= 10)
        text.append(QChar('0' + static_cast<int>(rest % 10)));
    std::reverse(text.begin(), text.end());
    return text.isEmpty() ? QStringLiteral("0") : text;
}

NSString NSDecimalNumber::stringValue() const
{
    if (m_isNotANumber)
        return QStringLiteral("NaN");
    NSString text = digits();
    if (m_exponent > 0) {
        text.append(NSString(m_exponent, u'0'));
    } else if (m_exponent < 0) {
        const auto digitsBeforePoint = text.size() + m_exponent;
        if (digitsBeforePoint <= 0)
            text.prepend(NSString(1 - digitsBeforePoint, u'0'));
        text.insert(text.size() + m_exponent, u'.');
    }
    return m_isNegative ? u'-' + text : text;
}

double NSDecimalNumber::doubleValue() const
{
    if (m_isNotANumber)
        return std::numeric_limits<double>::quiet_NaN();
    const double magnitude = QStringLiteral("%1e%2").arg(digits()).arg(m_exponent).toDouble();
    return m_isNegative ? -magnitude : magnitude;
}
