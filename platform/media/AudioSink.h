// A stream of samples to the sound device: it begins when the sink is made and ends when it is destroyed.
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
    // What becomes of a sink. Each is called at most once, from any thread.
    struct Handlers {
        std::function<void()> ready; // the device answers and would take samples now
        std::function<void()> lost; // the sound system or its device refuses, or has gone away
    };
    using Maker = std::function<std::unique_ptr<AudioSink>(SoundFormat, Handlers)>;

    // Asks for the system's sound device, without waiting for it. Null where there is none.
    static std::unique_ptr<AudioSink> openOnDevice(SoundFormat, Handlers);
    // Gets the sound system ready, off the main thread, so that the first run starts as fast as the next.
    static void warmUp();

    virtual ~AudioSink() = default;
    // Lets the source be heard, as soon as the device is ready. Called once.
    virtual void play(std::shared_ptr<SampleSource>) = 0;
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

private:
    static Maker& makerInForce(); // empty: the system's own
};
