#include "tests/support/ManualExecutor.h"

#include <utility>

void ManualQueue::async(std::function<void()> work)
{
    const std::lock_guard lock(m_mutex);
    m_work.push_back(std::move(work));
}

std::size_t ManualQueue::size() const
{
    const std::lock_guard lock(m_mutex);
    return m_work.size();
}

bool ManualQueue::runOne()
{
    std::function<void()> work;
    {
        const std::lock_guard lock(m_mutex);
        if (m_work.empty())
            return false;
        work = std::move(m_work.front());
        m_work.pop_front();
    }
    work();
    return true;
}

void ManualQueue::runAll()
{
    while (runOne()) { }
}

void ManualExecutor::runAll()
{
    while (m_global.runOne() || m_main.runOne()) { }
}
