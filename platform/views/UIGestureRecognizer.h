// Watches the touches on a view and its subviews for one gesture, and tells its targets.
//
// A recogniser sees touches before the views do. It goes possible → ended for a gesture that happens at once,
// possible → began → changed … → ended or cancelled for one that lasts, or possible → failed; when all its
// touches are gone it is possible again. Targets are told of every state but possible and failed. While
// several watch the same touch, the first one that recognises its gesture makes the others fail, unless a
// delegate lets both go on; one that has to wait for another one's failure stays possible until then
// (GestureArena). On a view that cannot be touched (UIView::isTouchable()) nothing is recognised, and what
// goes on there is cancelled in the moment in which it stops being touchable or leaves its window; the
// cancelled action runs after that change and outside of any animation. A recogniser may be removed, disabled
// or dropped from inside its own action.
#pragma once

#include "platform/foundation/Action.h"
#include "platform/graphics/Geometry.h"
#include "platform/views/GestureReferee.h"
#include "platform/views/UIGestureRecognizerDelegate.h"
#include "platform/views/UIResponder.h"
#include "platform/views/UITouch.h"

#include <cstdint>

enum class UIGestureRecognizerState {
    Possible = 0,
    Began = 1,
    Changed = 2,
    Ended = 3,
    Cancelled = 4,
    Failed = 5
};

class UIView;

class UIGestureRecognizer : public NSObject {
public:
    UIGestureRecognizer() = default;
    // initWithTarget:action:
    explicit UIGestureRecognizer(const Action& action) { addTarget(action); }
    ~UIGestureRecognizer() override;

    // The same action is held once. One added while actions are being sent hears of the next state, one
    // removed then hears nothing more.
    void addTarget(const Action& action);
    void removeTarget(const Action& action);

    UIGestureRecognizerState state() const { return m_state; }
    // Null when it is on none. The view holds its recognisers.
    UIView* view() const { return m_view; }
    void setDelegate(std::weak_ptr<UIGestureRecognizerDelegate> delegate)
    {
        m_delegate = std::move(delegate);
    }
    std::shared_ptr<UIGestureRecognizerDelegate> delegate() const { return m_delegate.lock(); }

    // Disabling cancels a gesture that is going on.
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    // Whether the view loses its touches to a recognised gesture; on by default.
    bool cancelsTouchesInView() const { return m_cancelsTouchesInView; }
    void setCancelsTouchesInView(bool cancels) { m_cancelsTouchesInView = cancels; }
    // Whether the view hears of a touch only after this gesture has failed; off by default.
    bool delaysTouchesBegan() const { return m_delaysTouchesBegan; }
    void setDelaysTouchesBegan(bool delays) { m_delaysTouchesBegan = delays; }

    // requireGestureRecognizerToFail: — this gesture waits with its beginning while the other one may still
    // be recognised, and fails if it is. Who watches no touch keeps nobody waiting; of two that wait for
    // each other, the second one does not. The other one is held weakly.
    void requireGestureRecognizerToFail(const std::shared_ptr<UIGestureRecognizer>& other);
    UIGestureRecognizers requirements() const; // those that are still there

    int numberOfTouches() const { return static_cast<int>(m_touches.size()); }
    // The middle of its touches, or where they last were. Nil stands for the window.
    virtual CGPoint locationInView(const UIView* view) const;

    const UITouches& touches() const { return m_touches; }
    bool watches(const UITouch&) const;
    // Whether its gesture has been found: began, changed or ended.
    bool isRecognized() const;

    // What only the arena and the view may do.
    class Key {
        friend class GestureArena;
        friend class UIView;
        Key() = default;
    };
    void setView(Key, UIView* view);
    // Asks the delegate.
    bool shouldReceive(Key, UITouch& touch);
    // From then on the recogniser reports to the referee, until it is possible again.
    void watch(Key, const std::shared_ptr<UITouch>& touch, const std::weak_ptr<GestureReferee>& referee);
    // Touches come one by one; the phase says which message becomes of it.
    void receive(Key, const std::shared_ptr<UITouch>& touch, UIEvent& event);
    void stopWatching(Key, const UITouch& touch) { ignoreTouch(touch); }
    void stopWatchingAll(Key) { m_touches.clear(); }
    bool waitsForMore(Key) const { return waitsForMoreTouches(); }
    // Whether recogniser, delegate and views let it begin.
    bool mayBegin(Key);
    // Answers which change of state this is; its actions are sent only as long as no other has come after it.
    std::uint64_t enter(Key, UIGestureRecognizerState);
    void sendActions(Key, std::uint64_t change);
    void becomePossible(Key);
    // Reports that it stops watching: what is going on is cancelled.
    void withdraw(Key) { withdraw(); }

protected:
    // For subclasses: touches arrive here while the gesture is possible or going on. The touches that end
    // are still among touches(). By default a cancelled touch cancels the gesture. One that is still
    // possible when its last touch has left has failed, unless waitsForMoreTouches().
    virtual void touchesBegan(const UITouches&, UIEvent&) { }
    virtual void touchesMoved(const UITouches&, UIEvent&) { }
    virtual void touchesEnded(const UITouches&, UIEvent&) { }
    virtual void touchesCancelled(const UITouches&, UIEvent&);
    // Called when the gesture becomes possible again: forget everything about the last one.
    virtual void reset() { }
    virtual bool waitsForMoreTouches() const { return false; }

    // Reports what the subclass has found out; the state follows inside the call, or after a wait. A gesture
    // that may not begin fails instead.
    void setState(UIGestureRecognizerState);
    // ignoreTouch:forEvent: — as if the touch had never been there.
    void ignoreTouch(const UITouch&);
    // The middle of the touches in the window: of all of them, and of those that stay.
    CGPoint centroid() const;
    CGPoint centroidOnScreen() const;

private:
    bool isOver() const;
    void withdraw();
    bool viewsLetBegin();

    struct Target {
        Action action;
        std::uint64_t serial; // another one for a target that comes back
    };
    std::vector<Target> m_targets;
    std::uint64_t m_lastSerial = 0;
    UIView* m_view = nullptr;
    std::weak_ptr<UIGestureRecognizerDelegate> m_delegate;
    UITouches m_touches;
    std::vector<std::weak_ptr<UIGestureRecognizer>> m_requirements;
    std::weak_ptr<GestureReferee> m_referee; // null while it is possible and watches nothing
    CGPoint m_lastCentroid;
    UIGestureRecognizerState m_state = UIGestureRecognizerState::Possible;
    std::uint64_t m_changes = 0; // of the state, counted
    bool m_enabled = true;
    bool m_cancelsTouchesInView = true;
    bool m_delaysTouchesBegan = false;
};
