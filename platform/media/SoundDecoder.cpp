#include "platform/media/SoundDecoder.h"

#include <utility>

SoundDecoder::Opener& SoundDecoder::openerInForce()
{
    static Opener opener;
    return opener;
}

SoundDecoder::Replacement::Replacement(Opener opener)
    : m_previous(std::exchange(openerInForce(), std::move(opener)))
{
}

SoundDecoder::Replacement::~Replacement() { openerInForce() = std::move(m_previous); }
