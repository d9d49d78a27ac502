// One run of sound on its way to the ears: it begins when the sink is made and ends when it is destroyed.
//
// A sink asks its source for samples from a thread of its own and knows how many of them have been heard.
// Once its destructor has returned the source is not asked again. Main thread only, the source aside.
#pragma once

#include "platform/media/SoundFormat.h"

#include <cstddef>
#include <functional>
#include <memory>

// Where a sink takes its samples from, on the sink's thread.
class SampleSource {
public:
    virtual ~SampleSource() = default;
    // Fills in the next frames; fewer than asked for, or none, at the end.
    virtual std::size_t read(Sample* into, std::size_t frames) = 0;
};

class AudioSink {
public:
    // Called once when the sound system or its device has gone away; from any thread.
    using LossHandler = std::function<void()>;
    using Maker
        = std::function<std::unique_ptr<AudioSink>(SoundFormat, std::shared_ptr<SampleSource>, LossHandler)>;

    // Starts a run on the system's sound device, without waiting for it. Null where there is none.
    static std::unique_ptr<AudioSink> startOnDevice(SoundFormat, std::shared_ptr<SampleSource>, LossHandler);
    // Gets the sound system ready, off the main thread, so that the first run starts as fast as the next.
    static void warmUp();

    virtual ~AudioSink() = default;
    // Frames heard so far: never fewer than before, never more than were handed over.
    virtual std::int64_t framesHeard() const = 0;

    // Puts another device in force until the guard goes.
    class [[nodiscard]] Replacement {
    public:
        explicit Replacement(Maker);
        ~Replacement();
        Replacement(const Replacement&) = delete;
        Replacement& operator=(const Replacement&) = delete;

    private:
        Maker m_previous;
    };
};
