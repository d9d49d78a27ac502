// Turns what the mouse, the fingers and the wheel do to a window into touches and scrolls of the views.
//
// The mouse is a finger while its left button is down. What the views do in a touch may end the window;
// nothing of this object is used after the call that delivers. Main thread only.
#pragma once

#include "platform/views/TouchDispatcher.h"

#include <functional>

class QEvent;
class QMouseEvent;
class QTouchEvent;
class QWheelEvent;

class HostInput {
public:
    // Where touches go; null while nobody takes any.
    using Receiver = std::function<TouchDispatcher*()>;
    // From the window's coordinates to points of the screen.
    using Conversion = std::function<CGPoint(const CGPoint&)>;

    HostInput(Receiver receiver, Conversion conversion);

    // Answers whether the event was one of input.
    bool handle(QEvent& event);

private:
    void handleMouse(const QMouseEvent& event);
    void handleTouches(const QTouchEvent& event);
    void handleWheel(const QWheelEvent& event);
    void cancelTouches();

    Receiver m_receiver;
    Conversion m_conversion;
};
