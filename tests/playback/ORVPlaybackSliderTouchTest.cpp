#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ORVPlaybackSliderTouchTest : public PlaybackSliderFixture { };

// --- Taps --------------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTouchTest, ATapMovesTheThumbThereAndTellsOfIt)
{
    const std::pair<double, const char*> taps[] {
        { 70, "tap 0.2" }, { 175, "tap 0.5" }, { 182, "tap 0.52" }, // on the thumb
        { 0, "tap 0" },
        { width, "tap 1" }, // exactly on the edge, which is the bar's where it has no neighbour
    };
    for (const auto& [x, told] : taps) {
        EXPECT_THAT(tap(x), ElementsAre(told));
        EXPECT_EQ(slider->currentPosition(), x / width);
        EXPECT_FALSE(slider->isDraggingThumb());
        scheduler.advance(0.4);
        EXPECT_NEAR(shownThumbCenter(), x, 1e-9);
    }
}

TEST_F(ORVPlaybackSliderTouchTest, ATapThatRollsOntoTheRightEdgeMovesToTheEnd)
{
    touch.down(place(width - 1));
    touch.moveTo(place(width));
    EXPECT_THAT(letGo(), ElementsAre("tap 1"));
}

TEST_F(ORVPlaybackSliderTouchTest, ATapIsToldOfWhenTheMotionHasBegun)
{
    bool moves = false;
    log->whenHeard = [&](auto&) { moves = slider->thumbView()->layer()->hasAnimations(); };
    tap(70);
    EXPECT_TRUE(moves);
}

TEST_F(ORVPlaybackSliderTouchTest, OutsideOfTheBarThereAreNoTapsAndBesideTheThumbNoDrags)
{
    EXPECT_THAT(tap(width + 5), IsEmpty());
    touch.tap(place(70) + CGPoint(0, height));
    touch.drag(place(200), place(300), 0.3);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
}

TEST_F(ORVPlaybackSliderTouchTest, AHiddenThumbTakesNeitherTapsNorDrags)
{
    touch.down(place(70));
    slider->setThumbHidden(true);
    EXPECT_THAT(letGo(), IsEmpty()) << "the finger was down before";
    EXPECT_THAT(tap(70), IsEmpty());
    EXPECT_THAT(dragThumb(200), IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
    slider->setThumbHidden(false);
    EXPECT_THAT(tap(70), ElementsAre("tap 0.2"));
}

// --- Drags -------------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTouchTest, ADragMovesTheThumbAsTheFingerMovesAndNotToTheFingerAndTellsOfIt)
{
    setPosition(0.5);
    EXPECT_THAT(takeThumb(), ElementsAre("begin", "drag 0.5"));
    EXPECT_THAT(moveThumb(35), ElementsAre("drag 0.6"));
    EXPECT_NEAR(slider->currentPosition(), 0.6, 1e-12);
    runFrames();
    EXPECT_NEAR(thumbCenter(), width / 2 + 35, 1e-9);
    EXPECT_THAT(moveThumb(-70), ElementsAre("drag 0.3"));
    EXPECT_THAT(letGo(), ElementsAre("drag 0.3", "end 0.3"));
    EXPECT_NEAR(slider->currentPosition(), 0.3, 1e-12);
}

TEST_F(ORVPlaybackSliderTouchTest, IsDraggingFromTheBeginningToTheEndAsTheDelegateSeesIt)
{
    std::vector<bool> dragging;
    log->whenHeard = [&](auto&) { dragging.push_back(slider->isDraggingThumb()); };
    EXPECT_FALSE(slider->isDraggingThumb());
    EXPECT_THAT(dragThumb(35), ElementsAre("begin", "drag 0", "drag 0.1", "drag 0.1", "end 0.1"));
    EXPECT_THAT(dragging, ElementsAre(true, true, true, true, false));
}

TEST_F(ORVPlaybackSliderTouchTest, TheBeginningIsToldBeforeTheThumbMoves)
{
    setPosition(0.5);
    double atBeginning = 0;
    fromInside("begin", [&] { atBeginning = slider->currentPosition(); });
    touch.down(place(width / 2));
    slider->setCurrentPosition(0.4); // not laid out: the thumb is still where the finger takes it up
    touch.moveTo(place(width / 2 + dragBeginning));
    EXPECT_EQ(atBeginning, 0.4);
    EXPECT_NEAR(slider->currentPosition(), 0.5, 1e-12);
}

TEST_F(ORVPlaybackSliderTouchTest, TheFingersDistanceCountsFromWhereTheDelegateHasPutTheThumb)
{
    setPosition(0.5);
    fromInside("begin", [this] {
        slider->setCurrentPosition(0.2);
        slider->layoutIfNeeded();
    });
    EXPECT_THAT(takeThumb(), ElementsAre("begin", "drag 0.2"));
    EXPECT_THAT(moveThumb(35), ElementsAre("drag 0.3"));
}

TEST_F(ORVPlaybackSliderTouchTest, TheThumbCanBeTakenWhileItGlides)
{
    tap(280);
    scheduler.advance(0.1);
    EXPECT_LT(shownThumbCenter(), 200);
    EXPECT_THAT(takeThumb(), ElementsAre("begin", "drag 0.8"));
    EXPECT_THAT(moveThumb(-70), ElementsAre("drag 0.6"));
    EXPECT_THAT(letGo(), ElementsAre("drag 0.6", "end 0.6"));
}

TEST_F(ORVPlaybackSliderTouchTest, ADragBeyondTheEndsStopsThere)
{
    setPosition(0.5);
    takeThumb();
    EXPECT_THAT(moveThumb(500), ElementsAre("drag 1"));
    EXPECT_THAT(moveThumb(-700), ElementsAre("drag 0"));
    EXPECT_THAT(letGo(), ElementsAre("drag 0", "end 0"));
}

TEST_F(ORVPlaybackSliderTouchTest, TheThumbCanBeTakenBackFromEitherEnd)
{
    for (const double end : { 0.0, 1.0 }) {
        const double inwards = end == 0 ? 1 : -1;
        setPosition(end);
        for (const double distance : { 5.0, 17.0, 52.0 }) {
            const CGPoint at = place(end * width + inwards * distance);
            distance == 5 ? touch.down(at) : touch.moveTo(at);
        }
        EXPECT_EQ(letGo().back(), end == 0 ? "end 0.1" : "end 0.9");
    }
}

TEST_F(ORVPlaybackSliderTouchTest, APlaceThatIsNoNumberIsTheEnd)
{
    slider->beginThumbDraggingWithLocation({ notANumber, notANumber });
    EXPECT_EQ(slider->currentPosition(), 1);
    slider->updateThumbDraggingWithLocation({ infinity, 0 });
    slider->endThumbDraggingWithLocation({ 0, 0 }); // the offset was no number either
    EXPECT_THAT(heard(), ElementsAre("begin", "drag 1", "drag 1", "drag 1", "end 1"));
    slider->beginThumbDraggingWithLocation({ width, 0 });
    slider->endThumbDraggingWithLocation({ -infinity, 0 });
    EXPECT_EQ(heard().back(), "end 0");
}

TEST_F(ORVPlaybackSliderTouchTest, ABarWithoutAWidthTakesAnyPlaceForOneOfItsEnds)
{
    slider->setFrame({ 20, 200, 0, height });
    for (const double x : { -5.0, 0.0, 5.0 }) {
        slider->beginThumbDraggingWithLocation({ x, 0 });
        slider->endThumbDraggingWithLocation({ x, 0 });
        EXPECT_TRUE(slider->currentPosition() == 0 || slider->currentPosition() == 1) << x;
    }
}

// --- Delegates ---------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTouchTest, TheThumbMovesWhoeverListensOrNot)
{
    class Deaf final : public ORVPlaybackSliderDelegate { };
    const auto deaf = std::make_shared<Deaf>();
    const std::weak_ptr<SliderLog> weak = log;
    log = nullptr;
    EXPECT_TRUE(weak.expired()) << "the slider does not hold it";
    EXPECT_FALSE(slider->delegate());
    slider->setAsset(makeAsset());
    const std::weak_ptr<ORVPlaybackSliderDelegate> none;
    for (const auto& delegate : { std::weak_ptr<ORVPlaybackSliderDelegate>(weak), none,
             std::weak_ptr<ORVPlaybackSliderDelegate>(deaf) }) {
        slider->setDelegate(delegate);
        EXPECT_EQ(slider->delegate(), delegate.lock());
        slider->renderWafeformIfNecessaryWithCompletion(nullptr);
        executor.runAll();
        setPosition(0);
        dragThumb(35);
        EXPECT_NEAR(slider->currentPosition(), 0.1, 1e-12);
        tap(280);
        EXPECT_EQ(slider->currentPosition(), 0.8);
        scheduler.advance(1);
    }
}

} // namespace
