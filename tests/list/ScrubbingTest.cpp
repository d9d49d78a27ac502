// A finger on the waveform of the row that plays: what moves, what is heard of it, and what it does not
// disturb.
#include "tests/list/RecordsListFixture.h"

namespace {

class ScrubbingTest : public RecordsListFixture {
protected:
    void openPlaying(double seconds)
    {
        open();
        tapButton(0);
        scheduler.advance(seconds);
    }
    ORVPlaybackSlider& slider() const { return *cellAt(0)->playbackSlider(); }
    CGPoint thumb() const { return centerOf(*slider().thumbView()); }

    // What is seen at this moment, as fractions of the bar and of the ring.
    struct Shown {
        double thumb;
        double played;
        double remaining;
        double ring;
    };
    Shown shownNow() const
    {
        const double width = slider().bounds().width();
        const auto& arc = cellAt(0)->playbackButton()->progressView()->layer()->sublayers().back();
        return { slider().thumbView()->layer()->presentationValues().position.x() / width,
            slider().minimumTrackView()->layer()->presentationValues().frame().right() / width,
            slider().maximumTrackView()->layer()->presentationValues().frame().left() / width,
            arc->presentationValues().strokeEnd };
    }
};

TEST_F(ScrubbingTest, MovesTracksRingAndThumbTogetherInEveryFrame)
{
    openPlaying(1);
    tapButton(0);
    scheduler.advance(0.5); // paused: nothing else moves
    const CGPoint start = thumb();
    touch.down(start);
    for (int step = 1; step <= 40; ++step) {
        touch.moveTo({ start.x() + step * 4.0, start.y() + step % 3 });
        scheduler.advance(1 / 60.0);
        const Shown shown = shownNow();
        EXPECT_NEAR(shown.thumb, slider().currentPosition(), 1e-9);
        EXPECT_NEAR(shown.played, shown.thumb, 1e-9);
        EXPECT_NEAR(shown.remaining, shown.thumb, 1e-9);
        EXPECT_NEAR(shown.ring, shown.thumb, 1e-9);
    }
    EXPECT_GT(shownNow().thumb, 0.4);
    touch.up();
}

TEST_F(ScrubbingTest, TakesWhatIsInFlightAlongWhenADragBeginsWhilePlaying)
{
    openPlaying(1);
    const CGPoint start = thumb();
    touch.down(start);
    for (int step = 1; step <= 40; ++step) {
        touch.moveTo({ start.x() + step * 4.0, start.y() });
        scheduler.advance(1 / 60.0);
        const Shown shown = shownNow();
        EXPECT_NEAR(shown.played, shown.thumb, 1e-9);
        EXPECT_NEAR(shown.remaining, shown.thumb, 1e-9);
        EXPECT_NEAR(shown.ring, shown.thumb, 0.02);
        if (step > 20) { // the last tick's glides are over
            EXPECT_NEAR(shown.thumb, slider().currentPosition(), 1e-9);
            EXPECT_NEAR(shown.ring, shown.thumb, 1e-9);
        }
    }
    touch.up();
}

TEST_F(ScrubbingTest, PausesForTheDragAndGoesOnFromTheNewPlace)
{
    openPlaying(1);
    const auto player = controller->currentPlayer();
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 30, start.y() });
    touch.moveTo({ start.x() + 60, start.y() });
    EXPECT_TRUE(player->isPaused());
    EXPECT_TRUE(showsPause(0)) << "the button keeps its look";
    const double time = player->timePosition();
    scheduler.advance(0.5);
    EXPECT_EQ(player->timePosition(), time) << "the sound does not follow the finger";
    touch.up();
    executor.runAll();
    EXPECT_FALSE(player->isPaused());
    EXPECT_NEAR(player->timePosition(), slider().currentPosition() * player->recordDuration(), 0.01);
    scheduler.advance(0.5);
    EXPECT_GT(positionAt(0), 60 / 390.0);
}

TEST_F(ScrubbingTest, StaysPausedAfterADragThatBeganPaused)
{
    openPlaying(1);
    tapButton(0);
    scheduler.advance(0.5);
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 30, start.y() });
    touch.moveTo({ start.x() + 100, start.y() });
    touch.up();
    executor.runAll();
    EXPECT_TRUE(controller->currentPlayer()->isPaused());
    EXPECT_NEAR(controller->currentPlayer()->timePosition(),
        slider().currentPosition() * controller->currentPlayer()->recordDuration(), 0.01);
}

TEST_F(ScrubbingTest, SeeksToATapOnTheBarWithoutPausing)
{
    openPlaying(0.5);
    const auto player = controller->currentPlayer();
    touch.tap(slider().convertPointToView({ 195, 22 }, nullptr));
    executor.runAll();
    EXPECT_EQ(positionAt(0), 0.5);
    EXPECT_NEAR(player->timePosition(), player->recordDuration() / 2, 0.02);
    EXPECT_FALSE(player->isPaused());
}

TEST_F(ScrubbingTest, ADragOfTheThumbDoesNotScrollTheList)
{
    openPlaying(0.5);
    const CGPoint start = thumb();
    const auto offset = controller->tableView()->contentOffset();
    touch.down(start);
    for (int step = 1; step <= 10; ++step)
        touch.moveTo({ start.x() + step * 12.0, start.y() - step });
    touch.up();
    scheduler.advance(0.5);
    EXPECT_EQ(controller->tableView()->contentOffset(), offset);
}

TEST_F(ScrubbingTest, OnceADragHasBegunAVerticalMoveDoesNotScrollTheList)
{
    openPlaying(0.5);
    const CGPoint start = thumb();
    const auto offset = controller->tableView()->contentOffset();
    touch.down(start);
    touch.moveTo({ start.x() + 15, start.y() });
    touch.glideTo({ start.x() + 15, start.y() - 200 }, 0.2);
    EXPECT_EQ(controller->tableView()->contentOffset(), offset);
    EXPECT_TRUE(slider().isDraggingThumb());
    touch.up();
    scheduler.advance(0.5);
    EXPECT_EQ(controller->tableView()->contentOffset(), offset);
}

TEST_F(ScrubbingTest, AFlickThatStartsOnTheBarScrollsTheList)
{
    openPlaying(0.5);
    const auto player = controller->currentPlayer();
    const CGPoint start = slider().convertPointToView({ 300, 22 }, nullptr);
    touch.drag(start, { start.x(), start.y() - 100 }, 0.1);
    scheduler.advance(0.3);
    EXPECT_GT(controller->tableView()->contentOffset().y(), 100);
    EXPECT_FALSE(player->isPaused());
    EXPECT_LT(player->timePosition(), player->recordDuration() / 2) << "nobody has sought";
}

TEST_F(ScrubbingTest, NeitherATapOnTheBarNorADragNorTheButtonClosesTheRow)
{
    openPlaying(1);
    const auto selected = [this] { return controller->tableView()->indexPathForSelectedRow(); };
    ASSERT_EQ(selected(), (NSIndexPath { 0, 0 }));
    touch.tap(slider().convertPointToView({ 195, 22 }, nullptr));
    scheduler.advance(0.5);
    EXPECT_EQ(selected(), (NSIndexPath { 0, 0 }));
    touch.drag(thumb(), thumb() + CGPoint(60, 0), 0.4);
    scheduler.advance(0.5);
    EXPECT_EQ(selected(), (NSIndexPath { 0, 0 }));
    tapButton(0);
    scheduler.advance(0.5);
    EXPECT_EQ(selected(), (NSIndexPath { 0, 0 }));
    EXPECT_TRUE(showsSlider(0));
}

TEST_F(ScrubbingTest, ATapOnTheBarOfARowThatDoesNotPlayClosesTheRow)
{
    open();
    tapRow(0);
    scheduler.advance(0.5);
    ASSERT_TRUE(slider().isThumbHidden());
    touch.tap(slider().convertPointToView({ 195, 22 }, nullptr));
    scheduler.advance(1);
    EXPECT_EQ(controller->tableView()->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(positionAt(0), 0);
    EXPECT_FALSE(showsSlider(0));
}

TEST_F(ScrubbingTest, ATurnOfTheWheelDuringADragEndsItForItsOwnRecord)
{
    openPlaying(1);
    const auto player = controller->currentPlayer();
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 20, start.y() });
    touch.moveTo({ start.x() + 100, start.y() });
    for (int notch = 0; notch < 10; ++notch) {
        EXPECT_TRUE(touch.wheel(start, { 0, -48 }));
        scheduler.advance(1 / 60.0);
    }
    touch.moveTo({ start.x() + 150, start.y() });
    touch.up();
    executor.runAll();
    EXPECT_EQ(controller->currentPlayer(), player);
    EXPECT_FALSE(player->isPaused());
}

TEST_F(ScrubbingTest, ADragWhoseRowIsScrolledAwayEndsForItsOwnRecord)
{
    openPlaying(1);
    const auto player = controller->currentPlayer();
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 20, start.y() });
    touch.moveTo({ start.x() + 100, start.y() });
    EXPECT_TRUE(player->isPaused());
    const double position = slider().currentPosition();
    controller->tableView()->setContentOffset({ 0, 1000 });
    runFrames();
    executor.runAll();
    EXPECT_EQ(controller->currentPlayer(), player) << "no other record plays";
    EXPECT_FALSE(player->isPaused());
    EXPECT_NEAR(player->timePosition(), position * player->recordDuration(), 0.05);
    touch.moveTo({ start.x() + 200, start.y() });
    touch.up();
    executor.runAll();
    EXPECT_EQ(controller->currentPlayer(), player);
    for (const auto& cell : controller->tableView()->visibleCells())
        EXPECT_FALSE(std::static_pointer_cast<ORVRecordTableViewCell>(cell)->playbackButton()->isPlaying());
}

} // namespace
