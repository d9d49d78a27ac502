#include "platform/foundation/ThreadPool.h"

#include <gmock/gmock.h>

#include <atomic>
#include <barrier>
#include <latch>
#include <memory>

TEST(ThreadPoolTest, RunsWorkOffTheSubmittingThread)
{
    ThreadPool pool(1);
    std::latch done(1);
    std::thread::id worker;
    pool.async([&] {
        worker = std::this_thread::get_id();
        done.count_down();
    });
    done.wait();
    EXPECT_NE(worker, std::this_thread::get_id());
}

TEST(ThreadPoolTest, RunsWorkInParallel)
{
    ThreadPool pool(2);
    std::barrier meeting(2); // neither job ends unless both run at once
    std::latch done(2);
    for (int job = 0; job < 2; ++job)
        pool.async([&] {
            meeting.arrive_and_wait();
            done.count_down();
        });
    done.wait();
}

TEST(ThreadPoolTest, RunsTheTenThousandthJob)
{
    ThreadPool pool(4);
    constexpr int count = 10000;
    std::latch done(count);
    std::atomic<int> runs = 0;
    for (int job = 0; job < count; ++job)
        pool.async([&] {
            ++runs;
            done.count_down();
        });
    done.wait();
    EXPECT_EQ(runs, count);
}

TEST(ThreadPoolTest, WorkMaySubmitWork)
{
    ThreadPool pool(1);
    std::latch done(1);
    pool.async([&] { pool.async([&] { done.count_down(); }); });
    done.wait();
}

TEST(ThreadPoolTest, WhatWorkHoldsMaySubmitWorkWhenItEnds)
{
    struct Submitter {
        Submitter(ThreadPool& usedPool, std::latch& toCountDown)
            : pool(usedPool)
            , done(toCountDown)
        {
        }
        ~Submitter()
        {
            pool.async([&latch = done] { latch.count_down(); });
        }
        ThreadPool& pool;
        std::latch& done;
    };
    std::latch done(1);
    ThreadPool pool(1);
    pool.async([submitter = std::make_shared<Submitter>(pool, done)] { (void)submitter; });
    done.wait();
}

TEST(ThreadPoolTest, FinishesWhatRunsAndDropsWhatHasNotStarted)
{
    std::latch started(1);
    std::latch mayEnd(1);
    std::atomic<bool> hasFinished = false;
    std::atomic<bool> hasRunTheDropped = false;
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> weak = held;
    std::thread release;
    {
        ThreadPool pool(1);
        pool.async([&] {
            started.count_down();
            mayEnd.wait();
            hasFinished = true;
        });
        started.wait();
        // The only worker is busy; what comes now waits behind it.
        pool.async([&, owned = std::move(held)] {
            (void)owned;
            hasRunTheDropped = true;
        });
        release = std::thread([&] {
            while (!weak.expired()) // the pool has dropped it, so it is ending
                std::this_thread::yield();
            mayEnd.count_down();
        });
    }
    release.join();
    EXPECT_TRUE(hasFinished);
    EXPECT_FALSE(hasRunTheDropped);
}

TEST(ThreadPoolTest, DropsWhatComesAfterItWasStopped)
{
    ThreadPool pool(2);
    std::latch done(1);
    pool.async([&] { done.count_down(); });
    done.wait();
    pool.stop();
    const auto held = std::make_shared<int>();
    pool.async([held] { ADD_FAILURE() << "run after the stop"; });
    EXPECT_EQ(held.use_count(), 1);
    pool.stop(); // again
}

TEST(ThreadPoolTest, HasAtLeastTwoThreadsByDefault) { EXPECT_GE(ThreadPool::defaultThreadCount(), 2u); }
