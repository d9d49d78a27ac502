#include "platform/media/CMTime.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::int32_t finest = std::numeric_limits<std::int32_t>::max();

TEST(CMTimeTest, SecondsBecomeTheNearestUnits)
{
    EXPECT_EQ(CMTimeMakeWithSeconds(0.1, 44100).value, 4410);
    EXPECT_EQ(CMTimeMakeWithSeconds(0.1, 44100).timescale, 44100);
    EXPECT_EQ(CMTimeMakeWithSeconds(1.49, 1).value, 1);
    EXPECT_EQ(CMTimeMakeWithSeconds(-1.5, 1).value, -2);
}

TEST(CMTimeTest, AnUnknownTimescaleStillKeepsTheSeconds)
{
    EXPECT_DOUBLE_EQ(CMTimeGetSeconds(CMTimeMakeWithSeconds(0.1, 0)), 0.1);
    EXPECT_DOUBLE_EQ(CMTimeGetSeconds(CMTimeMakeWithSeconds(0.1, -5)), 0.1);
    EXPECT_GT(CMTimeMakeWithSeconds(0.1, 0).timescale, 0);
}

TEST(CMTimeTest, ATimescaleTooFineForManySecondsIsMadeCoarser)
{
    const CMTime time = CMTimeMakeWithSeconds(1e15, 1'000'000);
    EXPECT_NEAR(CMTimeGetSeconds(time), 1e15, 1);
    EXPECT_LT(time.timescale, 1'000'000);
}

TEST(CMTimeTest, SecondsThatAreNoNumberOrTooManyAreToldApart)
{
    EXPECT_EQ(CMTimeMakeWithSeconds(std::nan(""), 600).flags, CMTimeKind::Invalid);
    EXPECT_EQ(CMTimeMakeWithSeconds(1e300, 600).flags, CMTimeKind::PositiveInfinity);
    EXPECT_EQ(CMTimeMakeWithSeconds(-HUGE_VAL, 600).flags, CMTimeKind::NegativeInfinity);
    EXPECT_EQ(CMTimeMakeWithSeconds(HUGE_VAL, 0).flags, CMTimeKind::PositiveInfinity);
}

TEST(CMTimeTest, TheZeroStructureAndZeroTimeAreZeroSeconds)
{
    EXPECT_EQ(CMTimeGetSeconds(CMTime {}), 0);
    EXPECT_EQ(CMTimeGetSeconds(kCMTimeZero), 0);
    EXPECT_EQ(CMTimeCompare(CMTime {}, kCMTimeZero), 0);
    EXPECT_EQ(CMTime {}.timescale, 0);
}

TEST(CMTimeTest, WhatIsNoMomentGivesNoNumberOfSeconds)
{
    EXPECT_TRUE(std::isnan(CMTimeGetSeconds(kCMTimeIndefinite)));
    EXPECT_TRUE(std::isnan(CMTimeGetSeconds(kCMTimeInvalid)));
    EXPECT_EQ(CMTimeGetSeconds(kCMTimePositiveInfinity), HUGE_VAL);
    EXPECT_EQ(CMTimeGetSeconds(kCMTimeNegativeInfinity), -HUGE_VAL);
}

TEST(CMTimeTest, AValueWithoutATimescaleIsInvalid)
{
    EXPECT_EQ(CMTimeMake(3, 0).flags, CMTimeKind::Invalid);
    EXPECT_EQ(CMTimeMake(3, -1).flags, CMTimeKind::Invalid);
    EXPECT_TRUE(std::isnan(CMTimeGetSeconds(CMTime { 3, 0, CMTimeKind::Number })));
    EXPECT_EQ(CMTimeGetSeconds(CMTimeMake(0, 0)), 0);
}

TEST(CMTimeTest, ComparisonIsExactAcrossTimescales)
{
    EXPECT_EQ(CMTimeCompare(CMTimeMake(1, 2), CMTimeMake(2, 4)), 0);
    EXPECT_EQ(CMTimeCompare(CMTimeMake(1, 3), CMTimeMake(333'333'333, 1'000'000'000)), 1);
    // These two are the same number as a double, and their cross products do not fit 64 bits.
    EXPECT_EQ(CMTimeCompare(CMTimeMake(most, finest), CMTimeMake(most - 1, finest)), 1);
    EXPECT_EQ(CMTimeCompare(CMTimeMake(most - 1, finest), CMTimeMake(most, finest - 1)), -1);
    EXPECT_EQ(CMTimeCompare(CMTimeMake(least, 1), CMTimeMake(most, finest)), -1);
}

TEST(CMTimeTest, TheKindsHaveAnOrder)
{
    const CMTime ordered[] = { kCMTimeNegativeInfinity, CMTimeMake(least, 1), kCMTimeZero,
        CMTimeMake(most, 1), kCMTimePositiveInfinity, kCMTimeIndefinite, kCMTimeInvalid };
    for (std::size_t i = 0; i < std::size(ordered); ++i)
        for (std::size_t j = 0; j < std::size(ordered); ++j)
            EXPECT_EQ(CMTimeCompare(ordered[i], ordered[j]), i < j ? -1 : (i > j ? 1 : 0)) << i << ' ' << j;
}

TEST(CMTimeTest, SumsAreExactInACommonTimescale)
{
    const CMTime sum = CMTimeAdd(CMTimeMake(1, 4), CMTimeMake(1, 6));
    EXPECT_EQ(sum.value, 5);
    EXPECT_EQ(sum.timescale, 12);
    EXPECT_EQ(CMTimeCompare(CMTimeSubtract(sum, CMTimeMake(1, 6)), CMTimeMake(1, 4)), 0);
}

TEST(CMTimeTest, SumsWithoutACommonTimescaleAreRoundedToTheFinerOne)
{
    const CMTime sum = CMTimeAdd(CMTimeMake(1, finest), CMTimeMake(1, finest - 1));
    EXPECT_EQ(sum.timescale, finest);
    EXPECT_EQ(sum.value, 2);
}

TEST(CMTimeTest, SumsThatDoNotFitAreInfinite)
{
    EXPECT_EQ(CMTimeAdd(CMTimeMake(most, 1), CMTimeMake(1, 1)).flags, CMTimeKind::PositiveInfinity);
    EXPECT_EQ(CMTimeSubtract(CMTimeMake(least, 1), CMTimeMake(1, 1)).flags, CMTimeKind::NegativeInfinity);
}

TEST(CMTimeTest, SumsWithWhatIsNoNumber)
{
    const CMTime second = CMTimeMake(1, 1);
    EXPECT_EQ(CMTimeAdd(second, kCMTimeIndefinite).flags, CMTimeKind::Indefinite);
    EXPECT_EQ(CMTimeSubtract(kCMTimeInvalid, kCMTimeIndefinite).flags, CMTimeKind::Invalid);
    EXPECT_EQ(CMTimeSubtract(second, kCMTimePositiveInfinity).flags, CMTimeKind::NegativeInfinity);
    EXPECT_EQ(CMTimeSubtract(second, kCMTimeNegativeInfinity).flags, CMTimeKind::PositiveInfinity);
    EXPECT_EQ(
        CMTimeAdd(kCMTimePositiveInfinity, kCMTimePositiveInfinity).flags, CMTimeKind::PositiveInfinity);
    EXPECT_EQ(CMTimeSubtract(kCMTimePositiveInfinity, kCMTimePositiveInfinity).flags, CMTimeKind::Invalid);
    EXPECT_EQ(CMTimeAdd(kCMTimePositiveInfinity, kCMTimeIndefinite).flags, CMTimeKind::Indefinite);
}

TEST(CMTimeTest, ConversionRoundsHalvesAwayFromZero)
{
    EXPECT_EQ(CMTimeConvertScale(CMTimeMake(1, 2), 1).value, 1);
    EXPECT_EQ(CMTimeConvertScale(CMTimeMake(-1, 2), 1).value, -1);
    EXPECT_EQ(CMTimeConvertScale(CMTimeMake(48000, 48000), 44100).value, 44100);
    EXPECT_EQ(CMTimeConvertScale(CMTimeMake(most, 1), finest).flags, CMTimeKind::PositiveInfinity);
    EXPECT_EQ(CMTimeConvertScale(CMTimeMake(1, 2), 0).flags, CMTimeKind::Invalid);
    EXPECT_EQ(CMTimeConvertScale(kCMTimeIndefinite, 600).flags, CMTimeKind::Indefinite);
}

} // namespace
