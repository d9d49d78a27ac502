// Queues that tests run by hand. In force from construction to destruction.
#pragma once

#include "platform/foundation/Executor.h"

#include <deque>
#include <functional>
#include <mutex>

class ManualQueue final : public DispatchQueue {
public:
    void async(std::function<void()> work) override;
    std::size_t size() const;
    // Runs the oldest work; false when there is none.
    bool runOne();
    // Runs until nothing is left, work that the work submits included.
    void runAll();

private:
    mutable std::mutex m_mutex; // the code under test may submit from a thread of its own
    std::deque<std::function<void()>> m_work;
};

class ManualExecutor {
public:
    ManualExecutor() { Executor::setCurrent(&m_executor); }

    ManualQueue& main() { return m_main; }
    ManualQueue& global() { return m_global; }
    // Runs both queues until neither has work, the global one first.
    void runAll();

private:
    ManualQueue m_main;
    ManualQueue m_global;
    Executor m_executor { m_main, m_global };
};
