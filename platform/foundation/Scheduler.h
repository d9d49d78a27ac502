// The one clock: now, timers, delayed performs, frames.
//
// Everything that moves asks the current scheduler. On a screen it follows the display; in a test it
// is moved by hand, so that a fade of 0.3 s takes no time and is exact. Subclasses only supply the
// clock and the wake-ups. Times are seconds; now() stands still while timers or a frame are run.
// Main thread only.
#pragma once

#include "platform/foundation/Action.h"

#include <cstdint>
#include <functional>
#include <map>
#include <unordered_map>
#include <utility>

class Scheduler {
public:
    enum class TimerID : std::uint64_t { None = 0 };

    Scheduler() = default;
    virtual ~Scheduler();
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    // The scheduler in force; to ask without one is a programming error that ends the process.
    static Scheduler& current();
    static bool hasCurrent();
    static void setCurrent(Scheduler*);

    // Media time: starts anywhere, never runs backwards, fixed for the length of a turn.
    double now() const;
    // The date on the wall. Safe from any thread.
    virtual NSDate currentDate() const = 0;

    // Runs the work once, after the delay (a negative one counts as 0), in order of due times; equal due
    // times in the order of the calls. Never from inside this call.
    TimerID schedule(double delay, std::function<void()> work);
    // Runs the work every interval (> 0) seconds, first after one interval, on a grid that does not drift.
    TimerID scheduleRepeating(double interval, std::function<void()> work);
    // An unknown or finished timer is no error.
    void cancel(TimerID);

    // performSelector:withObject:afterDelay: — also while the user scrolls.
    void performAfterDelay(const Action&, double delay);
    // Cancels every delayed perform of an equal action.
    void cancelPreviousPerforms(const Action&);
    // Timers and performs that wait, a repeating one counted once.
    std::size_t pendingTimerCount() const { return m_timers.size(); }

    // Asks for a frame at the next refresh of the display. Asking again before it comes changes nothing.
    void requestFrame();
    bool isFrameRequested() const { return m_frameRequested; }
    // What a frame does: touches, constraints, layout, display, the frame list.
    void setFrameHandler(std::function<void()> handler) { m_frameHandler = std::move(handler); }

protected:
    // The clock, in seconds, as it runs.
    virtual double clockNow() const = 0;
    // Asks to be woken at a media time, or earlier than before; infinity cancels the request.
    virtual void wakeAt(double time) = 0;
    // Asks to be woken for a frame.
    virtual void wakeForFrame() = 0;

    // Called by the subclass when a wake-up comes: fixes now() and runs what is due.
    void runDueTimers();
    // Called by the subclass at the display's refresh: runs due timers, then the frame handler.
    void runFrame();
    // The due time of the earliest timer, or infinity.
    double nextDueTime() const;
    // Drops all timers and performs: what a subclass does before it goes, while it is still in force.
    void cancelAll();

private:
    struct Timer {
        double dueTime;
        double interval; // 0 for a timer that fires once
        std::function<void()> work;
    };
    using Key = std::pair<double, TimerID>; // due time first: the map is the order of firing

    class Turn;
    TimerID add(double dueTime, double interval, std::function<void()> work);
    void fire(TimerID);
    void runTimersOfTurn();

    std::map<Key, Timer> m_timers;
    std::unordered_map<TimerID, double> m_dueTimes;
    std::vector<std::pair<Action, TimerID>> m_performs;
    std::function<void()> m_frameHandler;
    std::uint64_t m_lastID = 0;
    double m_turnTime = 0;
    int m_turnDepth = 0;
    bool m_frameRequested = false;
};
