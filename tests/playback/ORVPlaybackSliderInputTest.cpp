// The slider when it is given what nobody expects: huge places, and parts that go away under a finger.
#include "platform/tables/UIScrollView.h"
#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ORVPlaybackSliderInputTest : public PlaybackSliderFixture {
protected:
    // Does something once, when the message is heard.
    void when(const std::string& message, const std::function<void()>& action)
    {
        log->whenHeard = [done = false, message, action](const std::string& heard) mutable {
            if (heard == message && !std::exchange(done, true))
                action();
        };
    }
    void removePan() { slider->thumbView()->removeGestureRecognizer(*slider->thumbPanRecognizer()); }
    long ends() const
    {
        return std::count_if(log->lines.begin(), log->lines.end(),
            [](const std::string& line) { return line.substr(0, 3) == "end"; });
    }
    // Moves the slider into a list that is twice as high as the screen.
    std::shared_ptr<UIScrollView> putIntoList()
    {
        UIScreen::mainScreen()->setGeometry({ screenGeometry.size, screenGeometry.scale, {} });
        auto list = addView<UIScrollView>({ 0, 0, 390, 844 });
        list->setContentSize({ 390, 1688 });
        list->addSubview(slider);
        runFrames();
        return list;
    }
};

// --- Numbers -----------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderInputTest, ABarBeyondAnyScreenHarmsNothingAndRecovers)
{
    for (const double wide : { 1e6, 1e12, 1e300 }) {
        slider->setFrame({ 20, 200, wide, height });
        setPosition(0.3);
        touch.tap({ 100, 210 });
        scheduler.advance(0.5);
        slider->setFrame({ 20, 200, width, height });
        setPosition(0.5);
        EXPECT_EQ(thumbCenter(), width / 2) << wide;
        expectHalvesMeetAtTheThumb();
        touch.tap(place(70));
        scheduler.advance(0.5);
        EXPECT_EQ(slider->currentPosition(), 0.2) << wide;
    }
}

TEST_F(ORVPlaybackSliderInputTest, AWaveformForABarBeyondAnyScreenIsNone)
{
    slider->setAsset(makeAsset());
    for (const double wide : { 1e9, 1e300 }) {
        showPicture();
        log->takeLines();
        slider->setFrame({ 20, 200, wide, height });
        slider->renderWafeformIfNecessaryWithCompletion(nullptr);
        executor.runAll();
        EXPECT_FALSE(slider->minimumTrackView()->waveformImage());
        EXPECT_THAT(log->lines, ElementsAre("rendering", "rendered"));
        slider->setFrame({ 20, 200, width, height });
    }
}

TEST_F(ORVPlaybackSliderInputTest, AFrameThatIsNotFiniteIsAProgrammingErrorAndChangesNothing)
{
    setPosition(0.5);
    for (const double wide : { infinity, -infinity, notANumber }) {
        const AssertionRecorder errors;
        slider->setFrame({ 20, 200, wide, height });
        EXPECT_FALSE(errors.messages().empty());
        runFrames();
        EXPECT_EQ(thumbCenter(), width / 2);
    }
}

TEST_F(ORVPlaybackSliderInputTest, ACurveThatThereIsNotEasesInAndOut)
{
    slider->setCurrentPosition(1, 1, static_cast<UIViewAnimationCurve>(7));
    scheduler.advance(0.5);
    EXPECT_NEAR(shownThumbCenter(), width / 2, 0.01);
    scheduler.advance(0.25);
    EXPECT_GT(shownThumbCenter(), 0.8 * width);
}

// --- Parts that go -----------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderInputTest, ARecogniserThatIsRemovedInTheMiddleOfADragEndsIt)
{
    setPosition(0.5);
    const double finger = beginDragging();
    touch.moveTo(place(finger + 35));
    log->takeLines();
    removePan();
    EXPECT_THAT(log->lines, ElementsAre("drag 0.6", "end 0.6"));
    EXPECT_FALSE(slider->isDraggingThumb());
    touch.moveTo(place(finger + 70));
    touch.up();
    EXPECT_EQ(slider->currentPosition(), 0.6);
    EXPECT_EQ(log->lines.size(), 2U);
}

TEST_F(ORVPlaybackSliderInputTest, ARecogniserMayBeRemovedFromInsideEachMessageOfItsDrag)
{
    for (const char* message : { "begin", "drag", "end" }) {
        slider->thumbView()->addGestureRecognizer(slider->thumbPanRecognizer());
        setPosition(0.5);
        log->takeLines();
        when(message, [this] { removePan(); });
        const double finger = beginDragging();
        touch.moveTo(place(finger + 35));
        touch.up();
        scheduler.advance(0.5);
        EXPECT_FALSE(slider->thumbPanRecognizer()->view()) << message;
        EXPECT_FALSE(slider->isDraggingThumb()) << message;
        EXPECT_EQ(ends(), 1) << message;
    }
}

TEST_F(ORVPlaybackSliderInputTest, TheTapsRecogniserMayBeRemovedFromInsideItsMessage)
{
    when("tap", [this] { slider->removeGestureRecognizer(*slider->trackTapRecognizer()); });
    touch.tap(place(70));
    touch.tap(place(140));
    EXPECT_THAT(log->lines, ElementsAre("tap 0.2"));
    scheduler.advance(0.4);
    EXPECT_EQ(shownThumbCenter(), 70);
}

TEST_F(ORVPlaybackSliderInputTest, AThumbThatIsTakenOutInTheMiddleOfADragEndsIt)
{
    setPosition(0.5);
    const double finger = beginDragging();
    log->takeLines();
    slider->thumbView()->removeFromSuperview();
    EXPECT_EQ(ends(), 1);
    EXPECT_FALSE(slider->isDraggingThumb());
    EXPECT_FALSE(slider->thumbView()->isHighlighted());
    touch.moveTo(place(finger + 35));
    touch.up();
    EXPECT_EQ(ends(), 1);
}

TEST_F(ORVPlaybackSliderInputTest, ASliderThatIsTakenAwayWhileItGlidesStandsAtItsEndWhenItComesBack)
{
    touch.tap(place(280));
    scheduler.advance(0.1);
    slider->removeFromSuperview();
    EXPECT_EQ(shownThumbCenter(), 280);
    window->addSubview(slider);
    runFrames();
    EXPECT_EQ(shownThumbCenter(), 280);
    expectHalvesMeetAtTheThumb();
}

TEST_F(ORVPlaybackSliderInputTest, ASliderMayBeDroppedWhileItGlides)
{
    const std::weak_ptr<ORVPlaybackSlider> weak = slider;
    touch.tap(place(280));
    scheduler.advance(0.1);
    std::exchange(slider, nullptr)->removeFromSuperview();
    scheduler.advance(1);
    EXPECT_TRUE(weak.expired());
}

TEST_F(ORVPlaybackSliderInputTest, AFingerThatIsDownWhenTheThumbIsHiddenDoesNotTap)
{
    touch.down(place(70));
    slider->setThumbHidden(true);
    touch.up();
    EXPECT_THAT(log->lines, IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
}

// --- In a list ---------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderInputTest, OnceADragHasBegunAVerticalMoveDoesNotScroll)
{
    const auto list = putIntoList();
    setPosition(0.5);
    const double finger = beginDragging();
    touch.glideTo(place(finger) - CGPoint(0, 150), 0.2);
    EXPECT_EQ(list->contentOffset(), CGPoint(0, 0));
    EXPECT_TRUE(slider->isDraggingThumb());
    touch.up();
    scheduler.advance(0.5);
    EXPECT_EQ(list->contentOffset(), CGPoint(0, 0));
    EXPECT_EQ(slider->currentPosition(), 0.5);
}

TEST_F(ORVPlaybackSliderInputTest, AFlickThatStartsOnTheBarThrowsTheList)
{
    const auto list = putIntoList();
    touch.drag(place(250), place(250) - CGPoint(0, 150), 0.1);
    const double atRelease = list->contentOffset().y();
    EXPECT_GT(atRelease, 100);
    scheduler.advance(0.3);
    EXPECT_GT(list->contentOffset().y(), atRelease + 50);
    EXPECT_THAT(log->lines, IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
}

TEST_F(ORVPlaybackSliderInputTest, AListThatScrollsUnderADragLetsItGoOn)
{
    const auto list = putIntoList();
    setPosition(0.5);
    const double finger = beginDragging();
    const CGPoint at = place(finger);
    list->setContentOffset({ 0, 60 });
    touch.moveTo(at + CGPoint(35, 0));
    EXPECT_NEAR(slider->currentPosition(), 0.6, 1e-12);
    touch.up();
    EXPECT_EQ(ends(), 1);
}

} // namespace
