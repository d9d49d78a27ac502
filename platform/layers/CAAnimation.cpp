#include "platform/layers/CAAnimation.h"

#include "platform/foundation/Messages.h"

CAAnimation::CAAnimation(const CAAnimation& other)
    : NSObject()
    , m_timing(other.m_timing)
    , m_delay(other.m_delay)
    , m_timingFunction(other.m_timingFunction)
    , m_removedOnCompletion(other.m_removedOnCompletion)
    , m_delegate(other.m_delegate)
    , m_completion(other.m_completion)
    , m_group(other.m_group)
{
}

void CAAnimation::apply(CALayerValues& shown, const CALayerValues& model, const CAMoment& parent) const
{
    applyAt(shown, model, m_timing.local(parent));
}

void CAAnimation::applyAt(CALayerValues& shown, const CALayerValues& model, const CAMoment& local) const
{
    if (const auto progress = m_timing.progress(local))
        applyProgress(shown, model, *progress);
}

void CAAnimation::resolve(double duration)
{
    if (!(m_timing.duration > 0))
        m_timing.duration = duration;
}

bool CAAnimation::hasListener() const { return m_completion || !m_delegate.expired(); }

void CAAnimation::tellEnd(bool finished) const
{
    const KeepAlive keepAlive(*this); // a listener may drop the last other reference
    sendMessage(*this, m_delegate, &CAAnimationDelegate::animationDidStop, *this, finished);
    if (m_completion)
        m_completion(finished);
}

double CAAnimation::paced(double progress) const
{
    return m_timingFunction ? m_timingFunction->valueAt(progress) : progress;
}
