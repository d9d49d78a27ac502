// Says how long it is from one date to another, such as "3 hr" or "3 hours".
//
// Lengths are true to the calendar: a month is the distance to the same day of the next month, a day
// may have 23 hours. Only the largest units that are not zero are said; what is left over is dropped.
#pragma once

#include "platform/foundation/NSFormatter.h"

enum NSCalendarUnit : unsigned {
    NSCalendarUnitMonth = 8,
    NSCalendarUnitDay = 16,
    NSCalendarUnitHour = 32,
    NSCalendarUnitMinute = 64,
    NSCalendarUnitWeekOfMonth = 4096,
};

// Where in a text the result will stand. A result begins with a number, so no language writes it
// differently for its place.
enum class NSFormattingContext { Unknown, ListItem, Standalone };

enum class NSDateComponentsFormatterUnitsStyle {
    Short, // "3 hr"
    Full, // "3 hours"
};

class NSDateComponentsFormatter final : public NSFormatter {
public:
    NSDateComponentsFormatter();
    ~NSDateComponentsFormatter() override;

    // stringFromDate:toDate: — nil when a date is nil, no unit is allowed or the calendar cannot count
    // that far. Less than the smallest unit is zero of it ("0 min"); a later first date counts negative.
    NSString stringFromDate(const NSDate& from, const NSDate& to) const;
    NSString stringForObjectValue(const NSAny&) const override { return {}; } // dates come in pairs

    unsigned allowedUnits() const { return m_allowedUnits; }
    void setAllowedUnits(unsigned mask) { m_allowedUnits = mask; }
    int maximumUnitCount() const { return m_maximumUnitCount; }
    void setMaximumUnitCount(int count) { m_maximumUnitCount = count; } // 0: as many as there are
    NSDateComponentsFormatterUnitsStyle unitsStyle() const { return m_unitsStyle; }
    void setUnitsStyle(NSDateComponentsFormatterUnitsStyle style) { m_unitsStyle = style; }
    NSFormattingContext formattingContext() const { return m_formattingContext; }
    void setFormattingContext(NSFormattingContext context) { m_formattingContext = context; }

    const NSString& locale() const { return m_locale; }
    void setLocale(const NSString& identifier) { m_locale = identifier; } // the current one by default
    // Days and months are those of this zone, such as "Europe/Paris"; nil for the system's own.
    const NSString& timeZone() const { return m_timeZone; }
    void setTimeZone(const NSString& identifier) { m_timeZone = identifier; }

private:
    unsigned m_allowedUnits = NSCalendarUnitMonth | NSCalendarUnitWeekOfMonth | NSCalendarUnitDay
        | NSCalendarUnitHour | NSCalendarUnitMinute;
    int m_maximumUnitCount = 0;
    NSDateComponentsFormatterUnitsStyle m_unitsStyle = NSDateComponentsFormatterUnitsStyle::Full;
    NSFormattingContext m_formattingContext = NSFormattingContext::Unknown;
    NSString m_locale;
    NSString m_timeZone;
};
