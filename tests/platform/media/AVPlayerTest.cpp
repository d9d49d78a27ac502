#include "tests/platform/media/AVPlayerFixture.h"

namespace {

using AVPlayerTest = AVPlayerFixture;

TEST_F(AVPlayerTest, PlaysWhenToldTo)
{
    becomeReady();
    EXPECT_TRUE(device.runs().empty());
    EXPECT_EQ(player->rate(), 0);
    player->play();
    EXPECT_EQ(player->rate(), 1);
    ASSERT_EQ(device.runs().size(), 1u);
    advance(0.25);
    EXPECT_EQ(player->currentTime().value, rate / 4);
    EXPECT_EQ(device.lastRun().samples().at(100), tone.sampleAt(100));
}

TEST_F(AVPlayerTest, PlaysOnceTheItemIsReadyWhatWasPlayedBefore)
{
    player->play();
    EXPECT_TRUE(device.runs().empty());
    becomeReady();
    EXPECT_EQ(device.runs().size(), 1u);
}

TEST_F(AVPlayerTest, PlayAndPauseBeforeReadinessPlayNothing)
{
    player->play();
    player->pause();
    becomeReady();
    EXPECT_TRUE(device.runs().empty());
}

TEST_F(AVPlayerTest, WithoutAnItemNothingEverPlays)
{
    const auto empty = AVPlayer::playerWithPlayerItem(nullptr);
    empty->play();
    empty->seekToTime(tenth, noting("seek"));
    settle();
    EXPECT_EQ(empty->currentItem(), nullptr);
    EXPECT_EQ(CMTimeGetSeconds(empty->currentTime()), 0);
    EXPECT_THAT(completions, testing::ElementsAre("seek cancelled"));
}

TEST_F(AVPlayerTest, AFailedItemNeverPlays)
{
    const auto failed = playerFor(QUrl::fromLocalFile(QStringLiteral(__FILE__)));
    failed->play();
    settle();
    advance(1);
    EXPECT_TRUE(device.runs().empty());
    EXPECT_EQ(CMTimeGetSeconds(failed->currentTime()), 0);
}

TEST_F(AVPlayerTest, TimeIsWhatHasBeenHeardNotWhatIsQueued)
{
    device.setLatency(0.08);
    becomeReady();
    player->play();
    advance(0.05);
    EXPECT_EQ(player->currentTime().value, 0);
    advance(0.05);
    EXPECT_EQ(player->currentTime().value, rate / 50);
}

TEST_F(AVPlayerTest, APauseKeepsTheHeardTimeAndPlayingGoesOnFromThere)
{
    becomeReady();
    player->play();
    advance(0.3);
    player->pause();
    EXPECT_TRUE(device.lastRun().isOver());
    advance(5);
    EXPECT_EQ(player->currentTime().value, 3 * rate / 10);
    player->play();
    advance(0.1);
    EXPECT_EQ(player->currentTime().value, 4 * rate / 10);
    EXPECT_EQ(device.lastRun().samples().at(0), tone.sampleAt(3 * rate / 10));
}

TEST_F(AVPlayerTest, PlayingTwiceIsPlayingOnce)
{
    becomeReady();
    player->play();
    player->play();
    EXPECT_EQ(device.runs().size(), 1u);
}

TEST_F(AVPlayerTest, AtTheEndTimeAndRateStayAndNothingKeepsRunning)
{
    becomeReady();
    player->play();
    advance(2);
    EXPECT_EQ(CMTimeCompare(player->currentTime(), player->currentItem()->duration()), 0);
    EXPECT_EQ(player->rate(), 1);
    EXPECT_TRUE(device.lastRun().isOver());
}

TEST_F(AVPlayerTest, ThePausingActionClearsTheRateAtTheEnd)
{
    becomeReady();
    player->setActionAtItemEnd(AVPlayerActionAtItemEndPause);
    player->play();
    advance(2);
    EXPECT_EQ(player->rate(), 0);
}

TEST_F(AVPlayerTest, AfterTheEndASeekToTheStartPlaysAgain)
{
    becomeReady();
    player->play();
    advance(2);
    player->pause();
    player->seekToTime(kCMTimeZero);
    EXPECT_EQ(player->currentTime().value, 0);
    player->play();
    settle();
    advance(0.5);
    EXPECT_EQ(player->currentTime().value, rate / 2);
}

TEST_F(AVPlayerTest, TimeNeverRunsBackwardsWhenTheDeviceIsLost)
{
    becomeReady();
    device.setLatency(0.05);
    player->play();
    advance(0.55);
    device.lastRun().lose();
    settle();
    EXPECT_EQ(player->currentTime().value, rate / 2);
    advance(0.25);
    EXPECT_EQ(player->currentTime().value, 3 * rate / 4);
}

TEST_F(AVPlayerTest, TheEndComesOnTimeAfterTheDeviceWasLost)
{
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    advance(0.5);
    device.lastRun().lose();
    settle();
    advance(0.51);
    EXPECT_EQ(ticks.back(), 1.0);
}

TEST_F(AVPlayerTest, WithoutADeviceTimeRunsOn)
{
    device.setAvailable(false);
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    advance(1.5);
    EXPECT_EQ(ticks.size(), 10u);
    EXPECT_EQ(ticks.back(), 1.0);
}

TEST_F(AVPlayerTest, ADeviceThatComesBackIsUsedAtOnceAtTheNextPlay)
{
    device.setAvailable(false);
    becomeReady();
    player->play();
    advance(0.2);
    player->pause();
    device.setAvailable(true);
    player->play();
    ASSERT_EQ(device.runs().size(), 1u);
    advance(0.1);
    EXPECT_EQ(player->currentTime().value, 3 * rate / 10);
    EXPECT_EQ(device.lastRun().samples().at(0), tone.sampleAt(rate / 5));
}

TEST_F(AVPlayerTest, MayBeDroppedAtAnyMoment)
{
    for (int step = 0; step < 12; ++step) {
        auto dropped = playerFor(tone.url());
        dropped->play();
        if (step > 0)
            settle();
        advance(0.1 * step);
        if (step % 3 == 1)
            dropped->seekToTime(tenth, nullptr);
        if (step % 3 == 2 && !device.runs().empty())
            device.lastRun().lose();
        dropped.reset();
        settle();
        advance(0.5);
    }
    EXPECT_TRUE(device.lastRun().isOver());
}

} // namespace
