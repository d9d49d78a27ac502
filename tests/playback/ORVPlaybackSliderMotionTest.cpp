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

    // Runs the frames up to there; seconds count from now.
    void expectPositions(const Course& course)
    {
        const double start = scheduler.now();
        for (const CoursePoint& point : course) {
            scheduler.advance(start + point.seconds - scheduler.now());
            EXPECT_NEAR(shownPosition(), point.value, 1e-9) << "in " << point.seconds << " s";
        }
    }
};

// --- One motion --------------------------------------------------------------------------------------

TEST_F(ORVPlaybackSliderMotionTest, AnAnimatedPositionIsReachedEvenlyInATenthOfASecond)
{
    slider->setCurrentPosition(0.8, Animated::Yes);
    EXPECT_EQ(slider->currentPosition(), 0.8);
    EXPECT_EQ(thumbCenter(), 0.8 * width);
    expectPositions({ { 0, 0 }, { 0.025, 0.2 }, { 0.075, 0.6 }, { 0.1, 0.8 } });
    EXPECT_FALSE(slider->thumbView()->layer()->hasAnimations());
    scheduler.advance(0.1);
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(ORVPlaybackSliderMotionTest, APositionThatIsNotAnimatedIsThereAtOnce)
{
    slider->setCurrentPosition(0.8, Animated::No);
    runFrames();
    EXPECT_EQ(shownPosition(), 0.8);
    EXPECT_FALSE(slider->thumbView()->layer()->hasAnimations());
}

TEST_F(ORVPlaybackSliderMotionTest, ATapSendsTheThumbThereInThreeTenthsOfASecondSlowlyAtBothEnds)
{
    tap(width / 2);
    expectPositions({ { 0, 0 }, { 0.06, 0.5 * easeInOut(0.2) }, { 0.15, 0.5 * easeInOut(0.5) },
        { 0.24, 0.5 * easeInOut(0.8) }, { 0.299, 0.5 * easeInOut(0.299 / 0.3) }, { 0.301, 0.5 } });
    EXPECT_LT(easeInOut(0.2), 0.1);
    EXPECT_GT(easeInOut(0.8), 0.9);
}

TEST_F(ORVPlaybackSliderMotionTest, TheCurveAndTheDurationAreThoseThatAreAskedFor)
{
    slider->setCurrentPosition(1, 2, UIViewAnimationCurve::EaseIn);
    const auto easeIn = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn);
    expectPositions({ { 1, easeIn->valueAt(0.5) }, { 2, 1 } });
    slider->setCurrentPosition(0, 1, static_cast<UIViewAnimationCurve>(7)); // a curve that there is not
    expectPositions({ { 0.5, 1 - easeInOut(0.5) }, { 0.75, 1 - easeInOut(0.75) }, { 1, 0 } });
}

TEST_F(ORVPlaybackSliderMotionTest, ADurationThatIsNotFiniteAndAboveNothingIsNone)
{
    double position = 0.1;
    for (const double duration : { 0.0, -1.0, -1e300, infinity, -infinity, notANumber }) {
        const AssertionRecorder errors;
        slider->setCurrentPosition(position, duration, UIViewAnimationCurve::Linear);
        const NSString error = QStringLiteral("Invalid parameter not satisfying: isfinite(duration)");
        EXPECT_EQ(errors.messages(), std::vector<NSString>(std::isfinite(duration) ? 0 : 1, error));
        EXPECT_EQ(shownPosition(), position) << duration;
        position += 0.1;
    }
}

// --- One motion after another ------------------------------------------------------------------------

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
    // Half of the way to where it goes now, and so on.
    expectPositions({ { 0, 0.9 * 0.5 }, { 0.025, 0.9 * 0.75 }, { 0.075, 0.9 } });
}

TEST_F(ORVPlaybackSliderMotionTest, AMotionThatNeverEndsCanBeFollowedByAnother)
{
    slider->setCurrentPosition(0.5, 1e300, UIViewAnimationCurve::Linear);
    expectPositions({ { 1, 0 } });
    EXPECT_EQ(slider->currentPosition(), 0.5);
    slider->setCurrentPosition(0, 0.1, UIViewAnimationCurve::Linear);
    expectPositions({ { 0.2, 0 } });
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
    tap(300);
    watchHalvesFor(0.4);
    EXPECT_NEAR(shownThumbCenter(), 300, 1e-9);
}

TEST_F(ORVPlaybackSliderMotionTest, AnInterruptedMotionGoesOnFromWhereItIs)
{
    tap(width - 10);
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
    takeThumb();
    double from = 0;
    for (const double to : { 260.0, -50.0, 130.0 }) {
        for (int step = 1; step <= 20; ++step) {
            moveThumb(from + (to - from) * step / 20);
            scheduler.advance(scheduler.frameInterval());
            expectHalvesMeetAtTheThumb();
        }
        EXPECT_NEAR(shownThumbCenter(), 0.2 * width + to, 1e-9);
        from = to;
    }
    letGo();
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
    takeThumb();
    slider->setCurrentPosition(0.1, Animated::Yes);
    EXPECT_EQ(slider->currentPosition(), 0.1);
    EXPECT_TRUE(slider->isDraggingThumb());
    watchHalvesFor(0.2);
    EXPECT_EQ(moveThumb(35), Lines { "drag 0.6" });
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
