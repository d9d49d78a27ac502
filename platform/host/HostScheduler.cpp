#include "platform/host/HostScheduler.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// A display that paces itself may wake a little early after a late frame; less than this is a runaway.
constexpr double displayTolerance = 0.75;

} // namespace

HostScheduler::HostScheduler()
    : m_lastFrameTime(-std::numeric_limits<double>::infinity())
{
    m_wakeTimer.setSingleShot(true);
    m_wakeTimer.setTimerType(Qt::PreciseTimer);
    m_frameTimer.setSingleShot(true);
    m_frameTimer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_wakeTimer, &QTimer::timeout, [this] { runDueTimers(); });
    QObject::connect(&m_frameTimer, &QTimer::timeout, [this] { askForFrame(); });
    setCurrent(this);
}

HostScheduler::~HostScheduler() = default;

NSDate HostScheduler::currentDate() const { return NSDate::currentDateTime(); }

double HostScheduler::clockNow() const
{
    return std::chrono::duration<double>(Clock::now() - m_start).count();
}

void HostScheduler::setRefreshInterval(double seconds)
{
    NSParameterAssert(seconds > 0, "HostScheduler", "seconds > 0");
    if (seconds > 0)
        m_refreshInterval = seconds;
}

void HostScheduler::wakeAt(double time)
{
    if (std::isinf(time)) {
        m_wakeTimer.stop();
        return;
    }
    if (m_wakeTimer.isActive() && m_wakeTime == time)
        return;
    m_wakeTime = time;
    startTimer(m_wakeTimer, time);
}

// Rounds up: a timer that comes early would find nothing due and be set again.
void HostScheduler::startTimer(QTimer& timer, double time) const
{
    const double milliseconds = std::ceil((time - clockNow()) * 1000);
    constexpr double longest = std::numeric_limits<int>::max();
    timer.start(static_cast<int>(std::clamp(milliseconds, 0.0, longest)));
}

void HostScheduler::wakeForFrame()
{
    const double spacing = m_refreshInterval * (m_pacedByDisplay ? displayTolerance : 1);
    const double time = clockNow();
    m_frameDueTime = std::max(time, m_lastFrameTime + m_refreshInterval);
    m_earliestFrameTime = m_lastFrameTime + spacing;
    // Never at once: whoever asks is in the middle of a change.
    startTimer(m_frameTimer, std::max(time, m_earliestFrameTime));
}

void HostScheduler::askForFrame()
{
    if (m_requester)
        m_requester();
}

bool HostScheduler::displayFrame()
{
    if (!isFrameRequested() || clockNow() < m_earliestFrameTime)
        return false;
    m_frameTimer.stop();
    m_lastFrameDueTime = m_frameDueTime;
    // On the grid of the display rather than when this frame happened to start: a late start must not
    // push all the frames after it.
    const double time = clockNow();
    const double gridTime = m_lastFrameTime + m_refreshInterval;
    m_lastFrameTime = time - gridTime < m_refreshInterval / 2 && time > gridTime ? gridTime : time;
    runFrame();
    return true;
}
