// Turns a count into a short text such as 999, 12k or 3M.
//
// The number is scaled down by thousands until it has few enough digits before the point, the fraction
// is dropped and a suffix is appended. Beyond the last suffix there are more digits. Setting is for one
// thread, formatting for all.
#pragma once

#include "platform/foundation/NSNumberFormatter.h"

#include <vector>

class ORVCountFormatter : public NSFormatter {
public:
    ORVCountFormatter();

    const std::shared_ptr<NSNumberFormatter>& numberFormatter() const { return m_numberFormatter; }

    // Digits before the point that are shown unscaled; fewer than 3 are raised to 3, which is the default.
    std::uint64_t maximumSignificantDigits() const { return m_maximumSignificantDigits; }
    void setMaximumSignificantDigits(std::uint64_t digits);

    // Takes the formatted number and the suffix; "%@%@" where no translation says otherwise.
    const NSString& suffixFormat() const { return m_suffixFormat; }
    void setSuffixFormat(NSString format) { m_suffixFormat = std::move(format); }

    // nil for anything but a number.
    NSString stringForObjectValue(const NSAny& object) const override;
    NSString stringFromNumber(const NSNumber& number) const;

protected:
    // One suffix a thousand, smallest first; at least one.
    virtual const std::vector<NSString>& suffixes() const;

private:
    const std::shared_ptr<NSNumberFormatter> m_numberFormatter;
    std::uint64_t m_maximumSignificantDigits = 3;
    NSString m_suffixFormat;
};
