#include "tests/platform/media/AVPlayerFixture.h"

namespace {

using AVPlayerSeekTest = AVPlayerFixture;

TEST_F(AVPlayerSeekTest, ASeekIsExactToTheSampleAtOnceAndAfterIt)
{
    becomeReady();
    player->seekToTime(CMTimeMake(12345, rate), noting("seek"));
    EXPECT_EQ(player->currentTime().value, 12345);
    EXPECT_TRUE(completions.empty());
    settle();
    EXPECT_THAT(completions, testing::ElementsAre("seek finished"));
    EXPECT_EQ(player->currentTime().value, 12345);
    EXPECT_TRUE(device.runs().empty());
}

TEST_F(AVPlayerSeekTest, ASeekWhilePlayingGoesOnFromTheTarget)
{
    becomeReady();
    player->play();
    advance(0.7);
    player->seekToTime(CMTimeMake(1, 5));
    EXPECT_EQ(player->currentTime().value, rate / 5);
    settle();
    EXPECT_EQ(player->currentTime().value, rate / 5);
    advance(0.1);
    EXPECT_EQ(player->currentTime().value, 3 * rate / 10);
    EXPECT_EQ(device.lastRun().samples().at(0), tone.sampleAt(rate / 5));
}

TEST_F(AVPlayerSeekTest, ASeekLandsOnTheNearestSample)
{
    becomeReady();
    player->seekToTime(CMTimeMakeWithSeconds(0.5 + 0.4 / rate, 0));
    EXPECT_EQ(player->currentTime().value, rate / 2);
    player->seekToTime(CMTimeMakeWithSeconds(0.5 + 0.6 / rate, 0));
    EXPECT_EQ(player->currentTime().value, rate / 2 + 1);
}

TEST_F(AVPlayerSeekTest, ASeekIsClampedToTheSound)
{
    becomeReady();
    for (const CMTime late : { CMTimeMake(5, 1), kCMTimePositiveInfinity }) {
        player->seekToTime(late);
        EXPECT_EQ(CMTimeCompare(player->currentTime(), player->currentItem()->duration()), 0);
    }
    for (const CMTime early : { CMTimeMake(-5, 1), kCMTimeNegativeInfinity, CMTime {} }) {
        player->seekToTime(CMTimeMake(1, 2));
        player->seekToTime(early);
        EXPECT_EQ(player->currentTime().value, 0);
    }
}

TEST_F(AVPlayerSeekTest, ASeekToNoMomentMovesNothingAndFinishes)
{
    becomeReady();
    player->seekToTime(CMTimeMake(1, 2));
    player->seekToTime(kCMTimeIndefinite, noting("indefinite"));
    settle();
    player->seekToTime(CMTimeMakeWithSeconds(std::nan(""), rate), noting("invalid"));
    settle();
    EXPECT_EQ(player->currentTime().value, rate / 2);
    EXPECT_THAT(completions, testing::ElementsAre("indefinite finished", "invalid finished"));
}

TEST_F(AVPlayerSeekTest, ALaterSeekCancelsAnEarlierOne)
{
    becomeReady();
    player->seekToTime(CMTimeMake(1, 10), noting("first"));
    player->seekToTime(CMTimeMake(2, 10), noting("second"));
    player->seekToTime(CMTimeMake(3, 10), noting("third"));
    EXPECT_TRUE(completions.empty());
    settle();
    EXPECT_THAT(
        completions, testing::UnorderedElementsAre("first cancelled", "second cancelled", "third finished"));
    EXPECT_EQ(player->currentTime().value, 3 * rate / 10);
}

TEST_F(AVPlayerSeekTest, ASeekBeforeReadinessIsCancelledAndNotRemembered)
{
    player->seekToTime(CMTimeMake(1, 2), noting("seek"));
    EXPECT_TRUE(completions.empty());
    becomeReady();
    EXPECT_THAT(completions, testing::ElementsAre("seek cancelled"));
    EXPECT_EQ(player->currentTime().value, 0);
}

TEST_F(AVPlayerSeekTest, DroppingThePlayerCancelsItsSeek)
{
    becomeReady();
    player->seekToTime(CMTimeMake(1, 2), noting("seek"));
    player.reset();
    settle();
    EXPECT_THAT(completions, testing::ElementsAre("seek cancelled"));
}

TEST_F(AVPlayerSeekTest, MayBeDroppedFromInsideASeeksCompletion)
{
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    player->seekToTime(CMTimeMake(1, 2), [this](bool) { player.reset(); });
    settle();
    advance(2);
    EXPECT_EQ(player, nullptr);
    EXPECT_TRUE(ticks.empty());
}

TEST_F(AVPlayerSeekTest, MaySeekAgainFromInsideASeeksCompletion)
{
    becomeReady();
    player->seekToTime(
        CMTimeMake(1, 2), [this](bool) { player->seekToTime(CMTimeMake(1, 4), noting("second")); });
    settle();
    EXPECT_THAT(completions, testing::ElementsAre("second finished"));
    EXPECT_EQ(player->currentTime().value, rate / 4);
}

TEST_F(AVPlayerSeekTest, ObserversHearTheNewTimeAfterTheSeekHasFinished)
{
    becomeReady();
    std::vector<std::string> events;
    const auto token = player->addPeriodicTimeObserverForInterval(
        tenth, executor.main(), [&](CMTime) { events.emplace_back("tick"); });
    player->seekToTime(player->currentItem()->duration(), [&](bool) { events.emplace_back("finished"); });
    settle();
    EXPECT_THAT(events, testing::ElementsAre("finished", "tick"));
}

TEST_F(AVPlayerSeekTest, ASeekToTheEndWhilePlayingReportsTheEnd)
{
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    advance(0.15);
    ticks.clear();
    player->seekToTime(CMTimeMake(1, 1));
    settle();
    advance(0.5);
    ASSERT_FALSE(ticks.empty());
    EXPECT_THAT(ticks, testing::Each(1.0));
}

} // namespace
