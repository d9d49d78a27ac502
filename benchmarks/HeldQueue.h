// A queue that keeps its work until it is asked to run it.
#pragma once

#include "platform/foundation/Executor.h"

#include <deque>

class HeldQueue final : public DispatchQueue {
public:
    void async(std::function<void()> work) override { m_work.push_back(std::move(work)); }
    bool isEmpty() const { return m_work.empty(); }
    // Runs the work in order, with what it adds on the way.
    void run()
    {
        while (!m_work.empty()) {
            const auto work = std::move(m_work.front());
            m_work.pop_front();
            work();
        }
    }

private:
    std::deque<std::function<void()>> m_work;
};
