#include "platform/views/UIViewAnimationBlock.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/Scheduler.h"
#include "platform/layers/CALayer.h"
#include "platform/layers/CAMotionGroup.h"
#include "platform/layers/CASpringAnimation.h"

#include <cmath>

namespace {

// The blocks being run, the innermost last; null entries switch animation off.
std::vector<std::shared_ptr<UIViewAnimationBlock>> blocksInForce;

std::shared_ptr<CAMediaTimingFunction> timingFunctionOf(UIViewAnimationCurve curve)
{
    switch (curve) {
    case UIViewAnimationCurve::EaseIn:
        return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn);
    case UIViewAnimationCurve::EaseOut:
        return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut);
    case UIViewAnimationCurve::Linear:
        return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear);
    case UIViewAnimationCurve::EaseInOut:
        break;
    }
    return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut);
}

// Nothing moves, so no animation will report an end: the completion comes by itself, or with the motions that
// are being collected.
void completeLater(double delay, UIViewAnimationBlock::Completion completion)
{
    if (!completion)
        return;
    if (const auto group = CAMotionGroup::collecting())
        group->endTogether(std::move(completion));
    else
        Scheduler::current().schedule(delay, [completion = std::move(completion)] { completion(true); });
}

double finiteSeconds(double seconds) { return std::isfinite(seconds) ? seconds : 0; }

} // namespace

class UIViewAnimationBlock::InForce {
public:
    explicit InForce(std::shared_ptr<UIViewAnimationBlock> block)
    {
        blocksInForce.push_back(std::move(block));
    }
    ~InForce() { blocksInForce.pop_back(); }
    InForce(const InForce&) = delete;
    InForce& operator=(const InForce&) = delete;
};

UIViewAnimationBlock::UIViewAnimationBlock(const Parameters& parameters, Completion completion)
    : m_parameters(parameters)
    , m_completion(std::move(completion))
{
}

std::shared_ptr<UIViewAnimationBlock> UIViewAnimationBlock::current()
{
    return blocksInForce.empty() ? nullptr : blocksInForce.back();
}

void UIViewAnimationBlock::run(const Parameters& given, const Changes& changes, Completion completion)
{
    Parameters parameters = given;
    parameters.duration = finiteSeconds(given.duration);
    parameters.delay = finiteSeconds(given.delay);
    NSParameterAssert(std::isfinite(given.duration), "UIView", "isfinite(duration)");
    NSParameterAssert(std::isfinite(given.delay), "UIView", "isfinite(delay)");
    const auto group = CAMotionGroup::collecting();
    const CAModelChanges::Recording recording(group ? &group->changes() : nullptr);
    if (!(parameters.duration > 0)) {
        runWithout(changes);
        completeLater(parameters.delay, std::move(completion));
        return;
    }
    const auto block = make<UIViewAnimationBlock>(parameters, std::move(completion));
    {
        const InForce inForce(block);
        if (changes)
            changes();
    }
    block->close();
}

void UIViewAnimationBlock::runWithout(const Changes& changes)
{
    const InForce inForce(nullptr);
    if (changes)
        changes();
}

bool UIViewAnimationBlock::allowsUserInteraction() const
{
    return hasBits(m_parameters.options, UIViewAnimationOptions::AllowUserInteraction);
}

bool UIViewAnimationBlock::isAnimating(const CALayer& layer, const NSString& key) const
{
    return m_animated.contains({ layer.layerID(), key }) && layer.animationForKey(key);
}

std::shared_ptr<CABasicAnimation> UIViewAnimationBlock::makeTimedAnimation(const NSString& key) const
{
    if (!m_parameters.spring) {
        auto animation = CABasicAnimation::animationWithKeyPath(key);
        animation->setTimingFunction(timingFunctionOf(curveOfOptions(m_parameters.options)));
        return animation;
    }
    auto animation = CASpringAnimation::animationWithKeyPath(key);
    animation->setDampingRatio(m_parameters.spring->damping);
    animation->setInitialVelocity(m_parameters.spring->initialVelocity);
    return animation;
}

std::shared_ptr<CAAnimation> UIViewAnimationBlock::makeAnimation(
    const CALayer& layer, const NSString& key, std::function<void()> atEnd)
{
    const auto animation = makeTimedAnimation(key);
    animation->setFromValue(CAKeyPath(key).value(layer.presentationValues()));
    animation->setDuration(m_parameters.duration);
    animation->setDelay(std::max(m_parameters.delay, 0.0));
    animation->setFillMode(kCAFillModeBoth); // for the delay, and for those who hold the motion at its end
    m_animated.emplace(layer.layerID(), key);
    ++m_running;
    animation->setCompletion([self = strongSelf(this), atEnd = std::move(atEnd)](bool finished) {
        if (atEnd)
            atEnd();
        self->animationDidEnd(finished);
    });
    return animation;
}

void UIViewAnimationBlock::animationDidEnd(bool finished)
{
    m_allFinished = m_allFinished && finished;
    if (--m_running > 0 || !m_completion)
        return;
    const Completion completion = std::exchange(m_completion, nullptr);
    completion(m_allFinished);
}

void UIViewAnimationBlock::close()
{
    if (m_running == 0)
        completeLater(0, std::exchange(m_completion, nullptr));
}
