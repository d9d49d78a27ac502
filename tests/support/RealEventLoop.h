// The real thing for the few tests that run in real time: a clock, timers, queues and worker threads on
// the event loop of the Qt application that there is. In force from construction to destruction; one at a
// time.
#pragma once

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/Scheduler.h"
#include "platform/foundation/ThreadPool.h"

#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>

class RealScheduler final : public Scheduler {
public:
    RealScheduler();

    NSDate currentDate() const override { return QDateTime::currentDateTimeUtc(); }
    double seconds() const { return clockNow(); }

protected:
    double clockNow() const override { return static_cast<double>(m_clock.nsecsElapsed()) / 1e9; }
    void wakeAt(double time) override;
    void wakeForFrame() override
    {
        QTimer::singleShot(16, &m_timer, [this] { runFrame(); });
    }

private:
    QElapsedTimer m_clock;
    QTimer m_timer;
};

class RealEventLoop {
public:
    RealEventLoop();
    ~RealEventLoop();

    double seconds() const { return m_scheduler.seconds(); }
    // Runs the loop until the condition holds; false when it does not in that time.
    bool runUntil(const std::function<bool()>& condition, double longestSeconds);

private:
    void wake();

    // A descriptor rather than a posted event: the thread sanitizer sees how it orders two threads.
    struct WakeDescriptor {
        WakeDescriptor();
        ~WakeDescriptor();
        const int number;
    };
    const WakeDescriptor m_wakeDescriptor;
    QSocketNotifier m_wakeNotifier { m_wakeDescriptor.number, QSocketNotifier::Read };
    MainQueue m_mainQueue { [this] { wake(); } };
    RealScheduler m_scheduler;
    ThreadPool m_threads;
    Executor m_executor { m_mainQueue, m_threads };
};
