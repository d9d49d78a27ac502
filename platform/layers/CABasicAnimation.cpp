#include "platform/layers/CABasicAnimation.h"

std::shared_ptr<CABasicAnimation> CABasicAnimation::animationWithKeyPath(const NSString& keyPath)
{
    return make<CABasicAnimation>(keyPath);
}

CABasicAnimation::CABasicAnimation(const NSString& keyPath) { setKeyPath(keyPath); }

void CABasicAnimation::setKeyPath(const NSString& keyPath)
{
    m_keyPath = keyPath;
    m_path = CAKeyPath(keyPath);
}

std::shared_ptr<CAAnimation> CABasicAnimation::copy() const { return make<CABasicAnimation>(*this); }

void CABasicAnimation::applyProgress(CALayerValues& shown, const CALayerValues& model, double progress) const
{
    const CAValue shownValue = m_path.value(shown);
    const CAValue none = m_additive ? CAValues::neutral(shownValue) : CAValue();
    const Ends way = m_additive ? ends(none, none) : ends(shownValue, m_path.value(model));
    if (CAValues::isMissing(way.from))
        return;
    const CAValue value = CAValues::interpolate(way.from, way.to, fractionAt(progress));
    m_path.setValue(shown, m_additive ? CAValues::sum(shownValue, value) : value);
}

CABasicAnimation::Ends CABasicAnimation::ends(const CAValue& shown, const CAValue& model) const
{
    if (hasFromValue() && hasToValue())
        return { m_fromValue, m_toValue };
    if (hasFromValue() && hasByValue())
        return { m_fromValue, CAValues::sum(m_fromValue, m_byValue) };
    if (hasByValue() && hasToValue())
        return { CAValues::difference(m_toValue, m_byValue), m_toValue };
    if (hasFromValue())
        return { m_fromValue, model };
    if (hasToValue())
        return { shown, m_toValue };
    if (hasByValue())
        return { shown, CAValues::sum(shown, m_byValue) };
    return {};
}
