// Keeps the time of a sound while there is no sound device: its frames go by unheard, at their rate.
#pragma once

#include "platform/media/SoundFormat.h"

class SilentSink {
public:
    explicit SilentSink(SoundFormat); // the time begins

    std::int64_t framesPassed() const;

private:
    const SoundFormat m_format;
    const double m_startTime;
};
