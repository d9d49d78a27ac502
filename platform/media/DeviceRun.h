// One attempt to play a sound on the system's sound device, from the request to the loss or the end.
//
// Main thread only. Its messages come later than what causes them, and never after its destructor.
#pragma once

#include "platform/media/AudioSink.h"
#include "platform/media/Sound.h"

class DeviceRun {
public:
    struct Messages {
        std::function<void()> becameReady; // the device answers
        std::function<void()> wasLost; // the device refuses or has gone away: this run gives no more sound
    };

    // A device may need a second to wake up, a wireless one longer; a standstill beyond that is a fault.
    static constexpr double longestStandstill = 3;

    // Null where there is no device.
    static std::unique_ptr<DeviceRun> open(std::shared_ptr<Sound>, Messages);

    DeviceRun(const DeviceRun&) = delete;
    DeviceRun& operator=(const DeviceRun&) = delete;

    // Lets the sound be heard from a frame inside it, as soon as the device is ready. Called once.
    void playFrom(std::int64_t frame);
    // Whether anything has been heard yet, which proves that the device lets time pass.
    bool hasBeenHeard() const { return m_sink->framesHeard() > 0; }
    // The frame being heard, once there is one to play from.
    std::int64_t position() const { return m_startFrame + m_sink->framesHeard(); }

    // Whether nothing more has been heard for longestStandstill, as seen from one call of this to the next.
    bool standsStill();

private:
    DeviceRun(std::shared_ptr<Sound>, Messages);

    const std::shared_ptr<Sound> m_sound;
    const Messages m_messages;
    std::shared_ptr<const int> m_life
        = std::make_shared<const int>(); // a message that finds it gone is stale
    std::unique_ptr<AudioSink> m_sink;
    std::int64_t m_startFrame = 0;
    std::int64_t m_lastPosition = 0;
    double m_lastMovedTime = 0;
    bool m_isPlaying = false;
};
