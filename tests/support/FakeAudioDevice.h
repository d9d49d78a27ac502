// A sound device on the current scheduler's clock. In force from construction to destruction.
//
// It hears what it is given after its latency, and remembers every sample. It can be absent, answer late, be
// lost in the middle of a run, or take samples and let no time pass.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/media/AudioSink.h"

#include <algorithm>
#include <cmath>
#include <vector>

class FakeAudioDevice {
public:
    // From a sink's making to its end.
    class Run {
    public:
        Run(SoundFormat format, AudioSink::Handlers handlers, double latency)
            : m_format(format)
            , m_handlers(std::move(handlers))
            , m_latency(latency)
        {
        }

        void play(std::shared_ptr<SampleSource> source)
        {
            m_source = std::move(source);
            m_soundTime = Scheduler::current().now() + m_latency;
        }
        void answer() { m_handlers.ready(); }

        SoundFormat format() const { return m_format; }
        bool isPlaying() const { return m_source && !m_isOver; }
        bool isOver() const { return m_isOver; }
        // All samples taken so far.
        const std::vector<Sample>& samples() const { return m_samples; }

        // The device goes away: time stands still, and the owner of the sink is told.
        void lose()
        {
            standStill();
            m_handlers.lost();
        }
        void standStill()
        {
            m_heard = framesHeard();
            m_standsStill = true;
        }
        void end() { m_isOver = true; }

        std::int64_t framesHeard()
        {
            if (!isPlaying() || m_standsStill)
                return m_heard;
            const double seconds = std::max(Scheduler::current().now() - m_soundTime, 0.0);
            const std::int64_t due = std::llround(seconds * m_format.sampleRate);
            take(due);
            m_heard = std::min(due, framesTaken());
            return m_heard;
        }

    private:
        std::int64_t framesTaken() const
        {
            return static_cast<std::int64_t>(m_samples.size()) / m_format.channels;
        }
        void take(std::int64_t upToFrame)
        {
            const auto channels = static_cast<std::size_t>(m_format.channels);
            const auto missing
                = static_cast<std::size_t>(std::max<std::int64_t>(upToFrame - framesTaken(), 0));
            std::vector<Sample> taken(missing * channels);
            taken.resize(m_source->read(taken.data(), missing) * channels);
            m_samples.insert(m_samples.end(), taken.begin(), taken.end());
        }

        const SoundFormat m_format;
        const AudioSink::Handlers m_handlers;
        const double m_latency;
        std::shared_ptr<SampleSource> m_source;
        double m_soundTime = 0; // when the first sample is heard
        std::vector<Sample> m_samples;
        std::int64_t m_heard = 0;
        bool m_standsStill = false;
        bool m_isOver = false;
    };

    void setAvailable(bool available) { m_isAvailable = available; }
    // One that does not answer says nothing until answer() is called on its run.
    void setAnswers(bool answers) { m_answers = answers; }
    void setLatency(double seconds) { m_latency = seconds; }
    // How often it was asked for, whether it was available or not.
    int openings() const { return m_openings; }
    const std::vector<std::shared_ptr<Run>>& runs() const { return m_runs; }
    Run& lastRun() const { return *m_runs.back(); }

private:
    class Sink final : public AudioSink {
    public:
        explicit Sink(std::shared_ptr<Run> run)
            : m_run(std::move(run))
        {
        }
        ~Sink() override { m_run->end(); }
        void play(std::shared_ptr<SampleSource> source) override { m_run->play(std::move(source)); }
        std::int64_t framesHeard() const override { return m_run->framesHeard(); }

    private:
        const std::shared_ptr<Run> m_run;
    };

    std::unique_ptr<AudioSink> open(SoundFormat format, AudioSink::Handlers handlers)
    {
        ++m_openings;
        if (!m_isAvailable)
            return nullptr;
        m_runs.push_back(std::make_shared<Run>(format, std::move(handlers), m_latency));
        if (m_answers)
            m_runs.back()->answer();
        return std::make_unique<Sink>(m_runs.back());
    }

    bool m_isAvailable = true;
    bool m_answers = true;
    double m_latency = 0;
    int m_openings = 0;
    std::vector<std::shared_ptr<Run>> m_runs;
    AudioSink::Replacement m_replacement { [this](SoundFormat format, AudioSink::Handlers handlers) {
        return open(format, std::move(handlers));
    } };
};
