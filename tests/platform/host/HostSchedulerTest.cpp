#include "platform/host/HostScheduler.h"

#include "tests/support/AssertionRecorder.h"

#include <QEventLoop>

#include <gtest/gtest.h>

namespace {

// The host's scheduler runs on the real clock; the delays here are a few milliseconds.
class HostSchedulerTest : public testing::Test {
protected:
    HostSchedulerTest()
    {
        scheduler.setRefreshInterval(0.005);
        scheduler.setFrameRequester([this] { scheduler.displayFrame(); });
    }

    // Runs the event loop until the work calls it off; gives up after some seconds.
    void runLoop()
    {
        QTimer::singleShot(5000, &loop, [this] { loop.exit(1); });
        EXPECT_EQ(loop.exec(), 0) << "nothing came";
    }

    HostScheduler scheduler;
    QEventLoop loop;
};

TEST_F(HostSchedulerTest, IsInForceWhileItLives) { EXPECT_EQ(&Scheduler::current(), &scheduler); }

TEST_F(HostSchedulerTest, RunsTimersInTheOrderOfTheirTimesAndNeverEarly)
{
    std::vector<int> order;
    const double start = scheduler.now();
    scheduler.schedule(0.004, [&] {
        order.push_back(2);
        EXPECT_GE(scheduler.now(), start + 0.004);
        loop.quit();
    });
    scheduler.schedule(0.002, [&] { order.push_back(1); });
    scheduler.schedule(0, [&] { order.push_back(0); });
    runLoop();
    EXPECT_EQ(order, (std::vector { 0, 1, 2 }));
}

TEST_F(HostSchedulerTest, RunsNoTimerThatWasCancelled)
{
    const auto cancelled = scheduler.schedule(0.001, [] { ADD_FAILURE(); });
    scheduler.schedule(0.003, [&] { loop.quit(); });
    scheduler.cancel(cancelled);
    runLoop();
}

TEST_F(HostSchedulerTest, RunsAFrameForEachRequestAndNoMore)
{
    int frames = 0;
    scheduler.setFrameHandler([&] { ++frames; });
    scheduler.requestFrame();
    scheduler.requestFrame();
    EXPECT_EQ(frames, 0) << "never inside the call that asks";
    scheduler.schedule(0.02, [&] { loop.quit(); });
    runLoop();
    EXPECT_EQ(frames, 1);
    EXPECT_FALSE(scheduler.displayFrame()) << "nobody asked";
}

TEST_F(HostSchedulerTest, KeepsFramesARefreshApart)
{
    std::vector<double> times;
    scheduler.setFrameHandler([&] {
        times.push_back(scheduler.now());
        if (times.size() == 6)
            loop.quit();
        else
            scheduler.requestFrame();
        EXPECT_FALSE(scheduler.displayFrame()) << "too early for the next one";
    });
    scheduler.requestFrame();
    runLoop();
    ASSERT_EQ(times.size(), 6u);
    // Each on the display's grid or later; the first sets the grid.
    EXPECT_GE(times.back() - times.front(), 5 * 0.005 - 0.0025);
}

TEST_F(HostSchedulerTest, TellsWhenAFrameWasDue)
{
    scheduler.setFrameHandler([&] { loop.quit(); });
    const double asked = scheduler.now();
    scheduler.requestFrame();
    runLoop();
    EXPECT_GE(scheduler.lastFrameDueTime(), asked);
    EXPECT_LE(scheduler.lastFrameDueTime(), scheduler.runningTime());
}

TEST_F(HostSchedulerTest, TakesNoRefreshIntervalThatIsNotPositive)
{
    AssertionRecorder recorder;
    scheduler.setRefreshInterval(0);
    EXPECT_EQ(scheduler.refreshInterval(), 0.005);
    EXPECT_EQ(
        recorder.messages(), (std::vector<NSString> { "Invalid parameter not satisfying: seconds > 0" }));
}

TEST_F(HostSchedulerTest, TellsTheDateOnTheWall)
{
    EXPECT_LE(std::abs(scheduler.currentDate().msecsTo(NSDate::currentDateTimeUtc())), 1000);
}

} // namespace
