// How samples lie in memory: signed 16-bit, a frame holding one sample for each channel.
#pragma once

#include <cstdint>

struct SoundFormat {
    int sampleRate = 0; // frames in a second
    int channels = 0; // 1 or 2

    bool operator==(const SoundFormat&) const = default;
};

using Sample = std::int16_t;
