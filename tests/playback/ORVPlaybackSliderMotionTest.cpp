#include "platform/layers/CAMediaTimingFunction.h"
#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using ::testing::ElementsAre;

// What the slider shows while it goes from one position to another.
class ORVPlaybackSliderMotionTest : public PlaybackSliderFixture {
protected:
    ORVPlaybackSliderMotionTest()
    {
        showPicture();
        setPosition(0);
    }

    static double easeInOut(double time)
    {
        return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut)->valueAt(time);
    }
    double shownPosition() const { return shownThumbCenter() / width; }
};

TEST_F(ORVPlaybackSliderMotionTest, AnAnimatedPositionIsReachedEvenlyInATenthOfASecond)
{
    slider->setCurrentPosition(0.8, Animated::Yes);
    EXPECT_EQ(slider->currentPosition(), 0.8);
    EXPECT_EQ(thumbCenter(), 0.8 * width);
    EXPECT_EQ(shownPosition(), 0);
    scheduler.advance(0.025);
    EXPECT_NEAR(shownPosition(), 0.2, 1e-9);
    scheduler.advance(0.05);
    EXPECT_NEAR(shownPosition(), 0.6, 1e-9);
    scheduler.advance(0.025);
    EXPECT_NEAR(shownPosition(), 0.8, 1e-9);
    EXPECT_FALSE(slider->thumbView()->layer()->hasAnimations());
}

TEST_F(ORVPlaybackSliderMotionTest, APositionThatIsNotAnimatedIsThereAtOnce)
{
    slider->setCurrentPosition(0.8, Animated::No);
    runFrames();
    EXPECT_EQ(shownPosition(), 0.8);
    EXPECT_FALSE(slider->thumbView()->layer()->hasAnimations());
}

TEST_F(ORVPlaybackSliderMotionTest, AGlideThatFollowsAnotherOneStartsWhereTheThumbIsShown)
{
    slider->setCurrentPosition(0.5, Animated::Yes);
    scheduler.advance(0.05);
    ASSERT_NEAR(shownPosition(), 0.25, 1e-9);
    for (const double target : { 0.9, 0.1, 0.6 }) {
        const double from = shownPosition();
        slider->setCurrentPosition(target, Animated::Yes);
        EXPECT_NEAR(shownPosition(), from, 1e-9) << "no jump";
        scheduler.advance(0.025);
        EXPECT_NEAR(shownPosition(), from + (target - from) / 4, 1e-9);
    }
    scheduler.advance(0.1);
    EXPECT_NEAR(shownPosition(), 0.6, 1e-9);
}

TEST_F(ORVPlaybackSliderMotionTest, AGlideEndsAtThePositionOfEachMoment)
{
    slider->setCurrentPosition(0.5, Animated::Yes);
    scheduler.advance(0.05);
    slider->setCurrentPosition(0.9, Animated::No);
    runFrames();
    EXPECT_NEAR(shownPosition(), 0.45, 1e-9) << "half of the way to where it goes now";
    scheduler.advance(0.025);
    EXPECT_NEAR(shownPosition(), 0.9 * 0.75, 1e-9);
    scheduler.advance(0.05);
    EXPECT_NEAR(shownPosition(), 0.9, 1e-9);
}

TEST_F(ORVPlaybackSliderMotionTest, ATapSendsTheThumbThereInThreeTenthsOfASecondSlowlyAtBothEnds)
{
    touch.tap(place(width / 2));
    EXPECT_EQ(slider->currentPosition(), 0.5);
    EXPECT_EQ(shownPosition(), 0);
    scheduler.advance(0.06);
    EXPECT_NEAR(shownPosition(), 0.5 * easeInOut(0.2), 1e-9);
    EXPECT_LT(shownPosition(), 0.05);
    scheduler.advance(0.09);
    EXPECT_NEAR(shownPosition(), 0.25, 0.001);
    scheduler.advance(0.09);
    EXPECT_NEAR(shownPosition(), 0.5 * easeInOut(0.8), 1e-9);
    EXPECT_GT(shownPosition(), 0.45);
    scheduler.advance(0.059);
    EXPECT_LT(shownPosition(), 0.5);
    scheduler.advance(0.002);
    EXPECT_EQ(shownPosition(), 0.5);
}

TEST_F(ORVPlaybackSliderMotionTest, TheCurveAndTheDurationAreThoseThatAreAskedFor)
{
    slider->setCurrentPosition(1, 2, UIViewAnimationCurve::EaseIn);
    scheduler.advance(1);
    const auto easeIn = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn);
    EXPECT_NEAR(shownPosition(), easeIn->valueAt(0.5), 1e-9);
    scheduler.advance(1);
    EXPECT_EQ(shownPosition(), 1);
}

TEST_F(ORVPlaybackSliderMotionTest, ADurationThatIsNotAboveNothingIsNone)
{
    double position = 0.1;
    for (const double duration : { 0.0, -1.0, -1e300 }) {
        slider->setCurrentPosition(position, duration, UIViewAnimationCurve::Linear);
        EXPECT_EQ(shownPosition(), position) << duration;
        position += 0.1;
    }
}

TEST_F(ORVPlaybackSliderMotionTest, ADurationThatIsNotFiniteIsAProgrammingErrorAndNone)
{
    double position = 0.1;
    for (const double duration : { infinity, -infinity, notANumber }) {
        const AssertionRecorder errors;
        slider->setCurrentPosition(position, duration, UIViewAnimationCurve::Linear);
        EXPECT_THAT(errors.messages(),
            ElementsAre(QStringLiteral("Invalid parameter not satisfying: isfinite(duration)")));
        EXPECT_EQ(shownPosition(), position) << duration;
        position += 0.1;
    }
}

TEST_F(ORVPlaybackSliderMotionTest, AMotionThatNeverEndsCanBeFollowedByAnother)
{
    slider->setCurrentPosition(0.5, 1e300, UIViewAnimationCurve::Linear);
    scheduler.advance(1);
    EXPECT_EQ(slider->currentPosition(), 0.5);
    EXPECT_NEAR(shownPosition(), 0, 1e-9);
    slider->setCurrentPosition(0, 0.1, UIViewAnimationCurve::Linear);
    scheduler.advance(0.2);
    EXPECT_EQ(shownPosition(), 0);
}

// --- The halves and the thumb ------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderMotionTest, TheHalvesMeetAtTheThumbInEveryFrameOfAStep)
{
    for (int step = 1; step <= 10; ++step) {
        slider->setCurrentPosition(step / 10.0, Animated::Yes);
        watchHalvesFor(0.1);
    }
}

TEST_F(ORVPlaybackSliderMotionTest, TheHalvesMeetAtTheThumbInEveryFrameAfterATap)
{
    touch.tap(place(300));
    watchHalvesFor(0.4);
    EXPECT_NEAR(shownThumbCenter(), 300, 1e-9);
}

TEST_F(ORVPlaybackSliderMotionTest, AnInterruptedMotionGoesOnFromWhereItIs)
{
    touch.tap(place(width - 10));
    watchHalvesFor(0.15);
    const double before = shownThumbCenter();
    EXPECT_GT(before, 50);
    EXPECT_LT(before, width - 50);
    slider->setCurrentPosition(0.1, 0.3, UIViewAnimationCurve::EaseInOut);
    EXPECT_NEAR(shownThumbCenter(), before, 1e-9);
    watchHalvesFor(0.15);
    slider->setCurrentPosition(0.4, Animated::Yes);
    watchHalvesFor(0.2);
    EXPECT_NEAR(shownPosition(), 0.4, 1e-9);
}

TEST_F(ORVPlaybackSliderMotionTest, TheHalvesMeetAtTheThumbInEveryFrameOfADrag)
{
    setPosition(0.2);
    double finger = beginDragging();
    for (const double distance : { 260.0, -310.0, 180.0 }) {
        const double target = thumbCenter() + distance;
        for (int step = 1; step <= 20; ++step) {
            touch.moveTo(place(finger + distance * step / 20));
            scheduler.advance(scheduler.frameInterval());
            expectHalvesMeetAtTheThumb();
        }
        finger += distance;
        EXPECT_NEAR(shownThumbCenter(), target, 1e-9);
    }
    touch.up();
    watchHalvesFor(0.3);
}

TEST_F(ORVPlaybackSliderMotionTest, ADragThatInterruptsAMotionKeepsTheHalvesTogether)
{
    slider->setCurrentPosition(1, 1, UIViewAnimationCurve::Linear);
    watchHalvesFor(0.5);
    slider->setCurrentPosition(0.25); // as a drag does
    watchHalvesFor(1);
    EXPECT_NEAR(shownPosition(), 0.25, 1e-9);
}

TEST_F(ORVPlaybackSliderMotionTest, AStepFromOutsideDuringADragHoldsUntilTheNextMove)
{
    setPosition(0.5);
    const double finger = beginDragging();
    slider->setCurrentPosition(0.1, Animated::Yes);
    EXPECT_EQ(slider->currentPosition(), 0.1);
    EXPECT_TRUE(slider->isDraggingThumb());
    watchHalvesFor(0.2);
    touch.moveTo(place(finger + 35));
    EXPECT_NEAR(slider->currentPosition(), 0.6, 1e-9);
}

TEST_F(ORVPlaybackSliderMotionTest, NothingIsAskedForOnceThePositionIsReached)
{
    slider->setCurrentPosition(0.5, Animated::Yes);
    scheduler.advance(0.2);
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(ORVPlaybackSliderMotionTest, OnlyPlacesChangeFromFrameToFrameAndNoPicture)
{
    setPosition(0.2);
    slider->setCurrentPosition(0.8, Animated::Yes);
    const FrameList before = frame;
    scheduler.advance(0.05);
    ASSERT_EQ(frame.items.size(), before.items.size());
    int pictures = 0;
    for (std::size_t index = 0; index < frame.items.size(); ++index) {
        EXPECT_EQ(frame.items[index].content, before.items[index].content);
        pictures += std::holds_alternative<FrameImage>(frame.items[index].content) ? 1 : 0;
    }
    EXPECT_GE(pictures, 2);
}

} // namespace
