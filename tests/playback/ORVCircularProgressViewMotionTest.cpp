#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CAMotionGroup.h"
#include "playback/ORVCircularProgressView.h"
#include "tests/platform/host/SceneStage.h"
#include "tests/playback/CircularProgressFixture.h"

#include <numbers>

namespace {

class ORVCircularProgressViewMotionTest : public CircularProgressFixture {
protected:
    // The angle at which the arc is shown, radians clockwise, 0 to one turn.
    double angleIn(double seconds) const
    {
        const CGAffineTransform transform = shownIn(seconds).transform;
        const double angle = std::atan2(transform.m12(), transform.m11());
        return angle < -1e-9 ? angle + turn : angle;
    }
    void expectArc(double start, double end) const
    {
        EXPECT_EQ(arc().strokeStart(), start);
        EXPECT_EQ(arc().strokeEnd(), end);
    }

    static constexpr double turn = 2 * std::numbers::pi;
};

// --- Progress ----------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewMotionTest, SettingTheProgressMovesTheArcThere)
{
    ring->setProgress(0.2, Animated::No);
    ring->setProgress(0.8);
    EXPECT_EQ(arc().strokeEnd(), 0.8);
    EXPECT_DOUBLE_EQ(shownIn(0).strokeEnd, 0.2);
    EXPECT_NEAR(shownIn(0.1).strokeEnd, 0.2 + 0.6 * easeOut(0.4), 1e-12);
    EXPECT_NEAR(shownIn(0.2).strokeEnd, 0.2 + 0.6 * easeOut(0.8), 1e-12);
    EXPECT_EQ(shownIn(0.25).strokeEnd, 0.8);
    EXPECT_EQ(shownIn(0.1).strokeStart, 0);
}

TEST_F(ORVCircularProgressViewMotionTest, SettingTheProgressWithoutAnimationJumps)
{
    ring->setProgress(0.8, Animated::No);
    EXPECT_FALSE(isAnimatingStroke());
    EXPECT_EQ(shownIn(0).strokeEnd, 0.8);
}

TEST_F(ORVCircularProgressViewMotionTest, AJumpInMidFlightArrivesAtOnce)
{
    ring->setProgress(0.8);
    scheduler.advance(0.1);
    ring->setProgress(0.3, Animated::No);
    EXPECT_EQ(shownIn(0).strokeEnd, 0.3);
    EXPECT_EQ(shownIn(0.1).strokeEnd, 0.3);
}

TEST_F(ORVCircularProgressViewMotionTest, CounterclockwiseTheArcsStartMoves)
{
    ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
    ring->setProgress(0.25, Animated::No);
    expectArc(0.75, 1);
    ring->setProgress(0.5);
    expectArc(0.5, 1);
    EXPECT_DOUBLE_EQ(shownIn(0).strokeStart, 0.75);
    EXPECT_NEAR(shownIn(0.125).strokeStart, 0.75 - 0.25 * easeOut(0.5), 1e-12);
    EXPECT_EQ(shownIn(0.25).strokeStart, 0.5);
    EXPECT_EQ(shownIn(0.125).strokeEnd, 1);
}

TEST_F(ORVCircularProgressViewMotionTest, AChangeOfDirectionRedrawsTheArcAtOnce)
{
    ring->setProgress(0.25, Animated::No);
    ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
    expectArc(0.75, 1);
    EXPECT_FALSE(isAnimatingStroke());
    ring->setDirection(ORVCircularProgressDirectionClockwise);
    expectArc(0, 0.25);
    EXPECT_FALSE(isAnimatingStroke());
}

TEST_F(ORVCircularProgressViewMotionTest, TheSameDirectionAgainChangesNothing)
{
    ring->setProgress(0.5);
    ring->setDirection(ORVCircularProgressDirectionClockwise);
    EXPECT_TRUE(isAnimatingStroke());
}

TEST_F(ORVCircularProgressViewMotionTest, AnUnknownDirectionLeavesTheArcAsItIs)
{
    ring->setProgress(0.25, Animated::No);
    ring->setDirection(unknownDirection);
    EXPECT_EQ(ring->direction(), unknownDirection);
    ring->setProgress(0.75);
    EXPECT_EQ(ring->progress(), 0.75);
    expectArc(0, 0.25);
    ring->setDirection(ORVCircularProgressDirectionClockwise);
    expectArc(0, 0.75);
}

TEST_F(ORVCircularProgressViewMotionTest, ProgressBeyondTheEndsIsStoredAndHandedOnUnchanged)
{
    for (const double progress : { 1.5, -0.5, huge, -huge, infinity, -infinity }) {
        ring->setDirection(ORVCircularProgressDirectionClockwise);
        ring->setProgress(progress, Animated::No);
        EXPECT_EQ(ring->progress(), progress);
        expectArc(0, progress);
        ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
        expectArc(1 - progress, 1);
    }
    ring->setProgress(notANumber);
    EXPECT_TRUE(std::isnan(ring->progress()));
    EXPECT_TRUE(std::isnan(arc().strokeStart()));
    scheduler.advance(1);
    ring->setProgress(0.5);
    scheduler.advance(1);
    EXPECT_EQ(shownIn(0).strokeStart, 0.5);
}

TEST_F(ORVCircularProgressViewMotionTest, NothingMovesAndNoFrameIsAskedForOnceTheArcHasArrived)
{
    ring->setProgress(0.5);
    scheduler.advance(1);
    const int frames = scheduler.framesRun();
    scheduler.advance(10);
    EXPECT_EQ(scheduler.framesRun(), frames);
}

// --- The spin ----------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewMotionTest, AnIndeterminateRingSpinsAShortArcOnceEverySixTenthsOfASecond)
{
    ring->setIndeterminate(true);
    EXPECT_TRUE(ring->isIndeterminate());
    expectArc(0, spinArc);
    const double quarter = 0.15;
    for (const double start : { 0.0, 0.6, 600.0 }) {
        EXPECT_NEAR(angleIn(start), 0, 1e-6);
        EXPECT_NEAR(angleIn(start + quarter), turn / 4, 1e-6);
        EXPECT_NEAR(angleIn(start + 2 * quarter), turn / 2, 1e-6);
        EXPECT_NEAR(angleIn(start + 3 * quarter), turn * 3 / 4, 1e-6);
    }
}

TEST_F(ORVCircularProgressViewMotionTest, CounterclockwiseItSpinsTheOtherWay)
{
    ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
    ring->setIndeterminate(true);
    expectArc(longArc, 1);
    EXPECT_NEAR(angleIn(0.15), turn * 3 / 4, 1e-6);
    EXPECT_NEAR(angleIn(0.3), turn / 2, 1e-6);
    EXPECT_NEAR(angleIn(0.45), turn / 4, 1e-6);
    EXPECT_NEAR(angleIn(0.75), turn * 3 / 4, 1e-6);
}

TEST_F(ORVCircularProgressViewMotionTest, TheSpinIsOneEvenTurnForEver)
{
    ring->setIndeterminate(true);
    const auto spin = std::dynamic_pointer_cast<const CABasicAnimation>(
        arc().animationForKey(QStringLiteral("indeterminateGroup")));
    ASSERT_TRUE(spin);
    EXPECT_EQ(spin->keyPath(), QStringLiteral("transform.rotation.z"));
    EXPECT_EQ(spin->duration(), 0.6);
    EXPECT_EQ(static_cast<float>(spin->repeatCount()), 3.4028235e38F);
    EXPECT_EQ(spin->timingFunction(), nullptr);
    EXPECT_FALSE(spin->autoreverses());
    scheduler.advance(3600);
    EXPECT_TRUE(isSpinning());
}

TEST_F(ORVCircularProgressViewMotionTest, TheSpinDoesNotMoveTheStrokeEnds)
{
    ring->setProgress(0.8);
    scheduler.advance(0.1);
    ring->setIndeterminate(true);
    EXPECT_FALSE(isAnimatingStroke());
    EXPECT_FALSE(arc().progressAnimationsEnabled());
    EXPECT_EQ(shownIn(0).strokeEnd, spinArc);
}

TEST_F(ORVCircularProgressViewMotionTest, IndeterminateTwiceStartsTheSpinOnce)
{
    ring->setIndeterminate(true);
    const auto spin = arc().animationForKey(QStringLiteral("indeterminateGroup"));
    scheduler.advance(0.1);
    ring->setIndeterminate(true);
    EXPECT_EQ(arc().animationForKey(QStringLiteral("indeterminateGroup")), spin);
    EXPECT_EQ(arc().animationKeys().size(), 1U);
}

TEST_F(ORVCircularProgressViewMotionTest, ProgressIsStoredButNotDrawnDuringTheSpin)
{
    ring->setIndeterminate(true);
    ring->setProgress(0.5);
    ring->setProgress(0.75, Animated::No);
    EXPECT_EQ(ring->progress(), 0.75);
    expectArc(0, spinArc);
    EXPECT_FALSE(isAnimatingStroke());
}

TEST_F(ORVCircularProgressViewMotionTest, AfterTheSpinTheStoredProgressIsThereAtOnce)
{
    ring->setIndeterminate(true);
    ring->setProgress(0.75);
    scheduler.advance(0.2);
    ring->setIndeterminate(false);
    EXPECT_FALSE(ring->isIndeterminate());
    EXPECT_FALSE(arc().hasAnimations());
    expectArc(0, 0.75);
    EXPECT_EQ(shownIn(0).strokeEnd, 0.75);
    EXPECT_EQ(angleIn(0), 0);
}

TEST_F(ORVCircularProgressViewMotionTest, DeterminateAgainChangesNothing)
{
    ring->setProgress(0.75);
    ring->setIndeterminate(false);
    EXPECT_TRUE(isAnimatingStroke()) << "the arc is still on its way";
}

TEST_F(ORVCircularProgressViewMotionTest, ANewDirectionDuringTheSpinStartsItAnewInTheNewSense)
{
    ring->setIndeterminate(true);
    scheduler.advance(0.1);
    ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
    expectArc(longArc, 1);
    EXPECT_EQ(arc().animationKeys().size(), 1U);
    EXPECT_NEAR(std::remainder(angleIn(0), turn), 0, 1e-6);
    EXPECT_NEAR(angleIn(0.15), turn * 3 / 4, 1e-6);
}

TEST_F(ORVCircularProgressViewMotionTest, AnUnknownDirectionDuringTheSpinLetsItGoOn)
{
    ring->setIndeterminate(true);
    scheduler.advance(0.1);
    ring->setDirection(unknownDirection);
    expectArc(0, spinArc);
    EXPECT_NEAR(angleIn(0.05), turn / 4, 1e-6);
}

TEST_F(ORVCircularProgressViewMotionTest, AnUnknownDirectionBeforeTheSpinStartsNone)
{
    ring->setProgress(0.5, Animated::No);
    ring->setDirection(unknownDirection);
    ring->setIndeterminate(true);
    EXPECT_FALSE(isSpinning());
    expectArc(0, 0.5);
    ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
    EXPECT_TRUE(isSpinning());
}

TEST_F(ORVCircularProgressViewMotionTest, TheTrackNeverMoves)
{
    ring->setIndeterminate(true);
    ring->setIndeterminate(false);
    ring->setProgress(0.5);
    EXPECT_FALSE(track().hasAnimations());
    EXPECT_EQ(track().strokeStart(), 0);
    EXPECT_EQ(track().strokeEnd(), 1);
}

// --- What a frame costs ------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewMotionTest, ASpinningRingChangesNothingInAFrameButItsOwnTransform)
{
    ring->setIndeterminate(true);
    runFrames();
    const FrameList first = frame;
    for (int refresh = 1; refresh < 36; ++refresh) {
        const int framesBefore = scheduler.framesRun();
        scheduler.advance(1.0 / 60);
        ASSERT_GT(scheduler.framesRun(), framesBefore);
        ASSERT_EQ(frame.items.size(), first.items.size());
        for (std::size_t index = 0; index < frame.items.size(); ++index) {
            FrameItem item = frame.items[index];
            if (item.layer == arc().layerID()) {
                EXPECT_NE(item.transform, first.items[index].transform) << refresh;
                item.transform = first.items[index].transform;
            }
            EXPECT_EQ(item, first.items[index]) << refresh;
        }
    }
}

TEST_F(ORVCircularProgressViewMotionTest, OnTheScreenASpinningRingIsOnePictureThatIsTurned)
{
    SceneStage stage({ 780, 1688 });
    ring->setIndeterminate(true);
    runFrames();
    stage.show(frame);
    const auto uploads = stage.scene().uploadCount();
    EXPECT_EQ(uploads, 2) << "track and arc";
    for (int refresh = 1; refresh < 10; ++refresh) {
        scheduler.advance(1.0 / 60);
        EXPECT_TRUE(stage.show(frame));
    }
    EXPECT_EQ(stage.scene().uploadCount(), uploads);
    ring->setIndeterminate(false);
    ring->setProgress(0.5, Animated::No);
    runFrames();
    stage.show(frame);
    EXPECT_EQ(stage.scene().uploadCount(), uploads + 1);
}

TEST_F(ORVCircularProgressViewMotionTest, AStepOfProgressChangesNothingInAFrameButTheArcsContent)
{
    ring->setProgress(0.5, Animated::No);
    runFrames();
    const FrameList before = frame;
    ring->setProgress(0.6, Animated::No);
    runFrames();
    ASSERT_EQ(frame.items.size(), before.items.size());
    for (std::size_t index = 0; index < frame.items.size(); ++index) {
        FrameItem item = frame.items[index];
        if (item.layer == arc().layerID()) {
            auto& shape = std::get<FrameShape>(item.content);
            EXPECT_EQ(std::exchange(shape.strokeEnd, 0.5), 0.6);
        }
        EXPECT_EQ(item, before.items[index]) << "the path is the same object";
    }
}

// --- A changing size -----------------------------------------------------------------------------------

class ORVCircularProgressViewSizeTest : public CircularProgressFixture {
protected:
    // Where the circle of a layer is shown now, in the ring's coordinates.
    static CGRect circleOf(const CALayer& circle)
    {
        const CALayerValues shown = circle.presentationValues();
        return shown.path ? shown.transformToSuperlayer().mapRect(shown.path->controlPointRect()) : CGRect();
    }
    void expectCirclesInTheirFrame() const
    {
        const CGRect around = ring->layer()->presentationValues().bounds;
        const double side = std::min(around.width(), around.height());
        CGRect expected(0, 0, side - ring->trackWidth(), side - ring->trackWidth());
        expected.moveCenter(around.center());
        for (const CALayer* circle : std::initializer_list<const CALayer*> { &track(), &arc() }) {
            const CGRect shown = circleOf(*circle);
            EXPECT_NEAR(shown.x(), expected.x(), 1e-6);
            EXPECT_NEAR(shown.y(), expected.y(), 1e-6);
            EXPECT_NEAR(shown.width(), expected.width(), 1e-6);
            EXPECT_NEAR(shown.height(), expected.height(), 1e-6);
            EXPECT_EQ(circle->presentationValues().lineWidth, ring->trackWidth());
        }
    }
};

TEST_F(ORVCircularProgressViewSizeTest, ResizedInsideAnAnimationTheRingMovesWithItsFrame)
{
    for (const bool laysOutInside : { true, false }) {
        for (const CGRect& target : { CGRect(50, 200, 100, 100), CGRect(100, 100, 30, 60) }) {
            UIView::animate(0.4, [&] {
                ring->setFrame(target);
                if (laysOutInside)
                    ring->layoutIfNeeded();
            });
            for (int step = 0; step < 30; ++step) {
                runFrames();
                expectCirclesInTheirFrame();
                scheduler.advance(1.0 / 60);
            }
            EXPECT_EQ(ring->layer()->presentationValues().bounds.size(), target.size());
            EXPECT_FALSE(track().hasAnimations());
        }
    }
}

TEST_F(ORVCircularProgressViewSizeTest, OneThatIsTurnedBackOnItsWayGoesOnFromWhereItIs)
{
    UIView::animate(0.4, [&] {
        ring->setFrame({ 50, 200, 100, 100 });
        ring->layoutIfNeeded();
    });
    scheduler.advance(0.2);
    const CGRect before = circleOf(track());
    UIView::animate(0.4, [&] {
        ring->setFrame({ 100, 100, 44, 44 });
        ring->layoutIfNeeded();
    });
    EXPECT_NEAR(circleOf(track()).width(), before.width(), 1e-9);
    for (int step = 0; step < 30; ++step) {
        scheduler.advance(1.0 / 60);
        expectCirclesInTheirFrame();
    }
}

TEST_F(ORVCircularProgressViewSizeTest, HeldWithItsFrameTheRingStaysInIt)
{
    const auto group = make<CAMotionGroup>();
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(0.4, [&] { ring->setFrame({ 50, 200, 100, 100 }); });
    }
    runFrames(); // the layout comes with the frame
    for (const double fraction : { 0.5, 1.0, 0.25, 0.0 }) {
        group->setFraction(fraction);
        scheduler.advance(0.1);
        expectCirclesInTheirFrame();
    }
    group->cancel();
    scheduler.advance(0.5);
    group->settle(CAMotionGroup::Outcome::TakenBack);
    runFrames();
    expectCirclesInTheirFrame();
    EXPECT_EQ(circleOf(track()), CGRect(1, 1, 42, 42));
}

TEST_F(ORVCircularProgressViewSizeTest, ResizedOutsideOfAnAnimationTheRingIsThereAtOnce)
{
    ring->setFrame({ 50, 200, 100, 100 });
    runFrames();
    expectCirclesInTheirFrame();
    EXPECT_FALSE(track().hasAnimations());
}

} // namespace
