#include "platform/media/SoundLoader.h"

#include "platform/media/AudioSink.h"
#include "platform/media/DecodedSound.h"
#include "platform/media/SlidingSound.h"

#include <algorithm>

namespace {

// Room for what the last packet gives beyond the stated length: a sound that outgrew its memory by that
// little would be held twice while it moves.
constexpr std::size_t packetRoom = 8192;

std::shared_ptr<Sound> decodeWhole(SoundDecoder& decoder, const std::atomic<bool>& cancelled)
{
    const auto channels = static_cast<std::size_t>(decoder.format().channels);
    const auto stated = static_cast<std::size_t>(decoder.frameCount());
    std::vector<Sample> samples;
    samples.reserve((stated + packetRoom) * channels);
    // What is past the stated length is the encoder's padding.
    while (samples.size() < stated * channels && decoder.decodeNext(samples))
        if (cancelled)
            return nullptr;
    samples.resize(std::min(samples.size(), stated * channels));
    if (samples.empty())
        return nullptr;
    return std::make_shared<DecodedSound>(decoder.format(), std::move(samples));
}

} // namespace

std::shared_ptr<Sound> SoundLoader::load(const NSURL& url, const std::atomic<bool>& cancelled)
{
    if (cancelled)
        return nullptr;
    auto decoder = SoundDecoder::open(url);
    if (!decoder || decoder->frameCount() <= 0)
        return nullptr;
    if (decoder->frameCount() <= longestHeldSeconds * decoder->format().sampleRate)
        return decodeWhole(*decoder, cancelled);
    std::vector<Sample> firstSamples; // a long header with nothing behind it is no sound
    if (!decoder->decodeNext(firstSamples) || cancelled)
        return nullptr;
    return std::make_shared<SlidingSound>(std::move(decoder), std::move(firstSamples));
}

void SoundLoader::warmUp()
{
    SoundDecoder::warmUp();
    AudioSink::warmUp();
}
