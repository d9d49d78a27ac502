#include "platform/layers/CALayerAnimations.h"

#include "platform/layers/CALayer.h"
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
    if (animation->beginTime() == 0)
        animation->setBeginTime(moment.time);

    const auto completion = CATransaction::completion();
    if (completion)
        completion->animationAdded();
    m_entries.push_back({ key, animation, completion });
    wakeIn(animation->timing().secondsUntilEnd(animation->timing().local(moment)));
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
        if (std::isfinite(entry.animation->timing().activeDuration()))
            discard(entry);
        else
            endless.push_back(std::move(entry));
    }
    m_entries = std::move(endless);
    timingDidChange();
}

// Nobody is called from inside the call that removes an animation.
void CALayerAnimations::discard(Entry& entry)
{
    const bool isHeard = entry.completion || entry.animation->hasListener();
    if (entry.ended || !isHeard || !Scheduler::hasCurrent())
        return;
    const bool finished = true;
    Scheduler::current().schedule(0, [entry = std::move(entry)] { tell(entry, !finished); });
}

void CALayerAnimations::apply(
    CALayerValues& shown, const CALayerValues& model, const CAMoment& layerMoment) const
{
    for (const Entry& entry : m_entries)
        entry.animation->apply(shown, model, layerMoment);
}

double CALayerAnimations::secondsUntilChange(const CAMoment& layerMoment) const
{
    double earliest = infinity;
    for (const Entry& entry : m_entries) {
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
    for (const Entry& entry : m_entries)
        if (!entry.ended)
            wakeIn(entry.animation->timing().secondsUntilEnd(entry.animation->timing().local(moment)));
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
        if (entry.ended || timing.secondsUntilEnd(timing.local(moment)) > rounding)
            continue;
        due.push_back(entry);
        entry.ended = true;
    }
    std::erase_if(m_entries,
        [](const Entry& entry) { return entry.ended && entry.animation->isRemovedOnCompletion(); });
    timingDidChange();
    m_layer.setNeedsFrame();

    const bool finished = true;
    for (const Entry& entry : due)
        tell(entry, finished);
}

void CALayerAnimations::tell(const Entry& entry, bool finished)
{
    entry.animation->tellEnd(finished);
    if (entry.completion)
        entry.completion->animationEnded();
}
