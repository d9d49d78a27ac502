#include "platform/layers/CAMediaTiming.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using ::testing::Eq;
using ::testing::Optional;
constexpr double infinity = std::numeric_limits<double>::infinity();

struct Row {
    const char* what;
    CAMediaTiming timing;
    double time; // of the parent
    std::optional<double> progress;
};

TEST(CAMediaTimingTest, ProgressFollowsTheTable)
{
    const auto fill = [](CAFillMode mode) { return CAMediaTiming { .duration = 2, .fillMode = mode }; };
    const CAMediaTiming once { .duration = 2 };
    const CAMediaTiming later { .beginTime = 10, .duration = 2, .fillMode = kCAFillModeBackwards };
    const CAMediaTiming fast { .speed = 2, .duration = 2 };
    const CAMediaTiming offset { .timeOffset = 0.5, .duration = 2 };
    const CAMediaTiming back { .timeOffset = 2, .speed = -1, .duration = 2, .fillMode = kCAFillModeBoth };
    const CAMediaTiming twice { .duration = 2, .repeatCount = 2, .fillMode = kCAFillModeForwards };
    const CAMediaTiming half { .duration = 2, .repeatCount = 2.5, .fillMode = kCAFillModeForwards };
    const CAMediaTiming mirror { .duration = 2, .autoreverses = true, .fillMode = kCAFillModeForwards };
    const CAMediaTiming mirrors
        = { .duration = 2, .repeatCount = 1.25, .autoreverses = true, .fillMode = kCAFillModeForwards };
    const CAMediaTiming forever { .duration = 2, .repeatCount = 3.4028235e38 };
    const CAMediaTiming limited {
        .duration = 2, .repeatCount = 9, .repeatDuration = 3, .fillMode = kCAFillModeBoth
    };
    const CAMediaTiming nothing { .duration = 0, .fillMode = kCAFillModeBoth };
    const Row rows[] = {
        { "before", once, -0.1, {} },
        { "start", once, 0, 0.0 },
        { "middle", once, 1, 0.5 },
        { "just before the end", once, 1.75, 0.875 },
        { "end", once, 2, {} },
        { "after", once, 5, {} },
        { "removed shows nothing before", fill(kCAFillModeRemoved), -1, {} },
        { "backwards shows the start before", fill(kCAFillModeBackwards), -1, 0.0 },
        { "backwards shows nothing after", fill(kCAFillModeBackwards), 3, {} },
        { "forwards shows nothing before", fill(kCAFillModeForwards), -1, {} },
        { "forwards shows the end after", fill(kCAFillModeForwards), 3, 1.0 },
        { "both shows the start before", fill(kCAFillModeBoth), -1, 0.0 },
        { "both shows the end after", fill(kCAFillModeBoth), 3, 1.0 },
        { "a begin time is waited for", later, 9, 0.0 },
        { "and counted from", later, 11, 0.5 },
        { "speed", fast, 0.5, 0.5 },
        { "speed ends earlier", fast, 1, {} },
        { "an offset starts in mid-run", offset, 0, 0.25 },
        { "and ends earlier", offset, 1.5, {} },
        { "a negative speed starts at the end", back, 0, 1.0 },
        { "runs backwards", back, 0.5, 0.75 },
        { "and keeps its start", back, 3, 0.0 },
        { "second run", twice, 3, 0.5 },
        { "start of the second run", twice, 2, 0.0 },
        { "the end of the last run is kept", twice, 4, 1.0 },
        { "a part of a run ends in mid-run", half, 5, 0.5 },
        { "the way there", mirror, 1.5, 0.75 },
        { "the turning point", mirror, 2, 1.0 },
        { "the way back", mirror, 3, 0.5 },
        { "back at the start", mirror, 4, 0.0 },
        { "a quarter of a pair ends half way there", mirrors, 7, 0.5 },
        { "for ever", forever, 2e6 + 1, 0.5 },
        { "a repeat duration wins over the count", limited, 2.5, 0.25 },
        { "and ends there", limited, 100, 0.5 },
        { "no duration is over at once", nothing, 0, 1.0 },
        { "and has not begun before", nothing, -1, 0.0 },
    };
    for (const Row& row : rows)
        EXPECT_THAT(row.timing.progress(row.timing.local({ row.time, 1 })), Eq(row.progress)) << row.what;
}

TEST(CAMediaTimingTest, ActiveDurationCountsAllRuns)
{
    EXPECT_EQ((CAMediaTiming { .duration = 2 }.activeDuration()), 2);
    EXPECT_EQ((CAMediaTiming { .duration = 2, .repeatCount = 3 }.activeDuration()), 6);
    EXPECT_EQ((CAMediaTiming { .duration = 2, .autoreverses = true }.activeDuration()), 4);
    EXPECT_EQ((CAMediaTiming { .duration = 2, .repeatCount = 3.4028235e38 }.activeDuration()), infinity);
    EXPECT_EQ(
        (CAMediaTiming { .duration = 2, .repeatCount = 3.4028234663852886e38 }.activeDuration()), infinity);
    EXPECT_EQ((CAMediaTiming { .duration = 2, .repeatCount = -1 }.activeDuration()), 2);
    EXPECT_EQ((CAMediaTiming { .duration = 2, .repeatCount = std::nan("") }.activeDuration()), 2);
    EXPECT_EQ((CAMediaTiming { .duration = std::nan("") }.activeDuration()), 0);
    EXPECT_EQ((CAMediaTiming { .duration = -2, .repeatCount = 3.4028235e38 }.activeDuration()), 0);
}

TEST(CAMediaTimingTest, OnALineThatStandsStillBothEndsAreActive)
{
    const CAMediaTiming timing { .duration = 2 };
    EXPECT_THAT(timing.progress({ 0, 0 }), Optional(0.0));
    EXPECT_THAT(timing.progress({ 2, 0 }), Optional(1.0));
    EXPECT_EQ(timing.progress({ 2.1, 0 }), std::nullopt);
    EXPECT_EQ(timing.progress({ -0.1, 0 }), std::nullopt);
}

TEST(CAMediaTimingTest, OnALineThatRunsBackwardsTheStartIsTheEnd)
{
    const CAMediaTiming timing { .duration = 2 };
    EXPECT_THAT(timing.progress({ 2, -1 }), Optional(1.0));
    EXPECT_EQ(timing.progress({ 0, -1 }), std::nullopt);
    EXPECT_EQ(timing.secondsUntilEnd({ 1.5, -1 }), 1.5);
    EXPECT_EQ(timing.secondsUntilActive({ 3, -1 }), 1);
}

TEST(CAMediaTimingTest, TellsWhenItBeginsAndEnds)
{
    const CAMediaTiming timing { .duration = 2 };
    EXPECT_EQ(timing.secondsUntilActive({ -3, 1 }), 3);
    EXPECT_EQ(timing.secondsUntilActive({ -3, 2 }), 1.5);
    EXPECT_LE(timing.secondsUntilActive({ 1, 1 }), 0);
    EXPECT_EQ(timing.secondsUntilEnd({ 0.5, 1 }), 1.5);
    EXPECT_EQ(timing.secondsUntilEnd({ 0.5, 3 }), 0.5);
    EXPECT_EQ(timing.secondsUntilEnd({ 0.5, 0 }), infinity);
    EXPECT_EQ(timing.secondsUntilActive({ -3, 0 }), infinity);
}

TEST(CAMediaTimingTest, ManyRunsEndExactlyWhereTheLastOneEnds)
{
    for (int hundredths = 1; hundredths < 60; ++hundredths)
        for (int count = 1; count < 20; ++count) {
            CAMediaTiming timing { .duration = hundredths / 100.0, .fillMode = kCAFillModeBoth };
            timing.repeatDuration = hundredths * count / 100.0;
            EXPECT_THAT(timing.progress({ 100, 1 }), Optional(1.0)) << hundredths << " for " << count;
            timing.repeatDuration = 0;
            timing.repeatCount = count;
            EXPECT_THAT(timing.progress({ 100, 1 }), Optional(1.0)) << hundredths << " times " << count;
            timing.autoreverses = true;
            EXPECT_THAT(timing.progress({ 100, 1 }), Optional(0.0)) << hundredths << " back " << count;
        }
}

TEST(CAMediaTimingTest, OnALineThatStandsStillASumThatMeansAnEndIsThatEnd)
{
    const CAMediaTiming timing { .beginTime = 0.1, .duration = 0.7 };
    ASSERT_GT(0.8 - 0.1, 0.7);
    EXPECT_THAT(timing.progress(timing.local({ 0.8, 0 })), Optional(1.0));
    EXPECT_THAT(timing.progress(timing.local({ 0.3 - 0.2, 0 })), Optional(0.0));
    EXPECT_EQ(timing.progress(timing.local({ 0.8001, 0 })), std::nullopt);
}

TEST(CAMediaTimingTest, NumbersThatAreNoneMeanOver)
{
    const CAMediaTiming timing { .duration = 2, .fillMode = kCAFillModeForwards };
    const double notANumber = std::nan("");
    EXPECT_EQ(timing.phase({ notANumber, 1 }), CAMediaTiming::Phase::After);
    EXPECT_EQ(timing.secondsUntilEnd({ notANumber, 1 }), 0);
    for (const double time : { notANumber, infinity, -infinity, 1e308, -1e308 }) {
        const auto progress = timing.progress({ time, 1 });
        EXPECT_TRUE(!progress || !(*progress < 0 || *progress > 1)) << time;
    }
    const CAMediaTiming endless { .duration = 2, .repeatCount = 3.4028235e38 };
    EXPECT_THAT(
        endless.progress({ 1e300, 1 }), Optional(::testing::AllOf(::testing::Ge(0), ::testing::Le(1))));
}

} // namespace
