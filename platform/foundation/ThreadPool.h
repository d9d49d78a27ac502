// The global concurrent queue: a fixed number of worker threads, started with the first work.
#pragma once

#include "platform/foundation/Executor.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

class ThreadPool final : public DispatchQueue {
public:
    explicit ThreadPool(unsigned threadCount = defaultThreadCount());
    ~ThreadPool() override; // stops it

    void async(std::function<void()> work) override;
    // Finishes what is running, drops what has not started and what comes later, joins the threads.
    void stop();

    // One a core, at least two: one long job must not hold up the others.
    static unsigned defaultThreadCount();

private:
    void runWorker();

    const unsigned m_threadCount;
    std::mutex m_mutex;
    std::condition_variable m_available;
    std::deque<std::function<void()>> m_work;
    std::vector<std::thread> m_threads;
    bool m_stopping = false;
};
