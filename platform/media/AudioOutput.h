// Lets a sound be heard from some frame on, whatever becomes of the sound device.
//
// The device is tried anew at every start. Where there is none, where it goes away, or where it takes
// samples but lets no time pass, silence takes over from the frame that was heard last, and time goes on.
// Main thread only.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/media/AudioSink.h"
#include "platform/media/Sound.h"

class AudioOutput {
public:
    AudioOutput();
    ~AudioOutput();
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    // The frame lies inside the sound. A run under way is replaced.
    void start(std::shared_ptr<Sound>, std::int64_t frame);
    void stop();
    bool isRunning() const { return m_sink != nullptr; }

    // The frame being heard; the last one after stop(), the sound's frame count at its end.
    std::int64_t position() const;

private:
    // A device may need a second to wake up, a wireless one longer; a standstill beyond that is a fault.
    static constexpr double longestStandstill = 3;
    static constexpr double standstillCheckInterval = 0.5;

    void takeOverSilently();
    void checkStandstill();

    std::shared_ptr<Sound> m_sound;
    std::unique_ptr<AudioSink> m_sink; // null while stopped
    std::int64_t m_startFrame = 0; // where m_sink began
    mutable std::int64_t m_position = 0;
    std::shared_ptr<const int> m_run; // names the run on the device; a loss told of an older one is stale
    Scheduler::TimerID m_standstillTimer = Scheduler::TimerID::None;
    std::int64_t m_lastMovedPosition = 0;
    double m_lastMovedTime = 0;
};
