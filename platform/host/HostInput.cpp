#include "platform/host/HostInput.h"

#include <QMouseEvent>
#include <QTouchEvent>
#include <QWheelEvent>

#include <utility>

namespace {

constexpr TouchID mouseFinger { -1 }; // real fingers count from 0
constexpr double pointsPerNotch = 48; // three lines of a text, as desktops scroll
constexpr double anglePerNotch = 120; // in Qt's eighths of a degree

TouchID fingerOf(const QEventPoint& point) { return TouchID { point.id() }; }

UIScrollPhase phaseOf(const QWheelEvent& event)
{
    switch (event.phase()) {
    case Qt::ScrollBegin:
        return UIScrollPhase::Began;
    case Qt::ScrollUpdate:
        return UIScrollPhase::Changed;
    case Qt::ScrollEnd:
        return UIScrollPhase::Ended;
    case Qt::ScrollMomentum:
        return UIScrollPhase::Momentum;
    case Qt::NoScrollPhase:
        break;
    }
    return UIScrollPhase::Step;
}

} // namespace

HostInput::HostInput(Receiver receiver, Conversion conversion)
    : m_receiver(std::move(receiver))
    , m_conversion(std::move(conversion))
{
}

bool HostInput::handle(QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: // Qt's name for the second press
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        handleMouse(static_cast<const QMouseEvent&>(event));
        return true;
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        handleTouches(static_cast<const QTouchEvent&>(event));
        event.accept(); // else Qt makes mouse events of it and sends no more touches
        return true;
    case QEvent::Wheel:
        handleWheel(static_cast<const QWheelEvent&>(event));
        return true;
    case QEvent::TouchCancel:
        cancelTouches();
        return true;
    // The window lost the mouse or the screen: no release will come.
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
    case QEvent::FocusOut:
    case QEvent::Hide:
        cancelTouches();
        return false; // the window has work of its own with these
    default:
        return false;
    }
}

void HostInput::handleMouse(const QMouseEvent& event)
{
    TouchDispatcher* const touches = m_receiver();
    if (!touches || event.source() != Qt::MouseEventNotSynthesized)
        return; // a synthesised one repeats a finger
    const CGPoint location = m_conversion(event.position());
    if (event.type() == QEvent::MouseMove) {
        if (event.buttons() & Qt::LeftButton)
            touches->touchMoved(mouseFinger, location);
    } else if (event.button() != Qt::LeftButton) {
        return;
    } else if (event.type() == QEvent::MouseButtonRelease) {
        touches->touchEnded(mouseFinger, location);
    } else {
        touches->touchBegan(mouseFinger, location);
    }
}

void HostInput::handleTouches(const QTouchEvent& event)
{
    for (const QEventPoint& point : event.points()) {
        TouchDispatcher* const touches = m_receiver(); // asked anew: a touch may close the window
        if (!touches)
            return;
        const CGPoint location = m_conversion(point.position());
        if (point.state() == QEventPoint::Pressed)
            touches->touchBegan(fingerOf(point), location);
        else if (point.state() == QEventPoint::Updated)
            touches->touchMoved(fingerOf(point), location);
        else if (point.state() == QEventPoint::Released)
            touches->touchEnded(fingerOf(point), location);
    }
}

void HostInput::handleWheel(const QWheelEvent& event)
{
    TouchDispatcher* const touches = m_receiver();
    if (!touches)
        return;
    UIScrollEvent scroll;
    scroll.location = m_conversion(event.position());
    // A touch pad tells how far its fingers went, a wheel how far it was turned.
    scroll.delta = event.hasPixelDelta() ? m_conversion(event.pixelDelta())
                                         : CGPoint(event.angleDelta()) * (pointsPerNotch / anglePerNotch);
    scroll.phase = phaseOf(event);
    touches->scroll(scroll);
}

void HostInput::cancelTouches()
{
    if (TouchDispatcher* const touches = m_receiver())
        touches->cancelAllTouches();
}
