// What the tests of players and items stand on: a clock and queues moved by hand, a fake sound device.
#pragma once

#include "platform/media/AVAsset.h"
#include "platform/media/AVPlayer.h"
#include "tests/support/FakeAudioDevice.h"
#include "tests/support/ManualExecutor.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/SourcePath.h"

#include <gmock/gmock.h>

class MediaTest : public testing::Test {
protected:
    MediaTest()
    {
        scheduler.setAfterTurn([this] { executor.runAll(); });
    }

    // Runs what waits in the queues, at this very moment.
    void settle() { executor.runAll(); }
    void advance(double seconds) { scheduler.advance(seconds); }

    static NSURL clip(const char* name)
    {
        return QUrl::fromLocalFile(sourcePath("resources/sounds/") + QString::fromUtf8(name));
    }
    static std::shared_ptr<AVPlayer> playerFor(const NSURL& url)
    {
        return AVPlayer::playerWithPlayerItem(AVPlayerItem::playerItemWithAsset(AVAsset::assetWithURL(url)));
    }

    ManualScheduler scheduler;
    ManualExecutor executor;
    FakeAudioDevice device;
};

// How a time prints in a failure.
inline void PrintTo(const CMTime& time, std::ostream* out)
{
    *out << time.value << '/' << time.timescale << " (" << CMTimeGetSeconds(time) << " s)";
}
