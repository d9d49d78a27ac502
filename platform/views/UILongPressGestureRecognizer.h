// One finger that rests: begins after half a second, changes with every move from then on, ends when the
// finger leaves.
//
// A second finger that comes before the beginning makes it fail; one that comes later is not watched.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/views/InteractionConstants.h"
#include "platform/views/UIGestureRecognizer.h"

class UILongPressGestureRecognizer : public UIGestureRecognizer {
public:
    using UIGestureRecognizer::UIGestureRecognizer;
    ~UILongPressGestureRecognizer() override;

    // Seconds, not negative; 0 begins with the touch itself. Takes effect with the next touch.
    double minimumPressDuration() const { return m_minimumPressDuration; }
    void setMinimumPressDuration(double seconds);
    // How far the finger may move until then, in points; not negative, infinite for any distance.
    double allowableMovement() const { return m_allowableMovement; }
    void setAllowableMovement(double points);

protected:
    void touchesBegan(const UITouches&, UIEvent&) override;
    void touchesMoved(const UITouches&, UIEvent&) override;
    void touchesEnded(const UITouches&, UIEvent&) override;
    void reset() override;

private:
    double m_minimumPressDuration = InteractionConstants::longPressDuration;
    double m_allowableMovement = InteractionConstants::longPressMaximumMovement;
    CGPoint m_start; // in the window
    Scheduler::TimerID m_timer = Scheduler::TimerID::None;
};
