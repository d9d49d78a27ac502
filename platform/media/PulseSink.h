// A run of sound on the sound server, which takes any rate and channel count and finds the device itself.
//
// Chosen over the larger library's sink by measurement: that one asks for its first samples 24 ms after
// the start, on the main thread; this one within 2 ms, on the connection's thread.
#pragma once

#include "platform/media/AudioSink.h"
#include "platform/media/PulseConnection.h"

class PulseSink final : public AudioSink, private PulseConnection::Listener {
public:
    static std::unique_ptr<AudioSink> open(SoundFormat, Handlers);

    PulseSink(std::shared_ptr<PulseConnection>, SoundFormat, Handlers);
    ~PulseSink() override;

    void play(std::shared_ptr<SampleSource>) override;
    std::int64_t framesHeard() const override;

private:
    // What is queued between the samples' being asked for and their being heard. Short enough to follow a
    // finger, long enough for a thread that has to wait for a busy core.
    static constexpr double queuedSeconds = 0.1;

    // All of these with the connection's lock held.
    void connectionIsReady() override;
    void connectionIsLost() override { lose(); }
    bool isStreamReady() const;
    void streamStateDidChange();
    void suspensionDidChange();
    void tellIfReady();
    void write(std::size_t bytes); // nothing before play(); the server's request stays open until then
    void drain();
    void lose();
    std::int64_t measureHeard() const;

    const std::shared_ptr<PulseConnection> m_connection;
    const PulseLibrary& m_library;
    const SoundFormat m_format;
    std::shared_ptr<SampleSource> m_source; // null before play()
    Handlers m_handlers; // each empty once called
    pa_stream* m_stream = nullptr;
    pa_operation* m_drain = nullptr;
    std::int64_t m_framesWritten = 0;
    mutable std::int64_t m_framesHeard = 0; // the last measurement
    bool m_sourceEnded = false;
    bool m_drained = false; // everything has been heard
};
