#include "platform/layers/CAMotionGroup.h"

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layers/CALayer.h"
#include "platform/layers/CALayerAnimations.h"

#include <algorithm>
#include <cmath>

namespace {

std::vector<std::shared_ptr<CAMotionGroup>> collectingGroups;

// Sums and products of seconds are not exact: as near to an end as this is the end.
constexpr double rounding = 1e-9;

const CALayer& rootOf(const CALayer& layer)
{
    const CALayer* root = &layer;
    while (root->superlayer())
        root = root->superlayer();
    return *root;
}

// When the animation ends, on the time line on which its begin counts.
double endOf(const CAMediaTiming& timing)
{
    const double lastMoment = timing.speed < 0 ? 0 : timing.activeDuration();
    return timing.beginTime + (lastMoment - timing.timeOffset) / timing.speed;
}

} // namespace

// --- Collecting ------------------------------------------------------------------------------------------

std::shared_ptr<CAMotionGroup> CAMotionGroup::collecting()
{
    if (collectingGroups.empty() || collectingGroups.back()->state() == State::Settled)
        return nullptr;
    return collectingGroups.back();
}

CAMotionGroup::Collection::Collection(std::shared_ptr<CAMotionGroup> group)
{
    collectingGroups.push_back(std::move(group));
}

CAMotionGroup::Collection::~Collection() { collectingGroups.pop_back(); }

void CAMotionGroup::join(CALayer& layer, CALayerAnimations& animations, const CAMediaTiming& timing)
{
    const double end = endOf(timing);
    if (std::isfinite(end))
        m_lastEnd = std::max(m_lastEnd, end);
    const bool isMember = std::any_of(m_members.begin(), m_members.end(),
        [&](const Member& member) { return member.animations == &animations && !member.layer.expired(); });
    if (!isMember)
        m_members.push_back({ layer.weak_from_this(), &animations });
    m_treeSpeed = rootOf(layer).speed();
}

CAMotionGroup::~CAMotionGroup() { settle(Outcome::Kept); }

template <typename Visit> void CAMotionGroup::visitMembers(Visit visit)
{
    const auto members = m_members; // whoever is told something may add motions
    for (const Member& member : members)
        if (const auto object = member.layer.lock()) {
            static_cast<CALayer&>(*object).setNeedsFrame();
            visit(*member.animations);
        }
}

// --- Time ------------------------------------------------------------------------------------------------

void CAMotionGroup::setDuration(double seconds)
{
    const bool usable = std::isfinite(seconds) && seconds >= 0;
    NSParameterAssert(usable, "CAMotionGroup", "seconds >= 0");
    if (usable)
        m_duration = seconds;
}

double CAMotionGroup::fraction() const
{
    if (!isMoving())
        return m_fraction;
    const double elapsed = Scheduler::current().now() - m_run.start;
    if (elapsed >= m_run.length)
        return m_run.to;
    const double share = elapsed / m_run.length;
    const double way = m_run.pace ? m_run.pace->valueAt(share) : share;
    return std::clamp(m_run.from + (m_run.to - m_run.from) * way, 0.0, 1.0);
}

void CAMotionGroup::setFraction(double fraction)
{
    NSParameterAssert(std::isfinite(fraction), "CAMotionGroup", "isfinite(fraction)");
    if (m_state != State::Held || !std::isfinite(fraction))
        return;
    m_fraction = std::clamp(fraction, 0.0, 1.0);
    visitMembers([](CALayerAnimations&) {});
}

CAMoment CAMotionGroup::momentOf(const CAMediaTiming& timing) const { return timing.local({ time(), 0 }); }

bool CAMotionGroup::hasReachedEnd(const CAMediaTiming& timing) const
{
    return time() >= endOf(timing) - rounding;
}

// --- Letting go ------------------------------------------------------------------------------------------

void CAMotionGroup::finish(double speed, Pace pace) { run(State::Finishing, 1, speed, std::move(pace)); }

void CAMotionGroup::cancel(double speed, Pace pace) { run(State::Cancelling, 0, speed, std::move(pace)); }

void CAMotionGroup::run(State towards, double to, double speed, Pace pace)
{
    const bool usable = std::isfinite(speed) && speed > 0;
    NSParameterAssert(usable, "CAMotionGroup", "speed > 0");
    if (m_state != State::Held)
        return;
    const double wholeSpeed = (usable ? speed : 1) * (m_treeSpeed > 0 ? m_treeSpeed : 1);
    const double seconds = std::abs(to - m_fraction) * duration() / wholeSpeed;
    m_run = { Scheduler::current().now(), seconds, m_fraction, to, std::move(pace) };
    m_state = towards;
    m_arrival = Scheduler::current().schedule(seconds, [weakGroup = std::weak_ptr(strongSelf(this))] {
        if (const auto group = weakGroup.lock())
            group->arrive();
    });
    visitMembers([](CALayerAnimations&) {});
}

void CAMotionGroup::arrive()
{
    const KeepAlive keepAlive(*this);
    m_arrival = Scheduler::TimerID::None;
    const bool finished = m_state == State::Finishing;
    m_fraction = m_run.to;
    m_state = finished ? State::Finished : State::Cancelled;
    tellArrival(finished);
}

// Everybody is found before anybody is told: who is told may settle the group.
void CAMotionGroup::tellArrival(bool finished)
{
    std::vector<CALayerAnimations::Ending> endings;
    visitMembers([&](CALayerAnimations& animations) {
        auto here = animations.endGroup(*this, finished);
        endings.insert(endings.end(), here.begin(), here.end());
    });
    const auto ends = std::exchange(m_ends, {});
    for (const auto& ending : endings)
        ending();
    for (const End& end : ends)
        end(finished);
}

void CAMotionGroup::cancelArrival()
{
    const auto timer = std::exchange(m_arrival, Scheduler::TimerID::None);
    if (timer != Scheduler::TimerID::None && Scheduler::hasCurrent())
        Scheduler::current().cancel(timer);
}

void CAMotionGroup::settle(Outcome outcome)
{
    if (m_state == State::Settled)
        return;
    const KeepAlive keepAlive(*this); // not in the destructor
    if (outcome == Outcome::TakenBack)
        m_changes.takeBack();
    m_fraction = fraction();
    m_state = State::Settled;
    cancelArrival();
    visitMembers([&](CALayerAnimations& animations) {
        if (outcome == Outcome::TakenBack)
            animations.dropGroup(*this);
        else
            animations.releaseGroup(*this);
    });
    m_members.clear();
    if (!m_ends.empty() && Scheduler::hasCurrent())
        Scheduler::current().schedule(0, [ends = std::exchange(m_ends, {}), outcome] {
            for (const End& end : ends)
                end(outcome == Outcome::Kept);
        });
}
