#include "platform/media/DeviceRun.h"

#include "platform/foundation/Executor.h"
#include "platform/foundation/Scheduler.h"

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

std::unique_ptr<DeviceRun> DeviceRun::open(std::shared_ptr<Sound> sound, Messages messages)
{
    std::unique_ptr<DeviceRun> run(new DeviceRun(std::move(sound), std::move(messages)));
    return run->m_sink ? std::move(run) : nullptr;
}

DeviceRun::DeviceRun(std::shared_ptr<Sound> sound, Messages messages)
    : m_sound(std::move(sound))
    , m_messages(std::move(messages))
{
    // A copy of the message is called: it may be what destroys this run.
    const auto later = [this](std::function<void()> Messages::*message) {
        return [this, message, life = std::weak_ptr(m_life)] {
            Executor::current().mainQueue().async([this, message, life] {
                if (life.expired())
                    return;
                const auto call = m_messages.*message;
                call();
            });
        };
    };
    m_sink = AudioSink::openOnDevice(
        m_sound->format(), { .ready = later(&Messages::becameReady), .lost = later(&Messages::wasLost) });
}

void DeviceRun::playFrom(std::int64_t frame)
{
    m_startFrame = frame;
    m_lastPosition = frame;
    m_lastMovedTime = Scheduler::current().now();
    m_isPlaying = true;
    m_sink->play(std::make_shared<SoundReader>(m_sound, frame));
}

bool DeviceRun::standsStill()
{
    const double now = Scheduler::current().now();
    if (position() != m_lastPosition) {
        m_lastPosition = position();
        m_lastMovedTime = now;
    }
    return m_isPlaying && now - m_lastMovedTime >= longestStandstill;
}
