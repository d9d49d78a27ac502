#include "platform/foundation/ThreadPool.h"

#include <algorithm>
#include <utility>

ThreadPool::ThreadPool(unsigned threadCount)
    : m_threadCount(std::max(threadCount, 1u))
{
}

ThreadPool::~ThreadPool() { stop(); }

void ThreadPool::stop()
{
    {
        std::deque<std::function<void()>> dropped; // ends after the lock: what it holds may submit work
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        dropped.swap(m_work);
    }
    m_available.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
    m_threads.clear();
}

void ThreadPool::async(std::function<void()> work)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopping)
            return;
        m_work.push_back(std::move(work));
        if (m_threads.size() < m_threadCount)
            m_threads.emplace_back([this] { runWorker(); });
    }
    m_available.notify_one();
}

void ThreadPool::runWorker()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_available.wait(lock, [this] { return m_stopping || !m_work.empty(); });
        if (m_stopping)
            return;
        auto work = std::move(m_work.front());
        m_work.pop_front();
        lock.unlock();
        work();
        work = nullptr; // what it holds may submit work when it ends
        lock.lock();
    }
}

unsigned ThreadPool::defaultThreadCount() { return std::max(std::thread::hardware_concurrency(), 2u); }
