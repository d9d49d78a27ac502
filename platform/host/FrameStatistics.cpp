#include "platform/host/FrameStatistics.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double bucketWidth = 10e-6;
constexpr std::size_t bucketCount = 20000; // up to 0.2 s

NSString milliseconds(double seconds) { return NSString::number(seconds * 1000, 'f', 2); }

} // namespace

FrameStatistics::FrameStatistics()
    : m_buckets(bucketCount + 1) // the last one holds what is longer
{
}

void FrameStatistics::addFrame(double dueTime, double beginTime, double endTime, double refreshInterval)
{
    const double duration = std::max(endTime - beginTime, 0.0);
    const double bucket = std::min(std::floor(duration / bucketWidth), double(bucketCount));
    ++m_buckets[static_cast<std::size_t>(bucket)];
    m_longest = std::max(m_longest, duration);
    ++m_framesDrawn;
    if (refreshInterval > 0 && endTime > dueTime)
        m_droppedFrames += static_cast<std::int64_t>((endTime - dueTime) / refreshInterval);
}

double FrameStatistics::percentile(double fraction) const
{
    if (m_framesDrawn == 0)
        return 0;
    const double wanted = std::max(std::ceil(fraction * double(m_framesDrawn)), 1.0);
    double counted = 0;
    for (std::size_t bucket = 0; bucket < bucketCount; ++bucket) {
        counted += m_buckets[bucket];
        if (counted >= wanted)
            return std::min((double(bucket) + 0.5) * bucketWidth, m_longest);
    }
    return m_longest;
}

NSString FrameStatistics::report() const
{
    return NSString("time to first frame: %1 ms\n"
                    "frames drawn: %2\n"
                    "frame time, median: %3 ms\n"
                    "frame time, 99th percentile: %4 ms\n"
                    "dropped frames: %5\n"
                    "peak memory: %6 MiB\n"
                    "textures uploaded: %7\n")
        .arg(milliseconds(m_timeToFirstFrame))
        .arg(m_framesDrawn)
        .arg(milliseconds(median()), milliseconds(percentile(0.99)))
        .arg(m_droppedFrames)
        .arg(double(m_peakMemory) / (1024 * 1024), 0, 'f', 1)
        .arg(m_texturesUploaded);
}
