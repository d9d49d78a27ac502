// Looks at the first bytes of a file, without any decoder: is this a sound of a kind that can be played?
//
// Asked on the main thread for every row of a list, so it reads a few bytes and loads no library. It says
// yes to a sound whose samples are damaged; that shows when they are decoded.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class SoundFileProbe {
public:
    static bool namesSound(const NSURL&);

    // The same kinds as the decoder library names them.
    static constexpr const char* libavFormats = "mov,mp4,m4a,3gp,3g2,mj2,wav,flac,ogg,mp3,aac,caf,aiff";
};
