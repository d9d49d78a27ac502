// The part of UIGestureRecognizer in which one gesture waits for the failure of others.

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/UIGestureRecognizer.h"
#include "platform/views/UITouch.h"

#include <algorithm>

void UIGestureRecognizer::requireGestureRecognizerToFail(const std::shared_ptr<UIGestureRecognizer>& other)
{
    const bool isAnother = other && other.get() != this;
    NSParameterAssert(isAnother, "UIGestureRecognizer", "other is another recogniser");
    if (!isAnother)
        return;
    const auto known = requirements();
    if (std::find(known.begin(), known.end(), other) == known.end())
        m_requirements.push_back(other);
}

UIGestureRecognizers UIGestureRecognizer::requirements() const
{
    UIGestureRecognizers alive;
    for (const auto& held : m_requirements)
        if (auto other = held.lock())
            alive.push_back(std::move(other));
    return alive;
}

bool UIGestureRecognizer::waitsFor(const UIGestureRecognizer& other) const
{
    return std::any_of(m_waitsFor.begin(), m_waitsFor.end(), [&](const auto& held) {
        const auto waitedFor = held.lock();
        return waitedFor && (waitedFor.get() == &other || waitedFor->waitsFor(other));
    });
}

// Undecided, or about to see a touch that has just begun and came here first.
bool UIGestureRecognizer::mayStillRecognize(const UIGestureRecognizer& other) const
{
    if (other.isUndecided())
        return true;
    const bool isIdle
        = other.m_enabled && other.m_view && other.m_state == UIGestureRecognizerState::Possible;
    return isIdle && std::any_of(m_touches.begin(), m_touches.end(), [&](const auto& touch) {
        const auto expected = touch->gestureRecognizers();
        return touch->phase() == UITouchPhase::Began
            && std::any_of(
                expected.begin(), expected.end(), [&](const auto& one) { return one.get() == &other; });
    });
}

bool UIGestureRecognizer::mustWaitFor(UIGestureRecognizer& other)
{
    const auto known = requirements();
    if (std::any_of(known.begin(), known.end(), [&](const auto& one) { return one.get() == &other; }))
        return true;
    const auto own = delegate();
    if (own && own->gestureRecognizerShouldRequireFailure(*this, other))
        return true;
    const auto others = other.delegate();
    return others && others->gestureRecognizerShouldBeRequiredToFail(other, *this);
}

void UIGestureRecognizer::waitForRequirements()
{
    UIGestureRecognizers candidates = requirements();
    const auto touches = m_touches;
    for (const auto& touch : touches)
        for (const auto& other : touch->gestureRecognizers())
            if (other.get() != this
                && std::find(candidates.begin(), candidates.end(), other) == candidates.end())
                candidates.push_back(other);
    for (const auto& other : candidates) {
        const bool waits = mayStillRecognize(*other) && !other->waitsFor(*this) && mustWaitFor(*other);
        if (!isWaiting())
            return; // stopped by one of those who were asked
        if (!waits)
            continue;
        m_waitsFor.push_back(other);
        other->m_dependents.push_back(weakSelf(this));
    }
}

void UIGestureRecognizer::requirementDecided(const UIGestureRecognizer& other)
{
    const auto isDone = [&](const auto& held) {
        const auto waitedFor = held.lock();
        return !waitedFor || waitedFor.get() == &other;
    };
    if (std::erase_if(m_waitsFor, isDone) == 0 || !isWaiting())
        return;
    const auto keepAlive = shared_from_this();
    if (other.isRecognized())
        enter(UIGestureRecognizerState::Failed);
    else
        beginWhenFree();
}

void UIGestureRecognizer::tellDependents()
{
    for (const auto& held : std::exchange(m_dependents, {}))
        if (const auto dependent = held.lock())
            dependent->requirementDecided(*this);
}
