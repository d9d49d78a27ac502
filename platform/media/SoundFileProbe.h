// Tells by the first bytes of a file, without a decoder, whether it is a sound of a kind that can be played.
//
// Asked on the main thread for every row of a list, so it reads a few bytes and loads no library. It says
// yes to a sound whose samples are damaged; that shows when they are decoded.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class SoundFileProbe {
public:
    // Hours of sound, however it is encoded. What is larger is told of on standard error and not looked into.
    static constexpr qint64 largestFile = qint64 { 1 } << 30;

    // How the decoder library calls the kind: one name, or allLibavFormats where only a whole look at the
    // stream tells. Null for what is no sound of these kinds.
    static const char* libavFormat(const NSURL&);
    static bool namesSound(const NSURL& url) { return libavFormat(url) != nullptr; }

    static constexpr const char* allLibavFormats = "mov,mp4,m4a,3gp,3g2,mj2,wav,flac,ogg,mp3,aac,caf,aiff";
};
