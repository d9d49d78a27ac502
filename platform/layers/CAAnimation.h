// An animation: what it does to the values that a layer shows, as a function of time.
//
// It is set up, then added to layers; each layer takes a copy, so what is changed afterwards changes
// nothing on the screen. The model of the layer is never touched. Main thread only.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/layers/CAKeyPath.h"
#include "platform/layers/CAMediaTiming.h"
#include "platform/layers/CAMediaTimingFunction.h"

#include <functional>

class CAAnimation;
class CAMotionGroup;

class CAAnimationDelegate {
public:
    // animationDidStop:finished: — once, from the scheduler: finished when the animation ran to its end,
    // not finished when it was removed or replaced or its layer went away.
    virtual void animationDidStop(const CAAnimation&, bool /*finished*/) { }

protected:
    ~CAAnimationDelegate() = default;
};

class CAAnimation : public NSObject {
public:
    using Completion = std::function<void(bool finished)>;

    CAAnimation() = default;
    CAAnimation(const CAAnimation&);

    // In the time of the layer (of the group, for an animation in one); 0: when it is added.
    double beginTime() const { return m_timing.beginTime; }
    void setBeginTime(double time) { m_timing.beginTime = time; }
    // Seconds of the same time that pass before it begins, where no begin is given.
    double delay() const { return m_delay; }
    void setDelay(double delay) { m_delay = delay; }
    double timeOffset() const { return m_timing.timeOffset; }
    void setTimeOffset(double offset) { m_timing.timeOffset = offset; }
    double speed() const { return m_timing.speed; }
    void setSpeed(double speed) { m_timing.speed = speed; }
    // 0: that of the transaction in which it is added, or of the group that it is in.
    double duration() const { return m_timing.duration; }
    void setDuration(double duration) { m_timing.duration = duration; }
    double repeatCount() const { return m_timing.repeatCount; }
    void setRepeatCount(double count) { m_timing.repeatCount = count; }
    double repeatDuration() const { return m_timing.repeatDuration; }
    void setRepeatDuration(double duration) { m_timing.repeatDuration = duration; }
    bool autoreverses() const { return m_timing.autoreverses; }
    void setAutoreverses(bool autoreverses) { m_timing.autoreverses = autoreverses; }
    CAFillMode fillMode() const { return m_timing.fillMode; }
    void setFillMode(CAFillMode mode) { m_timing.fillMode = mode; }
    const CAMediaTiming& timing() const { return m_timing; }

    // nil: even pace.
    const std::shared_ptr<CAMediaTimingFunction>& timingFunction() const { return m_timingFunction; }
    void setTimingFunction(std::shared_ptr<CAMediaTimingFunction> function)
    {
        m_timingFunction = std::move(function);
    }
    // Whether the layer drops the animation when it ends; YES by default.
    bool isRemovedOnCompletion() const { return m_removedOnCompletion; }
    void setRemovedOnCompletion(bool removed) { m_removedOnCompletion = removed; }

    void setDelegate(std::weak_ptr<CAAnimationDelegate> delegate) { m_delegate = std::move(delegate); }
    // Called as the delegate is, after it.
    void setCompletion(Completion completion) { m_completion = std::move(completion); }

    virtual std::shared_ptr<CAAnimation> copy() const = 0;

    // --- For layers and groups -----------------------------------------------------------------------

    // Works on the shown values; the parent is the moment of the layer or animation group.
    void apply(CALayerValues& shown, const CALayerValues& model, const CAMoment& parent) const;
    // The same at a moment of the animation's own time.
    void applyAt(CALayerValues& shown, const CALayerValues& model, const CAMoment& local) const;
    virtual bool animates(CAProperty) const = 0;
    // Gives what was left open, here and below, its value.
    virtual void resolve(double duration);
    // The motions that it was started with and whose time it goes by: its begin counts from theirs. A copy
    // belongs to the same, so what is made to follow it keeps step with it. Null for most.
    std::shared_ptr<CAMotionGroup> group() const { return m_group.lock(); }
    void setGroup(std::weak_ptr<CAMotionGroup> group) { m_group = std::move(group); }
    bool hasListener() const;
    void tellEnd(bool finished) const;

protected:
    // The progress is that of the run, before any pacing.
    virtual void applyProgress(CALayerValues& shown, const CALayerValues& model, double progress) const = 0;
    // The timing function's value.
    double paced(double progress) const;

private:
    CAMediaTiming m_timing;
    double m_delay = 0;
    std::shared_ptr<CAMediaTimingFunction> m_timingFunction;
    bool m_removedOnCompletion = true;
    std::weak_ptr<CAAnimationDelegate> m_delegate;
    Completion m_completion;
    std::weak_ptr<CAMotionGroup> m_group;
};
