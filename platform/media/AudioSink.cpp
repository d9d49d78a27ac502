#include "platform/media/AudioSink.h"

#include "platform/media/PulseSink.h"

#include <utility>

namespace {

// Empty: the system's own.
AudioSink::Maker& makerInForce()
{
    static AudioSink::Maker maker;
    return maker;
}

} // namespace

std::unique_ptr<AudioSink> AudioSink::startOnDevice(
    SoundFormat format, std::shared_ptr<SampleSource> source, LossHandler handler)
{
    const Maker& maker = makerInForce();
    if (maker)
        return maker(format, std::move(source), std::move(handler));
    return PulseSink::start(format, std::move(source), std::move(handler));
}

void AudioSink::warmUp()
{
    if (!makerInForce())
        PulseConnection::shared();
}

AudioSink::Replacement::Replacement(Maker maker)
    : m_previous(std::exchange(makerInForce(), std::move(maker)))
{
}

AudioSink::Replacement::~Replacement() { makerInForce() = std::move(m_previous); }
