#include "platform/host/FrameStatistics.h"

#include <gtest/gtest.h>

namespace {

constexpr double refresh = 1.0 / 60;

TEST(FrameStatisticsTest, HasNothingToTellWithoutFrames)
{
    const FrameStatistics statistics;
    EXPECT_EQ(statistics.framesDrawn(), 0);
    EXPECT_EQ(statistics.median(), 0);
    EXPECT_EQ(statistics.percentile(0.99), 0);
}

TEST(FrameStatisticsTest, TellsMedianAndPercentileWithinItsBuckets)
{
    FrameStatistics statistics;
    for (int frame = 1; frame <= 100; ++frame)
        statistics.addFrame(0, 0, frame * 1e-4, refresh); // 0.1 to 10 ms
    EXPECT_NEAR(statistics.median(), 5e-3, 1e-5);
    EXPECT_NEAR(statistics.percentile(0.99), 9.9e-3, 1e-5);
    EXPECT_NEAR(statistics.percentile(1), 10e-3, 1e-5);
    EXPECT_EQ(statistics.framesDrawn(), 100);
}

TEST(FrameStatisticsTest, TellsTheLongestFrameBeyondItsBuckets)
{
    FrameStatistics statistics;
    statistics.addFrame(0, 0, 0.001, refresh);
    statistics.addFrame(0, 0, 3.5, refresh);
    EXPECT_DOUBLE_EQ(statistics.percentile(1), 3.5);
}

TEST(FrameStatisticsTest, CountsTheRefreshesThatALateFrameMissed)
{
    FrameStatistics statistics;
    statistics.addFrame(1.0, 1.0, 1.0 + 0.5 * refresh, refresh);
    EXPECT_EQ(statistics.droppedFrames(), 0);
    statistics.addFrame(2.0, 2.0, 2.0 + 1.5 * refresh, refresh);
    EXPECT_EQ(statistics.droppedFrames(), 1);
    statistics.addFrame(3.0, 3.0 + 3 * refresh, 3.0 + 3.5 * refresh, refresh);
    EXPECT_EQ(statistics.droppedFrames(), 4);
}

TEST(FrameStatisticsTest, CountsAClockThatStoodStillAsNoTime)
{
    FrameStatistics statistics;
    statistics.addFrame(5, 5, 5, refresh);
    EXPECT_LT(statistics.median(), 1e-5);
    EXPECT_EQ(statistics.droppedFrames(), 0);
}

TEST(FrameStatisticsTest, ReportsOneFigureALine)
{
    FrameStatistics statistics;
    statistics.addFrame(0, 0, 0.002, refresh);
    statistics.setTimeToFirstFrame(0.0415);
    statistics.setPeakMemory(50 * 1024 * 1024);
    statistics.setTexturesUploaded(7);
    EXPECT_EQ(statistics.report().toStdString(),
        "time to first frame: 41.50 ms\n"
        "frames drawn: 1\n"
        "frame time, median: 2.00 ms\n"
        "frame time, 99th percentile: 2.00 ms\n"
        "dropped frames: 0\n"
        "peak memory: 50.0 MiB\n"
        "textures uploaded: 7\n");
}

} // namespace
