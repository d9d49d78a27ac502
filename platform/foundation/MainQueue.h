// The main queue: work submitted from any thread, run in order on the main thread.
//
// Whoever owns the event loop gives a wake-up function and calls drain() when it fires.
#pragma once

#include "platform/foundation/Executor.h"

#include <mutex>
#include <thread>
#include <vector>

class MainQueue final : public DispatchQueue {
public:
    // The wake-up is called from the submitting thread, once for each time the queue stops being empty.
    explicit MainQueue(std::function<void()> wake);

    void async(std::function<void()> work) override;
    // Runs what had been submitted before the call; work that this work submits waits for the next call.
    void drain();
    bool isEmpty() const;
    bool isMainThread() const { return std::this_thread::get_id() == m_thread; }

private:
    const std::thread::id m_thread = std::this_thread::get_id();
    const std::function<void()> m_wake;
    mutable std::mutex m_mutex;
    std::vector<std::function<void()>> m_work;
};
