// A sound too long for memory: a window of it is kept around where it is being read.
//
// The window is decoded ahead on the global queue, one job at a time, in pieces of a second. Its length is
// what the file states; where the file turns out to hold less there is silence.
#pragma once

#include "platform/media/Sound.h"
#include "platform/media/SoundDecoder.h"

#include <map>
#include <mutex>

class SlidingSound final : public Sound, public std::enable_shared_from_this<SlidingSound> {
public:
    static constexpr std::int64_t secondsAhead = 10;
    static constexpr std::int64_t secondsBehind = 5;

    // Takes the decoder with the samples that it has given so far, and decodes the first second at once.
    SlidingSound(std::unique_ptr<SoundDecoder>, std::vector<Sample> firstSamples);

    void read(std::int64_t frame, Sample* into, std::size_t frames) override;
    void prepare(std::int64_t frame, std::function<void()> whenReady) override;

    // Samples in memory now.
    std::size_t heldSamples() const;

private:
    using Piece = std::vector<Sample>;
    struct Waiter {
        std::int64_t piece;
        std::function<void()> whenReady;
    };

    std::int64_t pieceOf(std::int64_t frame) const { return frame / format().sampleRate; }
    std::int64_t pieceCount() const { return pieceOf(frameCount() - 1) + 1; }
    void wantAround(std::int64_t piece); // with m_mutex held
    std::int64_t missingPiece() const; // with m_mutex held; −1 when the window is full
    void decodeMissing();
    Piece decodePiece(std::int64_t piece); // only from the running job

    mutable std::mutex m_mutex;
    std::map<std::int64_t, Piece> m_pieces;
    std::vector<Waiter> m_waiters;
    std::int64_t m_wantedPiece = 0;
    bool m_isDecoding = false; // a job is submitted or running

    const std::unique_ptr<SoundDecoder> m_decoder; // this and what follows: used by the running job alone
    Piece m_rest; // decoded past the end of the last piece
    std::int64_t m_restFrame = 0; // where m_rest begins
};
