// Fingers on a window of the platform's: their events take the way of the host's, from the window system on.
#pragma once

#include "platform/host/HostInput.h"
#include "tests/support/ManualScheduler.h"

#include <QPointingDevice>
#include <QTest>
#include <QWindow>

class WindowFingers {
public:
    WindowFingers(ManualScheduler& scheduler, HostInput::Receiver receiver)
        : m_scheduler(scheduler)
        , m_window(std::move(receiver))
    {
    }

    void down(const QPoint& point, int finger = 0) { event().press(finger, point, &m_window); }
    void moveTo(const QPoint& point, int finger = 0) { event().move(finger, point, &m_window); }
    void up(const QPoint& point, int finger = 0) { event().release(finger, point, &m_window); }
    void tap(const QPoint& point)
    {
        down(point);
        m_scheduler.advance(0.05);
        up(point);
    }
    // Down, along in steps of a display refresh, and up while moving.
    void drag(const QPoint& from, const QPoint& to, double seconds)
    {
        down(from);
        const int steps = qMax(qRound(seconds / m_scheduler.frameInterval()), 1);
        for (int step = 1; step <= steps; ++step) {
            m_scheduler.advance(seconds / steps);
            moveTo(from + (to - from) * step / steps);
        }
        up(to);
    }

private:
    class EventWindow final : public QWindow {
    public:
        explicit EventWindow(HostInput::Receiver receiver)
            : m_input(std::move(receiver), [](const CGPoint& place) { return place; })
        {
            create();
        }

    private:
        bool event(QEvent* event) override { return m_input.handle(*event) || QWindow::event(event); }

        HostInput m_input;
    };

    QTest::QTouchEventSequence event()
    {
        static QPointingDevice* const device = QTest::createTouchDevice();
        return QTest::touchEvent(&m_window, device);
    }

    ManualScheduler& m_scheduler;
    EventWindow m_window;
};
