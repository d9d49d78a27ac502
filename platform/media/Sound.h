// The samples of one sound, held so that a sound device can ask for any of them at any time.
//
// Every method may be called from any thread.
#pragma once

#include "platform/media/SoundFormat.h"

#include <cstddef>
#include <functional>

class Sound {
public:
    Sound(SoundFormat format, std::int64_t frameCount)
        : m_format(format)
        , m_frameCount(frameCount)
    {
    }
    virtual ~Sound() = default;
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;

    SoundFormat format() const { return m_format; }
    std::int64_t frameCount() const { return m_frameCount; }

    // Copies the frames, all of them inside the sound; what has not been decoded in time is silence.
    virtual void read(std::int64_t frame, Sample* into, std::size_t frames) = 0;
    // Calls back, from whatever thread and perhaps at once, when reading from that frame on can begin.
    virtual void prepare(std::int64_t frame, std::function<void()> whenReady) = 0;

private:
    const SoundFormat m_format;
    const std::int64_t m_frameCount;
};
