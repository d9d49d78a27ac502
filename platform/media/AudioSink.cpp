#include "platform/media/AudioSink.h"

#include <utility>

AudioSink::Maker& AudioSink::makerInForce()
{
    static Maker maker;
    return maker;
}

AudioSink::Replacement::Replacement(Maker maker)
    : m_previous(std::exchange(makerInForce(), std::move(maker)))
{
}

AudioSink::Replacement::~Replacement() { makerInForce() = std::move(m_previous); }
