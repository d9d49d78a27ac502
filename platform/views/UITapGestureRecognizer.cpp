#include "platform/views/UITapGestureRecognizer.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/DepartedView.h"
#include "platform/views/InteractionConstants.h"
#include "platform/views/UIView.h"

#include <QLineF>

#include <algorithm>

UITapGestureRecognizer::~UITapGestureRecognizer() { stopWaiting(); }

void UITapGestureRecognizer::setNumberOfTapsRequired(int taps)
{
    NSParameterAssert(taps >= 1, "UITapGestureRecognizer", "taps >= 1");
    m_tapsRequired = std::max(taps, 1);
}

void UITapGestureRecognizer::setNumberOfTouchesRequired(int touches)
{
    NSParameterAssert(touches >= 1, "UITapGestureRecognizer", "touches >= 1");
    m_touchesRequired = std::max(touches, 1);
}

CGPoint UITapGestureRecognizer::locationInView(const UIView* view) const
{
    if (m_lastFingers.size() < 2)
        return UIGestureRecognizer::locationInView(view);
    CGPoint sum;
    for (const Finger& finger : m_lastFingers)
        sum += finger.start;
    const CGPoint middle = sum / static_cast<double>(m_lastFingers.size());
    return DepartedView::pointFromWindow(middle, view);
}

void UITapGestureRecognizer::touchesBegan(const UITouches& began, UIEvent&)
{
    const CGPoint location = began.front()->locationInView(nullptr);
    if (m_lifted > 0 || numberOfTouches() > m_touchesRequired || !isNearLastTap(location))
        return setState(UIGestureRecognizerState::Failed);
    stopWaiting();
    m_fingers.push_back({ began.front().get(), location });
}

bool UITapGestureRecognizer::isNearLastTap(const CGPoint& location) const
{
    return m_taps == 0 || std::any_of(m_lastFingers.begin(), m_lastFingers.end(), [&](const Finger& finger) {
        return QLineF(finger.start, location).length() <= InteractionConstants::multipleTapDistance;
    });
}

void UITapGestureRecognizer::touchesMoved(const UITouches& moved, UIEvent&)
{
    const UITouch& touch = *moved.front();
    for (const Finger& finger : m_fingers) {
        if (finger.touch != &touch)
            continue;
        const double distance = QLineF(finger.start, touch.locationInView(nullptr)).length();
        if (distance > InteractionConstants::tapMaximumMovement)
            return setState(UIGestureRecognizerState::Failed);
    }
}

void UITapGestureRecognizer::touchesEnded(const UITouches& ended, UIEvent& event)
{
    touchesMoved(ended, event);
    if (state() != UIGestureRecognizerState::Possible)
        return;
    if (static_cast<int>(m_fingers.size()) < m_touchesRequired)
        return setState(UIGestureRecognizerState::Failed);
    if (++m_lifted == m_touchesRequired)
        tapEnded();
}

void UITapGestureRecognizer::tapEnded()
{
    m_lastFingers = std::exchange(m_fingers, {});
    m_lifted = 0;
    if (++m_taps < m_tapsRequired)
        waitForNextTap();
    else
        setState(UIGestureRecognizerState::Ended);
}

void UITapGestureRecognizer::reset()
{
    stopWaiting();
    m_taps = 0;
    m_lifted = 0;
    m_fingers.clear();
    m_lastFingers.clear();
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
