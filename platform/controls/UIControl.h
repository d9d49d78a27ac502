// A view that is pressed: it follows one finger, shows that it is touched, and tells its targets.
//
// While a finger is tracked the control is highlighted as long as the finger is inside, or not far outside.
// Targets are told in the order in which they were added. A control may be removed, disabled, hidden or
// dropped from inside any of its messages; when it has let go of the finger, the messages that would have
// followed do not come.
#pragma once

#include "platform/foundation/Action.h"
#include "platform/views/UIView.h"

#include <cstdint>

enum class UIControlState : unsigned {
    Normal = 0,
    Highlighted = 1,
    Disabled = 2,
    Selected = 4,
    Application = 0xFF0000 // for the application's own states
};
template <> inline constexpr bool isBitMask<UIControlState> = true;

enum class UIControlEvents : unsigned {
    TouchDown = 1,
    TouchDragInside = 4,
    TouchDragOutside = 8,
    TouchDragEnter = 16,
    TouchDragExit = 32,
    TouchUpInside = 64,
    TouchUpOutside = 128,
    TouchCancel = 256,
    ValueChanged = 4096
};
template <> inline constexpr bool isBitMask<UIControlEvents> = true;

class UIControl : public UIView {
public:
    using UIView::UIView;

    // addTarget:action:forControlEvents: — a target added twice for an event is told once.
    void addTarget(const Action& action, UIControlEvents events);
    void removeTarget(const Action& action, UIControlEvents events);
    // Those who are removed meanwhile hear nothing, those who are added meanwhile hear the next event.
    void sendActionsForControlEvents(UIControlEvents events);

    // All states that hold now.
    virtual UIControlState state() const;
    bool isEnabled() const { return m_enabled; }
    // A control that is disabled lets go of the finger and takes no other; gestures on it are cancelled.
    virtual void setEnabled(bool enabled);
    bool isHighlighted() const { return m_highlighted; }
    // Called for a finger too; tracking is on by then.
    virtual void setHighlighted(bool highlighted);
    bool isSelected() const { return m_selected; }
    virtual void setSelected(bool selected);

    bool isTracking() const { return m_tracking; }
    // Whether the tracked finger is over the control, or near enough to count as that.
    bool isTouchInside() const { return m_touchInside; }
    // beginTrackingWithTouch:withEvent: and its kin, for subclasses that follow the finger themselves; the
    // first two answer whether to go on. They come before the change of the highlight that goes with them.
    virtual bool beginTrackingWithTouch(UITouch&, UIEvent&) { return true; }
    virtual bool continueTrackingWithTouch(UITouch&, UIEvent&) { return true; }
    virtual void endTrackingWithTouch(UITouch&, UIEvent&) { }
    virtual void cancelTracking() { } // cancelTrackingWithEvent:

    void touchesBegan(const UITouches&, UIEvent&) override;
    void touchesMoved(const UITouches&, UIEvent&) override;
    void touchesEnded(const UITouches&, UIEvent&) override;
    void touchesCancelled(const UITouches&, UIEvent&) override;

protected:
    bool letsItselfBeTouched() const override { return m_enabled && UIView::letsItselfBeTouched(); }

private:
    struct Registration {
        Action action;
        UIControlEvents events;
        std::uint64_t serial; // another one for a target that comes back
    };
    bool follows(const UITouches&) const;
    bool isNear(const UITouch&) const;
    void setTouchInside(bool inside);
    void letGoOfTouch();

    std::vector<Registration> m_registrations;
    std::uint64_t m_lastSerial = 0;
    std::weak_ptr<UITouch> m_touch; // the tracked one
    bool m_enabled = true;
    bool m_highlighted = false;
    bool m_selected = false;
    bool m_tracking = false;
    bool m_touchInside = false;
};
