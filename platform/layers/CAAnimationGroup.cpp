#include "platform/layers/CAAnimationGroup.h"

#include <algorithm>

std::shared_ptr<CAAnimationGroup> CAAnimationGroup::animation() { return make<CAAnimationGroup>(); }

CAAnimationGroup::CAAnimationGroup(const CAAnimationGroup& other)
    : CAAnimation(other)
{
    for (const auto& animation : other.m_animations)
        m_animations.push_back(animation->copy());
}

void CAAnimationGroup::setAnimations(std::vector<std::shared_ptr<CAAnimation>> animations)
{
    std::erase(animations, nullptr);
    m_animations = std::move(animations);
}

std::shared_ptr<CAAnimation> CAAnimationGroup::copy() const { return make<CAAnimationGroup>(*this); }

bool CAAnimationGroup::animates(CAProperty property) const
{
    return std::any_of(m_animations.begin(), m_animations.end(),
        [property](const auto& animation) { return animation->animates(property); });
}

void CAAnimationGroup::resolve(double fallback)
{
    CAAnimation::resolve(fallback);
    for (const auto& animation : m_animations)
        animation->resolve(duration());
}

void CAAnimationGroup::applyProgress(CALayerValues& shown, const CALayerValues& model, double progress) const
{
    // The line inside counts as standing still, so that what ends together with the group shows its end
    // for as long as the group's fill mode keeps the group's.
    const CAMoment inside { paced(progress) * duration(), 0 };
    for (const auto& animation : m_animations)
        animation->apply(shown, model, inside);
}
