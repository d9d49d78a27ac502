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

std::unique_ptr<AudioSink> AudioSink::openOnDevice(SoundFormat format, Handlers handlers)
{
    const Maker& maker = makerInForce();
    return maker ? maker(format, std::move(handlers)) : PulseSink::open(format, std::move(handlers));
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
