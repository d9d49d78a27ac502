// How the frames of a run went: counted, timed, and told.
//
// Frame times are kept in buckets of 10 µs, so that a run of days needs no more memory than one of
// seconds; what takes longer than the last bucket counts as the longest one seen.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <cstdint>
#include <vector>

class FrameStatistics {
public:
    FrameStatistics();

    // A frame was drawn. All in seconds: when it was due, when its work began and when it was done,
    // on one clock, and the time between two refreshes of the display.
    void addFrame(double dueTime, double beginTime, double endTime, double refreshInterval);
    // From the start of the process to the end of the first frame, in seconds.
    void setTimeToFirstFrame(double seconds) { m_timeToFirstFrame = seconds; }
    void setTexturesUploaded(std::int64_t count) { m_texturesUploaded = count; }
    void setPeakMemory(std::int64_t bytes) { m_peakMemory = bytes; }

    std::int64_t framesDrawn() const { return m_framesDrawn; }
    // The refreshes of the display that passed while a frame that was due had not come.
    std::int64_t droppedFrames() const { return m_droppedFrames; }
    // The frame time, in seconds, that the fraction (0 to 1) of all frames stays at or below; 0 without
    // frames.
    double percentile(double fraction) const;
    double median() const { return percentile(0.5); }
    double timeToFirstFrame() const { return m_timeToFirstFrame; }
    std::int64_t texturesUploaded() const { return m_texturesUploaded; }
    std::int64_t peakMemory() const { return m_peakMemory; }

    // One figure a line, "name: value unit"; names and order are stable, so that programs may read them.
    NSString report() const;

private:
    std::vector<std::uint32_t> m_buckets;
    double m_longest = 0;
    double m_timeToFirstFrame = 0;
    std::int64_t m_framesDrawn = 0;
    std::int64_t m_droppedFrames = 0;
    std::int64_t m_texturesUploaded = 0;
    std::int64_t m_peakMemory = 0;
};
