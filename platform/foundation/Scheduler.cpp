#include "platform/foundation/Scheduler.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

std::atomic<Scheduler*> schedulerInForce = nullptr; // background work asks it for the date

} // namespace

// Fixes now() while timers or a frame run. Turns nest when a test advances the clock inside one; the outer
// turn then goes on at the later time, for the clock never runs backwards.
class Scheduler::Turn {
public:
    Turn(Scheduler& scheduler, double time)
        : m_scheduler(scheduler)
    {
        m_scheduler.m_turnTime = time;
        ++m_scheduler.m_turnDepth;
    }
    ~Turn() { --m_scheduler.m_turnDepth; }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    Scheduler& m_scheduler;
};

Scheduler::~Scheduler()
{
    cancelAll();
    Scheduler* self = this;
    schedulerInForce.compare_exchange_strong(self, nullptr);
}

Scheduler& Scheduler::current()
{
    Scheduler* scheduler = schedulerInForce;
    NSCAssert(scheduler, "Scheduler", QStringLiteral("No scheduler is in force."));
    if (!scheduler)
        std::abort(); // a reference cannot be null, whatever the assertion handler does
    return *scheduler;
}

bool Scheduler::hasCurrent() { return schedulerInForce != nullptr; }

void Scheduler::setCurrent(Scheduler* scheduler) { schedulerInForce = scheduler; }

double Scheduler::now() const { return m_turnDepth > 0 ? m_turnTime : clockNow(); }

Scheduler::TimerID Scheduler::schedule(double delay, std::function<void()> work)
{
    return add(now() + (delay > 0 ? delay : 0), 0, std::move(work)); // not-a-number counts as 0 too
}

Scheduler::TimerID Scheduler::scheduleRepeating(double interval, std::function<void()> work)
{
    NSParameterAssert(interval > 0, "Scheduler", "interval > 0");
    if (!(interval > 0))
        return TimerID::None;
    return add(now() + interval, interval, std::move(work));
}

Scheduler::TimerID Scheduler::add(double dueTime, double interval, std::function<void()> work)
{
    const TimerID timer { ++m_lastID };
    m_timers.emplace(Key { dueTime, timer }, Timer { dueTime, interval, std::move(work) });
    m_dueTimes.emplace(timer, dueTime);
    wakeAt(nextDueTime());
    return timer;
}

void Scheduler::cancel(TimerID timer)
{
    const auto found = m_dueTimes.find(timer);
    if (found == m_dueTimes.end())
        return;
    // What the work holds may ask the scheduler again when it ends: it ends last.
    const auto cancelled = m_timers.extract(Key { found->second, timer });
    m_dueTimes.erase(found);
    wakeAt(nextDueTime());
}

void Scheduler::cancelAll()
{
    const auto cancelled = std::exchange(m_timers, {});
    m_dueTimes.clear();
    m_performs.clear();
}

void Scheduler::performAfterDelay(const Action& action, double delay)
{
    const auto timer = std::make_shared<TimerID>(TimerID::None);
    *timer = schedule(delay, [this, action, timer] {
        std::erase_if(m_performs, [&](const auto& perform) { return perform.second == *timer; });
        action.perform();
    });
    m_performs.emplace_back(action, *timer);
}

void Scheduler::cancelPreviousPerforms(const Action& action)
{
    std::erase_if(m_performs, [&](const auto& perform) {
        if (!(perform.first == action))
            return false;
        cancel(perform.second);
        return true;
    });
}

void Scheduler::requestFrame()
{
    if (std::exchange(m_frameRequested, true))
        return;
    wakeForFrame();
}

void Scheduler::runDueTimers()
{
    const Turn turn(*this, clockNow());
    runTimersOfTurn();
}

void Scheduler::runTimersOfTurn()
{
    const double time = m_turnTime;
    // Timers that the work adds wait for the next turn, so that a delay of 0 cannot hold the loop.
    const TimerID newest { m_lastID };
    std::vector<Key> due;
    for (const auto& [key, timer] : m_timers) {
        if (key.first > time)
            break;
        if (key.second <= newest)
            due.push_back(key);
    }
    for (const Key& key : due)
        if (m_timers.contains(key))
            fire(key.second);
    wakeAt(nextDueTime());
}

void Scheduler::fire(TimerID timer)
{
    auto node = m_timers.extract(Key { m_dueTimes.at(timer), timer });
    Timer& entry = node.mapped();
    const auto work = entry.work;
    if (entry.interval > 0) {
        // Missed intervals are left out: the next firing is a whole number of intervals after the first, and
        // later than now.
        const double intervals = std::floor((now() - entry.dueTime) / entry.interval) + 1;
        entry.dueTime += intervals * entry.interval;
        m_dueTimes[timer] = entry.dueTime;
        node.key() = Key { entry.dueTime, timer };
        m_timers.insert(std::move(node));
    } else {
        m_dueTimes.erase(timer);
    }
    work();
}

void Scheduler::runFrame()
{
    const Turn turn(*this, clockNow());
    runTimersOfTurn(); // at the time of the frame: the clock may have moved on since
    m_frameRequested = false;
    if (const auto handler = m_frameHandler) // a copy: the handler may set another one
        handler();
}

double Scheduler::nextDueTime() const
{
    return m_timers.empty() ? std::numeric_limits<double>::infinity() : m_timers.begin()->first.first;
}
