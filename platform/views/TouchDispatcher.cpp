#include "platform/views/TouchDispatcher.h"

#include "platform/foundation/Messages.h"
#include "platform/graphics/FiniteNumbers.h"
#include "platform/views/FarEdges.h"
#include "platform/views/UIWindow.h"

#include <algorithm>

TouchDispatcher::TouchDispatcher(UIWindow& window)
    : m_window(window)
{
    m_arena->setObserver(m_delivery);
}

TouchDispatcher::~TouchDispatcher() = default;

std::shared_ptr<UITouch> TouchDispatcher::find(TouchID id) const
{
    const auto found = std::ranges::find(m_fingers, id, &Finger::id);
    return found == m_fingers.end() ? nullptr : found->touch;
}

// A window has no neighbours: its far edges are its own.
UIView* TouchDispatcher::hitTest(const CGPoint& location) const
{
    return m_window.hitTest(pulledOffFarEdges(m_window.bounds(), location));
}

// --- Fingers -----------------------------------------------------------------------------------------

void TouchDispatcher::touchBegan(TouchID id, const CGPoint& location)
{
    const KeepAlive keepAlive(m_window);
    touchCancelled(id);
    UIView* const hit = isFinite(location) && !m_window.isGoing() ? hitTest(location) : nullptr;
    if (!hit || find(id))
        return; // one of those who were told of the cancelled touch has put the same finger down again
    const auto view = std::static_pointer_cast<UIView>(hit->shared_from_this());
    const auto touch = make<UITouch>(UITouch::Key(), view, location, Scheduler::current().now());
    m_fingers.push_back({ id, touch });
    m_delivery->add(touch);
    m_arena->touchBegan(touch, *m_delivery->makeEvent());
    m_delivery->offer(touch);
}

void TouchDispatcher::touchMoved(TouchID id, const CGPoint& location)
{
    const KeepAlive keepAlive(m_window);
    const auto touch = find(id);
    if (!touch || !isFinite(location) || touch->locationInView(nullptr) == location)
        return;
    touch->change({}, UITouchPhase::Moved, location, Scheduler::current().now());
    m_arena->touchChanged(touch, *m_delivery->makeEvent());
    m_delivery->touchMoved(touch);
}

void TouchDispatcher::touchEnded(TouchID id, const CGPoint& location)
{
    const KeepAlive keepAlive(m_window);
    if (const auto touch = find(id))
        finish(touch, UITouchPhase::Ended, isFinite(location) ? location : touch->locationInView(nullptr));
}

void TouchDispatcher::touchCancelled(TouchID id)
{
    const KeepAlive keepAlive(m_window);
    if (const auto touch = find(id))
        finish(touch, UITouchPhase::Cancelled, touch->locationInView(nullptr));
}

void TouchDispatcher::finish(
    const std::shared_ptr<UITouch>& touch, UITouchPhase phase, const CGPoint& location)
{
    // The finger has left by now, whatever those who are told of it do.
    std::erase_if(m_fingers, [&](const Finger& finger) { return finger.touch == touch; });
    touch->change({}, phase, location, Scheduler::current().now());
    m_arena->touchChanged(touch, *m_delivery->makeEvent());
    m_delivery->touchFinished(touch);
    m_arena->touchLeft(touch);
}

void TouchDispatcher::cancelAllTouches()
{
    const KeepAlive keepAlive(m_window);
    UIView::performWithoutAnimation([this] {
        const auto all = m_fingers;
        for (const Finger& finger : all)
            if (find(finger.id)
                == finger.touch) // and not another one that was put down by those who were told
                touchCancelled(finger.id);
        m_delivery->forgetLate();
        m_arena->withdrawAll();
    });
}

bool TouchDispatcher::scroll(UIScrollEvent event)
{
    const KeepAlive keepAlive(m_window);
    if (!isFinite(event.location) || !isFinite(event.delta) || m_window.isGoing())
        return false;
    event.timestamp = Scheduler::current().now();
    UIView* const hit = hitTest(event.location);
    auto view = hit ? hit->shared_from_this() : nullptr;
    while (view) {
        auto& asked = static_cast<UIView&>(*view);
        if (asked.scrollWheel(event))
            return true;
        view = asked.superview() ? asked.superview()->shared_from_this() : nullptr;
    }
    return false;
}

// --- Views that go -----------------------------------------------------------------------------------

void TouchDispatcher::cancelTouchesIn(UIView& root)
{
    if (!isFollowingTouches())
        return;
    const KeepAlive keepAlive(m_window);
    const KeepAlive rootAlive(root);
    // Who is concerned is settled before anybody is told: then the tree may be another one.
    const UITouches touches = m_delivery->touchesIn(root);
    const UIGestureRecognizers recognizers = m_arena->recognizersIn(root);
    UIView::performWithoutAnimation([&] {
        for (const auto& touch : touches)
            m_delivery->withhold(*touch);
        for (const auto& recognizer : recognizers)
            m_arena->withdraw(*recognizer);
    });
}
