#include "tests/platform/media/MediaTest.h"
#include "tests/support/ToneFile.h"

namespace {

constexpr int rate = 44100;

class AVPlayerTest : public MediaTest {
protected:
    AVPlayerTest() { player->setActionAtItemEnd(AVPlayerActionAtItemEndNone); }

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

TEST_F(AVPlayerTest, RemembersTheWishToPlayUntilTheItemIsReady)
{
    player->play();
    EXPECT_TRUE(device.runs().empty());
    becomeReady();
    EXPECT_EQ(device.runs().size(), 1u);
}

TEST_F(AVPlayerTest, AWishTakenBackBeforeReadinessPlaysNothing)
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

TEST_F(AVPlayerTest, TicksTenTimesASecondAndAtTheEnd)
{
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    advance(3);
    ASSERT_EQ(ticks.size(), 10u);
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_NEAR(ticks[i], 0.1 * static_cast<double>(i + 1), 1e-4);
    EXPECT_EQ(ticks.back(), 1.0);
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

TEST_F(AVPlayerTest, ASoundThatEndsBetweenTicksIsReportedWhenItEnds)
{
    becomeReady();
    const auto token = observe(CMTimeMake(3, 10));
    player->play();
    advance(0.95);
    EXPECT_EQ(ticks.size(), 3u);
    advance(0.06);
    ASSERT_EQ(ticks.size(), 4u);
    EXPECT_EQ(ticks.back(), 1.0);
}

TEST_F(AVPlayerTest, AnEndThatALaggingDeviceReachesLateIsReportedOnceThen)
{
    device.setLatency(0.2);
    becomeReady();
    const auto token = observe(kCMTimeInvalid);
    player->play();
    advance(1.19);
    EXPECT_TRUE(ticks.empty());
    advance(0.02);
    EXPECT_THAT(ticks, testing::ElementsAre(1.0));
}

TEST_F(AVPlayerTest, PlayingAtTheEndReportsTheEndAgainAndMakesNoSound)
{
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    advance(2);
    player->pause();
    ticks.clear();
    player->play();
    advance(1);
    EXPECT_THAT(ticks, testing::ElementsAre(1.0));
    EXPECT_EQ(device.runs().size(), 1u);
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

TEST_F(AVPlayerTest, NoTicksWhilePaused)
{
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    advance(0.25);
    player->pause();
    advance(3);
    EXPECT_EQ(ticks.size(), 2u);
}

TEST_F(AVPlayerTest, AnObserverAddedWhilePlayingTicksToo)
{
    becomeReady();
    player->play();
    advance(0.35);
    const auto token = observe(tenth);
    advance(0.25);
    EXPECT_EQ(ticks.size(), 2u);
}

TEST_F(AVPlayerTest, AnIntervalThatIsNoTimeTicksOnlyAtTheEnd)
{
    becomeReady();
    const auto invalid = observe(kCMTimeInvalid);
    const auto zero = observe(CMTime {});
    const auto negative = observe(CMTimeMake(-1, 10));
    const auto endless = observe(kCMTimePositiveInfinity);
    player->play();
    advance(0.9);
    EXPECT_TRUE(ticks.empty());
    advance(0.2);
    EXPECT_EQ(ticks.size(), 4u);
}

TEST_F(AVPlayerTest, AnIntervalMadeWithAnUnknownTimescaleTicks)
{
    const auto token = observe(CMTimeMakeWithSeconds(0.1, player->currentItem()->duration().timescale));
    becomeReady();
    player->play();
    advance(0.5);
    EXPECT_EQ(ticks.size(), 5u);
}

TEST_F(AVPlayerTest, ATinyIntervalDoesNotKeepTheMainThreadBusy)
{
    becomeReady();
    const auto token = observe(CMTimeMake(1, 1'000'000'000));
    player->play();
    advance(0.5);
    EXPECT_LE(ticks.size(), 50u);
    EXPECT_GE(ticks.size(), 10u);
}

TEST_F(AVPlayerTest, TicksGoToTheGivenQueue)
{
    becomeReady();
    ManualQueue queue;
    const auto token = player->addPeriodicTimeObserverForInterval(
        tenth, queue, [&](CMTime time) { ticks.push_back(CMTimeGetSeconds(time)); });
    player->play();
    advance(0.15);
    EXPECT_TRUE(ticks.empty());
    queue.runAll();
    EXPECT_EQ(ticks.size(), 1u);
}

TEST_F(AVPlayerTest, ARemovedObserverIsNotCalledForWhatWasAlreadySubmitted)
{
    becomeReady();
    ManualQueue queue;
    const auto token = player->addPeriodicTimeObserverForInterval(
        tenth, queue, [&](CMTime time) { ticks.push_back(CMTimeGetSeconds(time)); });
    player->play();
    advance(0.15);
    player->removeTimeObserver(token);
    queue.runAll();
    advance(2);
    queue.runAll();
    EXPECT_TRUE(ticks.empty());
}

TEST_F(AVPlayerTest, RemovingNilAForeignTokenOrOneTwiceIsHarmless)
{
    const auto token = observe(tenth);
    player->removeTimeObserver(nullptr);
    player->removeTimeObserver(make<NSObject>());
    player->removeTimeObserver(token);
    player->removeTimeObserver(token);
    becomeReady();
    player->play();
    advance(2);
    EXPECT_TRUE(ticks.empty());
}

TEST_F(AVPlayerTest, ABlockMayRemoveItsOwnObserver)
{
    becomeReady();
    std::shared_ptr<NSObject> token;
    token = player->addPeriodicTimeObserverForInterval(tenth, executor.main(), [&](CMTime time) {
        ticks.push_back(CMTimeGetSeconds(time));
        player->removeTimeObserver(token);
        token.reset();
    });
    player->play();
    advance(2);
    EXPECT_EQ(ticks.size(), 1u);
}

TEST_F(AVPlayerTest, MayBeDroppedFromInsideATick)
{
    becomeReady();
    std::shared_ptr<NSObject> token
        = player->addPeriodicTimeObserverForInterval(tenth, executor.main(), [&](CMTime time) {
              player.reset();
              ticks.push_back(CMTimeGetSeconds(time)); // what the block holds is still there
          });
    player->play();
    advance(2);
    EXPECT_EQ(player, nullptr);
    EXPECT_EQ(ticks.size(), 1u);
    EXPECT_TRUE(device.lastRun().isOver());
}

TEST_F(AVPlayerTest, WhatABlockHoldsIsReleasedWithItsObserver)
{
    const auto held = std::make_shared<int>(1);
    const auto token = player->addPeriodicTimeObserverForInterval(tenth, executor.main(), [held](CMTime) {});
    EXPECT_EQ(held.use_count(), 2);
    player->removeTimeObserver(token);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(AVPlayerTest, ASeekIsExactToTheSampleAtOnceAndAfterIt)
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

TEST_F(AVPlayerTest, ASeekWhilePlayingGoesOnFromTheTarget)
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

TEST_F(AVPlayerTest, ASeekLandsOnTheNearestSample)
{
    becomeReady();
    player->seekToTime(CMTimeMakeWithSeconds(0.5 + 0.4 / rate, 0));
    EXPECT_EQ(player->currentTime().value, rate / 2);
    player->seekToTime(CMTimeMakeWithSeconds(0.5 + 0.6 / rate, 0));
    EXPECT_EQ(player->currentTime().value, rate / 2 + 1);
}

TEST_F(AVPlayerTest, ASeekIsClampedToTheSound)
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

TEST_F(AVPlayerTest, ASeekToNoMomentMovesNothingAndFinishes)
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

TEST_F(AVPlayerTest, ALaterSeekCancelsAnEarlierOne)
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

TEST_F(AVPlayerTest, ASeekBeforeReadinessIsCancelledAndNotRemembered)
{
    player->seekToTime(CMTimeMake(1, 2), noting("seek"));
    EXPECT_TRUE(completions.empty());
    becomeReady();
    EXPECT_THAT(completions, testing::ElementsAre("seek cancelled"));
    EXPECT_EQ(player->currentTime().value, 0);
}

TEST_F(AVPlayerTest, DroppingThePlayerCancelsItsSeek)
{
    becomeReady();
    player->seekToTime(CMTimeMake(1, 2), noting("seek"));
    player.reset();
    settle();
    EXPECT_THAT(completions, testing::ElementsAre("seek cancelled"));
}

TEST_F(AVPlayerTest, MayBeDroppedFromInsideASeeksCompletion)
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

TEST_F(AVPlayerTest, MaySeekAgainFromInsideASeeksCompletion)
{
    becomeReady();
    player->seekToTime(
        CMTimeMake(1, 2), [this](bool) { player->seekToTime(CMTimeMake(1, 4), noting("second")); });
    settle();
    EXPECT_THAT(completions, testing::ElementsAre("second finished"));
    EXPECT_EQ(player->currentTime().value, rate / 4);
}

TEST_F(AVPlayerTest, ObserversHearTheNewTimeAfterTheSeekHasFinished)
{
    becomeReady();
    std::vector<std::string> events;
    const auto token = player->addPeriodicTimeObserverForInterval(
        tenth, executor.main(), [&](CMTime) { events.emplace_back("tick"); });
    player->seekToTime(player->currentItem()->duration(), [&](bool) { events.emplace_back("finished"); });
    settle();
    EXPECT_THAT(events, testing::ElementsAre("finished", "tick"));
}

TEST_F(AVPlayerTest, ASeekToTheEndWhilePlayingReportsTheEnd)
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

TEST_F(AVPlayerTest, ADeviceThatComesBackIsUsedAtTheNextPlay)
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
