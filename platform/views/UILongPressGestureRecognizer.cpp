#include "platform/views/UILongPressGestureRecognizer.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <QLineF>

#include <cmath>

UILongPressGestureRecognizer::~UILongPressGestureRecognizer()
{
    if (m_timer != Scheduler::TimerID::None && Scheduler::hasCurrent())
        Scheduler::current().cancel(m_timer);
}

void UILongPressGestureRecognizer::setMinimumPressDuration(double seconds)
{
    const bool isDuration = std::isfinite(seconds) && seconds >= 0;
    NSParameterAssert(isDuration, "UILongPressGestureRecognizer", "seconds is finite and >= 0");
    if (isDuration)
        m_minimumPressDuration = seconds;
}

void UILongPressGestureRecognizer::setAllowableMovement(double points)
{
    NSParameterAssert(points >= 0, "UILongPressGestureRecognizer", "points >= 0");
    if (points >= 0)
        m_allowableMovement = points;
}

void UILongPressGestureRecognizer::touchesBegan(const UITouches& began, UIEvent&)
{
    if (numberOfTouches() > 1) {
        if (state() == UIGestureRecognizerState::Possible)
            setState(UIGestureRecognizerState::Failed);
        else
            ignoreTouch(*began.front());
        return;
    }
    m_start = began.front()->locationInView(nullptr);
    if (m_minimumPressDuration == 0)
        return setState(UIGestureRecognizerState::Began);
    m_timer = Scheduler::current().schedule(m_minimumPressDuration, [weakRecognizer = weakSelf(this)] {
        if (const auto recognizer = weakRecognizer.lock())
            recognizer->setState(UIGestureRecognizerState::Began);
    });
}

void UILongPressGestureRecognizer::touchesMoved(const UITouches& moved, UIEvent&)
{
    const double distance = QLineF(m_start, moved.front()->locationInView(nullptr)).length();
    if (state() != UIGestureRecognizerState::Possible)
        setState(UIGestureRecognizerState::Changed);
    else if (distance > m_allowableMovement)
        setState(UIGestureRecognizerState::Failed);
}

void UILongPressGestureRecognizer::touchesEnded(const UITouches&, UIEvent&)
{
    setState(state() == UIGestureRecognizerState::Possible ? UIGestureRecognizerState::Failed
                                                           : UIGestureRecognizerState::Ended);
}

void UILongPressGestureRecognizer::reset()
{
    Scheduler::current().cancel(std::exchange(m_timer, Scheduler::TimerID::None));
}
