#include "platform/media/AudioOutput.h"

#include "platform/foundation/Executor.h"
#include "platform/media/SilentSink.h"

#include <algorithm>

namespace {

// Walks through a sound on the sink's thread.
class SoundReader final : public SampleSource {
public:
    SoundReader(std::shared_ptr<Sound> sound, std::int64_t frame)
        : m_sound(std::move(sound))
        , m_frame(frame)
    {
    }

    std::size_t read(Sample* into, std::size_t frames) override
    {
        const auto left = static_cast<std::size_t>(m_sound->frameCount() - m_frame);
        const std::size_t given = std::min(frames, left);
        m_sound->read(m_frame, into, given);
        m_frame += static_cast<std::int64_t>(given);
        return given;
    }

private:
    const std::shared_ptr<Sound> m_sound;
    std::int64_t m_frame;
};

} // namespace

AudioOutput::AudioOutput() = default;

AudioOutput::~AudioOutput() { stop(); }

void AudioOutput::start(std::shared_ptr<Sound> sound, std::int64_t frame)
{
    stop();
    m_sound = std::move(sound);
    m_startFrame = frame;
    m_position = frame;
    m_run = std::make_shared<const int>();
    const auto lossHandler = [this, run = std::weak_ptr(m_run)] {
        Executor::current().mainQueue().async([this, run] {
            if (!run.expired())
                takeOverSilently();
        });
    };
    m_sink = AudioSink::startOnDevice(
        m_sound->format(), std::make_shared<SoundReader>(m_sound, frame), lossHandler);
    if (!m_sink)
        return takeOverSilently();
    m_lastMovedPosition = frame;
    m_lastMovedTime = Scheduler::current().now();
    m_standstillTimer
        = Scheduler::current().scheduleRepeating(standstillCheckInterval, [this] { checkStandstill(); });
}

void AudioOutput::stop()
{
    if (!m_sink)
        return;
    m_position = position();
    m_sink.reset();
    m_run.reset();
    Scheduler::current().cancel(std::exchange(m_standstillTimer, Scheduler::TimerID::None));
}

std::int64_t AudioOutput::position() const
{
    if (m_sink)
        m_position = std::clamp(m_startFrame + m_sink->framesHeard(), m_position, m_sound->frameCount());
    return m_position;
}

void AudioOutput::takeOverSilently()
{
    stop();
    m_startFrame = m_position;
    m_sink = std::make_unique<SilentSink>(m_sound->format());
}

void AudioOutput::checkStandstill()
{
    const double now = Scheduler::current().now();
    if (position() != m_lastMovedPosition) {
        m_lastMovedPosition = m_position;
        m_lastMovedTime = now;
    } else if (now - m_lastMovedTime >= longestStandstill) {
        takeOverSilently();
    }
}
