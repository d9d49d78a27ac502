// One finger that touches and leaves without moving far, once or several times.
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

protected:
    void touchesBegan(const UITouches&, UIEvent&) override;
    void touchesMoved(const UITouches&, UIEvent&) override;
    void touchesEnded(const UITouches&, UIEvent&) override;
    void reset() override;

private:
    void waitForNextTap();
    void stopWaiting();

    int m_tapsRequired = 1;
    int m_taps = 0;
    CGPoint m_start; // of the current tap, in the window
    Scheduler::TimerID m_waiting = Scheduler::TimerID::None; // for the next tap
};
