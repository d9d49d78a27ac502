// End to end, in real time: a real clip through the real player to a real sound server, recorded there.
#include "platform/media/AVAsset.h"
#include "platform/media/AVPlayer.h"
#include "platform/media/SoundLoader.h"
#include "tests/support/PrivateSoundServer.h"
#include "tests/support/SourcePath.h"
#include "tests/support/ToneFile.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

NSURL clip() { return QUrl::fromLocalFile(sourcePath("resources/sounds/bicycle_bell.m4a")); }

class RealSoundTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(server.start(loop)) << "the sound server did not start"; }
    void play(const NSURL& url)
    {
        player
            = AVPlayer::playerWithPlayerItem(AVPlayerItem::playerItemWithAsset(AVAsset::assetWithURL(url)));
        player->setActionAtItemEnd(AVPlayerActionAtItemEndNone);
        ASSERT_TRUE(loop.runUntil([&] { return item().status() != AVPlayerItemStatusUnknown; }, 5));
        ASSERT_EQ(item().status(), AVPlayerItemStatusReadyToPlay);
        token = player->addPeriodicTimeObserverForInterval(
            CMTimeMake(1, 10), Executor::current().mainQueue(), [this](CMTime time) {
                ticks.push_back({ loop.seconds(), CMTimeGetSeconds(time) });
            });
        startTime = loop.seconds();
        player->play();
    }
    AVPlayerItem& item() const { return *player->currentItem(); }
    double duration() const { return CMTimeGetSeconds(item().duration()); }
    bool hasEnded() const { return player->currentTime() >= item().duration(); }
    bool waitForEnd()
    {
        return loop.runUntil([&] { return hasEnded() && ticks.back().heard >= duration(); }, 20);
    }

    struct Tick {
        double clock;
        double heard;
    };
    const ToneFile tone { 3 * 44100 };
    RealEventLoop loop;
    PrivateSoundServer server;
    std::shared_ptr<AVPlayer> player;
    std::shared_ptr<NSObject> token;
    std::vector<Tick> ticks;
    double startTime = 0;
};

std::size_t firstSound(const std::vector<Sample>& samples)
{
    const auto isLoud = [](Sample sample) { return std::abs(sample) > 100; };
    return static_cast<std::size_t>(std::find_if(samples.begin(), samples.end(), isLoud) - samples.begin());
}

double level(const Sample* samples, std::size_t count)
{
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += static_cast<double>(samples[i]) * samples[i];
    return std::sqrt(sum / static_cast<double>(count));
}

double correlation(const Sample* first, const Sample* second, std::size_t count)
{
    double product = 0;
    for (std::size_t i = 0; i < count; ++i)
        product += static_cast<double>(first[i]) * second[i];
    return product / (static_cast<double>(count) * level(first, count) * level(second, count));
}

TEST_F(RealSoundTest, WhatIsPlayedIsWhatIsHeard)
{
    ASSERT_TRUE(server.record(loop));
    play(clip());
    ASSERT_TRUE(waitForEnd());
    const double settled = loop.seconds() + 1;
    loop.runUntil([&] { return loop.seconds() > settled; }, 2);

    const auto recorded = server.recorded();
    const auto sound = SoundLoader::load(clip(), false);
    std::vector<Sample> played(static_cast<std::size_t>(sound->frameCount()));
    sound->read(0, played.data(), played.size());
    const std::size_t begin = firstSound(played);
    const std::size_t heardBegin = firstSound(recorded);
    const std::size_t count = played.size() - begin;
    ASSERT_LE(heardBegin + count, recorded.size()) << "not all of it was heard";
    EXPECT_NEAR(level(&recorded[heardBegin], count) / level(&played[begin], count), 1, 0.05);
    EXPECT_GE(correlation(&recorded[heardBegin], &played[begin], count), 0.99);
}

TEST_F(RealSoundTest, ThePositionFollowsRealTimeTenTimesASecondToTheEnd)
{
    play(tone.url());
    ASSERT_TRUE(waitForEnd());
    const double elapsed = loop.seconds() - startTime;
    EXPECT_GE(elapsed, duration() - 0.02);
    EXPECT_LE(elapsed, duration() + 0.5);
    EXPECT_EQ(ticks.back().heard, duration());
    EXPECT_NEAR(static_cast<double>(ticks.size()), duration() * 10, 3);
    const double lag = ticks.at(5).clock - startTime - ticks.at(5).heard;
    for (std::size_t i = 5; i + 1 < ticks.size(); ++i) {
        EXPECT_GE(ticks[i].heard, ticks[i - 1].heard);
        EXPECT_NEAR(ticks[i].clock - startTime - ticks[i].heard, lag, 0.06) << "tick " << i;
    }
}

TEST_F(RealSoundTest, WhenTheSoundServerDiesPlayingGoesOnToTheEnd)
{
    play(tone.url());
    ASSERT_TRUE(loop.runUntil([&] { return CMTimeGetSeconds(player->currentTime()) > 1; }, 5));
    server.die();
    const double before = CMTimeGetSeconds(player->currentTime());
    ASSERT_TRUE(waitForEnd());
    EXPECT_GE(before, 1);
    EXPECT_NEAR(loop.seconds() - startTime, duration(), 0.5);
    for (std::size_t i = 1; i < ticks.size(); ++i)
        EXPECT_GE(ticks[i].heard, ticks[i - 1].heard);
}

TEST_F(RealSoundTest, ASoundServerThatComesBackIsUsedAtTheNextPlay)
{
    server.die();
    play(tone.url());
    ASSERT_TRUE(loop.runUntil([&] { return CMTimeGetSeconds(player->currentTime()) > 0.3; }, 5));
    player->pause();
    ASSERT_TRUE(server.start(loop));
    ASSERT_TRUE(server.record(loop));
    player->play();
    ASSERT_TRUE(waitForEnd());
    const auto recorded = server.recorded();
    EXPECT_LT(firstSound(recorded), recorded.size()) << "nothing was heard";
}

TEST_F(RealSoundTest, ASoundServerThatFreezesIsGivenUp)
{
    play(tone.url());
    ASSERT_TRUE(loop.runUntil([&] { return CMTimeGetSeconds(player->currentTime()) > 0.5; }, 5));
    server.freeze();
    EXPECT_TRUE(waitForEnd());
}

} // namespace
