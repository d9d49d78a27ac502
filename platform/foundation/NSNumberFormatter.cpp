#include "platform/foundation/NSNumberFormatter.h"

#include "platform/foundation/ICUText.h"
#include "platform/foundation/NSLocale.h"

#include <unicode/numberformatter.h>

#include <algorithm>
#include <cmath>

// ICU's formatter is immutable, so one serves all threads.
struct NSNumberFormatter::Engine {
    icu::number::LocalizedNumberFormatter formatter;
};

NSNumberFormatter::NSNumberFormatter()
    : m_locale(NSLocale::currentIdentifier())
{
    rebuildEngine();
}

NSNumberFormatter::~NSNumberFormatter() = default;

NSString NSNumberFormatter::stringForObjectValue(const NSAny& object) const
{
    const auto* number = object.as<NSNumber>();
    return number ? stringFromNumber(*number) : NSString();
}

NSString NSNumberFormatter::stringFromNumber(const NSNumber& number) const
{
    UErrorCode status = U_ZERO_ERROR;
    const double approximate = number.doubleValue();
    icu::number::FormattedNumber formatted;
    if (std::isfinite(approximate)) {
        const QByteArray digits = number.stringValue().toLatin1();
        formatted = m_engine->formatter.formatDecimal({ digits.constData(), int32_t(digits.size()) }, status);
    } else {
        const double unsignedIfNotANumber = std::isnan(approximate) ? std::abs(approximate) : approximate;
        formatted = m_engine->formatter.formatDouble(unsignedIfNotANumber, status);
    }
    const icu::UnicodeString text = formatted.toString(status);
    return U_SUCCESS(status) ? fromICU(text) : number.stringValue();
}

void NSNumberFormatter::setLocale(const NSString& identifier)
{
    m_locale = identifier;
    rebuildEngine();
}

void NSNumberFormatter::setDecimalSeparator(const NSString& separator)
{
    m_decimalSeparator = separator;
    rebuildEngine();
}

void NSNumberFormatter::setMaximumFractionDigits(int digits)
{
    constexpr int mostThatICUTakes = 999;
    m_maximumFractionDigits = std::clamp(digits, 0, mostThatICUTakes);
    rebuildEngine();
}

void NSNumberFormatter::setRoundingMode(RoundingMode mode)
{
    m_roundingMode = mode;
    rebuildEngine();
}

void NSNumberFormatter::rebuildEngine()
{
    const icu::Locale locale(m_locale.toLatin1().constData());
    UErrorCode status = U_ZERO_ERROR;
    auto formatter
        = icu::number::NumberFormatter::withLocale(locale)
              .grouping(UNUM_GROUPING_OFF)
              .sign(UNUM_SIGN_NEGATIVE)
              .roundingMode(m_roundingMode == RoundingMode::Down ? UNUM_ROUND_DOWN : UNUM_ROUND_HALFEVEN)
              .precision(icu::number::Precision::maxFraction(m_maximumFractionDigits));
    if (!m_decimalSeparator.isNull()) {
        icu::DecimalFormatSymbols symbols(locale, status);
        symbols.setSymbol(
            icu::DecimalFormatSymbols::kDecimalSeparatorSymbol, toICU(m_decimalSeparator), false);
        formatter = std::move(formatter).symbols(symbols);
    }
    m_engine = std::make_unique<Engine>(Engine { std::move(formatter) });
}
