// Where touches come in: from whoever sees fingers (the host, a test), to recognisers and views.
//
// Positions are in the window. A touch belongs to the view it hits. The gesture arena sees every change first
// and settles between the recognisers of that view and its superviews; then the view hears of it, unless a
// gesture has taken the touch or something makes it wait (TouchDelivery). A touch whose view leaves the
// window or stops being touchable is cancelled for that view in that moment. Calls that make no sense (an
// unknown finger moves, a place is not finite) change nothing, but a finger that leaves always ends its
// touch. Everything is delivered inside the call, at the scheduler's time; views and window may go away in
// it.
//
// The dispatcher knows arena and delivery, the delivery knows the arena, and the arena the recognisers; none
// of them knows who is before it in this row.
#pragma once

#include "platform/views/TouchDelivery.h"

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

    bool hasTouches() const { return !m_fingers.empty(); }
    // Whether anybody follows a touch, or waits for what comes of one that has ended.
    bool isFollowingTouches() const { return hasTouches() || !m_arena->isEmpty() || !m_delivery->isEmpty(); }

    // For a subtree that has left the window, cannot be touched any more, or becomes another one's: its views
    // lose their touches, and its gestures are cancelled. Whatever those who are told do, all who were
    // followed at the call hear of it. No animation is in force meanwhile.
    void cancelTouchesIn(UIView& root);

private:
    struct Finger {
        TouchID id;
        std::shared_ptr<UITouch> touch;
    };

    std::shared_ptr<UITouch> find(TouchID) const;
    UIView* hitTest(const CGPoint& location) const;
    void finish(const std::shared_ptr<UITouch>& touch, UITouchPhase, const CGPoint& location);

    UIWindow& m_window;
    std::vector<Finger> m_fingers;
    const std::shared_ptr<GestureArena> m_arena = std::make_shared<GestureArena>();
    const std::shared_ptr<TouchDelivery> m_delivery = std::make_shared<TouchDelivery>(m_arena);
};
