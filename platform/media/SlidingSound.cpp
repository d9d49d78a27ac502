#include "platform/media/SlidingSound.h"

#include "platform/foundation/Executor.h"

#include <algorithm>

SlidingSound::SlidingSound(std::unique_ptr<SoundDecoder> decoder, std::vector<Sample> firstSamples)
    : Sound(decoder->format(), decoder->frameCount())
    , m_decoder(std::move(decoder))
    , m_rest(std::move(firstSamples))
{
    m_pieces.emplace(0, decodePiece(0));
}

void SlidingSound::read(std::int64_t frame, Sample* into, std::size_t frames)
{
    const std::int64_t rate = format().sampleRate;
    const auto channels = static_cast<std::int64_t>(format().channels);
    const std::lock_guard lock(m_mutex);
    for (auto left = static_cast<std::int64_t>(frames); left > 0;) {
        const std::int64_t piece = pieceOf(frame);
        const std::int64_t offset = frame - piece * rate;
        const std::int64_t taken = std::min(left, rate - offset);
        const auto found = m_pieces.find(piece);
        if (found != m_pieces.end())
            std::copy_n(found->second.data() + offset * channels, taken * channels, into);
        else
            std::fill_n(into, taken * channels, Sample { 0 });
        wantAround(piece);
        frame += taken;
        into += taken * channels;
        left -= taken;
    }
}

void SlidingSound::prepare(std::int64_t frame, std::function<void()> whenReady)
{
    const std::int64_t piece = std::min(pieceOf(frame), pieceCount() - 1); // the end belongs to the last one
    {
        const std::lock_guard lock(m_mutex);
        wantAround(piece);
        if (!m_pieces.contains(piece)) {
            m_waiters.push_back({ piece, std::move(whenReady) });
            return;
        }
    }
    whenReady();
}

std::size_t SlidingSound::heldSamples() const
{
    const std::lock_guard lock(m_mutex);
    std::size_t samples = 0;
    for (const auto& [index, piece] : m_pieces)
        samples += piece.size();
    return samples;
}

void SlidingSound::wantAround(std::int64_t piece)
{
    m_wantedPiece = piece;
    if (m_isDecoding || missingPiece() < 0)
        return;
    m_isDecoding = true;
    Executor::current().globalQueue().async([self = shared_from_this()] { self->decodeMissing(); });
}

std::int64_t SlidingSound::missingPiece() const
{
    const std::int64_t end = std::min(m_wantedPiece + secondsAhead, pieceCount());
    for (std::int64_t piece = m_wantedPiece; piece < end; ++piece)
        if (!m_pieces.contains(piece))
            return piece;
    return -1;
}

void SlidingSound::decodeMissing()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        std::vector<Waiter> served;
        for (std::size_t i = 0; i < m_waiters.size();) {
            // A preparation that was followed by another is called back at once.
            const bool isOvertaken = m_waiters[i].piece != m_wantedPiece;
            if (!isOvertaken && !m_pieces.contains(m_waiters[i].piece)) {
                ++i;
                continue;
            }
            served.push_back(std::move(m_waiters[i]));
            m_waiters.erase(m_waiters.begin() + static_cast<std::ptrdiff_t>(i));
        }
        std::erase_if(m_pieces, [&](const auto& held) {
            return held.first < m_wantedPiece - secondsBehind || held.first >= m_wantedPiece + secondsAhead;
        });
        const std::int64_t piece = missingPiece();
        if (piece < 0)
            m_isDecoding = false;
        lock.unlock();
        for (const Waiter& waiter : served)
            waiter.whenReady();
        if (piece < 0)
            return;
        Piece samples = decodePiece(piece);
        lock.lock();
        m_pieces.insert_or_assign(piece, std::move(samples));
    }
}

SlidingSound::Piece SlidingSound::decodePiece(std::int64_t piece)
{
    const std::int64_t first = piece * format().sampleRate;
    const std::int64_t length = std::min<std::int64_t>(format().sampleRate, frameCount() - first);
    const auto wanted = static_cast<std::size_t>(length * format().channels);
    Piece samples;
    bool canDecode = true;
    if (first == m_restFrame) {
        samples = std::move(m_rest);
    } else {
        canDecode = m_decoder->seekToFrame(first);
    }
    while (canDecode && samples.size() < wanted)
        canDecode = m_decoder->decodeNext(samples);
    m_rest.clear();
    if (samples.size() > wanted)
        m_rest.assign(samples.begin() + static_cast<std::ptrdiff_t>(wanted), samples.end());
    m_restFrame = first + length;
    samples.resize(wanted);
    return samples;
}
