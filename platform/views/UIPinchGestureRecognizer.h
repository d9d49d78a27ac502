// Two fingers that open or close: begins once their distance has changed by some points, changes with
// every move, ends when both have left.
//
// The scale counts from where those points were reached, so that what follows the fingers does not jump.
// While only one of the two is down nothing changes; another one beside it goes on from there. Further
// fingers are not watched.
#pragma once

#include "platform/views/MotionSamples.h"
#include "platform/views/UIGestureRecognizer.h"

class UIPinchGestureRecognizer : public UIGestureRecognizer {
public:
    using UIGestureRecognizer::UIGestureRecognizer;

    // How many times farther the fingers are from each other than at the beginning.
    double scale() const { return m_scale; }
    // Counts on from here; positive and finite. The velocity forgets what was before.
    void setScale(double scale);
    // The change of the scale in a second, over the last moments; 0 for fingers that rest.
    double velocity() const { return m_samples.velocity(); }

protected:
    void touchesBegan(const UITouches&, UIEvent&) override;
    void touchesMoved(const UITouches&, UIEvent&) override;
    void touchesEnded(const UITouches&, UIEvent&) override;
    void reset() override;

private:
    double distance() const;
    void follow(double distance);

    double m_scale = 1;
    double m_distance = 0; // of the two fingers, when it was last looked at
    MotionSamples<double> m_samples; // of the scale
};
