#include "platform/views/TouchDispatcher.h"

#include "platform/layers/FiniteNumbers.h"
#include "platform/views/UIGestureRecognizer.h"
#include "platform/views/UIWindow.h"

struct TouchDispatcher::Tracked {
    TouchID id;
    std::shared_ptr<UITouch> touch;
    Delivery delivery = Delivery::Held;
    bool delayElapsed = false;
    Scheduler::TimerID delayTimer = Scheduler::TimerID::None;
};

namespace {

bool mayRunTogether(UIGestureRecognizer& first, UIGestureRecognizer& second)
{
    const auto allows = [](UIGestureRecognizer& asked, UIGestureRecognizer& other) {
        const auto delegate = asked.delegate();
        return delegate && delegate->gestureRecognizerShouldRecognizeSimultaneously(asked, other);
    };
    return allows(first, second) || allows(second, first);
}

// The other recognisers that watch a touch of this one.
UIGestureRecognizers rivalsOf(const UIGestureRecognizer& recognizer)
{
    UIGestureRecognizers rivals;
    for (const auto& touch : recognizer.touches()) {
        for (const auto& other : touch->gestureRecognizers()) {
            const UITouches& watched = other->touches();
            const bool watches = std::find(watched.begin(), watched.end(), touch) != watched.end();
            if (watches && other.get() != &recognizer)
                rivals.push_back(other);
        }
    }
    return rivals;
}

} // namespace

TouchDispatcher::TouchDispatcher(UIWindow& window)
    : m_window(window)
{
}

TouchDispatcher::~TouchDispatcher() = default;

// --- The road ----------------------------------------------------------------------------------------

void TouchDispatcher::touchBegan(TouchID id, const CGPoint& location)
{
    const auto keepAlive = m_window.shared_from_this();
    touchCancelled(id);
    UIView* const hit = isFinite(location) ? m_window.hitTest(location) : nullptr;
    if (!hit)
        return;
    const auto view = std::static_pointer_cast<UIView>(hit->shared_from_this());
    const auto touch = make<UITouch>(UITouch::Key(), view, location, Scheduler::current().now());
    const auto tracked = std::make_shared<Tracked>(Tracked { id, touch });
    m_tracked.push_back(tracked);
    touch->setGestureRecognizers({}, recognizersFor(*touch));
    tellRecognizers(tracked);
    if (isTracked(tracked))
        holdOrDeliver(tracked);
}

void TouchDispatcher::touchMoved(TouchID id, const CGPoint& location)
{
    const auto keepAlive = m_window.shared_from_this();
    const auto tracked = find(id);
    if (!tracked || !isFinite(location) || tracked->touch->locationInView(nullptr) == location)
        return;
    tracked->touch->change({}, UITouchPhase::Moved, location, Scheduler::current().now());
    tellRecognizers(tracked);
    withholdIfUntouchable(*tracked);
    if (isTracked(tracked) && tracked->delivery == Delivery::Delivered)
        tellView(*tracked, UITouchPhase::Moved);
}

void TouchDispatcher::touchEnded(TouchID id, const CGPoint& location)
{
    const auto keepAlive = m_window.shared_from_this();
    if (const auto tracked = find(id))
        finish(tracked, UITouchPhase::Ended,
            isFinite(location) ? location : tracked->touch->locationInView(nullptr));
}

void TouchDispatcher::touchCancelled(TouchID id)
{
    const auto keepAlive = m_window.shared_from_this();
    if (const auto tracked = find(id))
        finish(tracked, UITouchPhase::Cancelled, tracked->touch->locationInView(nullptr));
}

void TouchDispatcher::cancelAllTouches()
{
    const auto keepAlive = m_window.weak_from_this().lock();
    const auto all = m_tracked;
    for (const auto& tracked : all)
        touchCancelled(tracked->id);
    m_late.clear();
    for (const auto& held : std::exchange(m_undecided, {}))
        if (const auto recognizer = held.lock())
            recognizer->abandon({});
}

bool TouchDispatcher::scroll(UIScrollEvent event)
{
    const auto keepAlive = m_window.shared_from_this();
    if (!isFinite(event.location) || !isFinite(event.delta))
        return false;
    event.timestamp = Scheduler::current().now();
    UIView* const hit = m_window.hitTest(event.location);
    auto view = hit ? hit->shared_from_this() : nullptr;
    while (view) {
        auto& asked = static_cast<UIView&>(*view);
        if (asked.scrollWheel(event))
            return true;
        view = asked.superview() ? asked.superview()->shared_from_this() : nullptr;
    }
    return false;
}

void TouchDispatcher::finish(const TrackedPointer& tracked, UITouchPhase phase, const CGPoint& location)
{
    tracked->touch->change({}, phase, location, Scheduler::current().now());
    tellRecognizers(tracked);
    withholdIfUntouchable(*tracked);
    if (phase == UITouchPhase::Ended && tracked->delivery == Delivery::Held) {
        m_late.push_back(tracked); // so short that its view has not heard of it yet
        deliverLate();
    }
    Scheduler::current().cancel(tracked->delayTimer);
    if (std::exchange(tracked->delivery, Delivery::Withheld) == Delivery::Delivered)
        tellView(*tracked, phase);
    std::erase(m_tracked, tracked);
    for (const auto& recognizer : tracked->touch->gestureRecognizers()) {
        recognizer->forgetTouch({}, *tracked->touch);
        if (recognizer->isUndecided() && recognizer->view())
            m_undecided.push_back(recognizer);
    }
    std::erase_if(m_undecided, [](const auto& held) {
        const auto recognizer = held.lock();
        return !recognizer || !recognizer->isUndecided();
    });
}

// --- Delivery ----------------------------------------------------------------------------------------

TouchDispatcher::TrackedPointer TouchDispatcher::find(TouchID id) const
{
    const auto found = std::find_if(
        m_tracked.begin(), m_tracked.end(), [&](const auto& tracked) { return tracked->id == id; });
    return found == m_tracked.end() ? nullptr : *found;
}

TouchDispatcher::TrackedPointer TouchDispatcher::find(const UITouch& touch) const
{
    const auto found = std::find_if(m_tracked.begin(), m_tracked.end(),
        [&](const auto& tracked) { return tracked->touch.get() == &touch; });
    return found == m_tracked.end() ? nullptr : *found;
}

bool TouchDispatcher::isTracked(const TrackedPointer& tracked) const
{
    return std::find(m_tracked.begin(), m_tracked.end(), tracked) != m_tracked.end();
}

// Asks the recognisers of the view and its superviews, the deepest first, which of them want the touch.
UIGestureRecognizers TouchDispatcher::recognizersFor(UITouch& touch)
{
    UIGestureRecognizers recognizers;
    const auto hit = touch.view();
    for (const UIView* view = hit.get(); view; view = view->superview()) {
        const auto& own = view->gestureRecognizers();
        recognizers.insert(recognizers.end(), own.begin(), own.end());
    }
    std::erase_if(recognizers, [&](const auto& recognizer) { return !recognizer->shouldReceive({}, touch); });
    return recognizers;
}

std::shared_ptr<UIEvent> TouchDispatcher::makeEvent() const
{
    UITouches touches;
    for (const auto& tracked : m_tracked)
        touches.push_back(tracked->touch);
    return make<UIEvent>(std::move(touches), Scheduler::current().now());
}

void TouchDispatcher::tellRecognizers(const TrackedPointer& tracked)
{
    const auto event = makeEvent();
    for (const auto& recognizer : tracked->touch->gestureRecognizers())
        if (isTracked(tracked))
            recognizer->deliver({}, tracked->touch, *event);
}

void TouchDispatcher::tellView(const Tracked& tracked, UITouchPhase phase)
{
    const auto view = tracked.touch->view();
    if (!view)
        return;
    // A view may hear of a phase that is not the finger's own: late, or because the touch was taken.
    const auto touch = tracked.touch;
    const UITouchPhase fingerPhase = touch->phase();
    const auto event = makeEvent();
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

void TouchDispatcher::holdOrDeliver(const TrackedPointer& tracked)
{
    if (isTakenByAnotherTouch(*tracked)) {
        tracked->delivery = Delivery::Withheld;
        return;
    }
    double delay = 0;
    const auto view = tracked->touch->view();
    for (const UIView* outer = view ? view->superview() : nullptr; outer; outer = outer->superview())
        delay = std::max(delay, outer->delayForContentTouches());
    tracked->delayElapsed = delay <= 0;
    if (!tracked->delayElapsed) {
        const auto elapse = [this, window = m_window.weak_from_this(), weak = std::weak_ptr(tracked)] {
            const auto keepAlive = window.lock();
            const auto held = weak.lock();
            if (!keepAlive || !held)
                return;
            held->delayElapsed = true;
            deliverWhenFree(*held);
        };
        tracked->delayTimer = Scheduler::current().schedule(delay, elapse);
    }
    deliverWhenFree(*tracked);
}

bool TouchDispatcher::isTakenByAnotherTouch(const Tracked& tracked) const
{
    const auto view = tracked.touch->view();
    if (!view || view->isMultipleTouchEnabled())
        return false;
    return std::any_of(m_tracked.begin(), m_tracked.end(), [&](const auto& other) {
        return other.get() != &tracked && other->touch->view() == view
            && other->delivery != Delivery::Withheld;
    });
}

void TouchDispatcher::deliverWhenFree(Tracked& tracked)
{
    if (tracked.delivery != Delivery::Held || !tracked.delayElapsed)
        return;
    if (isHeldBack(tracked))
        return;
    tracked.delivery = Delivery::Delivered;
    tellView(tracked, UITouchPhase::Began);
}

bool TouchDispatcher::isHeldBack(const Tracked& tracked)
{
    const auto recognizers = tracked.touch->gestureRecognizers();
    return std::any_of(recognizers.begin(), recognizers.end(),
        [](const auto& recognizer) { return recognizer->delaysTouchesBegan() && recognizer->isUndecided(); });
}

void TouchDispatcher::deliverLate()
{
    const auto all = m_late;
    for (const auto& tracked : all) {
        if (isHeldBack(*tracked) || std::erase(m_late, tracked) == 0)
            continue;
        tracked->delivery = Delivery::Withheld;
        tellView(*tracked, UITouchPhase::Began);
        tellView(*tracked, UITouchPhase::Ended);
    }
}

// Setters that make a view untouchable have done this already; a layer may be hidden without them.
void TouchDispatcher::withholdIfUntouchable(Tracked& tracked)
{
    const auto view = tracked.touch->view();
    if (view && !view->isTouchable())
        withhold(tracked);
}

void TouchDispatcher::withhold(Tracked& tracked)
{
    if (std::exchange(tracked.delivery, Delivery::Withheld) == Delivery::Delivered)
        tellView(tracked, UITouchPhase::Cancelled);
}

void TouchDispatcher::cancelTouchesIn(UIView& root)
{
    if (!isFollowingTouches())
        return;
    const auto keepAlive = m_window.weak_from_this().lock(); // none while the window itself goes
    const auto rootAlive = root.weak_from_this().lock();
    UIView::performWithoutAnimation([&] { cancelTouchesOf(root); });
}

void TouchDispatcher::cancelTouchesOf(const UIView& root)
{
    const auto isInside = [&](const UIView* view) { return view && root.containsView(*view); };
    // Who is concerned is settled before anybody is told: then the tree may be another one.
    std::vector<TrackedPointer> touches;
    UIGestureRecognizers recognizers;
    const auto collect = [&](const std::shared_ptr<UIGestureRecognizer>& recognizer) {
        const bool isKnown
            = std::find(recognizers.begin(), recognizers.end(), recognizer) != recognizers.end();
        if (!isKnown && isInside(recognizer->view()))
            recognizers.push_back(recognizer);
    };
    for (const auto& tracked : m_tracked) {
        if (isInside(tracked->touch->view().get()))
            touches.push_back(tracked);
        for (const auto& recognizer : tracked->touch->gestureRecognizers())
            collect(recognizer);
    }
    for (const auto& held : m_undecided)
        if (const auto recognizer = held.lock())
            collect(recognizer);
    std::erase_if(
        m_late, [&](const TrackedPointer& tracked) { return isInside(tracked->touch->view().get()); });

    for (const auto& tracked : touches)
        withhold(*tracked);
    for (const auto& recognizer : recognizers)
        recognizer->abandon({});
    deliverLate(); // what has waited for the failure of one of them
    const auto all = m_tracked;
    for (const auto& tracked : all)
        deliverWhenFree(*tracked);
}

// --- Between recognisers -----------------------------------------------------------------------------

bool TouchDispatcher::mayRecognize(UIGestureRecognizer& recognizer) const
{
    using enum UIGestureRecognizerState;
    for (const auto& rival : rivalsOf(recognizer)) {
        const bool recognized
            = rival->state() == Began || rival->state() == Changed || rival->state() == Ended;
        if (recognized && !mayRunTogether(recognizer, *rival))
            return false;
    }
    return true;
}

void TouchDispatcher::didRecognize(UIGestureRecognizer& recognizer)
{
    const auto keepAlive = m_window.weak_from_this().lock();
    for (const auto& rival : rivalsOf(recognizer))
        if (rival->state() == UIGestureRecognizerState::Possible && !mayRunTogether(recognizer, *rival))
            rival->fail({});
    if (recognizer.cancelsTouchesInView()) {
        const auto touches = recognizer.touches();
        for (const auto& touch : touches)
            if (const auto tracked = find(*touch))
                withhold(*tracked);
        std::erase_if(m_late, [&](const TrackedPointer& tracked) {
            const auto watching = tracked->touch->gestureRecognizers();
            return std::any_of(
                watching.begin(), watching.end(), [&](const auto& one) { return one.get() == &recognizer; });
        });
    }
    deliverLate();
}

void TouchDispatcher::didFail(UIGestureRecognizer& recognizer)
{
    const auto keepAlive = m_window.weak_from_this().lock(); // none while the window itself goes
    deliverLate();
    const auto touches = recognizer.touches();
    for (const auto& touch : touches)
        if (const auto tracked = find(*touch))
            deliverWhenFree(*tracked);
}
