// Fingers that drag: begins once they have moved 10 points, changes with every move, ends when the last
// one leaves.
//
// The translation counts from where those 10 points were reached, so that what follows the finger does
// not jump. Fingers that come and go do not move it; only their middle's moves count.
#pragma once

#include "platform/views/UIGestureRecognizer.h"

class UIPanGestureRecognizer : public UIGestureRecognizer {
public:
    using UIGestureRecognizer::UIGestureRecognizer;

    // In the view's coordinates; nil stands for the window.
    CGPoint translationInView(const UIView* view) const;
    // setTranslation:inView: — counts on from here. The velocity forgets what was before.
    void setTranslation(const CGPoint& translation, const UIView* view);
    // Points a second, over the last moments; 0 for a finger that rests.
    CGPoint velocityInView(const UIView* view) const;

protected:
    void touchesBegan(const UITouches&, UIEvent&) override;
    void touchesMoved(const UITouches&, UIEvent&) override;
    void touchesEnded(const UITouches&, UIEvent&) override;
    void reset() override;

private:
    struct Sample {
        double time;
        CGPoint position; // the sum of all moves
    };

    // Takes the middle's move since the last call into account.
    void follow(double time);

    CGPoint m_anchor; // the middle of the fingers when it was last looked at
    CGPoint m_moved; // the sum of all moves since the first touch
    CGPoint m_origin; // what of it is not part of the translation
    std::vector<Sample> m_samples; // of the velocity window
};
