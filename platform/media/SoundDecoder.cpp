#include "platform/media/SoundDecoder.h"

#include "platform/media/LibavDecoder.h"

namespace {

SoundDecoder::Opener& openerInForce()
{
    static SoundDecoder::Opener opener = &LibavDecoder::openFile;
    return opener;
}

} // namespace

std::unique_ptr<SoundDecoder> SoundDecoder::open(const NSURL& url) { return openerInForce()(url); }

void SoundDecoder::warmUp() { LibavLibrary::shared(); }

SoundDecoder::Replacement::Replacement(Opener opener)
    : m_previous(std::exchange(openerInForce(), std::move(opener)))
{
}

SoundDecoder::Replacement::~Replacement() { openerInForce() = std::move(m_previous); }
