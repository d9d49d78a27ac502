// A clock that tests move by hand. In force from construction to destruction.
//
// advance() stops at each timer and, while frames are asked for, at each frame on the way, so
// everything happens at the time it would on a screen.
#pragma once

#include "platform/foundation/Scheduler.h"

class ManualScheduler final : public Scheduler {
public:
    ManualScheduler();
    ~ManualScheduler() override;

    NSDate currentDate() const override { return m_startDate.addMSecs(qRound64(m_time * 1000)); }
    void setCurrentDate(const NSDate& date) { m_startDate = date.addMSecs(-qRound64(m_time * 1000)); }

    // Moves the clock on, running timers at their due times and frames every frameInterval.
    void advance(double seconds);
    // Runs what is due at this very moment, without frames.
    void runDue() { runDueTimers(); }
    // Runs a frame now if one is asked for; answers whether one was.
    bool runFrameIfRequested();

    double frameInterval() const { return m_frameInterval; }
    void setFrameInterval(double interval) { m_frameInterval = interval; }
    int framesRun() const { return m_framesRun; }
    // Called at every stop of advance(), after its timers: where a test drains its queues.
    void setAfterTurn(std::function<void()> work) { m_afterTurn = std::move(work); }

protected:
    double clockNow() const override { return m_time; }
    void wakeAt(double) override { }
    void wakeForFrame() override { }

private:
    double m_time = 0;
    double m_frameInterval = 1.0 / 60;
    double m_lastFrame = 0;
    int m_framesRun = 0;
    NSDate m_startDate;
    std::function<void()> m_afterTurn;
    Scheduler* m_previous;
};
