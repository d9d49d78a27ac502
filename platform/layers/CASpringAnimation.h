// A basic animation whose pace is that of a damped harmonic oscillator; see SpringCurve.
//
// The stiffness follows from the duration: at its end the swing has died down, and the last value is
// exactly the end value. A timing function is not asked.
#pragma once

#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/SpringCurve.h"

class CASpringAnimation final : public CABasicAnimation {
public:
    static std::shared_ptr<CASpringAnimation> animationWithKeyPath(const NSString& keyPath);

    explicit CASpringAnimation(const NSString& keyPath);
    CASpringAnimation(const CASpringAnimation&) = default;

    // 1 does not overshoot, less swings; see SpringCurve for the range.
    double dampingRatio() const { return m_curve.dampingRatio(); }
    void setDampingRatio(double ratio) { m_curve = SpringCurve(ratio); }
    // In whole distances from the start to the end value a second, towards the end value.
    double initialVelocity() const { return m_initialVelocity; }
    void setInitialVelocity(double velocity) { m_initialVelocity = velocity; }

    std::shared_ptr<CAAnimation> copy() const override;

protected:
    double fractionAt(double progress) const override;

private:
    SpringCurve m_curve { 1 };
    double m_initialVelocity = 0;
};
