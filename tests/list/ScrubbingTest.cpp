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
    void openPaused()
    {
        openPlaying(1);
        tapButton(0);
        scheduler.advance(0.5);
    }
    void putFingerOnThumb()
    {
        start = centerOf(*slider().thumbView());
        touch.down(start);
    }
    // Begins a drag that goes as far as this.
    void dragThumb(double distance)
    {
        putFingerOnThumb();
        moveFinger(20);
        moveFinger(distance);
    }
    // To that far from where the drag has begun.
    void moveFinger(double distance, double down = 0) { touch.moveTo(start + CGPoint(distance, down)); }
    void letGo()
    {
        touch.up();
        executor.runAll();
    }

    ORVPlaybackSlider& slider() const { return *cellAt(0)->playbackSlider(); }
    const std::shared_ptr<ORVRecordPlayer>& player() const { return controller->currentPlayer(); }
    CGPoint placeOnBar(double x) const { return slider().convertPointToView({ x, 22 }, nullptr); }
    std::optional<NSIndexPath> selectedRow() const
    {
        return controller->tableView()->indexPathForSelectedRow();
    }
    // Where in the sound the slider's position is.
    double timeOfPosition() const { return slider().currentPosition() * player()->recordDuration(); }

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

    CGPoint start; // of a drag
    static constexpr NSIndexPath firstRow { 0, 0 };
};

TEST_F(ScrubbingTest, MovesTracksRingAndThumbTogetherInEveryFrame)
{
    openPaused(); // nothing else moves
    putFingerOnThumb();
    for (int step = 1; step <= 40; ++step) {
        moveFinger(step * 4.0, step % 3);
        scheduler.advance(1 / 60.0);
        const Shown shown = shownNow();
        EXPECT_NEAR(shown.thumb, slider().currentPosition(), 1e-9);
        EXPECT_NEAR(shown.played, shown.thumb, 1e-9);
        EXPECT_NEAR(shown.remaining, shown.thumb, 1e-9);
        EXPECT_NEAR(shown.ring, shown.thumb, 1e-9);
    }
    EXPECT_GT(shownNow().thumb, 0.4);
    letGo();
}

TEST_F(ScrubbingTest, TakesWhatIsInFlightAlongWhenADragBeginsWhilePlaying)
{
    openPlaying(1);
    putFingerOnThumb();
    for (int step = 1; step <= 40; ++step) {
        moveFinger(step * 4.0);
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
    letGo();
}

TEST_F(ScrubbingTest, PausesForTheDragAndGoesOnFromTheNewPlace)
{
    openPlaying(1);
    dragThumb(60);
    EXPECT_TRUE(player()->isPaused());
    EXPECT_TRUE(showsPause(0)) << "the button keeps its look";
    const double time = player()->timePosition();
    scheduler.advance(0.5);
    EXPECT_EQ(player()->timePosition(), time) << "the sound does not follow the finger";
    letGo();
    EXPECT_FALSE(player()->isPaused());
    EXPECT_NEAR(player()->timePosition(), timeOfPosition(), 0.01);
    scheduler.advance(0.5);
    EXPECT_GT(positionAt(0), 60 / 390.0);
}

TEST_F(ScrubbingTest, StaysPausedAfterADragThatBeganPaused)
{
    openPaused();
    dragThumb(100);
    letGo();
    EXPECT_TRUE(player()->isPaused());
    EXPECT_NEAR(player()->timePosition(), timeOfPosition(), 0.01);
}

TEST_F(ScrubbingTest, SeeksToATapOnTheBarWithoutPausing)
{
    openPlaying(0.5);
    touch.tap(placeOnBar(195));
    executor.runAll();
    EXPECT_EQ(positionAt(0), 0.5);
    EXPECT_NEAR(player()->timePosition(), player()->recordDuration() / 2, 0.02);
    EXPECT_FALSE(player()->isPaused());
}

TEST_F(ScrubbingTest, ADragOfTheThumbDoesNotScrollTheListWhereverItGoes)
{
    openPlaying(0.5);
    const auto offset = controller->tableView()->contentOffset();
    dragThumb(15);
    for (int step = 1; step <= 12; ++step) {
        moveFinger(15 + step, step * -17.0);
        scheduler.advance(1 / 60.0);
        EXPECT_EQ(controller->tableView()->contentOffset(), offset);
    }
    EXPECT_TRUE(slider().isDraggingThumb());
    letGo();
    scheduler.advance(0.5);
    EXPECT_EQ(controller->tableView()->contentOffset(), offset);
}

TEST_F(ScrubbingTest, AFlickThatStartsOnTheBarScrollsTheList)
{
    openPlaying(0.5);
    const CGPoint bar = placeOnBar(300);
    touch.drag(bar, bar - CGPoint(0, 100), 0.1);
    scheduler.advance(0.3);
    EXPECT_GT(controller->tableView()->contentOffset().y(), 100);
    EXPECT_FALSE(player()->isPaused());
    EXPECT_LT(player()->timePosition(), player()->recordDuration() / 2) << "there was no seek";
}

TEST_F(ScrubbingTest, NeitherATapOnTheBarNorADragNorTheButtonClosesTheRow)
{
    openPlaying(1);
    const std::function<void()> ways[] = { [] {}, [this] { touch.tap(placeOnBar(195)); },
        [this] {
            dragThumb(60);
            letGo();
        },
        [this] { tapButton(0); } };
    for (const auto& way : ways) {
        way();
        scheduler.advance(0.5);
        EXPECT_EQ(selectedRow(), firstRow);
    }
    EXPECT_TRUE(showsSlider(0));
}

TEST_F(ScrubbingTest, ATapOnTheBarOfARowThatDoesNotPlayClosesTheRow)
{
    open();
    tapRow(0);
    scheduler.advance(0.5);
    ASSERT_TRUE(slider().isThumbHidden());
    touch.tap(placeOnBar(195));
    scheduler.advance(1);
    EXPECT_EQ(selectedRow(), std::nullopt);
    EXPECT_EQ(positionAt(0), 0);
    EXPECT_FALSE(showsSlider(0));
}

TEST_F(ScrubbingTest, ATurnOfTheWheelDuringADragEndsItForItsOwnRecord)
{
    openPlaying(1);
    const auto before = player();
    dragThumb(100);
    for (int notch = 0; notch < 10; ++notch) {
        EXPECT_TRUE(touch.wheel(start, { 0, -48 }));
        scheduler.advance(1 / 60.0);
    }
    moveFinger(150);
    letGo();
    EXPECT_EQ(player(), before);
    EXPECT_FALSE(player()->isPaused());
}

TEST_F(ScrubbingTest, ClosingTheRowWithASecondFingerEndsTheDragWhichOpensItAgain)
{
    openPlaying(1);
    const auto before = player();
    dragThumb(100);
    const double time = timeOfPosition();
    touch.down(centerOf(*cellAt(0)->infoView()), 1);
    touch.wait(0.05);
    touch.up(1);
    EXPECT_FALSE(slider().isDraggingThumb()) << "stopped as soon as the bar began to fade";
    moveFinger(200); // nothing follows this finger any more
    scheduler.advance(2);
    touch.up();
    scheduler.advance(1);
    EXPECT_EQ(selectedRow(), firstRow);
    EXPECT_EQ(cellAt(0)->frame().height(), 108);
    EXPECT_TRUE(showsSlider(0));
    EXPECT_EQ(slider().alpha(), 1);
    EXPECT_EQ(slider().layer()->presentationValues().opacity, 1);
    EXPECT_EQ(slider().frame(), CGRect(0, 64, 390, 44));
    EXPECT_EQ(player(), before);
    EXPECT_FALSE(player()->isPaused());
    EXPECT_GT(player()->timePosition(), time);
}

TEST_F(ScrubbingTest, HidingTheBarAtOnceEndsTheDragWhichShowsItAgain)
{
    openPlaying(1);
    dragThumb(20);
    controller->tableView()->deselectRow(firstRow, Animated::No);
    cellAt(0)->setPlaybackSliderVisible(false, Animated::No);
    runFrames();
    EXPECT_FALSE(slider().isDraggingThumb());
    EXPECT_EQ(selectedRow(), firstRow);
    EXPECT_TRUE(showsSlider(0));
    EXPECT_EQ(slider().alpha(), 1);
}

TEST_F(ScrubbingTest, ABarThatIsTakenOutDuringADragIsPutBackByTheEndOfTheDrag)
{
    openPlaying(1);
    dragThumb(100);
    const double time = timeOfPosition();
    controller->tableView()->deselectRow(firstRow, Animated::No);
    slider().removeFromSuperview();
    EXPECT_TRUE(showsSlider(0)) << "the row is open again";
    EXPECT_EQ(slider().window(), window.get());
    executor.runAll();
    scheduler.advance(1);
    EXPECT_EQ(slider().frame(), CGRect(0, 64, 390, 44));
    EXPECT_EQ(slider().layer()->presentationValues().opacity, 1);
    EXPECT_NEAR(player()->timePosition(), time + 1, 0.15)
        << "the last place of the finger was read where the bar had been";
}

TEST_F(ScrubbingTest, PlayingAnotherRowEndsTheDragInsideThatCall)
{
    openPlaying(1);
    const auto first = player();
    dragThumb(100);
    ORVPlaybackSlider& dragged = slider();
    controller->recordTableViewCellRequestsPlayback(*cellAt(1));
    EXPECT_FALSE(dragged.isDraggingThumb());
    EXPECT_TRUE(first->isPaused());
    moveFinger(200);
    letGo();
    scheduler.advance(1);
    ASSERT_TRUE(player());
    EXPECT_EQ(player()->record(), controller->fetchedRecords()[1]);
    EXPECT_FALSE(player()->isPaused());
    EXPECT_TRUE(first->isPaused());
    EXPECT_TRUE(showsPause(1));
    EXPECT_FALSE(showsPause(0));
    // The end of the drag asked for the first row, after the second had been opened.
    EXPECT_EQ(selectedRow(), firstRow);
    EXPECT_EQ(cellAt(0)->frame().height(), 108);
    EXPECT_EQ(cellAt(1)->frame().height(), 64);
    EXPECT_EQ(positionAt(0), 0) << "the ring of the first row is at its start, as its bar is";
    EXPECT_EQ(slider().currentPosition(), 0);
}

TEST_F(ScrubbingTest, ADragWhoseRowIsScrolledAwayEndsForItsOwnRecord)
{
    openPlaying(1);
    const auto before = player();
    dragThumb(100);
    EXPECT_TRUE(player()->isPaused());
    const double time = timeOfPosition();
    controller->tableView()->setContentOffset({ 0, 1000 });
    runFrames();
    executor.runAll();
    EXPECT_EQ(player(), before) << "no other record plays";
    EXPECT_FALSE(player()->isPaused());
    EXPECT_NEAR(player()->timePosition(), time, 0.05);
    moveFinger(200);
    letGo();
    EXPECT_EQ(player(), before);
    for (const auto& cell : controller->tableView()->visibleCells())
        EXPECT_FALSE(std::static_pointer_cast<ORVRecordTableViewCell>(cell)->playbackButton()->isPlaying());
}

} // namespace
