#include "platform/foundation/NSDateComponentsFormatter.h"

#include "platform/foundation/ICUText.h"
#include "platform/foundation/NSLocale.h"

#include <unicode/gregocal.h>
#include <unicode/listformatter.h>
#include <unicode/numberformatter.h>

#include <algorithm>
#include <array>

namespace {

struct Unit {
    NSCalendarUnit flag;
    UCalendarDateFields field;
    icu::MeasureUnit (*measure)();
};

// The largest first, which is the order in which they are counted and said.
const std::array<Unit, 5> units { {
    { NSCalendarUnitMonth, UCAL_MONTH, icu::MeasureUnit::getMonth },
    { NSCalendarUnitWeekOfMonth, UCAL_WEEK_OF_YEAR, icu::MeasureUnit::getWeek },
    { NSCalendarUnitDay, UCAL_DATE, icu::MeasureUnit::getDay },
    { NSCalendarUnitHour, UCAL_HOUR_OF_DAY, icu::MeasureUnit::getHour },
    { NSCalendarUnitMinute, UCAL_MINUTE, icu::MeasureUnit::getMinute },
} };

struct Component {
    const Unit* unit;
    int32_t count;
};

std::unique_ptr<icu::TimeZone> timeZoneNamed(const NSString& identifier)
{
    if (identifier.isEmpty())
        return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createDefault());
    return std::unique_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(toICU(identifier)));
}

// How often each allowed unit fits into what the larger ones have left.
std::vector<Component> componentsBetween(
    const NSDate& from, const NSDate& to, unsigned allowed, const icu::TimeZone& zone, UErrorCode& status)
{
    std::vector<Component> components;
    icu::GregorianCalendar calendar(zone, status);
    calendar.setTime(static_cast<double>(from.toMSecsSinceEpoch()), status);
    const double end = static_cast<double>(to.toMSecsSinceEpoch());
    for (const Unit& unit : units) {
        if (!(allowed & unit.flag))
            continue;
        // Moves the calendar on by as much as it counts.
        const int32_t count = calendar.fieldDifference(end, unit.field, status);
        components.push_back({ &unit, count });
    }
    return components;
}

// The largest units that are not zero; of all zeros the smallest, so that there is something to say.
void keepWhatIsSaid(std::vector<Component>& components, int maximumCount)
{
    const Component smallest = components.back();
    std::erase_if(components, [](const Component& component) { return component.count == 0; });
    if (components.empty())
        components.push_back(smallest);
    const auto maximum = static_cast<std::size_t>(std::max(maximumCount, 0));
    if (maximum > 0 && components.size() > maximum)
        components.erase(components.begin() + maximumCount, components.end());
}

} // namespace

NSDateComponentsFormatter::NSDateComponentsFormatter()
    : m_locale(NSLocale::currentIdentifier())
{
}

NSDateComponentsFormatter::~NSDateComponentsFormatter() = default;

NSString NSDateComponentsFormatter::stringFromDate(const NSDate& from, const NSDate& to) const
{
    UErrorCode status = U_ZERO_ERROR;
    if (!from.isValid() || !to.isValid())
        return {};
    auto components = componentsBetween(from, to, m_allowedUnits, *timeZoneNamed(m_timeZone), status);
    if (U_FAILURE(status) || components.empty())
        return {};
    keepWhatIsSaid(components, m_maximumUnitCount);

    const bool isShort = m_unitsStyle == NSDateComponentsFormatterUnitsStyle::Short;
    const icu::Locale locale(m_locale.toLatin1().constData());
    const auto numbers = icu::number::NumberFormatter::withLocale(locale).unitWidth(
        isShort ? UNUM_UNIT_WIDTH_SHORT : UNUM_UNIT_WIDTH_FULL_NAME);
    std::vector<icu::UnicodeString> texts;
    texts.reserve(components.size());
    for (const Component& component : components)
        texts.push_back(
            numbers.unit(component.unit->measure()).formatInt(component.count, status).toString(status));
    if (texts.size() == 1)
        return U_SUCCESS(status) ? fromICU(texts.front()) : NSString();

    const std::unique_ptr<icu::ListFormatter> list(icu::ListFormatter::createInstance(
        locale, ULISTFMT_TYPE_UNITS, isShort ? ULISTFMT_WIDTH_SHORT : ULISTFMT_WIDTH_WIDE, status));
    icu::UnicodeString joined;
    if (list)
        list->format(texts.data(), static_cast<int32_t>(texts.size()), joined, status);
    return U_SUCCESS(status) ? fromICU(joined) : NSString();
}
