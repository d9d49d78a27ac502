#include "platform/media/DecodedSound.h"

#include <algorithm>

DecodedSound::DecodedSound(SoundFormat format, std::vector<Sample> samples)
    : Sound(format, static_cast<std::int64_t>(samples.size()) / format.channels)
    , m_samples(std::move(samples))
{
}

void DecodedSound::read(std::int64_t frame, Sample* into, std::size_t frames)
{
    const auto channels = static_cast<std::size_t>(format().channels);
    std::copy_n(m_samples.data() + static_cast<std::size_t>(frame) * channels, frames * channels, into);
}
