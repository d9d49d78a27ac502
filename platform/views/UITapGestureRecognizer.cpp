#include "platform/views/UITapGestureRecognizer.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/InteractionConstants.h"
#include "platform/views/UITouch.h"

#include <QLineF>

UITapGestureRecognizer::~UITapGestureRecognizer() { stopWaiting(); }

void UITapGestureRecognizer::setNumberOfTapsRequired(int taps)
{
    NSParameterAssert(taps >= 1, "UITapGestureRecognizer", "taps >= 1");
    m_tapsRequired = std::max(taps, 1);
}

void UITapGestureRecognizer::touchesBegan(const UITouches& began, UIEvent&)
{
    const CGPoint location = began.front()->locationInView(nullptr);
    const bool secondFinger = numberOfTouches() > 1;
    const bool elsewhere
        = m_taps > 0 && QLineF(m_start, location).length() > InteractionConstants::multipleTapDistance;
    if (secondFinger || elsewhere)
        return setState(UIGestureRecognizerState::Failed);
    stopWaiting();
    m_start = location;
}

void UITapGestureRecognizer::touchesMoved(const UITouches& moved, UIEvent&)
{
    const double distance = QLineF(m_start, moved.front()->locationInView(nullptr)).length();
    if (distance > InteractionConstants::tapMaximumMovement)
        setState(UIGestureRecognizerState::Failed);
}

void UITapGestureRecognizer::touchesEnded(const UITouches& ended, UIEvent& event)
{
    touchesMoved(ended, event);
    if (state() != UIGestureRecognizerState::Possible)
        return;
    if (++m_taps < m_tapsRequired)
        return waitForNextTap();
    setState(UIGestureRecognizerState::Ended);
}

void UITapGestureRecognizer::reset()
{
    stopWaiting();
    m_taps = 0;
}

void UITapGestureRecognizer::waitForNextTap()
{
    m_waiting = Scheduler::current().schedule(
        InteractionConstants::multipleTapInterval, [weakRecognizer = weakSelf(this)] {
            if (const auto recognizer = weakRecognizer.lock())
                recognizer->setState(UIGestureRecognizerState::Failed);
        });
}

void UITapGestureRecognizer::stopWaiting()
{
    const auto timer = std::exchange(m_waiting, Scheduler::TimerID::None);
    if (timer != Scheduler::TimerID::None && Scheduler::hasCurrent())
        Scheduler::current().cancel(timer);
}
