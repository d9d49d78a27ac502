// A player of one second of sound, and what it has told.
#pragma once

#include "tests/platform/media/MediaTest.h"
#include "tests/support/ToneFile.h"

class AVPlayerFixture : public MediaTest {
protected:
    static constexpr int rate = 44100;

    AVPlayerFixture() { player->setActionAtItemEnd(AVPlayerActionAtItemEndNone); }

    void becomeReady() { settle(); }
    std::shared_ptr<NSObject> observe(CMTime interval)
    {
        return player->addPeriodicTimeObserverForInterval(
            interval, executor.main(), [this](CMTime time) { ticks.push_back(CMTimeGetSeconds(time)); });
    }
    AVPlayer::SeekCompletion noting(const char* name)
    {
        return [this, name](bool finished) {
            completions.push_back(std::string(name) + (finished ? " finished" : " cancelled"));
        };
    }

    ToneFile tone { rate }; // one second
    std::shared_ptr<AVPlayer> player = playerFor(tone.url());
    std::vector<double> ticks;
    std::vector<std::string> completions;
    const CMTime tenth = CMTimeMake(1, 10);
};
