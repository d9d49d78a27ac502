// A sound that is wholly in memory. Its samples never change, so threads share them without a lock.
#pragma once

#include "platform/media/Sound.h"

#include <vector>

class DecodedSound final : public Sound {
public:
    // The samples are whole frames.
    DecodedSound(SoundFormat, std::vector<Sample> samples);

    void read(std::int64_t frame, Sample* into, std::size_t frames) override;
    void prepare(std::int64_t, std::function<void()> whenReady) override { whenReady(); }

private:
    const std::vector<Sample> m_samples;
};
