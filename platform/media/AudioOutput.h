// Lets a sound be heard from some frame on, whatever becomes of the sound device.
//
// Where there is no device, where it goes away, or where it takes samples but lets no time pass, silence
// takes over from the frame that was heard last, and time goes on. Meanwhile a device is looked for four
// times a second; once one is there the sound is heard again, from the frame where the time is then. Silence
// keeps the time until a sample has been heard on the device, so that a device that never sounds cannot
// stop the time. Main thread only.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/media/DeviceRun.h"
#include "platform/media/SilentSink.h"

#include <optional>

class AudioOutput {
public:
    AudioOutput();
    ~AudioOutput();
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    // The frame lies inside the sound. A run under way is replaced.
    void start(std::shared_ptr<Sound>, std::int64_t frame);
    void stop();
    bool isRunning() const { return m_checkTimer != Scheduler::TimerID::None; }

    // The frame being heard, never one before the last answer; the last one after stop(), the sound's frame
    // count at its end. Where a device comes back the frame stands for as long as the device's delay.
    std::int64_t position();

private:
    static constexpr double checkInterval = 0.25;

    void openDevice();
    void deviceIsReady();
    void giveUpDevice();
    void check();

    std::shared_ptr<Sound> m_sound;
    std::unique_ptr<DeviceRun> m_device; // being heard, or tried while silence keeps the time
    std::optional<SilentSink> m_silence; // keeps the time, from m_silenceStart on
    std::int64_t m_silenceStart = 0;
    std::int64_t m_position = 0;
    Scheduler::TimerID m_checkTimer = Scheduler::TimerID::None;
};
