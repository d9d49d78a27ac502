// The part of SoundDecoder that knows which decoders there are.

#include "platform/media/LibavDecoder.h"
#include "platform/media/SoundDecoder.h"

std::unique_ptr<SoundDecoder> SoundDecoder::open(const NSURL& url)
{
    const Opener& opener = openerInForce();
    return opener ? opener(url) : LibavDecoder::openFile(url);
}

void SoundDecoder::warmUp() { LibavLibrary::shared(); }
