#include "platform/layers/CALayerAnimations.h"

#include "platform/layers/CALayer.h"
#include "platform/layers/CAMotionGroup.h"
#include "platform/layers/CATransaction.h"
#include "platform/layers/CATransactionCompletion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
// A wake-up comes at a time computed with rounding; what is as near to its end as this has ended.
constexpr double rounding = 1e-6;

} // namespace

CALayerAnimations::CALayerAnimations(CALayer& layer)
    : m_layer(layer)
{
}

CALayerAnimations::~CALayerAnimations()
{
    cancelWakeUp();
    removeAll();
}

std::vector<CALayerAnimations::Entry>::const_iterator CALayerAnimations::find(const NSString& key) const
{
    if (key.isNull())
        return m_entries.end();
    return std::find_if(
        m_entries.begin(), m_entries.end(), [&key](const Entry& entry) { return entry.key == key; });
}

std::shared_ptr<const CAAnimation> CALayerAnimations::animationForKey(const NSString& key) const
{
    const auto found = find(key);
    return found != m_entries.end() ? found->animation : nullptr;
}

std::vector<NSString> CALayerAnimations::keys() const
{
    std::vector<NSString> keys;
    for (const Entry& entry : m_entries)
        if (!entry.key.isNull())
            keys.push_back(entry.key);
    return keys;
}

bool CALayerAnimations::animates(CAProperty property) const
{
    return std::any_of(m_entries.begin(), m_entries.end(),
        [property](const Entry& entry) { return !entry.ended && entry.animation->animates(property); });
}

void CALayerAnimations::add(const CAAnimation& original, const NSString& key)
{
    remove(key);
    const auto animation = original.copy();
    const CAMoment moment = m_layer.momentAt(Scheduler::current().now());
    animation->resolve(CATransaction::animationDuration());
    if (!animation->timingFunction())
        animation->setTimingFunction(CATransaction::animationTimingFunction());
    joinGroup(*animation, moment);
    const auto group = animation->group();
    if (group)
        group->join(m_layer, *this, animation->timing());
    else if (animation->beginTime() == 0)
        animation->setBeginTime(moment.time + animation->delay());

    const auto completion = CATransaction::completion();
    if (completion)
        completion->animationAdded();
    m_entries.push_back({ key, animation, completion, group.get() });
    wakeForEnd(m_entries.back(), moment);
}

// A copy of one that is in a group keeps its place there. Another joins the group that collects, and counts
// its begin from the group's from then on.
void CALayerAnimations::joinGroup(CAAnimation& animation, const CAMoment& layerMoment) const
{
    const auto own = animation.group();
    if (own && own->state() != CAMotionGroup::State::Settled)
        return;
    if (own)
        animation.setBeginTime(0); // it was the place in a group that is no more
    const auto group = CAMotionGroup::collecting();
    animation.setGroup(group);
    if (group)
        animation.setBeginTime(
            animation.beginTime() == 0 ? animation.delay() : animation.beginTime() - layerMoment.time);
}

void CALayerAnimations::remove(const NSString& key)
{
    const auto found = find(key);
    if (found == m_entries.end())
        return;
    const auto position = m_entries.begin() + (found - m_entries.cbegin());
    discard(*position);
    m_entries.erase(position);
    if (m_entries.empty())
        cancelWakeUp();
}

void CALayerAnimations::removeAll()
{
    for (Entry& entry : m_entries)
        discard(entry);
    m_entries.clear();
    cancelWakeUp();
}

void CALayerAnimations::removeEnding()
{
    std::vector<Entry> endless;
    for (Entry& entry : m_entries) {
        const bool ends = std::isfinite(entry.animation->timing().activeDuration());
        if (ends && !entry.group)
            discard(entry);
        else
            endless.push_back(std::move(entry));
    }
    m_entries = std::move(endless);
    timingDidChange();
}

// No listener is called from inside the call that removes an animation: the scheduler does it right after.
void CALayerAnimations::discard(Entry& entry)
{
    const bool hasListener = entry.completion || entry.animation->hasListener();
    if (entry.ended || !hasListener || !Scheduler::hasCurrent())
        return;
    const bool finished = true;
    Scheduler::current().schedule(0, [entry = std::move(entry)] { tell(entry, !finished); });
}

void CALayerAnimations::apply(
    CALayerValues& shown, const CALayerValues& model, const CAMoment& layerMoment) const
{
    for (const Entry& entry : m_entries)
        entry.animation->applyAt(shown, model, localMoment(entry, layerMoment));
    if (!m_entries.empty())
        shown.opacity = std::clamp(shown.opacity, 0.0, 1.0); // a spring swings beyond its ends
}

CAMoment CALayerAnimations::localMoment(const Entry& entry, const CAMoment& layerMoment) const
{
    const CAMediaTiming& timing = entry.animation->timing();
    if (entry.group)
        return entry.group->momentOf(timing);
    return entry.returned ? CAMoment { 0, 0 } : timing.local(layerMoment);
}

double CALayerAnimations::secondsUntilChange(const CAMoment& layerMoment) const
{
    double earliest = infinity;
    for (const Entry& entry : m_entries) {
        if (entry.group) {
            earliest = entry.group->isMoving() ? 0 : earliest;
            continue;
        }
        const CAMediaTiming& timing = entry.animation->timing();
        const CAMoment local = timing.local(layerMoment);
        const bool standsStill = local.rate == 0;
        if (entry.ended || standsStill || timing.secondsUntilEnd(local) <= 0)
            continue;
        earliest = std::min(earliest, std::max(timing.secondsUntilActive(local), 0.0));
    }
    return earliest;
}

void CALayerAnimations::timingDidChange()
{
    if (!Scheduler::hasCurrent())
        return; // layers may be taken apart after the clock is gone
    const CAMoment moment = m_layer.momentAt(Scheduler::current().now());
    cancelWakeUp();
    std::erase_if(m_entries, [&](const Entry& entry) {
        return entry.returned && entry.animation->timing().local(moment).rate > 0;
    });
    for (const Entry& entry : m_entries)
        wakeForEnd(entry, moment);
}

void CALayerAnimations::wakeForEnd(const Entry& entry, const CAMoment& layerMoment)
{
    const CAMediaTiming& timing = entry.animation->timing();
    if (!entry.ended && !entry.group)
        wakeIn(timing.secondsUntilEnd(timing.local(layerMoment)));
}

// One timer serves all: it is set for the earliest end. One that comes too early finds nothing to end.
void CALayerAnimations::wakeIn(double seconds)
{
    Scheduler& scheduler = Scheduler::current();
    const double time = scheduler.now() + std::max(seconds, 0.0);
    if (!std::isfinite(time) || (m_wakeUp != Scheduler::TimerID::None && m_wakeUpTime <= time))
        return;
    cancelWakeUp();
    m_wakeUpTime = time;
    m_wakeUp = scheduler.schedule(seconds, [weakLayer = m_layer.weak_from_this(), this] {
        if (const auto layer = weakLayer.lock())
            endDue();
    });
}

void CALayerAnimations::cancelWakeUp()
{
    const auto timer = std::exchange(m_wakeUp, Scheduler::TimerID::None);
    if (timer != Scheduler::TimerID::None && Scheduler::hasCurrent())
        Scheduler::current().cancel(timer);
}

void CALayerAnimations::endDue()
{
    m_wakeUp = Scheduler::TimerID::None;
    const CAMoment moment = m_layer.momentAt(Scheduler::current().now());
    std::vector<Entry> due;
    for (Entry& entry : m_entries) {
        const CAMediaTiming& timing = entry.animation->timing();
        const CAMoment local = timing.local(moment);
        if (entry.ended || entry.group || timing.secondsUntilEnd(local) > rounding)
            continue;
        due.push_back(entry);
        entry.ended = true;
        entry.returned = local.rate < 0 && moment.rate < 0;
    }
    std::erase_if(m_entries, [](const Entry& entry) {
        return entry.ended && !entry.group && !entry.returned && entry.animation->isRemovedOnCompletion();
    });
    timingDidChange();
    m_layer.setNeedsFrame();

    const bool finished = true;
    for (const Entry& entry : due)
        tell(entry, finished);
}

std::vector<CALayerAnimations::Ending> CALayerAnimations::endGroup(const CAMotionGroup& group, bool finished)
{
    std::vector<Ending> endings;
    for (Entry& entry : m_entries) {
        const bool hasArrived = !finished || group.hasReachedEnd(entry.animation->timing());
        if (entry.group != &group || entry.ended || !hasArrived)
            continue;
        entry.ended = true;
        endings.push_back([entry, finished] { tell(entry, finished); });
    }
    return endings;
}

void CALayerAnimations::dropGroup(const CAMotionGroup& group)
{
    for (Entry& entry : m_entries)
        if (entry.group == &group)
            discard(entry);
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.group == &group; });
    timingDidChange();
}

void CALayerAnimations::releaseGroup(const CAMotionGroup& group)
{
    std::erase_if(m_entries, [&](const Entry& entry) {
        return entry.group == &group && entry.ended && entry.animation->isRemovedOnCompletion();
    });
    const double now = Scheduler::hasCurrent() ? m_layer.momentAt(Scheduler::current().now()).time : 0;
    for (Entry& entry : m_entries) {
        if (entry.group != &group)
            continue;
        const auto free = entry.animation->copy();
        free->setGroup({});
        free->setBeginTime(now + free->beginTime() - group.time());
        entry.animation = free;
        entry.group = nullptr;
    }
    timingDidChange();
}

void CALayerAnimations::tell(const Entry& entry, bool finished)
{
    entry.animation->tellEnd(finished);
    if (entry.completion)
        entry.completion->animationEnded();
}
