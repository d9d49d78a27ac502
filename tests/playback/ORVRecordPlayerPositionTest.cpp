#include "tests/playback/RecordPlayerFixture.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using testing::IsEmpty;

// A player of half a second of sound, which is ready and plays.
class ORVRecordPlayerPositionTest : public ORVRecordPlayerTest {
protected:
    ORVRecordPlayerPositionTest() { makeReadyPlayer(); }

    // Answers where the player is when the seek has come through.
    double positionAfterSeekTo(double seconds)
    {
        player->setTimePosition(seconds);
        executor.runAll();
        EXPECT_FALSE(player->isSeeking());
        return player->timePosition();
    }
};

// --- Positions and the end -------------------------------------------------------------------------------

TEST_F(ORVRecordPlayerPositionTest, ReportsThePositionTenTimesASecond)
{
    EXPECT_EQ(heardIn(0.45), (Lines { "at 0.1", "at 0.2", "at 0.3", "at 0.4" }));
    EXPECT_NEAR(player->timePosition(), 0.45, 1e-9);
}

TEST_F(ORVRecordPlayerPositionTest, ReportsNothingWhilePausedAndGoesOnWhereItStood)
{
    heardIn(0.25);
    player->setPaused(true);
    EXPECT_THAT(heardIn(5), IsEmpty());
    EXPECT_NEAR(player->timePosition(), 0.25, 1e-9);
    player->setPaused(false);
    EXPECT_EQ(heardIn(0.1), Lines { "at 0.35" });
}

TEST_F(ORVRecordPlayerPositionTest, ATickAtExactlyTheDurationIsTheEndReportedBeforeThePositionGoesBackToZero)
{
    bool pausedAtEnd = false;
    delegate->whenHeard = [&](const std::string& line, ORVRecordPlayer& sender) {
        if (line == "end")
            pausedAtEnd = sender.isPaused() && sender.assetPlayer()->rate() == 0;
    };
    EXPECT_EQ(heardIn(0.5), wholeSound);
    EXPECT_TRUE(pausedAtEnd) << "isPaused() is true before the end is reported";
    EXPECT_EQ(device.lastRun().samples().size(), 4000U) << "every sample has been heard";
    scheduler.advance(0.1);
    EXPECT_TRUE(player->isReadyForPlayback());
    EXPECT_TRUE(player->isPaused());
    EXPECT_FALSE(player->isSeeking()) << "the rewind is no seek of the owner's";
    EXPECT_EQ(player->timePosition(), 0);
}

TEST_F(ORVRecordPlayerPositionTest, FindsTheEndOfASoundThatIsNoWholeNumberOfTicks)
{
    const ToneFile odd(sampleRate / 4 + 1, sampleRate);
    makePlayer(odd.url());
    executor.runAll();
    EXPECT_EQ(heardIn(1), (Lines { "ready", "at 0.1", "at 0.2", "end", "at 0" }));
}

TEST_F(ORVRecordPlayerPositionTest, EndsAHundredTimesOverAndReportsNothingUntilItIsResumed)
{
    for (int i = 0; i < 100; ++i) {
        player->setPaused(false);
        ASSERT_EQ(heardIn(0.6), wholeSound) << i;
        ASSERT_THAT(heardIn(5), IsEmpty()) << i;
    }
}

TEST_F(ORVRecordPlayerPositionTest, KeepsItsTimeWithoutASoundDevice)
{
    device.setAvailable(false);
    makeReadyPlayer();
    EXPECT_EQ(heardIn(0.5), wholeSound);
}

// --- Seeking ---------------------------------------------------------------------------------------------

TEST_F(ORVRecordPlayerPositionTest, ASeekBeforeItIsReadyIsIgnoredAndForgotten)
{
    makePlayer();
    player->setTimePosition(0.3);
    EXPECT_FALSE(player->isSeeking());
    executor.runAll();
    EXPECT_EQ(heardIn(0.1), (Lines { "ready", "at 0.1" }));
}

TEST_F(ORVRecordPlayerPositionTest, DuringASeekNoPositionIsReportedAndAfterItTheyGoOnFromTheNewOne)
{
    heardIn(0.1);
    player->setTimePosition(0.3);
    EXPECT_TRUE(player->isSeeking());
    scheduler.setAfterTurn(nullptr); // the seek does not come through
    EXPECT_THAT(heardIn(1), IsEmpty());
    EXPECT_TRUE(player->isSeeking());

    executor.runAll();
    EXPECT_FALSE(player->isSeeking());
    EXPECT_EQ(heard(), Lines { "at 0.3" });
    scheduler.setAfterTurn([this] { executor.runAll(); });
    EXPECT_EQ(heardIn(0.1), Lines { "at 0.4" });
}

TEST_F(ORVRecordPlayerPositionTest, DropsTicksWhileItIsMarkedAsSeeking)
{
    player->setSeeking(true);
    EXPECT_THAT(heardIn(0.25), IsEmpty());
    player->setSeeking(false);
    EXPECT_EQ(heardIn(0.1), Lines { "at 0.3" });
}

TEST_F(ORVRecordPlayerPositionTest, ASeekCancelledByALaterOneLeavesTheSeekingToTheLaterOne)
{
    player->setPaused(true);
    player->setTimePosition(0.1);
    player->setTimePosition(0.2);
    std::vector<bool> seeking; // after each job: the first seek, its cancellation, the second, a tick
    while (executor.main().runOne())
        seeking.push_back(player->isSeeking());
    EXPECT_THAT(seeking, testing::ElementsAre(true, true, false, false));
    EXPECT_NEAR(player->timePosition(), 0.2, 1e-9);
}

TEST_F(ORVRecordPlayerPositionTest, SeeksWhilePausedWithoutReportingAndResumesFromThere)
{
    player->setPaused(true);
    EXPECT_NEAR(positionAfterSeekTo(0.25), 0.25, 1e-9);
    EXPECT_THAT(heard(), IsEmpty());
    player->setPaused(false);
    EXPECT_EQ(heardIn(0.1), Lines { "at 0.35" });
}

TEST_F(ORVRecordPlayerPositionTest, SeeksNoFurtherThanTheSoundGoesAndNowhereWithoutANumber)
{
    player->setPaused(true);
    EXPECT_EQ(positionAfterSeekTo(-3), 0);
    EXPECT_EQ(positionAfterSeekTo(1e12), 0.5);
    EXPECT_NEAR(positionAfterSeekTo(0.25), 0.25, 1e-9);
    EXPECT_NEAR(positionAfterSeekTo(std::nan("")), 0.25, 1e-9);
}

TEST_F(ORVRecordPlayerPositionTest, ASeekToTheEndWhilePlayingIsTheEnd)
{
    player->setTimePosition(0.5);
    EXPECT_EQ(heardIn(0.2), (Lines { "end", "at 0" }));
    EXPECT_TRUE(player->isPaused());
}

} // namespace
