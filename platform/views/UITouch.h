// One finger on the screen, from the moment it touches until it leaves.
//
// The same object is used for the whole of that time; whoever needs a position later has to copy it.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/graphics/Geometry.h"

#include <vector>

class TouchDispatcher;
class UIGestureRecognizer;
class UIView;

using UIGestureRecognizers = std::vector<std::shared_ptr<UIGestureRecognizer>>;

enum class UITouchPhase { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

class UITouch final : public NSObject {
public:
    // What only those who deal with fingers may do.
    class Key {
        friend class GestureArena;
        friend class TouchDelivery;
        friend class TouchDispatcher;
        Key() = default;
    };

    UITouch(Key, const std::shared_ptr<UIView>& view, const CGPoint& location, double timestamp);

    UITouchPhase phase() const { return m_phase; }
    // The scheduler's time of the last change.
    double timestamp() const { return m_timestamp; }
    // The view that was hit; it stays the touch's view wherever the finger goes. Null once it is gone.
    std::shared_ptr<UIView> view() const { return m_view.lock(); }

    // locationInView: — nil stands for the window.
    CGPoint locationInView(const UIView* view) const;
    CGPoint previousLocationInView(const UIView* view) const;

    // The recognisers that take part, the deepest view's first.
    UIGestureRecognizers gestureRecognizers() const;

    void change(Key, UITouchPhase, const CGPoint& location, double timestamp);
    void setPhase(Key, UITouchPhase phase) { m_phase = phase; }
    void setGestureRecognizers(Key, const UIGestureRecognizers& recognizers);

private:
    std::weak_ptr<UIView> m_view;
    std::vector<std::weak_ptr<UIGestureRecognizer>> m_recognizers;
    UITouchPhase m_phase = UITouchPhase::Began;
    CGPoint m_location; // in the window
    CGPoint m_previousLocation;
    double m_timestamp;
};
