#include "platform/layers/CASpringAnimation.h"

std::shared_ptr<CASpringAnimation> CASpringAnimation::animationWithKeyPath(const NSString& keyPath)
{
    return make<CASpringAnimation>(keyPath);
}

CASpringAnimation::CASpringAnimation(const NSString& keyPath)
    : CABasicAnimation(keyPath)
{
}

std::shared_ptr<CAAnimation> CASpringAnimation::copy() const { return make<CASpringAnimation>(*this); }

double CASpringAnimation::fractionAt(double progress) const
{
    return m_curve.valueAt(progress, m_initialVelocity * duration());
}
