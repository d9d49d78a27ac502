// Several animations on one time line.
//
// The time of its animations starts at 0 with the group and stands wherever the group's run stands: what
// lasts longer than the group is cut off, what gives no duration lasts as long as the group. Only the
// group tells its end: the listeners of the animations in it are not called.
#pragma once

#include "platform/layers/CAAnimation.h"

#include <vector>

class CAAnimationGroup final : public CAAnimation {
public:
    static std::shared_ptr<CAAnimationGroup> animation();

    CAAnimationGroup() = default;
    CAAnimationGroup(const CAAnimationGroup&);

    const std::vector<std::shared_ptr<CAAnimation>>& animations() const { return m_animations; }
    void setAnimations(std::vector<std::shared_ptr<CAAnimation>>); // nil ones are left out

    std::shared_ptr<CAAnimation> copy() const override;
    bool animates(CAProperty) const override;
    void resolve(double duration) override;

protected:
    void applyProgress(CALayerValues& shown, const CALayerValues& model, double progress) const override;

private:
    std::vector<std::shared_ptr<CAAnimation>> m_animations;
};
