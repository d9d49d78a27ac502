#include "platform/views/TouchDelivery.h"

#include "platform/foundation/Messages.h"
#include "platform/views/UIView.h"

#include <algorithm>

struct TouchDelivery::Entry {
    const std::shared_ptr<UITouch> touch;
    State state = State::Held;
    bool delayElapsed = false; // and offered before
    Scheduler::TimerID delayTimer = Scheduler::TimerID::None;
};

TouchDelivery::TouchDelivery(std::shared_ptr<const GestureArena> arena)
    : m_arena(std::move(arena))
{
}

TouchDelivery::~TouchDelivery() = default;

TouchDelivery::EntryPointer TouchDelivery::find(const UITouch& touch) const
{
    const auto found
        = std::ranges::find_if(m_entries, [&](const auto& entry) { return entry->touch.get() == &touch; });
    return found == m_entries.end() ? nullptr : *found;
}

// A touch that is told late is part of its event, though its finger has left.
std::shared_ptr<UIEvent> TouchDelivery::makeEventWith(const std::shared_ptr<UITouch>& touch) const
{
    UITouches touches;
    for (const auto& entry : m_entries)
        if (entry->state != State::Late || entry->touch == touch)
            touches.push_back(entry->touch);
    if (touch && std::ranges::find(touches, touch) == touches.end())
        touches.push_back(touch);
    return make<UIEvent>(std::move(touches), Scheduler::current().now());
}

// --- Fingers -----------------------------------------------------------------------------------------

void TouchDelivery::add(const std::shared_ptr<UITouch>& touch)
{
    m_entries.push_back(std::make_shared<Entry>(Entry { touch }));
}

void TouchDelivery::offer(const std::shared_ptr<UITouch>& touch)
{
    const auto entry = find(*touch);
    if (!entry || entry->state != State::Held)
        return;
    if (isTakenByAnotherTouch(*entry)) {
        entry->state = State::Withheld;
        return;
    }
    const double delay = contentDelayOf(*touch);
    entry->delayElapsed = delay <= 0;
    if (!entry->delayElapsed) {
        const auto elapse = [weakSelf = weak_from_this(), weak = std::weak_ptr(entry)] {
            const auto self = weakSelf.lock();
            const auto held = weak.lock();
            if (!self || !held)
                return;
            held->delayElapsed = true;
            self->deliverWhenFree(*held);
        };
        entry->delayTimer = Scheduler::current().schedule(delay, elapse);
    }
    deliverWhenFree(*entry);
}

double TouchDelivery::contentDelayOf(const UITouch& touch)
{
    double delay = 0;
    const auto view = touch.view();
    for (const UIView* outer = view ? view->superview() : nullptr; outer; outer = outer->superview())
        delay = std::max(delay, outer->delayForContentTouches());
    return delay;
}

bool TouchDelivery::isTakenByAnotherTouch(const Entry& entry) const
{
    const auto view = entry.touch->view();
    if (!view || view->isMultipleTouchEnabled())
        return false;
    return std::ranges::any_of(m_entries, [&](const auto& other) {
        return other.get() != &entry && other->touch->view() == view
            && (other->state == State::Held || other->state == State::Delivered);
    });
}

void TouchDelivery::touchMoved(const std::shared_ptr<UITouch>& touch)
{
    const KeepAlive keepAlive(*this);
    const auto entry = find(*touch);
    if (!entry)
        return;
    withholdIfUntouchable(*entry);
    if (entry->state == State::Delivered)
        tellView(*entry, UITouchPhase::Moved);
}

void TouchDelivery::touchFinished(const std::shared_ptr<UITouch>& touch)
{
    const KeepAlive keepAlive(*this);
    const auto entry = find(*touch);
    if (!entry)
        return;
    withholdIfUntouchable(*entry);
    Scheduler::current().cancel(entry->delayTimer);
    if (entry->state == State::Held && touch->phase() == UITouchPhase::Ended) {
        entry->state = State::Late; // so short that its view has not heard of it yet
        deliverLate(entry);
        return;
    }
    if (std::exchange(entry->state, State::Withheld) == State::Delivered)
        tellView(*entry, touch->phase());
    std::erase(m_entries, entry);
}

// --- The views ---------------------------------------------------------------------------------------

void TouchDelivery::tellView(const Entry& entry, UITouchPhase phase)
{
    const auto touch = entry.touch;
    const auto view = touch->view();
    if (!view)
        return;
    // A view may hear of a phase that is not the finger's own: late, or because the touch was taken.
    const UITouchPhase fingerPhase = touch->phase();
    const auto event = makeEventWith(touch);
    touch->setPhase({}, phase);
    switch (phase) {
    case UITouchPhase::Began:
        view->touchesBegan({ touch }, *event);
        break;
    case UITouchPhase::Moved:
    case UITouchPhase::Stationary:
        view->touchesMoved({ touch }, *event);
        break;
    case UITouchPhase::Ended:
        view->touchesEnded({ touch }, *event);
        break;
    case UITouchPhase::Cancelled:
        view->touchesCancelled({ touch }, *event);
        break;
    }
    touch->setPhase({}, fingerPhase);
}

void TouchDelivery::deliverWhenFree(Entry& entry)
{
    if (entry.state != State::Held || !entry.delayElapsed || m_arena->holdsBack(*entry.touch))
        return;
    entry.state = State::Delivered;
    tellView(entry, UITouchPhase::Began);
}

void TouchDelivery::deliverLate(const EntryPointer& entry)
{
    if (m_arena->holdsBack(*entry->touch) || std::erase(m_entries, entry) == 0)
        return;
    tellView(*entry, UITouchPhase::Began);
    tellView(*entry, UITouchPhase::Ended);
}

UITouches TouchDelivery::touchesIn(const UIView& root) const
{
    UITouches touches;
    for (const auto& entry : m_entries) {
        const auto view = entry->touch->view();
        if (view && root.containsView(*view))
            touches.push_back(entry->touch);
    }
    return touches;
}

void TouchDelivery::withhold(const UITouch& touch)
{
    const KeepAlive keepAlive(*this);
    const auto entry = find(touch);
    if (!entry)
        return;
    if (entry->state == State::Late)
        std::erase(m_entries, entry);
    else
        withhold(*entry);
}

void TouchDelivery::withhold(Entry& entry)
{
    if (std::exchange(entry.state, State::Withheld) == State::Delivered)
        tellView(entry, UITouchPhase::Cancelled);
}

// Setters that make a view untouchable have done this already; a layer may be hidden without them.
void TouchDelivery::withholdIfUntouchable(Entry& entry)
{
    const auto view = entry.touch->view();
    if (view && !view->isTouchable())
        withhold(entry);
}

void TouchDelivery::forgetLate()
{
    std::erase_if(m_entries, [](const auto& entry) { return entry->state == State::Late; });
}

// --- From the arena ----------------------------------------------------------------------------------

void TouchDelivery::gestureTakesTouches(const UIGestureRecognizer& recognizer)
{
    const KeepAlive keepAlive(*this);
    const auto all = m_entries;
    for (const auto& entry : all) {
        const auto invited = entry->touch->gestureRecognizers();
        const bool takesPart
            = std::ranges::any_of(invited, [&](const auto& one) { return one.get() == &recognizer; });
        if (entry->state == State::Late && takesPart)
            std::erase(m_entries, entry);
        else if (entry->state != State::Late && recognizer.watches(*entry->touch))
            withhold(*entry);
    }
}

void TouchDelivery::gestureWasDecided()
{
    const KeepAlive keepAlive(*this);
    const auto all = m_entries;
    for (const auto& entry : all) {
        if (entry->state == State::Late)
            deliverLate(entry);
        else
            deliverWhenFree(*entry);
    }
}
