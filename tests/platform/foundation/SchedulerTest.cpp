#include "platform/foundation/Scheduler.h"

#include "platform/foundation/Executor.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>

#include <limits>

using testing::DoubleNear;
using testing::ElementsAre;

namespace {

class Counter : public NSObject {
public:
    void count() { ++calls; }
    int calls = 0;
};

// Its clock runs on whenever it is read, as a real one does.
class RunningClockScheduler final : public Scheduler {
public:
    using Scheduler::runFrame;
    NSDate currentDate() const override { return {}; }

protected:
    double clockNow() const override { return m_time += 1; }
    void wakeAt(double) override { }
    void wakeForFrame() override { }

private:
    mutable double m_time = 0;
};

class SchedulerTest : public testing::Test {
protected:
    std::function<void()> logging(const std::string& name)
    {
        return [this, name] { log.push_back(name); };
    }

    ManualScheduler scheduler;
    std::vector<std::string> log;
    std::vector<double> times;
};

} // namespace

TEST_F(SchedulerTest, RunsWorkInTheOrderOfDueTimesAndOfCalls)
{
    scheduler.schedule(0.2, logging("late"));
    scheduler.schedule(0.1, logging("first"));
    scheduler.schedule(0.1, logging("second"));
    scheduler.advance(0.15);
    EXPECT_THAT(log, ElementsAre("first", "second"));
    scheduler.advance(0.1);
    EXPECT_THAT(log, ElementsAre("first", "second", "late"));
}

TEST_F(SchedulerTest, NeverRunsWorkInsideTheCallThatSchedulesIt)
{
    scheduler.schedule(0, logging("now"));
    EXPECT_TRUE(log.empty());
    scheduler.runDue();
    EXPECT_THAT(log, ElementsAre("now"));
}

TEST_F(SchedulerTest, ANegativeDelayAndOneThatIsNoNumberCountAsZero)
{
    scheduler.schedule(-5, logging("negative"));
    scheduler.schedule(std::numeric_limits<double>::quiet_NaN(), logging("no number"));
    scheduler.schedule(0.1, logging("later"));
    scheduler.runDue();
    EXPECT_THAT(log, ElementsAre("negative", "no number"));
    scheduler.advance(1);
    EXPECT_THAT(log, ElementsAre("negative", "no number", "later"));
}

TEST_F(SchedulerTest, WorkThatSchedulesItselfAgainWithoutDelayDoesNotHoldTheLoop)
{
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        scheduler.schedule(0, again);
    };
    scheduler.schedule(0, again);
    scheduler.runDue();
    EXPECT_EQ(runs, 1);
    scheduler.runDue();
    EXPECT_EQ(runs, 2);
}

TEST_F(SchedulerTest, ARepeatingTimerKeepsItsGrid)
{
    scheduler.scheduleRepeating(0.1, [&] { times.push_back(scheduler.now()); });
    scheduler.advance(0.35);
    EXPECT_THAT(times, ElementsAre(DoubleNear(0.1, 1e-9), DoubleNear(0.2, 1e-9), DoubleNear(0.3, 1e-9)));
    for (int step = 0; step < 10000; ++step)
        scheduler.advance(0.1);
    EXPECT_NEAR(times.back(), 1000.3, 1e-6);
    EXPECT_EQ(times.size(), 10003u);
}

TEST_F(SchedulerTest, ARepeatingTimerNeedsAPositiveInterval)
{
    AssertionRecorder recorder;
    EXPECT_EQ(scheduler.scheduleRepeating(0, logging("never")), Scheduler::TimerID::None);
    EXPECT_EQ(scheduler.scheduleRepeating(std::numeric_limits<double>::quiet_NaN(), logging("never")),
        Scheduler::TimerID::None);
    const NSString message = QStringLiteral("Invalid parameter not satisfying: interval > 0");
    EXPECT_THAT(recorder.messages(), ElementsAre(message, message));
}

TEST_F(SchedulerTest, ARepeatingTimerMayCancelItself)
{
    Scheduler::TimerID timer {};
    int runs = 0;
    timer = scheduler.scheduleRepeating(0.1, [&] {
        if (++runs == 2)
            scheduler.cancel(timer);
    });
    scheduler.advance(1);
    EXPECT_EQ(runs, 2);
}

TEST_F(SchedulerTest, ACancelledTimerDoesNotRunEvenWhenItIsDueInTheSameTurn)
{
    Scheduler::TimerID second {};
    scheduler.schedule(0.1, [&] { scheduler.cancel(second); });
    second = scheduler.schedule(0.1, logging("second"));
    scheduler.advance(1);
    EXPECT_TRUE(log.empty());
    scheduler.cancel(second);
    scheduler.cancel(Scheduler::TimerID::None);
}

TEST_F(SchedulerTest, WhatWorkHoldsMayUseTheSchedulerWhenItEnds)
{
    struct Canceller {
        explicit Canceller(Scheduler& used)
            : scheduler(used)
        {
        }
        ~Canceller()
        {
            scheduler.cancel(scheduler.schedule(1, [] {}));
        }
        Scheduler& scheduler;
    };
    const auto timer
        = scheduler.schedule(1, [canceller = std::make_shared<Canceller>(scheduler)] { (void)canceller; });
    scheduler.cancel(timer);
    scheduler.schedule(0.1, logging("still there"));
    scheduler.advance(2);
    EXPECT_THAT(log, ElementsAre("still there"));
}

TEST_F(SchedulerTest, NowStandsStillWhileTimersRun)
{
    scheduler.schedule(0.1, [&] { times.push_back(scheduler.now()); });
    scheduler.schedule(0.2, [&] { times.push_back(scheduler.now()); });
    scheduler.advance(1);
    EXPECT_THAT(times, ElementsAre(0.1, 0.2));
}

TEST(SchedulerClockTest, AFrameAndItsTimersShareOneTime)
{
    RunningClockScheduler scheduler;
    std::vector<double> times;
    scheduler.schedule(0, [&] { times.push_back(scheduler.now()); });
    scheduler.setFrameHandler([&] {
        times.push_back(scheduler.now());
        times.push_back(scheduler.now());
    });
    scheduler.requestFrame();
    scheduler.runFrame();
    ASSERT_EQ(times.size(), 3u);
    EXPECT_EQ(times[0], times[1]);
    EXPECT_EQ(times[1], times[2]);
    EXPECT_GT(scheduler.now(), times[2]);
}

TEST_F(SchedulerTest, TheClockDoesNotRunBackwardsAfterATurnInsideATurn)
{
    scheduler.schedule(0.1, [&] {
        scheduler.advance(1);
        times.push_back(scheduler.now());
    });
    scheduler.advance(0.1);
    EXPECT_NEAR(times.at(0), 1.1, 1e-9);
}

TEST_F(SchedulerTest, ManyRequestsMakeOneFrame)
{
    int frames = 0;
    scheduler.setFrameHandler([&] { ++frames; });
    scheduler.requestFrame();
    scheduler.requestFrame();
    EXPECT_TRUE(scheduler.isFrameRequested());
    scheduler.advance(1);
    EXPECT_EQ(frames, 1);
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(SchedulerTest, AFrameAskedForInsideAFrameIsTheNextOne)
{
    int frames = 0;
    scheduler.setFrameHandler([&] {
        if (++frames < 3)
            scheduler.requestFrame();
    });
    scheduler.requestFrame();
    scheduler.advance(1);
    EXPECT_EQ(frames, 3);
}

TEST_F(SchedulerTest, AFrameAskedForByATimerOfThisFrameIsThisOne)
{
    int frames = 0;
    scheduler.setFrameHandler([&] { ++frames; });
    scheduler.requestFrame();
    scheduler.schedule(0, [&] { scheduler.requestFrame(); });
    scheduler.runFrameIfRequested();
    EXPECT_EQ(frames, 1);
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(SchedulerTest, TheFrameHandlerMaySetAnotherOne)
{
    scheduler.setFrameHandler([&] {
        scheduler.setFrameHandler(logging("new"));
        log.push_back("old");
    });
    scheduler.requestFrame();
    scheduler.runFrameIfRequested();
    scheduler.requestFrame();
    scheduler.runFrameIfRequested();
    EXPECT_THAT(log, ElementsAre("old", "new"));
}

TEST_F(SchedulerTest, ADelayedPerformCallsOnce)
{
    const auto counter = make<Counter>();
    scheduler.performAfterDelay({ counter, &Counter::count }, 0.15);
    scheduler.advance(0.1);
    EXPECT_EQ(counter->calls, 0);
    scheduler.advance(1);
    EXPECT_EQ(counter->calls, 1);
}

TEST_F(SchedulerTest, CancellingTakesBackEveryEqualPerformAndNoOther)
{
    const auto counter = make<Counter>();
    const auto other = make<Counter>();
    scheduler.performAfterDelay({ counter, &Counter::count }, 0.15);
    scheduler.performAfterDelay({ counter, &Counter::count }, 0.4);
    scheduler.performAfterDelay({ other, &Counter::count }, 0.4);
    EXPECT_EQ(scheduler.pendingTimerCount(), 3u);
    scheduler.cancelPreviousPerforms({ counter, &Counter::count });
    EXPECT_EQ(scheduler.pendingTimerCount(), 1u);
    scheduler.advance(1);
    EXPECT_EQ(counter->calls, 0);
    EXPECT_EQ(other->calls, 1);
    EXPECT_EQ(scheduler.pendingTimerCount(), 0u);
}

TEST_F(SchedulerTest, ADelayedPerformDoesNotKeepItsTarget)
{
    auto counter = make<Counter>();
    const std::weak_ptr<Counter> weak = counter;
    scheduler.performAfterDelay({ counter, &Counter::count }, 0.15);
    counter.reset();
    EXPECT_TRUE(weak.expired());
    scheduler.advance(1);
}

TEST_F(SchedulerTest, DispatchAfterRunsOnTheSchedulersTime)
{
    dispatchAfterOnMainQueue(0.1, logging("done"));
    scheduler.advance(0.09);
    EXPECT_TRUE(log.empty());
    scheduler.advance(0.01);
    EXPECT_THAT(log, ElementsAre("done"));
}

TEST(SchedulerDeathTest, AskingWithoutASchedulerEndsTheProcess)
{
    ASSERT_FALSE(Scheduler::hasCurrent());
    EXPECT_DEATH(Scheduler::current(), "No scheduler is in force.");
}
