#include "platform/controls/UIControl.h"

#include "platform/foundation/Messages.h"
#include "platform/views/InteractionConstants.h"
#include "platform/views/UITouch.h"

// --- Targets -----------------------------------------------------------------------------------------

void UIControl::addTarget(const Action& action, UIControlEvents events)
{
    const auto known = std::find_if(m_registrations.begin(), m_registrations.end(),
        [&](const Registration& registration) { return registration.action == action; });
    if (known == m_registrations.end())
        m_registrations.push_back({ action, events, ++m_lastSerial });
    else
        known->events = known->events | events;
}

void UIControl::removeTarget(const Action& action, UIControlEvents events)
{
    for (Registration& registration : m_registrations)
        if (registration.action == action)
            registration.events = registration.events & ~events;
    std::erase_if(m_registrations,
        [](const Registration& registration) { return registration.events == UIControlEvents {}; });
}

void UIControl::sendActionsForControlEvents(UIControlEvents events)
{
    const KeepAlive keepAlive(*this);
    const auto hears = [events](const Registration& registration) {
        return (registration.events & events) != UIControlEvents {};
    };
    const auto told = m_registrations;
    for (const Registration& registration : told) {
        const bool stillHears
            = std::any_of(m_registrations.begin(), m_registrations.end(), [&](const Registration& current) {
                  return current.serial == registration.serial && hears(current);
              });
        if (hears(registration) && stillHears)
            registration.action.perform(this);
    }
}

// --- State -------------------------------------------------------------------------------------------

UIControlState UIControl::state() const
{
    UIControlState state = UIControlState::Normal;
    if (m_highlighted)
        state = state | UIControlState::Highlighted;
    if (!m_enabled)
        state = state | UIControlState::Disabled;
    if (m_selected)
        state = state | UIControlState::Selected;
    return state;
}

void UIControl::setEnabled(bool enabled)
{
    const KeepAlive keepAlive(*this); // none while it is being made
    m_enabled = enabled;
    if (!enabled)
        letGoOfTouch();
    touchabilityDidChange();
}

void UIControl::setHighlighted(bool highlighted) { m_highlighted = highlighted; }

void UIControl::setSelected(bool selected) { m_selected = selected; }

// --- Tracking ----------------------------------------------------------------------------------------

void UIControl::touchesBegan(const UITouches& touches, UIEvent& event)
{
    if (!m_enabled || m_tracking)
        return;
    const KeepAlive keepAlive(*this);
    m_tracking = true;
    m_touchInside = true;
    m_touch = touches.front();
    const bool begins = beginTrackingWithTouch(*touches.front(), event);
    if (!begins)
        m_tracking = false;
    if (m_tracking)
        setHighlighted(true);
    if (m_tracking)
        sendActionsForControlEvents(UIControlEvents::TouchDown);
}

void UIControl::touchesMoved(const UITouches& touches, UIEvent& event)
{
    if (!follows(touches))
        return;
    const KeepAlive keepAlive(*this);
    UITouch& touch = *touches.front();
    const bool continues = continueTrackingWithTouch(touch, event);
    if (m_tracking && !continues) {
        m_tracking = false;
        setHighlighted(false);
    }
    if (m_tracking)
        setTouchInside(isNear(touch));
    if (m_tracking)
        sendActionsForControlEvents(
            m_touchInside ? UIControlEvents::TouchDragInside : UIControlEvents::TouchDragOutside);
}

bool UIControl::follows(const UITouches& touches) const
{
    return m_tracking && touches.front() == m_touch.lock();
}

bool UIControl::isNear(const UITouch& touch) const
{
    const double slack = InteractionConstants::controlTouchSlack;
    const CGPoint location = touch.locationInView(this);
    return pointInside(location) || bounds().adjusted(-slack, -slack, slack, slack).contains(location);
}

void UIControl::setTouchInside(bool inside)
{
    if (std::exchange(m_touchInside, inside) == inside)
        return;
    setHighlighted(inside);
    if (m_tracking)
        sendActionsForControlEvents(
            inside ? UIControlEvents::TouchDragEnter : UIControlEvents::TouchDragExit);
}

void UIControl::touchesEnded(const UITouches& touches, UIEvent& event)
{
    if (!follows(touches))
        return;
    const KeepAlive keepAlive(*this);
    UITouch& touch = *touches.front();
    m_touchInside = isNear(touch);
    m_tracking = false;
    endTrackingWithTouch(touch, event);
    setHighlighted(false);
    if (!m_enabled)
        sendActionsForControlEvents(UIControlEvents::TouchCancel); // disabled by one of the two
    else if (m_touchInside)
        sendActionsForControlEvents(UIControlEvents::TouchUpInside);
    else
        sendActionsForControlEvents(UIControlEvents::TouchUpOutside);
}

void UIControl::touchesCancelled(const UITouches& touches, UIEvent&)
{
    if (follows(touches))
        letGoOfTouch();
}

void UIControl::letGoOfTouch()
{
    if (!m_tracking)
        return;
    const KeepAlive keepAlive(*this);
    m_tracking = false;
    cancelTracking();
    setHighlighted(false);
    sendActionsForControlEvents(UIControlEvents::TouchCancel);
}
