#include "tests/support/ManualScheduler.h"

#include <algorithm>
#include <limits>

ManualScheduler::ManualScheduler()
    : m_startDate(QDate(2024, 5, 17), QTime(12, 0), Qt::UTC)
    , m_previous(hasCurrent() ? &current() : nullptr)
{
    setCurrent(this);
}

ManualScheduler::~ManualScheduler()
{
    cancelAll(); // the work's owners may still ask for the scheduler when they end
    setCurrent(m_previous);
}

void ManualScheduler::advance(double seconds)
{
    const double end = m_time + seconds;
    const double rounding = 1e-12; // times are sums of floating-point steps
    while (true) {
        const double frame = isFrameRequested() ? std::max(m_time, m_lastFrame + m_frameInterval)
                                                : std::numeric_limits<double>::infinity();
        const double lastStop = nextDueTime() <= end + rounding ? std::max(nextDueTime(), end) : end;
        const double stop = std::min({ std::max(nextDueTime(), m_time), frame, lastStop });
        m_time = stop;
        if (frame <= stop) {
            m_lastFrame = stop;
            ++m_framesRun;
            runFrame();
        } else {
            runDueTimers();
        }
        if (m_afterTurn)
            m_afterTurn();
        const bool moreDue = nextDueTime() <= end + rounding && nextDueTime() > stop;
        if (stop >= end && !moreDue)
            return;
        if (nextDueTime() <= stop && stop >= end)
            return; // a timer that re-arms itself with no delay waits for the next call
    }
}

bool ManualScheduler::runFrameIfRequested()
{
    if (!isFrameRequested())
        return false;
    m_lastFrame = m_time;
    ++m_framesRun;
    runFrame();
    return true;
}
