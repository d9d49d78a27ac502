#include "platform/foundation/NSDateComponentsFormatter.h"

#include <QTimeZone>

#include <gmock/gmock.h>

namespace {

constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr qint64 day = 24 * hour;

class NSDateComponentsFormatterTest : public testing::Test {
protected:
    NSDateComponentsFormatterTest()
    {
        formatter->setAllowedUnits(4216);
        formatter->setMaximumUnitCount(1);
        formatter->setUnitsStyle(NSDateComponentsFormatterUnitsStyle::Short);
        formatter->setFormattingContext(NSFormattingContext::ListItem);
        formatter->setLocale(QStringLiteral("en_US"));
        formatter->setTimeZone(QStringLiteral("Australia/Melbourne"));
    }

    static NSDate at(int year, int month, int dayOfMonth, int hours = 12, int minutes = 0,
        const char* zone = "Australia/Melbourne")
    {
        return NSDate(QDate(year, month, dayOfMonth), QTime(hours, minutes), QTimeZone(zone));
    }
    std::string text(const NSDate& from, const NSDate& to) const
    {
        return formatter->stringFromDate(from, to).toStdString();
    }
    std::string after(qint64 seconds) const { return text(start, start.addSecs(seconds)); }

    const NSDate start = at(2024, 5, 17);
    std::shared_ptr<NSDateComponentsFormatter> formatter = make<NSDateComponentsFormatter>();
};

} // namespace

TEST_F(NSDateComponentsFormatterTest, TheShortStyleReadsAsSettled)
{
    EXPECT_EQ(after(5 * minute), "5 min");
    EXPECT_EQ(after(3 * hour), "3 hr");
    EXPECT_EQ(after(day), "1 day");
    EXPECT_EQ(after(14 * day), "2 wks");
    EXPECT_EQ(after(31 * day), "1 mth");
}

TEST_F(NSDateComponentsFormatterTest, OnlyTheLargestUnitIsSaidAndTheRestIsDropped)
{
    EXPECT_EQ(after(minute - 1), "0 min");
    EXPECT_EQ(after(minute), "1 min");
    EXPECT_EQ(after(hour - 1), "59 min");
    EXPECT_EQ(after(hour + 59 * minute), "1 hr");
    EXPECT_EQ(after(day - 1), "23 hr");
    EXPECT_EQ(after(7 * day - 1), "6 days");
    EXPECT_EQ(after(7 * day), "1 wk");
    EXPECT_EQ(after(31 * day - 1), "4 wks");
}

TEST_F(NSDateComponentsFormatterTest, LessThanTheSmallestUnitIsZeroOfIt)
{
    EXPECT_EQ(after(0), "0 min");
    EXPECT_EQ(after(59), "0 min");
    formatter->setUnitsStyle(NSDateComponentsFormatterUnitsStyle::Full);
    EXPECT_EQ(after(0), "0 minutes");
    formatter->setAllowedUnits(NSCalendarUnitMonth | NSCalendarUnitDay);
    EXPECT_EQ(after(hour), "0 days");
}

TEST_F(NSDateComponentsFormatterTest, TheFullStyleSpellsUnitsOut)
{
    formatter->setFormattingContext(NSFormattingContext::Standalone);
    formatter->setUnitsStyle(NSDateComponentsFormatterUnitsStyle::Full);
    EXPECT_EQ(after(3 * hour), "3 hours");
    EXPECT_EQ(after(hour), "1 hour");
    EXPECT_EQ(after(14 * day), "2 weeks");
    EXPECT_EQ(after(62 * day), "2 months");
}

TEST_F(NSDateComponentsFormatterTest, TwoYearsAreTwentyFourMonths)
{
    EXPECT_EQ(text(at(2022, 5, 17), at(2024, 5, 17)), "24 mths");
    EXPECT_EQ(text(at(2022, 5, 17, 12, 1), at(2024, 5, 17)), "23 mths");
}

TEST_F(NSDateComponentsFormatterTest, AMonthEndsOnTheSameDayOfTheNextOrOnItsLast)
{
    EXPECT_EQ(text(at(2024, 1, 31), at(2024, 2, 29)), "1 mth");
    EXPECT_EQ(text(at(2023, 1, 31), at(2023, 2, 28)), "1 mth");
    EXPECT_EQ(text(at(2024, 1, 31), at(2024, 2, 28)), "4 wks");
    EXPECT_EQ(text(at(2024, 2, 29), at(2025, 2, 28)), "12 mths");
    EXPECT_EQ(text(at(2024, 2, 29), at(2024, 3, 28)), "4 wks");
}

TEST_F(NSDateComponentsFormatterTest, ADayMayHaveTwentyThreeOrTwentyFiveHours)
{
    // Clocks went forward on 6 October 2024 and back on 7 April 2024.
    EXPECT_EQ(text(at(2024, 10, 5), at(2024, 10, 6)), "1 day");
    EXPECT_EQ(at(2024, 10, 5).secsTo(at(2024, 10, 6)), 23 * hour);
    EXPECT_EQ(text(at(2024, 4, 6), at(2024, 4, 7)), "1 day");
    EXPECT_EQ(text(at(2024, 4, 6), at(2024, 4, 6).addSecs(day)), "24 hr");
}

TEST_F(NSDateComponentsFormatterTest, DaysAreThoseOfTheZoneAndNotOfTheDates)
{
    const auto inUniversalTime = [](const NSDate& date) { return date.toUTC(); };
    EXPECT_EQ(text(inUniversalTime(at(2024, 10, 5)), inUniversalTime(at(2024, 10, 6))), "1 day");
    formatter->setTimeZone(QStringLiteral("UTC"));
    EXPECT_EQ(text(at(2024, 10, 5), at(2024, 10, 6)), "23 hr");
}

TEST_F(NSDateComponentsFormatterTest, ALaterFirstDateCountsNegative)
{
    EXPECT_EQ(after(-5 * minute), "-5 min");
    EXPECT_EQ(after(-59), "0 min");
    EXPECT_EQ(after(-2 * day - hour), "-2 days");
}

TEST_F(NSDateComponentsFormatterTest, MoreUnitsAreSaidWhenMoreAreWanted)
{
    const qint64 length = day + 2 * hour + 5 * minute;
    formatter->setMaximumUnitCount(2);
    EXPECT_EQ(after(length), "1 day, 2 hr");
    formatter->setMaximumUnitCount(0);
    EXPECT_EQ(after(length), "1 day, 2 hr, 5 min");
    EXPECT_EQ(after(day + 5 * minute), "1 day, 5 min");
}

TEST_F(NSDateComponentsFormatterTest, UnitsThatAreNotAllowedGoIntoTheSmallerOnes)
{
    formatter->setAllowedUnits(NSCalendarUnitMinute);
    EXPECT_EQ(after(2 * hour), "120 min");
    formatter->setAllowedUnits(NSCalendarUnitMonth | NSCalendarUnitDay);
    EXPECT_EQ(after(20 * day), "20 days");
}

TEST_F(NSDateComponentsFormatterTest, NilDatesAndNoUnitsGiveNil)
{
    EXPECT_TRUE(formatter->stringFromDate(NSDate(), start).isNull());
    EXPECT_TRUE(formatter->stringFromDate(start, NSDate()).isNull());
    formatter->setAllowedUnits(0);
    EXPECT_TRUE(formatter->stringFromDate(start, start.addDays(1)).isNull());
}

TEST_F(NSDateComponentsFormatterTest, DatesBeyondWhatTheCalendarCountsGiveNil)
{
    formatter->setAllowedUnits(NSCalendarUnitMinute);
    EXPECT_TRUE(formatter->stringFromDate(start, start.addYears(10000)).isNull());
}

TEST_F(NSDateComponentsFormatterTest, AnyOneObjectGivesNil)
{
    EXPECT_TRUE(formatter->stringForObjectValue(60).isNull());
}

TEST_F(NSDateComponentsFormatterTest, OtherLanguagesReadAsTheyAreWritten)
{
    formatter->setUnitsStyle(NSDateComponentsFormatterUnitsStyle::Full);
    formatter->setLocale(QStringLiteral("de"));
    EXPECT_EQ(after(3 * hour), "3 Stunden");
    formatter->setLocale(QStringLiteral("pl"));
    EXPECT_EQ(after(5 * minute), "5 minut");
    EXPECT_EQ(after(2 * minute), "2 minuty");
    formatter->setLocale(QStringLiteral("xx-nonsense"));
    EXPECT_FALSE(after(hour).empty());
}
