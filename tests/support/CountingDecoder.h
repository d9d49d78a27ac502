// A decoder without a file: the sample at a frame is known, and every seek is counted.
#pragma once

#include "platform/media/SoundDecoder.h"

#include <algorithm>
#include <memory>

class CountingDecoder final : public SoundDecoder {
public:
    struct Log {
        std::vector<std::int64_t> seeks;
        std::int64_t framesDecoded = 0;
    };

    // A mono sound that states a length and holds another; they differ in a damaged file.
    CountingDecoder(std::int64_t statedFrames, std::int64_t heldFrames, std::shared_ptr<Log> log)
        : m_statedFrames(statedFrames)
        , m_heldFrames(heldFrames)
        , m_log(std::move(log))
    {
    }

    static constexpr int sampleRate = 8000;
    static Sample sampleAt(std::int64_t frame) { return static_cast<Sample>(frame % 30011 + 1); }

    SoundFormat format() const override { return { sampleRate, 1 }; }
    std::int64_t frameCount() const override { return m_statedFrames; }

    bool decodeNext(std::vector<Sample>& samples) override
    {
        const std::int64_t end = std::min(m_frame + packet, m_heldFrames);
        if (m_frame >= end)
            return false;
        m_log->framesDecoded += end - m_frame;
        for (; m_frame < end; ++m_frame)
            samples.push_back(sampleAt(m_frame));
        return true;
    }

    bool seekToFrame(std::int64_t frame) override
    {
        m_log->seeks.push_back(frame);
        m_frame = frame;
        return true;
    }

private:
    static constexpr std::int64_t packet = 1024; // does not divide a second: pieces end inside packets

    const std::int64_t m_statedFrames;
    const std::int64_t m_heldFrames;
    const std::shared_ptr<Log> m_log;
    std::int64_t m_frame = 0;
};
