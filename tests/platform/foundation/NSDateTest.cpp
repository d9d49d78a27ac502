#include "platform/foundation/NSDate.h"

#include "tests/support/ManualScheduler.h"

#include <QTimeZone>

#include <gmock/gmock.h>

#include <cmath>

namespace {

const NSDate noon(QDate(2024, 5, 17), QTime(12, 0), Qt::UTC);

} // namespace

TEST(NSDateTest, CountsFromTheSchedulersDate)
{
    ManualScheduler scheduler;
    scheduler.setCurrentDate(noon);
    EXPECT_EQ(dateWithTimeIntervalSinceNow(-3600), noon.addSecs(-3600));
    EXPECT_EQ(dateWithTimeIntervalSinceNow(0.25), noon.addMSecs(250));
}

TEST(NSDateTest, WhatNoCalendarHoldsIsNil)
{
    for (const double seconds : { std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, -1e18, 9.2e15, -9.2e15 })
        EXPECT_TRUE(dateByAddingTimeInterval(noon, seconds).isNull()) << seconds;
    EXPECT_TRUE(dateByAddingTimeInterval(NSDate(), 1).isNull());
}

TEST(NSDateTest, FarDatesAreDates)
{
    EXPECT_TRUE(dateByAddingTimeInterval(noon, -1e11).isValid());
    EXPECT_TRUE(dateByAddingTimeInterval(noon, 1e11).isValid());
}

TEST(NSDateTest, DescribesItselfInUniversalTime)
{
    const NSDate inTokyo(QDate(2024, 1, 1), QTime(3, 4, 5), QTimeZone("Asia/Tokyo"));
    EXPECT_EQ(description(inTokyo), QStringLiteral("2023-12-31 18:04:05 +0000"));
    EXPECT_EQ(description(NSDate()), QStringLiteral("(null)"));
}
