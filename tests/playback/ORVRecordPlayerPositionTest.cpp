#include "tests/playback/RecordPlayerFixture.h"

#include <cmath>

namespace {

// --- Positions and the end -------------------------------------------------------------------------------

TEST_F(ORVRecordPlayerTest, ReportsThePositionTenTimesASecond)
{
    makeReadyPlayer();
    scheduler.advance(0.45);
    EXPECT_EQ(delegate->lines, (Lines { "at 0.1", "at 0.2", "at 0.3", "at 0.4" }));
    EXPECT_NEAR(player->timePosition(), 0.45, 1e-9);
}

TEST_F(ORVRecordPlayerTest, ReportsNothingWhilePausedAndGoesOnWhereItStood)
{
    makeReadyPlayer();
    scheduler.advance(0.25);
    player->setPaused(true);
    delegate->takeLines();
    scheduler.advance(5);
    EXPECT_TRUE(delegate->lines.empty());
    EXPECT_NEAR(player->timePosition(), 0.25, 1e-9);
    player->setPaused(false);
    scheduler.advance(0.1);
    EXPECT_EQ(delegate->lines, Lines { "at 0.35" });
}

TEST_F(ORVRecordPlayerTest, ATickAtExactlyTheDurationIsTheEndReportedBeforeThePositionGoesBackToZero)
{
    makeReadyPlayer();
    bool pausedAtEnd = false;
    delegate->whenHeard = [&](const std::string& line, ORVRecordPlayer& sender) {
        if (line == "end")
            pausedAtEnd = sender.isPaused() && sender.assetPlayer()->rate() == 0;
    };
    scheduler.advance(0.5);
    EXPECT_EQ(delegate->lines, (Lines { "at 0.1", "at 0.2", "at 0.3", "at 0.4", "end", "at 0" }));
    EXPECT_TRUE(pausedAtEnd) << "isPaused() is true before the end is reported";
    EXPECT_EQ(device.lastRun().samples().size(), 4000U) << "every sample has been heard";
}

TEST_F(ORVRecordPlayerTest, FindsTheEndOfASoundThatIsNoWholeNumberOfTicks)
{
    const ToneFile odd(sampleRate / 4 + 1, sampleRate);
    makePlayer(odd.url());
    executor.runAll();
    scheduler.advance(1);
    EXPECT_EQ(delegate->lines, (Lines { "ready", "at 0.1", "at 0.2", "end", "at 0" }));
}

TEST_F(ORVRecordPlayerTest, AfterTheEndItIsReadyPausedAndAtTheStart)
{
    makeReadyPlayer();
    scheduler.advance(0.6);
    EXPECT_TRUE(player->isReadyForPlayback());
    EXPECT_TRUE(player->isPaused());
    EXPECT_FALSE(player->isSeeking()) << "the rewind is no seek of the owner's";
    EXPECT_EQ(player->timePosition(), 0);
}

TEST_F(ORVRecordPlayerTest, AfterTheEndReportsNothingUntilItIsResumedAndPlaysAgainFromTheStart)
{
    makeReadyPlayer();
    scheduler.advance(0.6);
    delegate->takeLines();
    scheduler.advance(5);
    EXPECT_TRUE(delegate->lines.empty());
    player->setPaused(false);
    scheduler.advance(0.5);
    EXPECT_EQ(delegate->lines, (Lines { "at 0.1", "at 0.2", "at 0.3", "at 0.4", "end", "at 0" }));
}

TEST_F(ORVRecordPlayerTest, EndsAHundredTimesOver)
{
    makeReadyPlayer();
    for (int i = 0; i < 100; ++i) {
        player->setPaused(false);
        scheduler.advance(0.6);
        ASSERT_EQ(delegate->takeLines(), (Lines { "at 0.1", "at 0.2", "at 0.3", "at 0.4", "end", "at 0" }))
            << i;
    }
}

TEST_F(ORVRecordPlayerTest, KeepsItsTimeWithoutASoundDevice)
{
    device.setAvailable(false);
    makeReadyPlayer();
    scheduler.advance(0.5);
    EXPECT_EQ(delegate->lines, (Lines { "at 0.1", "at 0.2", "at 0.3", "at 0.4", "end", "at 0" }));
}

// --- Seeking ---------------------------------------------------------------------------------------------

TEST_F(ORVRecordPlayerTest, ASeekBeforeItIsReadyIsIgnoredAndForgotten)
{
    makePlayer();
    player->setTimePosition(0.3);
    EXPECT_FALSE(player->isSeeking());
    executor.runAll();
    scheduler.advance(0.1);
    EXPECT_EQ(delegate->lines, (Lines { "ready", "at 0.1" }));
}

TEST_F(ORVRecordPlayerTest, DuringASeekNoPositionIsReportedAndAfterItTheyGoOnFromTheNewOne)
{
    makeReadyPlayer();
    scheduler.advance(0.1);
    delegate->takeLines();
    player->setTimePosition(0.3);
    EXPECT_TRUE(player->isSeeking());
    scheduler.setAfterTurn(nullptr); // the seek does not come through
    scheduler.advance(1);
    EXPECT_TRUE(player->isSeeking());
    EXPECT_TRUE(delegate->lines.empty());

    executor.runAll();
    EXPECT_FALSE(player->isSeeking());
    EXPECT_EQ(delegate->takeLines(), Lines { "at 0.3" });
    scheduler.setAfterTurn([this] { executor.runAll(); });
    scheduler.advance(0.1);
    EXPECT_EQ(delegate->lines, Lines { "at 0.4" });
}

TEST_F(ORVRecordPlayerTest, DropsTicksWhileItIsMarkedAsSeeking)
{
    makeReadyPlayer();
    player->setSeeking(true);
    scheduler.advance(0.25);
    EXPECT_TRUE(delegate->lines.empty());
    player->setSeeking(false);
    scheduler.advance(0.1);
    EXPECT_EQ(delegate->lines, Lines { "at 0.3" });
}

TEST_F(ORVRecordPlayerTest, ASeekCancelledByALaterOneLeavesTheSeekingToTheLaterOne)
{
    makeReadyPlayer();
    player->setPaused(true);
    player->setTimePosition(0.1);
    player->setTimePosition(0.2);
    // The cancelled seek is heard of first, the later one's end after it.
    std::vector<bool> seeking;
    while (executor.main().runOne())
        seeking.push_back(player->isSeeking());
    ASSERT_GE(seeking.size(), 2U);
    EXPECT_TRUE(seeking.front());
    EXPECT_FALSE(seeking.back());
    EXPECT_NEAR(player->timePosition(), 0.2, 1e-9);
}

TEST_F(ORVRecordPlayerTest, SeeksWhilePausedWithoutReportingAndResumesFromThere)
{
    makeReadyPlayer();
    player->setPaused(true);
    player->setTimePosition(0.25);
    executor.runAll();
    EXPECT_TRUE(delegate->lines.empty());
    EXPECT_NEAR(player->timePosition(), 0.25, 1e-9);
    player->setPaused(false);
    scheduler.advance(0.1);
    EXPECT_EQ(delegate->lines, Lines { "at 0.35" });
}

TEST_F(ORVRecordPlayerTest, SeeksNoFurtherThanTheSoundGoes)
{
    makeReadyPlayer();
    player->setPaused(true);
    player->setTimePosition(-3);
    executor.runAll();
    EXPECT_EQ(player->timePosition(), 0);
    player->setTimePosition(1e12);
    executor.runAll();
    EXPECT_EQ(player->timePosition(), 0.5);
    EXPECT_FALSE(player->isSeeking());
}

TEST_F(ORVRecordPlayerTest, ASeekToNowhereEndsAndMovesNothing)
{
    makeReadyPlayer();
    player->setPaused(true);
    player->setTimePosition(0.25);
    player->setTimePosition(std::nan(""));
    executor.runAll();
    EXPECT_FALSE(player->isSeeking());
    EXPECT_NEAR(player->timePosition(), 0.25, 1e-9);
}

TEST_F(ORVRecordPlayerTest, ASeekToTheEndWhilePlayingIsTheEnd)
{
    makeReadyPlayer();
    player->setTimePosition(0.5);
    scheduler.advance(0.2);
    EXPECT_EQ(delegate->lines, (Lines { "end", "at 0" }));
    EXPECT_TRUE(player->isPaused());
}

} // namespace
