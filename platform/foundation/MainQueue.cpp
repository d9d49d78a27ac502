#include "platform/foundation/MainQueue.h"

#include <utility>

MainQueue::MainQueue(std::function<void()> wake)
    : m_wake(std::move(wake))
{
}

void MainQueue::async(std::function<void()> work)
{
    bool wasEmpty = false;
    {
        const std::lock_guard lock(m_mutex);
        wasEmpty = m_work.empty();
        m_work.push_back(std::move(work));
    }
    if (wasEmpty)
        m_wake();
}

void MainQueue::drain()
{
    std::vector<std::function<void()>> work;
    {
        const std::lock_guard lock(m_mutex);
        work.swap(m_work);
    }
    for (auto& item : work) {
        item();
        item = nullptr; // what it holds ends with it, not with the whole batch
    }
}

bool MainQueue::isEmpty() const
{
    const std::lock_guard lock(m_mutex);
    return m_work.empty();
}
