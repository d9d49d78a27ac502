#include "platform/media/PeriodicTimeObserver.h"

#include <algorithm>

namespace {

// A display shows no more positions in a second, and a tiny interval must not keep the main thread busy.
constexpr double shortestInterval = 0.01;

double secondsOf(CMTime interval)
{
    const double seconds = CMTimeGetSeconds(interval);
    return std::isfinite(seconds) && seconds > 0 ? std::max(seconds, shortestInterval) : 0;
}

} // namespace

PeriodicTimeObserver::PeriodicTimeObserver(CMTime interval, DispatchQueue& queue, Block block)
    : m_interval(secondsOf(interval))
    , m_queue(queue)
    , m_delivery(std::make_shared<Delivery>())
{
    m_delivery->block = std::move(block);
}

PeriodicTimeObserver::~PeriodicTimeObserver() { stop(); }

void PeriodicTimeObserver::startTicking(const std::function<void()>& work)
{
    pauseTicking();
    if (m_interval > 0 && m_delivery)
        m_timer = Scheduler::current().scheduleRepeating(m_interval, work);
}

void PeriodicTimeObserver::pauseTicking()
{
    if (m_timer != Scheduler::TimerID::None)
        Scheduler::current().cancel(std::exchange(m_timer, Scheduler::TimerID::None));
}

void PeriodicTimeObserver::tell(CMTime time)
{
    if (!m_delivery || !m_delivery->block)
        return;
    m_queue.async([delivery = m_delivery, time] {
        if (!delivery->isStopped)
            delivery->block(time);
    });
}

void PeriodicTimeObserver::stop()
{
    pauseTicking();
    if (!m_delivery)
        return;
    m_delivery->isStopped = true;
    m_delivery.reset();
}
