#include "platform/host/HostExecutor.h"

#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <thread>

namespace {

TEST(HostExecutorTest, RunsMainQueueWorkOnTheMainThreadInItsOrder)
{
    HostExecutor executor;
    QEventLoop loop;
    std::vector<int> order;
    Executor::current().mainQueue().async([&] { order.push_back(1); });
    Executor::current().mainQueue().async([&] {
        order.push_back(2);
        loop.quit();
    });
    EXPECT_TRUE(order.empty()) << "never inside the call";
    QTimer::singleShot(5000, &loop, [&] { loop.exit(1); });
    EXPECT_EQ(loop.exec(), 0);
    EXPECT_EQ(order, (std::vector { 1, 2 }));
}

TEST(HostExecutorTest, BringsResultsFromTheGlobalQueueBackToTheMainThread)
{
    HostExecutor executor;
    QEventLoop loop;
    std::thread::id workedOn;
    std::thread::id cameBackOn;
    Executor::current().globalQueue().async([&] {
        workedOn = std::this_thread::get_id();
        Executor::current().mainQueue().async([&] {
            cameBackOn = std::this_thread::get_id();
            loop.quit();
        });
    });
    QTimer::singleShot(5000, &loop, [&] { loop.exit(1); });
    EXPECT_EQ(loop.exec(), 0);
    EXPECT_NE(workedOn, std::this_thread::get_id());
    EXPECT_EQ(cameBackOn, std::this_thread::get_id());
}

TEST(HostExecutorTest, GoesWithWorkStillWaiting)
{
    const auto held = std::make_shared<int>(7);
    {
        HostExecutor executor;
        Executor::current().mainQueue().async([held] { ADD_FAILURE() << "the loop never ran"; });
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST(HostExecutorTest, StaysInForceUntilItsLastJobsHaveEnded)
{
    const auto jobCount = static_cast<std::ptrdiff_t>(ThreadPool::defaultThreadCount());
    std::latch allRun(jobCount);
    std::latch isEnding(1);
    std::atomic<std::ptrdiff_t> submitted = 0;
    {
        HostExecutor executor;
        DispatchQueue& globalQueue = Executor::current().globalQueue();
        for (std::ptrdiff_t job = 0; job < jobCount; ++job)
            globalQueue.async([&] {
                allRun.count_down();
                isEnding.wait();
                Executor::current().mainQueue().async([] {});
                ++submitted;
            });
        // Waits behind the others, so that it is dropped when the end has begun.
        const std::shared_ptr<void> dropped(nullptr, [&](void*) { isEnding.count_down(); });
        globalQueue.async([dropped] {});
        allRun.wait();
    }
    EXPECT_EQ(submitted, jobCount);
}

} // namespace
