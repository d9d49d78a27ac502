#include "platform/views/UIGestureRecognizer.h"

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/DepartedView.h"
#include "platform/views/UIView.h"

#include <algorithm>

UIGestureRecognizer::~UIGestureRecognizer() = default;

void UIGestureRecognizer::addTarget(const Action& action)
{
    const bool isKnown = std::any_of(
        m_targets.begin(), m_targets.end(), [&](const Target& target) { return target.action == action; });
    if (!isKnown)
        m_targets.push_back({ action, ++m_lastSerial });
}

void UIGestureRecognizer::removeTarget(const Action& action)
{
    std::erase_if(m_targets, [&](const Target& target) { return target.action == action; });
}

void UIGestureRecognizer::setEnabled(bool enabled)
{
    if (std::exchange(m_enabled, enabled) && !enabled)
        withdraw();
}

void UIGestureRecognizer::requireGestureRecognizerToFail(const std::shared_ptr<UIGestureRecognizer>& other)
{
    const bool isAnother = other && other.get() != this;
    NSParameterAssert(isAnother, "UIGestureRecognizer", "other is another recogniser");
    if (!isAnother)
        return;
    const auto known = requirements();
    if (std::ranges::find(known, other) == known.end())
        m_requirements.push_back(other);
}

UIGestureRecognizers UIGestureRecognizer::requirements() const
{
    UIGestureRecognizers alive;
    for (const auto& held : m_requirements)
        if (auto other = held.lock())
            alive.push_back(std::move(other));
    return alive;
}

void UIGestureRecognizer::setView(Key, UIView* view) { m_view = view; }

CGPoint UIGestureRecognizer::locationInView(const UIView* view) const
{
    return DepartedView::pointFromWindow(m_lastCentroid, view);
}

CGPoint UIGestureRecognizer::centroid() const
{
    CGPoint sum;
    for (const auto& touch : m_touches)
        sum += touch->locationInView(nullptr);
    return m_touches.empty() ? m_lastCentroid : sum / static_cast<double>(m_touches.size());
}

CGPoint UIGestureRecognizer::centroidOnScreen() const
{
    CGPoint sum;
    int count = 0;
    for (const auto& touch : m_touches) {
        if (touch->phase() == UITouchPhase::Ended || touch->phase() == UITouchPhase::Cancelled)
            continue;
        sum += touch->locationInView(nullptr);
        ++count;
    }
    return count == 0 ? m_lastCentroid : sum / count;
}

// --- Touches -----------------------------------------------------------------------------------------

bool UIGestureRecognizer::shouldReceive(Key, UITouch& touch)
{
    if (!m_enabled)
        return false;
    const KeepAlive keepAlive(*this);
    const auto asked = delegate();
    return !asked || asked->gestureRecognizerShouldReceiveTouch(*this, touch);
}

bool UIGestureRecognizer::watches(const UITouch& touch) const
{
    return std::ranges::any_of(m_touches, [&](const auto& watched) { return watched.get() == &touch; });
}

void UIGestureRecognizer::watch(
    Key, const std::shared_ptr<UITouch>& touch, const std::weak_ptr<GestureReferee>& referee)
{
    m_touches.push_back(touch);
    m_referee = referee;
}

void UIGestureRecognizer::receive(Key, const std::shared_ptr<UITouch>& touch, UIEvent& event)
{
    if (!watches(*touch))
        return;
    const KeepAlive keepAlive(*this);
    m_lastCentroid = centroid();
    if (isOver())
        return;
    if (!m_view || !m_view->isTouchable()) // a layer may be hidden without its view
        return setState(UIGestureRecognizerState::Cancelled);
    switch (touch->phase()) {
    case UITouchPhase::Began:
        return touchesBegan({ touch }, event);
    case UITouchPhase::Moved:
    case UITouchPhase::Stationary:
        return touchesMoved({ touch }, event);
    case UITouchPhase::Ended:
        return touchesEnded({ touch }, event);
    case UITouchPhase::Cancelled:
        return touchesCancelled({ touch }, event);
    }
}

void UIGestureRecognizer::ignoreTouch(const UITouch& touch)
{
    std::erase_if(m_touches, [&](const auto& watched) { return watched.get() == &touch; });
    m_lastCentroid = centroid();
}

void UIGestureRecognizer::touchesCancelled(const UITouches&, UIEvent&)
{
    setState(UIGestureRecognizerState::Cancelled);
}

void UIGestureRecognizer::withdraw()
{
    const KeepAlive keepAlive(*this);
    if (const auto referee = m_referee.lock())
        referee->gestureWithdraws(*this);
}

// --- States ------------------------------------------------------------------------------------------

bool UIGestureRecognizer::isOver() const
{
    using enum UIGestureRecognizerState;
    return m_state == Ended || m_state == Cancelled || m_state == Failed;
}

bool UIGestureRecognizer::isRecognized() const
{
    using enum UIGestureRecognizerState;
    return m_state == Began || m_state == Changed || m_state == Ended;
}

void UIGestureRecognizer::setState(UIGestureRecognizerState state)
{
    using enum UIGestureRecognizerState;
    const auto referee = m_referee.lock();
    if (!referee || isOver() || state == Possible)
        return;
    const KeepAlive keepAlive(*this);
    const bool isUndecided = m_state == Possible;
    if (isUndecided && state == Cancelled)
        state = Failed;
    else if (isUndecided && state == Changed)
        state = Began;
    else if (!isUndecided && state == Failed)
        state = Cancelled;
    else if (!isUndecided && state == Began)
        state = Changed;
    referee->gestureReports(*this, state);
}

bool UIGestureRecognizer::mayBegin(Key)
{
    if (!m_enabled || !m_view || !m_view->isTouchable())
        return false;
    const auto asked = delegate();
    return (!asked || asked->gestureRecognizerShouldBegin(*this)) && viewsLetBegin();
}

bool UIGestureRecognizer::viewsLetBegin()
{
    const auto touches = m_touches;
    for (const auto& touch : touches) {
        auto view = touch->view();
        while (view) {
            if (!view->gestureRecognizerShouldBegin(*this))
                return false;
            UIView* const outer = view.get() == m_view ? nullptr : view->superview();
            view = outer ? std::static_pointer_cast<UIView>(outer->shared_from_this()) : nullptr;
        }
    }
    return true;
}

std::uint64_t UIGestureRecognizer::enter(Key, UIGestureRecognizerState state)
{
    m_state = state;
    return ++m_changes;
}

void UIGestureRecognizer::sendActions(Key, std::uint64_t change)
{
    const KeepAlive keepAlive(*this);
    const auto told = m_targets;
    for (const Target& target : told) {
        const bool isStillOne = std::ranges::any_of(
            m_targets, [&](const Target& current) { return current.serial == target.serial; });
        if (isStillOne && m_changes == change)
            target.action.perform(this);
    }
}

void UIGestureRecognizer::becomePossible(Key)
{
    const KeepAlive keepAlive(*this);
    m_state = UIGestureRecognizerState::Possible;
    ++m_changes;
    m_referee.reset();
    reset();
}
