// Prints numbers in the digits of the locale, without grouping.
//
// Any kind of number is printed from its exact decimal value. Setting is for one thread, formatting
// for all.
#pragma once

#include "platform/foundation/NSFormatter.h"

class NSNumberFormatter final : public NSFormatter {
public:
    enum class RoundingMode { HalfEven, Down /* towards zero */ };

    NSNumberFormatter();
    ~NSNumberFormatter() override;

    NSString stringForObjectValue(const NSAny& object) const override; // nil unless it is a number
    // stringFromNumber: — a result that rounds to zero has no sign.
    NSString stringFromNumber(const NSNumber&) const;

    const NSString& locale() const { return m_locale; }
    void setLocale(const NSString& identifier); // the current one by default
    const NSString& decimalSeparator() const { return m_decimalSeparator; }
    void setDecimalSeparator(const NSString&); // nil stands for the locale's own
    int maximumFractionDigits() const { return m_maximumFractionDigits; }
    void setMaximumFractionDigits(int); // 0 by default; negative values count as 0
    RoundingMode roundingMode() const { return m_roundingMode; }
    void setRoundingMode(RoundingMode);

private:
    struct Engine;
    void rebuildEngine();

    NSString m_locale;
    NSString m_decimalSeparator;
    int m_maximumFractionDigits = 0;
    RoundingMode m_roundingMode = RoundingMode::HalfEven;
    std::unique_ptr<Engine> m_engine;
};
