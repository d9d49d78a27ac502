#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ORVPlaybackSliderTouchTest : public PlaybackSliderFixture {
protected:
    // Does something to the slider from inside one of its messages.
    void interfere(const std::string& when, const std::function<void()>& what)
    {
        log->whenHeard = [when, what](const std::string& message) {
            if (message == when)
                what();
        };
    }
    void removeSlider() { slider->removeFromSuperview(); }
    void dropSlider()
    {
        if (const auto dropped = std::exchange(slider, nullptr))
            dropped->removeFromSuperview();
    }
    void dropDelegate() { log = nullptr; }
    // A drag to the right by 35 points, a tenth of the bar.
    void dragByATenth()
    {
        const CGPoint finger = place(beginDragging());
        touch.moveTo(finger + CGPoint(35, 0));
        touch.up();
    }
};

// --- Taps --------------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTouchTest, ATapMovesTheThumbThereAndTellsOfIt)
{
    touch.tap(place(70));
    EXPECT_EQ(slider->currentPosition(), 0.2);
    EXPECT_THAT(log->lines, ElementsAre("tap 0.2"));
    EXPECT_FALSE(slider->isDraggingThumb());
}

TEST_F(ORVPlaybackSliderTouchTest, ATapIsToldOfWhenTheMotionHasBegun)
{
    bool moves = false;
    log->whenHeard = [&](auto&) { moves = slider->thumbView()->layer()->hasAnimations(); };
    touch.tap(place(70));
    EXPECT_TRUE(moves);
}

TEST_F(ORVPlaybackSliderTouchTest, ATapAtTheLeftEdgeMovesToTheBeginning)
{
    setPosition(0.5);
    touch.tap(place(0));
    EXPECT_EQ(slider->currentPosition(), 0);
    EXPECT_THAT(log->lines, ElementsAre("tap 0"));
    scheduler.advance(0.4);
    EXPECT_EQ(shownThumbCenter(), 0);
}

TEST_F(ORVPlaybackSliderTouchTest, ATapExactlyOnTheRightEdgeMovesToTheEnd)
{
    touch.tap(place(width)); // no neighbour is there, so the edge is the bar's
    EXPECT_EQ(slider->currentPosition(), 1);
    EXPECT_THAT(log->lines, ElementsAre("tap 1"));
}

TEST_F(ORVPlaybackSliderTouchTest, ATapThatRollsOntoTheRightEdgeMovesToTheEnd)
{
    touch.down(place(width - 1));
    touch.moveTo(place(width));
    touch.up();
    EXPECT_EQ(slider->currentPosition(), 1);
    EXPECT_THAT(log->lines, ElementsAre("tap 1"));
    scheduler.advance(0.4);
    EXPECT_EQ(shownThumbCenter(), width);
}

TEST_F(ORVPlaybackSliderTouchTest, ATapOnTheThumbCountsAsOneOnTheBar)
{
    setPosition(0.5);
    touch.tap(place(width / 2 + 7));
    EXPECT_EQ(slider->currentPosition(), 0.52);
    EXPECT_THAT(log->lines, ElementsAre("tap 0.52"));
}

TEST_F(ORVPlaybackSliderTouchTest, ATapOutsideOfTheBarIsNone)
{
    touch.tap(place(width + 5));
    touch.tap(place(70) + CGPoint(0, height));
    EXPECT_THAT(log->lines, IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
}

TEST_F(ORVPlaybackSliderTouchTest, AMoveOverTheBarBesideTheThumbIsNeitherTapNorDrag)
{
    touch.drag(place(200), place(300), 0.3);
    EXPECT_THAT(log->lines, IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
}

// --- Drags -------------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTouchTest, ADragBesideTheThumbsCentreMovesItByTheFingersMoveAndNotToTheFinger)
{
    setPosition(0.5);
    const double finger = beginDragging();
    EXPECT_EQ(slider->currentPosition(), 0.5);
    touch.moveTo(place(finger + 35));
    EXPECT_NEAR(slider->currentPosition(), 0.6, 1e-12);
    runFrames();
    EXPECT_NEAR(thumbCenter(), width / 2 + 35, 1e-9);
    touch.moveTo(place(finger - 70));
    EXPECT_NEAR(slider->currentPosition(), 0.3, 1e-12);
    touch.up();
    EXPECT_NEAR(slider->currentPosition(), 0.3, 1e-12);
}

TEST_F(ORVPlaybackSliderTouchTest, ADragTellsItsBeginningEveryMoveAndItsEnd)
{
    setPosition(0.5);
    const double finger = beginDragging();
    EXPECT_THAT(log->takeLines(), ElementsAre("begin", "drag 0.5"));
    touch.moveTo(place(finger + 35));
    touch.moveTo(place(finger + 70));
    EXPECT_THAT(log->takeLines(), ElementsAre("drag 0.6", "drag 0.7"));
    touch.up();
    EXPECT_THAT(log->takeLines(), ElementsAre("drag 0.7", "end 0.7"));
}

TEST_F(ORVPlaybackSliderTouchTest, ACancelledDragEndsLikeAnyOther)
{
    setPosition(0.5);
    const double finger = beginDragging();
    touch.moveTo(place(finger + 35));
    log->takeLines();
    touch.cancel();
    EXPECT_THAT(log->lines, ElementsAre("drag 0.6", "end 0.6"));
    EXPECT_FALSE(slider->isDraggingThumb());
}

TEST_F(ORVPlaybackSliderTouchTest, IsDraggingFromTheBeginningToTheEndAsTheDelegateSeesIt)
{
    std::vector<bool> dragging;
    log->whenHeard = [&](auto&) { dragging.push_back(slider->isDraggingThumb()); };
    EXPECT_FALSE(slider->isDraggingThumb());
    dragByATenth();
    EXPECT_THAT(log->lines, ElementsAre("begin", "drag 0", "drag 0.1", "drag 0.1", "end 0.1"));
    EXPECT_THAT(dragging, ElementsAre(true, true, true, true, false));
}

TEST_F(ORVPlaybackSliderTouchTest, TheBeginningIsToldBeforeTheThumbMoves)
{
    setPosition(0.5);
    double atBeginning = 0;
    log->whenHeard = [&](const std::string& message) {
        if (message == "begin")
            atBeginning = slider->currentPosition();
    };
    touch.down(place(width / 2));
    slider->setCurrentPosition(0.4); // not laid out: the thumb is still where the finger takes it up
    touch.moveTo(place(width / 2 + dragBeginning));
    EXPECT_EQ(atBeginning, 0.4);
    EXPECT_NEAR(slider->currentPosition(), 0.5, 1e-12);
}

TEST_F(ORVPlaybackSliderTouchTest, TheFingersDistanceCountsFromWhereTheDelegateHasPutTheThumb)
{
    setPosition(0.5);
    interfere("begin", [this] {
        slider->setCurrentPosition(0.2);
        slider->layoutIfNeeded();
    });
    const double finger = beginDragging();
    EXPECT_NEAR(slider->currentPosition(), 0.2, 1e-12);
    touch.moveTo(place(finger + 35));
    EXPECT_NEAR(slider->currentPosition(), 0.3, 1e-12);
}

TEST_F(ORVPlaybackSliderTouchTest, TheThumbCanBeTakenWhileItGlides)
{
    touch.tap(place(280));
    scheduler.advance(0.1);
    const double shownBefore = shownThumbCenter();
    EXPECT_LT(shownBefore, 200);
    log->takeLines();
    touch.down(place(280));
    touch.moveTo(place(280 + dragBeginning));
    EXPECT_TRUE(slider->isDraggingThumb());
    touch.moveTo(place(280 + dragBeginning - 70));
    touch.up();
    EXPECT_EQ(log->lines.front(), "begin");
    EXPECT_EQ(log->lines.back(), "end 0.6");
}

TEST_F(ORVPlaybackSliderTouchTest, ADragBeyondTheEndsStopsThere)
{
    setPosition(0.5);
    beginDragging();
    log->takeLines();
    touch.moveTo(place(width + 500));
    touch.moveTo(place(-500));
    touch.up();
    EXPECT_THAT(log->lines, ElementsAre("drag 1", "drag 0", "drag 0", "end 0"));
}

TEST_F(ORVPlaybackSliderTouchTest, TheThumbCanBeTakenBackFromEitherEnd)
{
    touch.down(place(5));
    touch.moveTo(place(17));
    touch.moveTo(place(17 + 35));
    touch.up();
    EXPECT_EQ(log->takeLines().back(), "end 0.1");
    setPosition(1);
    touch.down(place(width - 5));
    touch.moveTo(place(width - 17));
    touch.moveTo(place(width - 17 - 35));
    touch.up();
    EXPECT_EQ(log->lines.back(), "end 0.9");
}

TEST_F(ORVPlaybackSliderTouchTest, APlaceThatIsNoNumberIsTheEnd)
{
    slider->beginThumbDraggingWithLocation({ notANumber, notANumber });
    EXPECT_EQ(slider->currentPosition(), 1);
    slider->updateThumbDraggingWithLocation({ infinity, 0 });
    EXPECT_EQ(slider->currentPosition(), 1);
    slider->endThumbDraggingWithLocation({ 0, 0 }); // the offset was no number either
    EXPECT_EQ(slider->currentPosition(), 1);
    EXPECT_THAT(log->lines, ElementsAre("begin", "drag 1", "drag 1", "drag 1", "end 1"));
    log->takeLines();
    slider->beginThumbDraggingWithLocation({ width, 0 });
    slider->endThumbDraggingWithLocation({ -infinity, 0 });
    EXPECT_EQ(log->lines.back(), "end 0");
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

// --- The hidden thumb --------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTouchTest, AHiddenThumbTakesNeitherTapsNorDrags)
{
    slider->setThumbHidden(true);
    touch.tap(place(70));
    touch.drag(place(5), place(200), 0.3);
    EXPECT_THAT(log->lines, IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
    slider->setThumbHidden(false);
    touch.tap(place(70));
    EXPECT_THAT(log->lines, ElementsAre("tap 0.2"));
}

TEST_F(ORVPlaybackSliderTouchTest, HidingTheThumbEndsADrag)
{
    setPosition(0.5);
    const double finger = beginDragging();
    slider->setThumbHidden(true);
    touch.moveTo(place(finger + 35));
    EXPECT_FALSE(slider->isDraggingThumb());
    EXPECT_EQ(log->lines.back().substr(0, 3), "end");
    touch.up();
    EXPECT_EQ(std::count(log->lines.begin(), log->lines.end(), log->lines.back()), 1);
}

// --- Delegates ---------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderTouchTest, WithoutADelegateTheThumbMovesAsWell)
{
    slider->setDelegate({});
    dragByATenth();
    EXPECT_NEAR(slider->currentPosition(), 0.1, 1e-12);
    touch.tap(place(280));
    EXPECT_EQ(slider->currentPosition(), 0.8);
}

TEST_F(ORVPlaybackSliderTouchTest, WithADelegateThatImplementsNothingTheThumbMovesAsWell)
{
    class Deaf final : public ORVPlaybackSliderDelegate { };
    const auto deaf = std::make_shared<Deaf>();
    slider->setDelegate(deaf);
    EXPECT_EQ(slider->delegate(), deaf);
    slider->setAsset(makeAsset());
    slider->renderWafeformIfNecessaryWithCompletion(nullptr);
    executor.runAll();
    dragByATenth();
    EXPECT_NEAR(slider->currentPosition(), 0.1, 1e-12);
    touch.tap(place(280));
    EXPECT_EQ(slider->currentPosition(), 0.8);
}

TEST_F(ORVPlaybackSliderTouchTest, ADelegateThatIsGoneIsNotTold)
{
    const std::weak_ptr<SliderLog> weak = log;
    log = nullptr;
    EXPECT_TRUE(weak.expired()); // nobody but the test held it
    EXPECT_FALSE(slider->delegate());
    dragByATenth();
    EXPECT_NEAR(slider->currentPosition(), 0.1, 1e-12);
}

TEST_F(ORVPlaybackSliderTouchTest, TheDelegateMayBeDroppedFromInsideEachOfItsMessages)
{
    for (const char* message : { "begin", "drag", "end", "tap" }) {
        log = std::make_shared<SliderLog>();
        slider->setDelegate(log);
        const std::weak_ptr<SliderLog> weak = log;
        setPosition(0);
        interfere(message, [this] { dropDelegate(); });
        dragByATenth();
        EXPECT_NEAR(slider->currentPosition(), 0.1, 1e-12) << message;
        touch.tap(place(280));
        EXPECT_EQ(slider->currentPosition(), 0.8) << message;
        EXPECT_TRUE(weak.expired()) << message;
        scheduler.advance(1);
    }
}

TEST_F(ORVPlaybackSliderTouchTest, TheSliderMayBeTakenAwayFromInsideEachOfItsMessages)
{
    for (const char* message : { "begin", "drag", "end", "tap" }) {
        log->whenHeard = [](auto&) {};
        setPosition(0);
        log->takeLines();
        interfere(message, [this] { removeSlider(); });
        touch.tap(place(280));
        if (slider->window()) {
            scheduler.advance(1);
            setPosition(0);
            dragByATenth();
        }
        EXPECT_FALSE(slider->window()) << message;
        EXPECT_FALSE(slider->isDraggingThumb()) << message;
        const auto begun = std::count(log->lines.begin(), log->lines.end(), "begin");
        const auto ended = std::count_if(log->lines.begin(), log->lines.end(),
            [](const std::string& line) { return line.substr(0, 3) == "end"; });
        EXPECT_EQ(begun, ended) << message;
        touch.up();
        window->addSubview(slider);
        runFrames();
    }
}

TEST_F(ORVPlaybackSliderTouchTest, TheSliderMayBeDroppedFromInsideEachOfItsMessages)
{
    for (const char* message : { "begin", "drag", "end", "tap" }) {
        slider = addView<ORVPlaybackSlider>({ 20, 200, width, height });
        slider->setDelegate(log);
        runFrames();
        const std::weak_ptr<ORVPlaybackSlider> weak = slider;
        interfere(message, [this] { dropSlider(); });
        const CGPoint start = place(5);
        const CGPoint tapped = place(280);
        touch.tap(tapped);
        scheduler.advance(1);
        if (slider)
            setPosition(0);
        touch.down(start);
        touch.moveTo(start + CGPoint(12, 0));
        touch.moveTo(start + CGPoint(30, 0));
        touch.up();
        scheduler.advance(1);
        EXPECT_FALSE(slider) << message;
        EXPECT_TRUE(weak.expired()) << message;
    }
}

TEST_F(ORVPlaybackSliderTouchTest, ADragThatEndsInItsFirstMessageLeavesTheThumbWhereItWas)
{
    setPosition(0.5);
    interfere("begin", [this] { removeSlider(); });
    beginDragging();
    // The end comes from inside the first message; the beginning makes its update step all the same.
    EXPECT_THAT(log->lines, ElementsAre("begin", "drag 0.5", "end 0.5", "drag 0.5"));
    EXPECT_EQ(slider->currentPosition(), 0.5);
}

TEST_F(ORVPlaybackSliderTouchTest, ASliderThatIsTakenAwayInTheMiddleOfADragEndsIt)
{
    setPosition(0.5);
    const double finger = beginDragging();
    touch.moveTo(place(finger + 35));
    log->takeLines();
    slider->removeFromSuperview();
    EXPECT_THAT(log->lines, ElementsAre("drag 0.6", "end 0.6"));
    EXPECT_FALSE(slider->isDraggingThumb());
    touch.moveTo({ 300, 222 });
    touch.up();
    EXPECT_EQ(log->lines.size(), 2U);
}

TEST_F(ORVPlaybackSliderTouchTest, ASliderThatIsReleasedInTheMiddleOfADragIsGone)
{
    const std::weak_ptr<ORVPlaybackSlider> weak = slider;
    beginDragging();
    dropSlider();
    EXPECT_EQ(log->lines.back().substr(0, 3), "end");
    touch.moveTo({ 300, 222 });
    touch.up();
    scheduler.advance(1);
    EXPECT_TRUE(weak.expired());
}

} // namespace
