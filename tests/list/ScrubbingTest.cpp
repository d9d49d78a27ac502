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
    EXPECT_LT(player->timePosition(), player->recordDuration() / 2) << "there was no seek";
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

TEST_F(ScrubbingTest, ClosingTheRowWithASecondFingerEndsTheDragWhichOpensItAgain)
{
    openPlaying(1);
    const auto player = controller->currentPlayer();
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 20, start.y() });
    touch.moveTo({ start.x() + 100, start.y() });
    const double position = slider().currentPosition();
    touch.down(centerOf(*cellAt(0)->infoView()), 1);
    touch.wait(0.05);
    touch.up(1);
    EXPECT_FALSE(slider().isDraggingThumb()) << "stopped as soon as the bar began to fade";
    touch.moveTo({ start.x() + 200, start.y() }); // nothing follows this finger any more
    scheduler.advance(2);
    touch.up();
    scheduler.advance(1);
    EXPECT_EQ(controller->tableView()->indexPathForSelectedRow(), (NSIndexPath { 0, 0 }));
    EXPECT_EQ(cellAt(0)->frame().height(), 108);
    EXPECT_TRUE(showsSlider(0));
    EXPECT_EQ(slider().alpha(), 1);
    EXPECT_EQ(slider().layer()->presentationValues().opacity, 1);
    EXPECT_EQ(slider().frame(), CGRect(0, 64, 390, 44));
    EXPECT_EQ(controller->currentPlayer(), player);
    EXPECT_FALSE(player->isPaused());
    EXPECT_GT(player->timePosition(), position * player->recordDuration());
}

TEST_F(ScrubbingTest, HidingTheBarAtOnceEndsTheDragWhichShowsItAgain)
{
    openPlaying(1);
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 20, start.y() });
    controller->tableView()->deselectRow({ 0, 0 }, Animated::No);
    cellAt(0)->setPlaybackSliderVisible(false, Animated::No);
    runFrames();
    EXPECT_FALSE(slider().isDraggingThumb());
    EXPECT_EQ(controller->tableView()->indexPathForSelectedRow(), (NSIndexPath { 0, 0 }));
    EXPECT_TRUE(showsSlider(0));
    EXPECT_EQ(slider().alpha(), 1);
}

TEST_F(ScrubbingTest, ABarThatIsTakenOutDuringADragIsPutBackByTheEndOfTheDrag)
{
    openPlaying(1);
    const auto player = controller->currentPlayer();
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 20, start.y() });
    touch.moveTo({ start.x() + 100, start.y() });
    const double position = slider().currentPosition();
    controller->tableView()->deselectRow({ 0, 0 }, Animated::No);
    slider().removeFromSuperview();
    EXPECT_TRUE(showsSlider(0)) << "the row is open again";
    EXPECT_EQ(slider().window(), window.get());
    executor.runAll();
    scheduler.advance(1);
    EXPECT_EQ(slider().frame(), CGRect(0, 64, 390, 44));
    EXPECT_EQ(slider().layer()->presentationValues().opacity, 1);
    EXPECT_NEAR(player->timePosition(), position * player->recordDuration() + 1, 0.15)
        << "the last place of the finger was read where the bar had been";
}

TEST_F(ScrubbingTest, PlayingAnotherRowEndsTheDragInsideThatCall)
{
    openPlaying(1);
    const auto first = controller->currentPlayer();
    const CGPoint start = thumb();
    touch.down(start);
    touch.moveTo({ start.x() + 20, start.y() });
    touch.moveTo({ start.x() + 100, start.y() });
    ORVPlaybackSlider& dragged = slider();
    controller->recordTableViewCellRequestsPlayback(*cellAt(1));
    EXPECT_FALSE(dragged.isDraggingThumb());
    EXPECT_TRUE(first->isPaused());
    touch.moveTo({ start.x() + 200, start.y() });
    touch.up();
    executor.runAll();
    scheduler.advance(1);
    ASSERT_TRUE(controller->currentPlayer());
    EXPECT_EQ(controller->currentPlayer()->record(), controller->fetchedRecords()[1]);
    EXPECT_FALSE(controller->currentPlayer()->isPaused());
    EXPECT_TRUE(first->isPaused());
    EXPECT_TRUE(showsPause(1));
    EXPECT_FALSE(showsPause(0));
    // The end of the drag asked for the first row, after the second had been opened.
    EXPECT_EQ(controller->tableView()->indexPathForSelectedRow(), (NSIndexPath { 0, 0 }));
    EXPECT_EQ(cellAt(0)->frame().height(), 108);
    EXPECT_EQ(cellAt(1)->frame().height(), 64);
    EXPECT_EQ(positionAt(0), 0) << "the ring of the first row is at its start, as its bar is";
    EXPECT_EQ(slider().currentPosition(), 0);
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
