#include "model/ORVCountFormatter.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSString.h"

namespace {

constexpr std::uint64_t fewestDigits = 3;
constexpr std::uint64_t mostDigits = 400; // no number has more

NSString localized(const NSString& key, const NSString& value)
{
    return NSBundle::mainBundle()->localizedStringForKey(key, value, QStringLiteral("ORVCountFormatter"));
}

} // namespace

ORVCountFormatter::ORVCountFormatter()
    : m_numberFormatter(make<NSNumberFormatter>())
    , m_suffixFormat(localized(QStringLiteral("Suffix Format"), QStringLiteral("%@%@")))
{
    m_numberFormatter->setDecimalSeparator(NSString());
    m_numberFormatter->setMaximumFractionDigits(0);
    m_numberFormatter->setRoundingMode(NSNumberFormatter::RoundingMode::Down);
}

void ORVCountFormatter::setMaximumSignificantDigits(std::uint64_t digits)
{
    m_maximumSignificantDigits = std::max(digits, fewestDigits);
}

NSString ORVCountFormatter::stringForObjectValue(const NSAny& object) const
{
    const std::vector<NSString>& table = suffixes();
    const NSNumber* number = object.as<NSNumber>();
    if (!number)
        return {};

    NSDecimalNumber value = number->decimalValue();
    const bool isNegative = value.isNegative();
    const auto digits = static_cast<int>(std::min(m_maximumSignificantDigits, mostDigits));
    const NSDecimalNumber limit = NSDecimalNumber::powerOfTen(digits);
    const NSDecimalNumber threshold = isNegative ? limit.negated() : limit;
    const NSDecimalNumberHandler truncation { NSRoundingMode::Down, 10 };

    NSCAssert(
        !table.empty(), "ORVCountFormatter", QStringLiteral("Expecting at least one exponential suffix."));
    std::size_t scalings = 0;
    while (scalings < table.size() && (isNegative ? value <= threshold : value >= threshold)) {
        value = value.multiplyingByPowerOf10(-3, truncation);
        ++scalings;
    }
    const NSString text = m_numberFormatter->stringFromNumber(value);
    return scalings == 0 ? text : NSStringWithFormat(m_suffixFormat, { text, table[scalings - 1] });
}

NSString ORVCountFormatter::stringFromNumber(const NSNumber& number) const
{
    return stringForObjectValue(number);
}

const std::vector<NSString>& ORVCountFormatter::suffixes() const
{
    static const std::vector<NSString> table {
        localized(QStringLiteral("Kilo"), QStringLiteral("k")),
        localized(QStringLiteral("Mega"), QStringLiteral("M")),
        localized(QStringLiteral("Giga"), QStringLiteral("G")),
        localized(QStringLiteral("Tera"), QStringLiteral("T")),
    };
    return table;
}
