#include "tests/support/RealEventLoop.h"

#include <QEventLoop>

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>

RealScheduler::RealScheduler()
{
    m_clock.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { runDueTimers(); });
}

void RealScheduler::wakeAt(double time)
{
    if (!std::isfinite(time))
        return m_timer.stop();
    const double milliseconds = std::ceil((time - clockNow()) * 1000);
    m_timer.start(static_cast<int>(std::clamp(milliseconds, 0.0, 1e6)));
}

RealEventLoop::WakeDescriptor::WakeDescriptor()
    : number(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
}

RealEventLoop::WakeDescriptor::~WakeDescriptor() { close(number); }

RealEventLoop::RealEventLoop()
{
    QObject::connect(&m_wakeNotifier, &QSocketNotifier::activated, &m_wakeNotifier, [this] {
        eventfd_t count = 0;
        eventfd_read(m_wakeDescriptor.number, &count);
        m_mainQueue.drain();
    });
    Scheduler::setCurrent(&m_scheduler);
    Executor::setCurrent(&m_executor);
}

RealEventLoop::~RealEventLoop()
{
    m_threads.stop(); // while the executor is in force: the last jobs may still submit to the main queue
    Executor::setCurrent(nullptr);
    Scheduler::setCurrent(nullptr);
}

void RealEventLoop::wake() { eventfd_write(m_wakeDescriptor.number, 1); }

bool RealEventLoop::runUntil(const std::function<bool()>& condition, double longestSeconds)
{
    const double deadline = seconds() + longestSeconds;
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (condition() || seconds() > deadline)
            loop.quit();
    });
    check.start(1);
    loop.exec();
    return condition();
}
