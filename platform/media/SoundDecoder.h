// Turns one sound file into samples, from wherever it is told to.
//
// Every decoder is opened here; a system with decoders of its own puts its opener in force. A decoder is used
// by one thread at a time, off the main thread.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/media/SoundFormat.h"

#include <functional>
#include <memory>
#include <vector>

class SoundDecoder {
public:
    using Opener = std::function<std::unique_ptr<SoundDecoder>(const NSURL&)>;

    // Null for what is no sound. Safe from any thread.
    static std::unique_ptr<SoundDecoder> open(const NSURL&);

    // Loads what decoding needs, off the main thread, so that the first sound opens as fast as the next.
    static void warmUp();

    virtual ~SoundDecoder() = default;

    virtual SoundFormat format() const = 0;
    // The length that the file states, encoder delay and padding taken off; a damaged file may hold less.
    virtual std::int64_t frameCount() const = 0;

    // Appends the next samples, whole frames; false at the end. Damaged stretches are left out.
    virtual bool decodeNext(std::vector<Sample>& samples) = 0;
    // The next decodeNext() begins at exactly this frame. False where the file cannot be entered there.
    virtual bool seekToFrame(std::int64_t frame) = 0;

    // Puts another opener in force until the guard goes. Not while a sound is being loaded.
    class [[nodiscard]] Replacement {
    public:
        explicit Replacement(Opener);
        ~Replacement();
        Replacement(const Replacement&) = delete;
        Replacement& operator=(const Replacement&) = delete;

    private:
        Opener m_previous;
    };

private:
    static Opener& openerInForce(); // empty: libav
};
