#include "platform/foundation/MainQueue.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>

using testing::ElementsAre;

TEST(MainQueueTest, WakesOnceUntilItIsDrained)
{
    int wakes = 0;
    MainQueue queue([&] { ++wakes; });
    queue.async([] {});
    queue.async([] {});
    EXPECT_EQ(wakes, 1);
    EXPECT_FALSE(queue.isEmpty());
    queue.drain();
    EXPECT_TRUE(queue.isEmpty());
    queue.async([] {});
    EXPECT_EQ(wakes, 2);
}

TEST(MainQueueTest, RunsInOrderAndLeavesNewWorkToTheNextTime)
{
    int wakes = 0;
    MainQueue queue([&] { ++wakes; });
    std::vector<int> log;
    queue.async([&] {
        log.push_back(1);
        queue.async([&] { log.push_back(3); });
    });
    queue.async([&] { log.push_back(2); });
    queue.drain();
    EXPECT_THAT(log, ElementsAre(1, 2));
    EXPECT_EQ(wakes, 2);
    queue.drain();
    EXPECT_THAT(log, ElementsAre(1, 2, 3));
}

TEST(MainQueueTest, WhatWorkHoldsEndsBeforeTheNextWorkRuns)
{
    MainQueue queue([] {});
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> weak = held;
    bool wasGone = false;
    queue.async([owned = std::move(held)] { (void)owned; });
    queue.async([&] { wasGone = weak.expired(); });
    queue.drain();
    EXPECT_TRUE(wasGone);
}

TEST(MainQueueTest, KnowsTheThreadThatMadeIt)
{
    const MainQueue queue([] {});
    bool isMainElsewhere = true;
    std::thread([&] { isMainElsewhere = queue.isMainThread(); }).join();
    EXPECT_TRUE(queue.isMainThread());
    EXPECT_FALSE(isMainElsewhere);
}

TEST(MainQueueTest, TakesWorkFromManyThreadsAndLosesNone)
{
    std::atomic<int> wakes = 0;
    MainQueue queue([&] { ++wakes; });
    int runs = 0; // touched by this thread alone
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int index = 0; index < 2500; ++index)
                queue.async([&] { ++runs; });
        });
    while (runs < 5000)
        queue.drain();
    for (std::thread& thread : threads)
        thread.join();
    queue.drain();
    EXPECT_EQ(runs, 10000);
    EXPECT_GE(wakes, 1);
}
