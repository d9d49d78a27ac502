// Keeps the time where there is no sound device: what it is given is heard by nobody, on time.
#pragma once

#include "platform/media/AudioSink.h"

class SilentSink final : public AudioSink {
public:
    explicit SilentSink(SoundFormat);

    std::int64_t framesHeard() const override;

private:
    const SoundFormat m_format;
    const double m_startTime;
};
