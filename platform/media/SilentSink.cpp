#include "platform/media/SilentSink.h"

#include "platform/foundation/Scheduler.h"

#include <cmath>

SilentSink::SilentSink(SoundFormat format)
    : m_format(format)
    , m_startTime(Scheduler::current().now())
{
}

std::int64_t SilentSink::framesPassed() const
{
    return std::llround((Scheduler::current().now() - m_startTime) * m_format.sampleRate);
}
