#include "playback/ORVCircularProgressView.h"

#include "platform/host/FramePainter.h"
#include "tests/playback/CircularProgressFixture.h"
#include "tests/support/AssertionRecorder.h"

#include <gmock/gmock.h>

#include <numbers>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ORVCircularProgressViewTest : public CircularProgressFixture { };

// --- A fresh view ------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, AFreshViewShowsNothingButItsGreyTrack)
{
    EXPECT_TRUE(ring->isKindOfClass<UIControl>());
    EXPECT_EQ(ring->direction(), clockwise);
    EXPECT_EQ(ring->trackWidth(), 2);
    EXPECT_EQ(ring->progress(), 0);
    EXPECT_FALSE(ring->isIndeterminate());
    EXPECT_EQ(ring->trackTintColor()->getRed(), (RedGreenBlueAlpha { 0.612, 0.612, 0.624, 0.3 }));
    EXPECT_TRUE(itemOf(track()));
    EXPECT_FALSE(itemOf(arc()));
}

TEST_F(ORVCircularProgressViewTest, TheDirectionsHaveTheirNumbers)
{
    EXPECT_EQ(static_cast<unsigned>(ORVCircularProgressDirectionClockwise), 0U);
    EXPECT_EQ(static_cast<unsigned>(ORVCircularProgressDirectionCounterclockwise), 1U);
}

TEST_F(ORVCircularProgressViewTest, TheArcLiesOverTheTrackAndBothAreOnlyStroked)
{
    ASSERT_EQ(ring->layer()->sublayers().size(), 2U);
    for (const ORVProgressShapeLayer* layer : { &track(), &arc() }) {
        EXPECT_EQ(layer->fillColor(), nullptr);
        EXPECT_EQ(layer->lineWidth(), 2);
        EXPECT_EQ(layer->lineCap(), kCALineCapButt);
        EXPECT_FALSE(layer->progressAnimationsEnabled());
    }
    EXPECT_EQ(track().strokeColor(), ring->trackTintColor());
    EXPECT_EQ(track().strokeStart(), 0);
    EXPECT_EQ(track().strokeEnd(), 1);
    EXPECT_TRUE(arc().strokeColor()->isEqual(ring->tintColor().get()));
}

// --- The circle --------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, TheCircleBeginsAtTheTopRunsClockwiseAndKeepsTheLineInsideTheBounds)
{
    const CGPathRef circle = arc().path();
    ASSERT_TRUE(circle);
    EXPECT_EQ(track().path(), circle);
    const std::pair<double, CGPoint> places[] { { 0, { 22, 1 } }, { 0.25, { 43, 22 } }, { 0.5, { 22, 43 } },
        { 0.75, { 1, 22 } }, { 1, { 22, 1 } } };
    for (const auto& [fraction, place] : places) {
        EXPECT_NEAR(circle->pointAtPercent(fraction).x(), place.x(), 0.01) << fraction;
        EXPECT_NEAR(circle->pointAtPercent(fraction).y(), place.y(), 0.01) << fraction;
    }
}

TEST_F(ORVCircularProgressViewTest, TheLayersFillTheViewAndTheirCircleItsSmallerSide)
{
    for (const CGSize size : { CGSize(44, 44), CGSize(100, 40), CGSize(40, 100) }) {
        ring->setBounds({ CGPoint(), size });
        runFrames();
        const CGPoint middle(size.width() / 2, size.height() / 2);
        const double side = std::min(size.width(), size.height()) - 2;
        for (const ORVProgressShapeLayer* layer : { &track(), &arc() }) {
            EXPECT_EQ(layer->bounds(), CGRect(CGPoint(), size));
            EXPECT_EQ(layer->position(), middle);
            const CGRect circle = layer->path()->boundingRect();
            EXPECT_NEAR(circle.width(), side, 0.01);
            EXPECT_NEAR(circle.height(), side, 0.01);
            EXPECT_NEAR(circle.center().x(), middle.x(), 0.01);
            EXPECT_NEAR(circle.center().y(), middle.y(), 0.01);
        }
    }
}

TEST_F(ORVCircularProgressViewTest, ALayoutMovesNothingSlowly)
{
    EXPECT_FALSE(isAnimating()) << "the first one in a window";
    ring->setFrame({ 0, 0, 80, 60 });
    runFrames();
    EXPECT_EQ(arc().position(), CGPoint(40, 30));
    EXPECT_FALSE(isAnimating());
}

TEST_F(ORVCircularProgressViewTest, ALayoutOfTheSameSizeKeepsThePath)
{
    const CGPathRef before = arc().path();
    ring->setNeedsLayout();
    runFrames();
    EXPECT_EQ(arc().path(), before);
}

TEST_F(ORVCircularProgressViewTest, WhereNoCircleFitsThePathIsEmptyAndNothingFails)
{
    ring->setProgress(0.5, Animated::No);
    for (const CGSize size : { CGSize(0, 0), CGSize(2, 2), CGSize(1, 50), CGSize(50, 0.5) }) {
        ring->setBounds({ CGPoint(), size });
        runFrames();
        EXPECT_TRUE(arc().path()->isEmpty());
        EXPECT_FALSE(itemOf(arc()));
        EXPECT_FALSE(itemOf(track()));
    }
    ring->setBounds({ 0, 0, 3, 3 });
    runFrames();
    EXPECT_TRUE(itemOf(arc())) << "half a point of radius is a circle";
}

// --- Track -------------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, TheTrackTakesItsColourAtOnce)
{
    ring->setTrackTintColor(red);
    EXPECT_TRUE(track().strokeColor()->isEqual(red.get()));
    EXPECT_FALSE(isAnimating());
    ring->setTrackTintColor(nullptr);
    EXPECT_EQ(track().strokeColor(), nullptr);
    runFrames();
    EXPECT_FALSE(itemOf(track()));
}

TEST_F(ORVCircularProgressViewTest, ANewTrackWidthIsThatOfBothLinesAtOnceAndOfTheCircleAtTheNextLayout)
{
    ring->setTrackWidth(6);
    EXPECT_EQ(ring->trackWidth(), 6);
    EXPECT_EQ(track().lineWidth(), 6);
    EXPECT_EQ(arc().lineWidth(), 6);
    EXPECT_FALSE(isAnimating());
    EXPECT_TRUE(ring->layer()->needsLayout());
    EXPECT_NEAR(circleWidth(), 42, 0.01);
    runFrames();
    EXPECT_NEAR(circleWidth(), 38, 0.01);
}

TEST_F(ORVCircularProgressViewTest, ATrackWidthThatDiffersByLessThanTheEpsilonAsksForNoLayout)
{
    for (const double width : { 2.0, 2 + 1e-7 }) {
        ring->setTrackWidth(width);
        EXPECT_EQ(ring->trackWidth(), width);
        EXPECT_EQ(track().lineWidth(), width);
        EXPECT_EQ(arc().lineWidth(), width);
        EXPECT_FALSE(ring->layer()->needsLayout());
    }
    ring->setTrackWidth(2 + 1e-7 + 1.3e-7);
    EXPECT_TRUE(ring->layer()->needsLayout());
}

TEST_F(ORVCircularProgressViewTest, ATrackWidthThatNoCircleHasDrawsNoneUntilTheNextOne)
{
    ring->setProgress(0.5, Animated::No);
    for (const double width : { huge, -huge, 44.0, 0.0, -1.0 }) {
        ring->setTrackWidth(width);
        EXPECT_EQ(ring->trackWidth(), width);
        runFrames();
        EXPECT_FALSE(FramePainter(frame).paintScreen().isNull());
        EXPECT_FALSE(itemOf(arc())) << width;
        EXPECT_FALSE(itemOf(track())) << width;
        ring->setTrackWidth(2);
        runFrames();
        ASSERT_TRUE(itemOf(arc())) << "after " << width;
        EXPECT_EQ(std::get<FrameShape>(itemOf(arc())->content).lineWidth, 2);
    }
}

TEST_F(ORVCircularProgressViewTest, ATrackWidthThatIsNotFiniteIsAProgrammingErrorAndChangesNothing)
{
    const AssertionRecorder assertions;
    for (const double width : { infinity, -infinity, notANumber })
        ring->setTrackWidth(width);
    const auto message = QStringLiteral("Invalid parameter not satisfying: width is finite");
    EXPECT_THAT(assertions.messages(), ElementsAre(message, message, message));
    EXPECT_EQ(ring->trackWidth(), 2);
    EXPECT_EQ(track().lineWidth(), 2);
    EXPECT_FALSE(ring->layer()->needsLayout());
}

TEST_F(ORVCircularProgressViewTest, ARingBeyondAnyScreenHarmsNothingAndRecovers)
{
    ring->setProgress(0.5, Animated::No);
    for (const double side : { 1e6, 1e12, 1e300 }) {
        ring->setBounds({ 0, 0, side, side });
        runFrames();
        EXPECT_FALSE(FramePainter(frame).paintScreen().isNull());
        ring->setBounds({ 0, 0, 44, 44 });
        runFrames();
        ASSERT_TRUE(itemOf(arc())) << side;
        EXPECT_NEAR(circleWidth(), 42, 0.01);
    }
}

// --- Layers made anew --------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, SetUpAgainItHasTwoNewLayersThatShowTheSame)
{
    ring->setProgress(0.75, Animated::No);
    ring->setTrackTintColor(red);
    ring->setTrackWidth(5);
    runFrames();
    const auto before = ring->layer()->sublayers();
    ring->setupSublayers();
    ASSERT_EQ(ring->layer()->sublayers().size(), 2U) << "the old ones are gone";
    EXPECT_NE(ring->layer()->sublayers()[0], before[0]);
    EXPECT_NE(ring->layer()->sublayers()[1], before[1]);
    EXPECT_TRUE(track().strokeColor()->isEqual(red.get()));
    EXPECT_EQ(track().lineWidth(), 5);
    EXPECT_EQ(arc().strokeEnd(), 0.75);
    EXPECT_FALSE(spin());
    EXPECT_TRUE(ring->layer()->needsLayout());
    runFrames();
    EXPECT_NEAR(circleWidth(), 39, 0.01);
}

TEST_F(ORVCircularProgressViewTest, SetUpAgainWhileItSpinsItSpinsOn)
{
    ring->setIndeterminate(true);
    ring->setupSublayers();
    EXPECT_TRUE(spin());
    EXPECT_EQ(arc().strokeEnd(), spinArc);
    ring->setIndeterminate(false);
    EXPECT_FALSE(spin());
}

// --- Tint --------------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, TheArcFollowsTheTintAndTheTrackDoesNot)
{
    const auto grey = track().strokeColor();
    window->setTintColor(red);
    EXPECT_TRUE(arc().strokeColor()->isEqual(red.get()));
    EXPECT_EQ(track().strokeColor(), grey);
    window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    EXPECT_TRUE(arc().strokeColor()->isEqual(ring->tintColor().get()));
    EXPECT_FALSE(arc().strokeColor()->isEqual(red.get()));
}

TEST_F(ORVCircularProgressViewTest, ARingThatComesIntoAWindowHasItsColourAtOnce)
{
    window->setTintColor(red);
    const auto other = make<ORVCircularProgressView>(CGRect(0, 0, 44, 44));
    other->setProgress(0.5, Animated::No);
    window->addSubview(other);
    EXPECT_TRUE(sublayer(*other, 1).strokeColor()->isEqual(red.get()));
    EXPECT_FALSE(sublayer(*other, 1).hasAnimations());
}

TEST_F(ORVCircularProgressViewTest, TheArcChangesItsColourAlongWithAViewAnimation)
{
    window->setTintColor(red);
    runFrames();
    UIView::animate(0.3, [this] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed); });
    EXPECT_TRUE(shownIn(0).strokeColor->isEqual(red.get()));
    EXPECT_TRUE(shownIn(0.3).strokeColor->isEqual(ring->tintColor().get()));
}

// --- Announcements -----------------------------------------------------------------------------------

class ORVCircularProgressViewChangesTest : public CircularProgressFixture {
protected:
    const std::shared_ptr<ChangeLog<double>> log
        = logChanges(ring, "progress", &ORVCircularProgressView::progress);
};

TEST_F(ORVCircularProgressViewChangesTest, EverySettingOfTheProgressIsAnnouncedOnceAfterItIsStored)
{
    ring->setProgress(0.25);
    ring->setProgress(0.25, Animated::No);
    ring->setIndeterminate(true);
    ring->setProgress(0.5, Animated::Yes);
    EXPECT_THAT(log->values, ElementsAre(0.25, 0.25, 0.5));
}

TEST_F(ORVCircularProgressViewChangesTest, OtherChangesAreNotAnnouncedAsProgress)
{
    ring->setIndeterminate(true);
    ring->setIndeterminate(false);
    ring->setDirection(counterclockwise);
    ring->setTrackWidth(3);
    EXPECT_THAT(log->values, IsEmpty());
}

TEST_F(ORVCircularProgressViewChangesTest, AnObserverMaySetTheProgressAgain)
{
    log->whenTold = [&] {
        if (ring->progress() > 1)
            ring->setProgress(1, Animated::No);
    };
    ring->setProgress(1.5, Animated::No);
    EXPECT_THAT(log->values, ElementsAre(1.5, 1));
    EXPECT_EQ(arc().strokeEnd(), 1);
}

TEST_F(ORVCircularProgressViewChangesTest, AnObserverMayDropTheView)
{
    const std::weak_ptr<ORVCircularProgressView> weak = ring;
    log->whenTold = [&] { std::exchange(ring, nullptr)->removeFromSuperview(); };
    weak.lock()->setProgress(0.5);
    EXPECT_TRUE(weak.expired());
}

// --- The picture -------------------------------------------------------------------------------------

class ORVCircularProgressViewPictureTest : public CircularProgressFixture {
protected:
    ORVCircularProgressViewPictureTest()
    {
        window->setBackgroundColor(UIColor::whiteColor());
        ring->setTintColor(red);
    }
    QImage show(double progress)
    {
        ring->setProgress(progress, Animated::No);
        runFrames();
        return FramePainter(frame).paintScreen();
    }
    // In the middle of the ring's line, so many turns clockwise from the top.
    static QColor colorAt(const QImage& screen, double turns)
    {
        const double angle = 2 * std::numbers::pi * turns;
        const double scale = screenGeometry.scale;
        return screen.pixelColor(
            int((122 + 21 * std::sin(angle)) * scale), int((122 - 21 * std::cos(angle)) * scale));
    }
};

TEST_F(ORVCircularProgressViewPictureTest, AQuarterIsTintedFromTheTopInItsDirectionAndTheRestIsTheTrack)
{
    for (const auto direction : { clockwise, counterclockwise }) {
        ring->setDirection(direction);
        const QImage picture = show(0.25);
        const double sense = direction == clockwise ? 1 : -1;
        for (const double turns : { 0.02, 0.125, 0.23 })
            EXPECT_EQ(colorAt(picture, sense * turns), QColor(Qt::red)) << turns;
        for (const double turns : { 0.27, 0.5, 0.75, 0.98 }) {
            const QColor color = colorAt(picture, sense * turns);
            EXPECT_NEAR(color.red(), 255 - 0.3 * (255 - 0.612 * 255), 2) << turns;
            EXPECT_NEAR(color.blue(), 255 - 0.3 * (255 - 0.624 * 255), 2) << turns;
        }
    }
}

TEST_F(ORVCircularProgressViewPictureTest, AProgressThatIsNoFractionIsDrawnAsTheNearerEndAndDrawingGoesOn)
{
    for (const double progress : { 1.5, huge, infinity })
        EXPECT_EQ(colorAt(show(progress), 0.9), QColor(Qt::red)) << progress;
    for (const double progress : { -0.5, -huge, -infinity, notANumber })
        EXPECT_NE(colorAt(show(progress), 0.1), QColor(Qt::red)) << progress;
    const QImage picture = show(0.5);
    EXPECT_EQ(colorAt(picture, 0.45), QColor(Qt::red));
    EXPECT_NE(colorAt(picture, 0.55), QColor(Qt::red));
}

} // namespace
