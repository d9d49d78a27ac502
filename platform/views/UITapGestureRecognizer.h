// One finger, or several together, that touch and leave without moving far, once or several times.
//
// Ended is the only state that targets hear of.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/views/UIGestureRecognizer.h"

class UITapGestureRecognizer : public UIGestureRecognizer {
public:
    using UIGestureRecognizer::UIGestureRecognizer;
    ~UITapGestureRecognizer() override;

    int numberOfTapsRequired() const { return m_tapsRequired; }
    void setNumberOfTapsRequired(int taps); // at least 1
    // Fingers that are down together in each tap, neither fewer nor more.
    int numberOfTouchesRequired() const { return m_touchesRequired; }
    void setNumberOfTouchesRequired(int touches); // at least 1
    // Of several fingers that have tapped the middle of where they came down: they do not leave together.
    CGPoint locationInView(const UIView* view) const override;

protected:
    void touchesBegan(const UITouches&, UIEvent&) override;
    void touchesMoved(const UITouches&, UIEvent&) override;
    void touchesEnded(const UITouches&, UIEvent&) override;
    void reset() override;
    bool waitsForMoreTouches() const override { return m_taps > 0; }

private:
    struct Finger {
        const UITouch* touch;
        CGPoint start; // in the window
    };
    bool isNearLastTap(const CGPoint& location) const;
    void tapEnded();
    void waitForNextTap();
    void stopWaiting();

    int m_tapsRequired = 1;
    int m_touchesRequired = 1;
    int m_taps = 0;
    int m_lifted = 0; // fingers of the current tap that have left
    std::vector<Finger> m_fingers; // of the current tap
    std::vector<Finger> m_lastFingers; // of the one before; their touches are gone
    Scheduler::TimerID m_waiting = Scheduler::TimerID::None; // for the next tap
};
