// The part of AudioSink that knows which sinks there are.

#include "platform/media/AudioSink.h"
#include "platform/media/PulseSink.h"

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
