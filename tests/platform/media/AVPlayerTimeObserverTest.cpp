#include "tests/platform/media/AVPlayerFixture.h"

namespace {

using AVPlayerTimeObserverTest = AVPlayerFixture;

TEST_F(AVPlayerTimeObserverTest, TicksTenTimesASecondAndAtTheEnd)
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

TEST_F(AVPlayerTimeObserverTest, ASoundThatEndsBetweenTicksIsReportedWhenItEnds)
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

TEST_F(AVPlayerTimeObserverTest, AnEndThatALaggingDeviceReachesLateIsReportedOnceThen)
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

TEST_F(AVPlayerTimeObserverTest, TheEndIsToldWithinFiveMillisecondsOfItsBeingHeard)
{
    for (int latency = 1; latency <= 20; ++latency) { // in thousandths of a second
        device.setLatency(latency / 1000.0);
        player = playerFor(tone.url());
        becomeReady();
        const auto token = observe(kCMTimeInvalid);
        player->play();
        advance(1 + latency / 1000.0 - 0.0001);
        EXPECT_TRUE(ticks.empty()) << latency;
        advance(0.0052);
        EXPECT_THAT(ticks, testing::ElementsAre(1.0)) << latency;
        ticks.clear();
    }
}

TEST_F(AVPlayerTimeObserverTest, PlayingAtTheEndReportsTheEndAgainAndMakesNoSound)
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

TEST_F(AVPlayerTimeObserverTest, NoTicksWhilePaused)
{
    becomeReady();
    const auto token = observe(tenth);
    player->play();
    advance(0.25);
    player->pause();
    advance(3);
    EXPECT_EQ(ticks.size(), 2u);
}

TEST_F(AVPlayerTimeObserverTest, AnObserverAddedWhilePlayingTicksToo)
{
    becomeReady();
    player->play();
    advance(0.35);
    const auto token = observe(tenth);
    advance(0.25);
    EXPECT_EQ(ticks.size(), 2u);
}

TEST_F(AVPlayerTimeObserverTest, AnIntervalThatIsNoTimeTicksOnlyAtTheEnd)
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

TEST_F(AVPlayerTimeObserverTest, AnIntervalMadeWithAnUnknownTimescaleTicks)
{
    const auto token = observe(CMTimeMakeWithSeconds(0.1, player->currentItem()->duration().timescale));
    becomeReady();
    player->play();
    advance(0.5);
    EXPECT_EQ(ticks.size(), 5u);
}

TEST_F(AVPlayerTimeObserverTest, ATinyIntervalDoesNotKeepTheMainThreadBusy)
{
    becomeReady();
    const auto token = observe(CMTimeMake(1, 1'000'000'000));
    player->play();
    advance(0.5);
    EXPECT_NEAR(static_cast<double>(ticks.size()), 50, 1) << "a hundred times a second";
}

TEST_F(AVPlayerTimeObserverTest, TicksGoToTheGivenQueue)
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

TEST_F(AVPlayerTimeObserverTest, ARemovedObserverIsNotCalledForWhatWasAlreadySubmitted)
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

TEST_F(AVPlayerTimeObserverTest, RemovingNilAForeignTokenOrOneTwiceIsHarmless)
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

TEST_F(AVPlayerTimeObserverTest, ARemovedObserverIsLetGo)
{
    auto token = observe(tenth);
    const std::weak_ptr<NSObject> observer = token;
    player->removeTimeObserver(token);
    token.reset();
    EXPECT_TRUE(observer.expired());
}

TEST_F(AVPlayerTimeObserverTest, ABlockMayRemoveItsOwnObserver)
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

TEST_F(AVPlayerTimeObserverTest, MayBeDroppedFromInsideATick)
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

TEST_F(AVPlayerTimeObserverTest, WhatABlockHoldsIsReleasedWithItsObserver)
{
    const auto held = std::make_shared<int>(1);
    const auto token = player->addPeriodicTimeObserverForInterval(tenth, executor.main(), [held](CMTime) {});
    EXPECT_EQ(held.use_count(), 2);
    player->removeTimeObserver(token);
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
