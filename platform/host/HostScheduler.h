// The clock of a real screen.
//
// Media time is the monotonic clock, counted from the scheduler's making. Timers wake through the event
// loop; frames come one refresh interval apart at the closest, on the display's own wake-up: whoever owns
// the window gives the requester, asks the display for an update in it and calls displayFrame() when the
// update comes. Main thread only.
#pragma once

#include "platform/foundation/Scheduler.h"

#include <QTimer>

#include <chrono>

class HostScheduler final : public Scheduler {
public:
    HostScheduler();
    ~HostScheduler() override;

    NSDate currentDate() const override;

    // Called when a frame is due; displayFrame() is expected soon after.
    void setFrameRequester(std::function<void()> requester) { m_requester = std::move(requester); }
    // The time between two refreshes of the display, in seconds.
    double refreshInterval() const { return m_refreshInterval; }
    void setRefreshInterval(double seconds);
    // A display that waits for its refresh by itself keeps the pace; then only a runaway is held back.
    void setPacedByDisplay(bool paced) { m_pacedByDisplay = paced; }

    // Runs the frame that was asked for; nothing when none was, or when it is too early for it. Answers
    // whether one ran.
    bool displayFrame();
    // When the frame that displayFrame() last ran was due, in media time.
    double lastFrameDueTime() const { return m_lastFrameDueTime; }
    // Media time as it runs, also inside a turn. Safe from any thread.
    double runningTime() const { return clockNow(); }

protected:
    double clockNow() const override;
    void wakeAt(double time) override;
    void wakeForFrame() override;

private:
    using Clock = std::chrono::steady_clock;

    void startTimer(QTimer&, double time) const;
    void askForFrame();

    const Clock::time_point m_start = Clock::now();
    std::function<void()> m_requester;
    QTimer m_wakeTimer;
    QTimer m_frameTimer;
    double m_wakeTime = 0; // what m_wakeTimer is set to, while it is active
    double m_refreshInterval = 1.0 / 60;
    double m_lastFrameTime = 0;
    double m_frameDueTime = 0;
    double m_earliestFrameTime = 0;
    double m_lastFrameDueTime = 0;
    bool m_pacedByDisplay = false;
};
