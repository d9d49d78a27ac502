#include "platform/media/AudioOutput.h"

#include <algorithm>

AudioOutput::AudioOutput() = default;

AudioOutput::~AudioOutput() { stop(); }

void AudioOutput::start(std::shared_ptr<Sound> sound, std::int64_t frame)
{
    stop();
    m_sound = std::move(sound);
    m_position = frame;
    m_checkTimer = Scheduler::current().scheduleRepeating(checkInterval, [this] { check(); });
    openDevice();
    if (m_device)
        m_device->playFrom(frame);
    else
        giveUpDevice();
}

void AudioOutput::stop()
{
    if (!isRunning())
        return;
    m_position = position();
    Scheduler::current().cancel(std::exchange(m_checkTimer, Scheduler::TimerID::None));
    m_device.reset();
    m_silence.reset();
}

std::int64_t AudioOutput::position()
{
    if (!isRunning())
        return m_position;
    if (m_silence && m_device && m_device->hasBeenHeard())
        m_silence.reset(); // the device has come back
    const std::int64_t frame = m_silence ? m_silenceStart + m_silence->framesPassed() : m_device->position();
    m_position = std::clamp(frame, m_position, m_sound->frameCount());
    return m_position;
}

void AudioOutput::openDevice()
{
    m_device = DeviceRun::open(
        m_sound, { .becameReady = [this] { deviceIsReady(); }, .wasLost = [this] { giveUpDevice(); } });
}

// One that was wanted at the start plays already. One that was looked for plays from where the time is now,
// however long ago it was asked for: a server that was frozen answers when it goes on.
void AudioOutput::deviceIsReady()
{
    if (m_silence && position() < m_sound->frameCount())
        m_device->playFrom(position());
}

void AudioOutput::giveUpDevice()
{
    if (m_device)
        m_position = position();
    m_device.reset();
    if (m_silence)
        return;
    m_silenceStart = m_position;
    m_silence.emplace(m_sound->format());
}

void AudioOutput::check()
{
    if (position() >= m_sound->frameCount())
        return;
    if (m_device && m_device->standsStill())
        giveUpDevice();
    if (!m_device)
        openDevice();
}
