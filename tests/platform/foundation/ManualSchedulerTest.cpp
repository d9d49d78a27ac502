#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(ManualSchedulerTest, IsInForceWhileItLivesAndThenGivesWayToTheOneBefore)
{
    ManualScheduler outer;
    {
        ManualScheduler inner;
        EXPECT_EQ(&Scheduler::current(), &inner);
    }
    EXPECT_EQ(&Scheduler::current(), &outer);
}

TEST(ManualSchedulerTest, MovesTheDateWithTheClock)
{
    ManualScheduler scheduler;
    const NSDate start = scheduler.currentDate();
    scheduler.advance(90.5);
    EXPECT_EQ(start.msecsTo(scheduler.currentDate()), 90500);
    const NSDate date(QDate(2000, 2, 29), QTime(23, 59), Qt::UTC);
    scheduler.setCurrentDate(date);
    EXPECT_EQ(scheduler.currentDate(), date);
}

TEST(ManualSchedulerTest, RunsFramesAtTheirIntervalWhileTheyAreAskedFor)
{
    ManualScheduler scheduler;
    scheduler.setFrameInterval(0.25);
    scheduler.setFrameHandler([&] { scheduler.requestFrame(); });
    scheduler.advance(10);
    EXPECT_EQ(scheduler.framesRun(), 0);
    scheduler.requestFrame();
    scheduler.advance(1);
    EXPECT_EQ(scheduler.framesRun(), 5); // one at once, then four
    EXPECT_TRUE(scheduler.runFrameIfRequested());
    EXPECT_EQ(scheduler.framesRun(), 6);
}

TEST(ManualSchedulerTest, RunsNoFrameThatNobodyAskedFor)
{
    ManualScheduler scheduler;
    EXPECT_FALSE(scheduler.runFrameIfRequested());
    scheduler.advance(1);
    EXPECT_EQ(scheduler.framesRun(), 0);
}

TEST(ManualSchedulerTest, StopsAtEachTimerAndCallsTheAfterTurnWork)
{
    ManualScheduler scheduler;
    std::vector<double> stops;
    scheduler.setAfterTurn([&] { stops.push_back(scheduler.now()); });
    scheduler.schedule(0.25, [] {});
    scheduler.schedule(0.5, [] {});
    scheduler.advance(1);
    EXPECT_THAT(stops, ElementsAre(0.25, 0.5, 1));
}

TEST(ManualSchedulerTest, TimersThatAreAddedOnTheWayRunOnTheWay)
{
    ManualScheduler scheduler;
    std::vector<double> times;
    scheduler.schedule(0.25, [&] { scheduler.schedule(0.25, [&] { times.push_back(scheduler.now()); }); });
    scheduler.advance(1);
    EXPECT_THAT(times, ElementsAre(0.5));
}

TEST(ManualSchedulerTest, ATimerThatReArmsItselfWithoutDelayDoesNotHoldIt)
{
    ManualScheduler scheduler;
    int runs = 0;
    std::function<void()> again = [&] {
        if (++runs < 1000000)
            scheduler.schedule(0, again);
    };
    scheduler.schedule(0, again);
    scheduler.advance(0);
    EXPECT_LT(runs, 10);
}

TEST(ManualSchedulerTest, DropsItsTimersWhileItIsStillInForce)
{
    struct Asker {
        explicit Asker(bool& answer)
            : hadScheduler(answer)
        {
        }
        ~Asker() { hadScheduler = Scheduler::hasCurrent(); }
        bool& hadScheduler;
    };
    bool hadScheduler = false;
    {
        ManualScheduler scheduler;
        scheduler.schedule(1, [asker = std::make_shared<Asker>(hadScheduler)] { (void)asker; });
    }
    EXPECT_TRUE(hadScheduler);
}
