// Fingers for tests: they are delivered as those of the host are, and time passes as they move.
#pragma once

#include "platform/views/UIWindow.h"
#include "tests/support/ManualScheduler.h"

class TouchScript {
public:
    // The window is looked up with every touch; it may be another one by then.
    TouchScript(ManualScheduler& scheduler, const std::shared_ptr<UIWindow>& window)
        : m_scheduler(scheduler)
        , m_window(window)
    {
    }

    void down(const CGPoint& point, int finger = 0)
    {
        m_places[finger] = point;
        m_window->touches().touchBegan(TouchID { finger }, point);
    }
    void moveTo(const CGPoint& point, int finger = 0)
    {
        m_places[finger] = point;
        m_window->touches().touchMoved(TouchID { finger }, point);
    }
    // Lifts the finger where it is.
    void up(int finger = 0) { m_window->touches().touchEnded(TouchID { finger }, m_places[finger]); }
    void cancel(int finger = 0) { m_window->touches().touchCancelled(TouchID { finger }); }
    void wait(double seconds) { m_scheduler.advance(seconds); }

    // A short touch.
    void tap(const CGPoint& point)
    {
        down(point);
        wait(0.05);
        up();
    }
    // Moves evenly from where the finger is, a step each display refresh.
    void glideTo(const CGPoint& point, double seconds, int finger = 0)
    {
        const CGPoint start = m_places[finger];
        const int steps = std::max(qRound(seconds / m_scheduler.frameInterval()), 1);
        for (int step = 1; step <= steps; ++step) {
            wait(seconds / steps);
            moveTo(start + (point - start) * step / steps, finger);
        }
    }
    // Down, along, and up while moving.
    void drag(const CGPoint& from, const CGPoint& to, double seconds)
    {
        down(from);
        glideTo(to, seconds);
        up();
    }
    bool wheel(const CGPoint& point, const CGPoint& delta)
    {
        return m_window->touches().scroll({ .location = point, .delta = delta });
    }

private:
    ManualScheduler& m_scheduler;
    const std::shared_ptr<UIWindow>& m_window;
    std::map<int, CGPoint> m_places;
};
