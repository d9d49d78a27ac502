#include "platform/views/UIGestureRecognizer.h"

#include "platform/views/DepartedView.h"
#include "platform/views/TouchDispatcher.h"
#include "platform/views/UIWindow.h"

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
        abandon({});
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
    const auto keepAlive = shared_from_this();
    const auto asked = delegate();
    return !asked || asked->gestureRecognizerShouldReceiveTouch(*this, touch);
}

bool UIGestureRecognizer::watches(const UITouch& touch) const
{
    return std::any_of(
        m_touches.begin(), m_touches.end(), [&](const auto& watched) { return watched.get() == &touch; });
}

void UIGestureRecognizer::deliver(Key, const std::shared_ptr<UITouch>& touch, UIEvent& event)
{
    const auto keepAlive = shared_from_this();
    const bool begins = touch->phase() == UITouchPhase::Began;
    if (begins) {
        if (!m_view || !m_enabled || isOver() || isWaiting())
            return;
        m_touches.push_back(touch);
    }
    if (!watches(*touch))
        return;
    m_lastCentroid = centroid();
    if (isOver())
        return;
    if (!m_view || !m_view->isTouchable())
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

void UIGestureRecognizer::forgetTouch(Key, const UITouch& touch)
{
    if (!watches(touch))
        return;
    if (isWaiting()) {
        m_goneTouches.push_back(&touch);
        return;
    }
    const auto keepAlive = shared_from_this();
    ignoreTouch(touch);
    const bool foundNothing = m_touches.empty() && m_state == UIGestureRecognizerState::Possible;
    if (foundNothing && !waitsForMoreTouches())
        setState(UIGestureRecognizerState::Failed);
    becomePossibleWhenFree();
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

void UIGestureRecognizer::abandon(Key)
{
    const auto keepAlive = shared_from_this();
    UIView::performWithoutAnimation([this] { setState(UIGestureRecognizerState::Cancelled); });
    m_touches.clear();
    m_goneTouches.clear();
    becomePossibleWhenFree();
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

bool UIGestureRecognizer::isUndecided() const
{
    return m_state == UIGestureRecognizerState::Possible && (!m_touches.empty() || waitsForMoreTouches());
}

void UIGestureRecognizer::setState(UIGestureRecognizerState state)
{
    using enum UIGestureRecognizerState;
    if (isOver() || state == Possible)
        return;
    const auto keepAlive = shared_from_this();
    if (m_state != Possible) {
        if (state == Failed)
            state = Cancelled;
        enter(state == Began ? Changed : state);
    } else if (state == Failed || state == Cancelled) {
        enter(Failed);
    } else {
        begin(state == Changed ? Began : state);
    }
}

void UIGestureRecognizer::begin(UIGestureRecognizerState state)
{
    const bool waitsAlready = isWaiting();
    m_wish = state;
    if (waitsAlready)
        return;
    waitForRequirements();
    if (isWaiting()) // those who were asked may have stopped it
        beginWhenFree();
}

void UIGestureRecognizer::beginWhenFree()
{
    if (!m_waitsFor.empty())
        return;
    const UIGestureRecognizerState state = m_wish;
    const bool allowed = mayBegin();
    if (isWaiting())
        enter(allowed ? state : UIGestureRecognizerState::Failed);
}

void UIGestureRecognizer::enter(UIGestureRecognizerState state)
{
    using enum UIGestureRecognizerState;
    const bool begins = m_state == Possible && state != Failed;
    m_state = state;
    m_wish = Possible;
    m_waitsFor.clear();
    TouchDispatcher* const road = dispatcher();
    if (road && state == Failed)
        road->didFail(*this);
    if (road && begins)
        road->didRecognize(*this);
    if (begins || state == Failed)
        tellDependents();
    if (state != Failed && m_state == state)
        sendActions();
    for (const UITouch* gone : std::exchange(m_goneTouches, {}))
        ignoreTouch(*gone);
    becomePossibleWhenFree();
}

bool UIGestureRecognizer::mayBegin()
{
    if (!m_enabled || !m_view || !m_view->isTouchable())
        return false;
    const auto required = requirements();
    if (std::any_of(
            required.begin(), required.end(), [](const auto& other) { return other->isRecognized(); }))
        return false;
    const auto asked = delegate();
    if (asked && !asked->gestureRecognizerShouldBegin(*this))
        return false;
    if (!viewsLetBegin())
        return false;
    const TouchDispatcher* const road = dispatcher();
    return road && road->mayRecognize(*this);
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

TouchDispatcher* UIGestureRecognizer::dispatcher() const
{
    UIWindow* const window = m_view ? m_view->window() : nullptr;
    return window ? &window->touches() : nullptr;
}

void UIGestureRecognizer::sendActions()
{
    const UIGestureRecognizerState sent = m_state;
    const auto told = m_targets;
    for (const Target& target : told) {
        const bool isStillOne = std::any_of(m_targets.begin(), m_targets.end(),
            [&](const Target& current) { return current.serial == target.serial; });
        if (isStillOne && m_state == sent)
            target.action.perform(this);
    }
}

void UIGestureRecognizer::becomePossibleWhenFree()
{
    if (!isOver() || !m_touches.empty())
        return;
    m_state = UIGestureRecognizerState::Possible;
    reset();
}
