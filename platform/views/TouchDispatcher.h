// The one road of touches: from whoever sees fingers (the host, a test) to recognisers and views.
//
// Positions are in the window. A touch belongs to the view it hits. The recognisers of that view and its
// superviews see every change first, the deepest view's first of all; then the view, unless a
// recogniser has taken the touch or something makes it wait. A touch whose view leaves the window or stops
// being touchable is cancelled for that view in that moment. Calls that make no sense (an unknown
// finger moves, a place is not finite) change nothing, but a finger that leaves always ends its touch.
// Everything is delivered inside the call, at the scheduler's time; views and window may go away in it.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/views/UIEvent.h"
#include "platform/views/UITouch.h"

#include <cstdint>

enum class TouchID : std::int64_t {}; // one per finger; the mouse is a finger

class TouchDispatcher {
public:
    explicit TouchDispatcher(UIWindow& window);
    ~TouchDispatcher();
    TouchDispatcher(const TouchDispatcher&) = delete;
    TouchDispatcher& operator=(const TouchDispatcher&) = delete;

    void touchBegan(TouchID, const CGPoint& location);
    void touchMoved(TouchID, const CGPoint& location);
    void touchEnded(TouchID, const CGPoint& location);
    void touchCancelled(TouchID);
    // When the window loses the screen.
    void cancelAllTouches();
    // Offers a scroll event to the view under the pointer and its superviews in turn; answers whether one
    // took it. The event's timestamp is filled in here.
    bool scroll(UIScrollEvent event);

    bool hasTouches() const { return !m_tracked.empty(); }
    // Whether anybody follows a touch, or waits for what comes of one that has ended.
    bool isFollowingTouches() const { return !m_tracked.empty() || !m_late.empty() || !m_undecided.empty(); }

    // For a subtree that has left the window, cannot be touched any more, or becomes another one's: its views
    // lose their touches, and its gestures are cancelled. Whatever those who are told do, all who were
    // followed at the call hear of it. No animation is in force meanwhile.
    void cancelTouchesIn(UIView& root);

    // From recognisers: whether no other gesture on the same touches stands against it …
    bool mayRecognize(UIGestureRecognizer&) const;
    // … and that it goes ahead: the others fail, and the view loses the touches where it says so.
    void didRecognize(UIGestureRecognizer&);
    // A view that waits for the gesture to fail may get its touch now.
    void didFail(UIGestureRecognizer&);

private:
    // How far the view knows of a touch.
    enum class Delivery { Held, Delivered, Withheld };
    struct Tracked;
    using TrackedPointer = std::shared_ptr<Tracked>;

    TrackedPointer find(TouchID) const;
    TrackedPointer find(const UITouch&) const;
    bool isTracked(const TrackedPointer&) const;
    static UIGestureRecognizers recognizersFor(UITouch&);
    std::shared_ptr<UIEvent> makeEvent() const;
    void finish(const TrackedPointer&, UITouchPhase, const CGPoint& location);
    void tellRecognizers(const TrackedPointer&);
    void tellView(const Tracked&, UITouchPhase);
    void holdOrDeliver(const TrackedPointer&);
    void deliverWhenFree(Tracked&);
    void withhold(Tracked&);
    void withholdIfUntouchable(Tracked&);
    void cancelTouchesOf(const UIView& root);
    static bool isHeldBack(const Tracked&);
    void deliverLate();
    bool isTakenByAnotherTouch(const Tracked&) const;

    UIWindow& m_window;
    std::vector<TrackedPointer> m_tracked;
    std::vector<TrackedPointer> m_late; // whole touches that a recogniser holds back after their end
    std::vector<std::weak_ptr<UIGestureRecognizer>> m_undecided; // after their touches had ended
};
