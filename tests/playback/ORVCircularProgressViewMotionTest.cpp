#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CAMotionGroup.h"
#include "playback/ORVCircularProgressView.h"
#include "tests/platform/host/SceneStage.h"
#include "tests/playback/CircularProgressFixture.h"

#include <numbers>

namespace {

// A ring of one of the two directions. What is measured counts in its sense, from the top.
class ORVCircularProgressViewMotionTest : public CircularProgressFixture,
                                          public testing::WithParamInterface<ORVCircularProgressDirection> {
protected:
    ORVCircularProgressViewMotionTest() { turnTo(GetParam()); }

    void turnTo(ORVCircularProgressDirection direction)
    {
        isClockwise = direction == clockwise;
        ring->setDirection(direction);
    }
    void turnRound() { turnTo(isClockwise ? counterclockwise : clockwise); }

    double fractionIn(double seconds) const
    {
        const CALayerValues shown = shownIn(seconds);
        EXPECT_EQ(isClockwise ? shown.strokeStart : 1 - shown.strokeEnd, 0) << "it begins at the top";
        return isClockwise ? shown.strokeEnd : 1 - shown.strokeStart;
    }
    // How far the arc is turned: 0 to 1.
    double turnsIn(double seconds) const
    {
        const CGAffineTransform transform = shownIn(seconds).transform;
        const double turns = std::atan2(transform.m12(), transform.m11()) / (2 * std::numbers::pi);
        return std::fmod((isClockwise ? turns : -turns) + 1 + tolerance, 1) - tolerance;
    }
    void expectArc(double progress) const
    {
        EXPECT_EQ(arc().strokeStart(), isClockwise ? 0 : 1 - progress);
        EXPECT_EQ(arc().strokeEnd(), isClockwise ? progress : 1);
    }
    // The arc is there and does not move.
    void expectArcAtRest(double progress) const
    {
        expectArc(progress);
        EXPECT_FALSE(isAnimatingStroke());
        EXPECT_EQ(shownIn(0).strokeStart, arc().strokeStart());
        EXPECT_EQ(shownIn(0).strokeEnd, arc().strokeEnd());
    }
    void expectSpinArc() const
    {
        EXPECT_EQ(arc().strokeStart(), isClockwise ? 0 : longArc);
        EXPECT_EQ(arc().strokeEnd(), isClockwise ? spinArc : 1);
        EXPECT_FALSE(isAnimatingStroke());
    }

    static constexpr double tolerance = 2e-7;
    bool isClockwise = true;
};

INSTANTIATE_TEST_SUITE_P(BothDirections, ORVCircularProgressViewMotionTest,
    testing::Values(ORVCircularProgressDirectionClockwise, ORVCircularProgressDirectionCounterclockwise),
    [](const auto& direction) {
        return direction.param == ORVCircularProgressDirectionClockwise ? "Clockwise" : "Counterclockwise";
    });

// --- Progress ----------------------------------------------------------------------------------------

TEST_P(ORVCircularProgressViewMotionTest, SettingTheProgressMovesTheArcThereInAQuarterOfASecond)
{
    ring->setProgress(0.25, Animated::No);
    ring->setProgress(0.75);
    expectArc(0.75);
    expectCourse([this](double seconds) { return fractionIn(seconds); },
        { { 0, 0.25 }, { 0.1, 0.25 + 0.5 * easeOut(0.4) }, { 0.2, 0.25 + 0.5 * easeOut(0.8) },
            { 0.25, 0.75 } });
    scheduler.advance(1);
    EXPECT_EQ(framesRunIn(10), 0) << "once it has arrived";
}

TEST_P(ORVCircularProgressViewMotionTest, WithoutAnimationTheArcIsThereAtOnceInMidFlightToo)
{
    ring->setProgress(0.8, Animated::No);
    expectArcAtRest(0.8);
    ring->setProgress(0.2);
    scheduler.advance(0.1);
    ring->setProgress(0.3, Animated::No);
    expectArcAtRest(0.3);
}

TEST_P(ORVCircularProgressViewMotionTest, AnotherDirectionRedrawsTheArcAtOnceAndTheSameOneNothing)
{
    ring->setProgress(0.25, Animated::No);
    for (int times = 0; times < 2; ++times) {
        turnRound();
        expectArcAtRest(0.25);
    }
    ring->setProgress(0.5);
    ring->setDirection(GetParam());
    EXPECT_TRUE(isAnimatingStroke());
}

TEST_P(ORVCircularProgressViewMotionTest, AnUnknownDirectionLeavesTheArcAsItIs)
{
    ring->setProgress(0.25, Animated::No);
    ring->setDirection(unknownDirection);
    EXPECT_EQ(ring->direction(), unknownDirection);
    ring->setProgress(0.75);
    EXPECT_EQ(ring->progress(), 0.75);
    expectArc(0.25);
    turnTo(GetParam());
    expectArc(0.75);
}

TEST_P(ORVCircularProgressViewMotionTest, ProgressBeyondTheEndsIsStoredAndHandedOnUnchanged)
{
    for (const double progress : { 1.5, -0.5, huge, -huge, infinity, -infinity }) {
        ring->setProgress(progress, Animated::No);
        EXPECT_EQ(ring->progress(), progress);
        expectArc(progress);
    }
    ring->setProgress(notANumber);
    EXPECT_TRUE(std::isnan(ring->progress()));
    EXPECT_TRUE(std::isnan(isClockwise ? arc().strokeEnd() : arc().strokeStart()));
    scheduler.advance(1);
    ring->setProgress(0.5);
    scheduler.advance(1);
    expectArcAtRest(0.5);
}

// --- The spin ----------------------------------------------------------------------------------------

TEST_P(ORVCircularProgressViewMotionTest, AnIndeterminateRingTurnsAShortArcOnceEverySixTenthsOfASecond)
{
    ring->setIndeterminate(true);
    EXPECT_TRUE(ring->isIndeterminate());
    expectSpinArc();
    for (const double start : { 0.0, 0.6, 600.0 })
        for (const double turns : { 0.0, 0.25, 0.5, 0.75 })
            EXPECT_NEAR(turnsIn(start + turns * 0.6), turns, tolerance);
}

TEST_P(ORVCircularProgressViewMotionTest, TheSpinIsOneEvenTurnForEver)
{
    ring->setIndeterminate(true);
    const auto turn = std::dynamic_pointer_cast<const CABasicAnimation>(spin());
    ASSERT_TRUE(turn);
    EXPECT_EQ(turn->keyPath(), QStringLiteral("transform.rotation.z"));
    EXPECT_EQ(turn->duration(), 0.6);
    EXPECT_EQ(static_cast<float>(turn->repeatCount()), 3.4028235e38F);
    EXPECT_EQ(turn->timingFunction(), nullptr);
    EXPECT_FALSE(turn->autoreverses());
    scheduler.advance(3600);
    EXPECT_TRUE(spin());
}

TEST_P(ORVCircularProgressViewMotionTest, TheSpinEndsAMotionOfTheArcAndStartsOnce)
{
    ring->setProgress(0.8);
    scheduler.advance(0.1);
    ring->setIndeterminate(true);
    expectSpinArc();
    EXPECT_FALSE(arc().progressAnimationsEnabled());
    EXPECT_NEAR(fractionIn(0), spinArc, 1e-7);
    const auto first = spin();
    scheduler.advance(0.1);
    ring->setIndeterminate(true);
    EXPECT_EQ(spin(), first);
    EXPECT_EQ(arc().animationKeys().size(), 1U);
}

TEST_P(ORVCircularProgressViewMotionTest, ProgressIsStoredDuringTheSpinAndThereAtOnceAfterIt)
{
    ring->setIndeterminate(true);
    ring->setProgress(0.5, Animated::No);
    ring->setProgress(0.75);
    EXPECT_EQ(ring->progress(), 0.75);
    expectSpinArc();
    scheduler.advance(0.2);
    ring->setIndeterminate(false);
    EXPECT_FALSE(ring->isIndeterminate());
    EXPECT_FALSE(arc().hasAnimations());
    expectArcAtRest(0.75);
    EXPECT_NEAR(turnsIn(0), 0, 1e-12);
}

TEST_P(ORVCircularProgressViewMotionTest, DeterminateAgainChangesNothing)
{
    ring->setProgress(0.75);
    ring->setIndeterminate(false);
    EXPECT_TRUE(isAnimatingStroke()) << "the arc is still on its way";
}

TEST_P(ORVCircularProgressViewMotionTest, AnotherDirectionDuringTheSpinStartsItAnewInItsSense)
{
    ring->setIndeterminate(true);
    scheduler.advance(0.1);
    turnRound();
    expectSpinArc();
    EXPECT_EQ(arc().animationKeys().size(), 1U);
    EXPECT_NEAR(turnsIn(0), 0, tolerance);
    EXPECT_NEAR(turnsIn(0.15), 0.25, tolerance);
}

TEST_P(ORVCircularProgressViewMotionTest, AnUnknownDirectionLetsASpinGoOnAndStartsNone)
{
    ring->setIndeterminate(true);
    scheduler.advance(0.1);
    ring->setDirection(unknownDirection);
    expectSpinArc();
    EXPECT_NEAR(turnsIn(0.05), 0.25, tolerance);
    turnTo(GetParam());
    ring->setIndeterminate(false);
    ring->setProgress(0.5, Animated::No);
    ring->setDirection(unknownDirection);
    ring->setIndeterminate(true);
    EXPECT_FALSE(spin());
    expectArc(0.5);
    turnRound();
    EXPECT_TRUE(spin());
}

TEST_P(ORVCircularProgressViewMotionTest, TheTrackNeverMoves)
{
    ring->setIndeterminate(true);
    ring->setIndeterminate(false);
    ring->setProgress(0.5);
    EXPECT_FALSE(track().hasAnimations());
    EXPECT_EQ(track().strokeStart(), 0);
    EXPECT_EQ(track().strokeEnd(), 1);
}

// --- What a frame costs ------------------------------------------------------------------------------

class ORVCircularProgressViewFrameTest : public CircularProgressFixture {
protected:
    // The last frame is the earlier one, but for what is undone in the arc's item.
    template <typename Undo> void expectFrameOf(const FrameList& earlier, const Undo& undo)
    {
        ASSERT_EQ(frame.items.size(), earlier.items.size());
        for (std::size_t index = 0; index < frame.items.size(); ++index) {
            FrameItem item = frame.items[index];
            if (item.layer == arc().layerID())
                undo(item, earlier.items[index]);
            EXPECT_EQ(item, earlier.items[index]);
        }
    }
};

TEST_F(ORVCircularProgressViewFrameTest, ASpinningRingChangesNothingInAFrameButItsOwnTransform)
{
    ring->setIndeterminate(true);
    runFrames();
    const FrameList first = frame;
    for (int refresh = 1; refresh < 36; ++refresh) {
        ASSERT_GT(framesRunIn(1.0 / 60), 0);
        expectFrameOf(first, [](FrameItem& item, const FrameItem& earlier) {
            EXPECT_NE(std::exchange(item.transform, earlier.transform), earlier.transform);
        });
    }
}

TEST_F(ORVCircularProgressViewFrameTest, AStepOfProgressChangesNothingInAFrameButTheArcsContent)
{
    ring->setProgress(0.5, Animated::No);
    runFrames();
    const FrameList before = frame;
    ring->setProgress(0.6, Animated::No);
    runFrames();
    expectFrameOf(before, [](FrameItem& item, const FrameItem&) { // the path is the same object
        EXPECT_EQ(std::exchange(std::get<FrameShape>(item.content).strokeEnd, 0.5), 0.6);
    });
}

TEST_F(ORVCircularProgressViewFrameTest, OnTheScreenASpinningRingIsOnePictureThatIsTurned)
{
    SceneStage stage({ 780, 1688 });
    ring->setIndeterminate(true);
    runFrames();
    stage.show(frame);
    EXPECT_EQ(stage.scene().uploadCount(), 2) << "track and arc";
    for (int refresh = 1; refresh < 10; ++refresh) {
        scheduler.advance(1.0 / 60);
        EXPECT_TRUE(stage.show(frame));
    }
    EXPECT_EQ(stage.scene().uploadCount(), 2);
    ring->setIndeterminate(false);
    ring->setProgress(0.5, Animated::No);
    runFrames();
    stage.show(frame);
    EXPECT_EQ(stage.scene().uploadCount(), 3);
}

// --- A changing size ---------------------------------------------------------------------------------

class ORVCircularProgressViewSizeTest : public CircularProgressFixture {
protected:
    enum class Layout : unsigned char { InTheAnimation, WithTheNextFrame };

    void animateTo(const CGRect& target, Layout layout = Layout::InTheAnimation)
    {
        UIView::animate(0.4, [&] {
            ring->setFrame(target);
            if (layout == Layout::InTheAnimation)
                ring->layoutIfNeeded();
        });
    }
    // Where the circle of a layer is shown now, in the ring's coordinates.
    static CGRect circleOf(const CALayer& circle)
    {
        const CALayerValues shown = circle.presentationValues();
        return shown.path ? shown.transformToSuperlayer().mapRect(shown.path->controlPointRect()) : CGRect();
    }
    void expectCirclesInTheirFrame() const
    {
        const CGRect around = ring->layer()->presentationValues().bounds;
        const double side = std::min(around.width(), around.height()) - ring->trackWidth();
        for (const CALayer* circle : std::initializer_list<const CALayer*> { &track(), &arc() }) {
            const CGRect shown = circleOf(*circle);
            EXPECT_NEAR(shown.center().x(), around.center().x(), 1e-6);
            EXPECT_NEAR(shown.center().y(), around.center().y(), 1e-6);
            EXPECT_NEAR(shown.width(), side, 1e-6);
            EXPECT_NEAR(shown.height(), side, 1e-6);
            EXPECT_EQ(circle->presentationValues().lineWidth, ring->trackWidth());
        }
    }
    void watchCirclesForHalfASecond()
    {
        for (int step = 0; step < 30; ++step) {
            runFrames();
            expectCirclesInTheirFrame();
            scheduler.advance(1.0 / 60);
        }
    }

    static constexpr CGRect large { 50, 200, 100, 100 };
};

TEST_F(ORVCircularProgressViewSizeTest, ResizedInsideAnAnimationTheRingMovesWithItsFrame)
{
    for (const Layout layout : { Layout::InTheAnimation, Layout::WithTheNextFrame })
        for (const CGRect& target : { large, CGRect(100, 100, 30, 60) }) {
            animateTo(target, layout);
            watchCirclesForHalfASecond();
            EXPECT_EQ(ring->layer()->presentationValues().bounds.size(), target.size());
            EXPECT_FALSE(track().hasAnimations());
        }
}

TEST_F(ORVCircularProgressViewSizeTest, OneThatIsTurnedBackOnItsWayGoesOnFromWhereItIs)
{
    animateTo(large);
    scheduler.advance(0.2);
    const CGRect before = circleOf(track());
    animateTo({ 100, 100, 44, 44 });
    EXPECT_NEAR(circleOf(track()).width(), before.width(), 1e-9);
    watchCirclesForHalfASecond();
}

TEST_F(ORVCircularProgressViewSizeTest, HeldWithItsFrameTheRingStaysInIt)
{
    const auto group = make<CAMotionGroup>();
    {
        const CAMotionGroup::Collection collection(group);
        animateTo(large, Layout::WithTheNextFrame);
    }
    runFrames();
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
    ring->setFrame(large);
    runFrames();
    expectCirclesInTheirFrame();
    EXPECT_FALSE(track().hasAnimations());
}

} // namespace
