#include "playback/ORVProgressShapeLayer.h"

#include "platform/layers/CABasicAnimation.h"

namespace {

const NSString& strokeStartKey() { return CAKeyPath::key(CAProperty::StrokeStart); }
const NSString& strokeEndKey() { return CAKeyPath::key(CAProperty::StrokeEnd); }

} // namespace

void ORVProgressShapeLayer::setProgressAnimationsEnabled(bool enabled)
{
    m_progressAnimationsEnabled = enabled;
    if (enabled)
        return;
    removeAnimationForKey(strokeStartKey());
    removeAnimationForKey(strokeEndKey());
}

std::shared_ptr<CAAnimation> ORVProgressShapeLayer::actionForKey(const NSString& key)
{
    if (key != strokeStartKey() && key != strokeEndKey())
        return CAShapeLayer::actionForKey(key);
    if (!m_progressAnimationsEnabled)
        return nullptr;
    const auto animation = CABasicAnimation::animationWithKeyPath(key);
    animation->setFromValue(valueForKeyPath(key));
    animation->setFillMode(kCAFillModeBackwards);
    animation->setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut));
    return animation;
}
