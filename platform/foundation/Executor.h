// Where work runs: the main queue and the global concurrent queue.
//
// Both are handed in, so that a test runs them by hand and in any order it likes. Submitting is safe
// from every thread; a queue never runs work inside the call that submits it.
#pragma once

#include <functional>

class DispatchQueue {
public:
    virtual ~DispatchQueue();
    // dispatch_async — runs the work later, after what was submitted before it has been started.
    virtual void async(std::function<void()> work) = 0;
};

class Executor {
public:
    Executor(DispatchQueue& mainQueue, DispatchQueue& globalQueue);
    ~Executor();
    Executor(const Executor&) = delete;
    Executor& operator=(const Executor&) = delete;

    // The executor in force; to ask without one is a programming error that ends the process.
    static Executor& current();
    static void setCurrent(Executor*);

    // dispatch_get_main_queue
    DispatchQueue& mainQueue() { return m_mainQueue; }
    // dispatch_get_global_queue, default priority
    DispatchQueue& globalQueue() { return m_globalQueue; }

private:
    DispatchQueue& m_mainQueue;
    DispatchQueue& m_globalQueue;
};

// dispatch_after on the main queue: the current scheduler keeps the time. Main thread only.
void dispatchAfterOnMainQueue(double delay, std::function<void()> work);
