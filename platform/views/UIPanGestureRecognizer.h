// Fingers that drag: begins once they have moved 10 points, changes with every move, ends when the last
// one leaves.
//
// While there are fewer fingers than it needs, moves do not count. One finger too many before the
// beginning makes it fail; later it is not watched.
//
// The translation counts from where those 10 points were reached, so that what follows the finger does
// not jump. Fingers that come and go do not move it; only their middle's moves count.
#pragma once

#include "platform/views/MotionSamples.h"
#include "platform/views/UIGestureRecognizer.h"

#include <limits>

class UIPanGestureRecognizer : public UIGestureRecognizer {
public:
    using UIGestureRecognizer::UIGestureRecognizer;

    // In the view's coordinates; nil stands for the window.
    CGPoint translationInView(const UIView* view) const;
    // setTranslation:inView: — counts on from here; finite. The velocity forgets what was before.
    void setTranslation(const CGPoint& translation, const UIView* view);
    // Points a second, over the last moments; 0 for a finger that rests.
    CGPoint velocityInView(const UIView* view) const;

    int minimumNumberOfTouches() const { return m_minimumTouches; }
    void setMinimumNumberOfTouches(int touches); // at least 1, the default
    int maximumNumberOfTouches() const { return m_maximumTouches; }
    void setMaximumNumberOfTouches(int touches); // at least 1; by default any number

protected:
    void touchesBegan(const UITouches&, UIEvent&) override;
    void touchesMoved(const UITouches&, UIEvent&) override;
    void touchesEnded(const UITouches&, UIEvent&) override;
    void reset() override;

private:
    // Takes the middle's move since the last call into account.
    void follow(double time);

    int m_minimumTouches = 1;
    int m_maximumTouches = std::numeric_limits<int>::max();
    CGPoint m_anchor; // the middle of the fingers when it was last looked at
    CGPoint m_moved; // the sum of all moves since the first touch
    CGPoint m_origin; // what of it is not part of the translation
    MotionSamples<CGPoint> m_samples; // of the sum of all moves
};
