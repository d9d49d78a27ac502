#include "playback/ORVCircularProgressView.h"

#include "platform/host/FramePainter.h"
#include "tests/playback/CircularProgressFixture.h"
#include "tests/support/AssertionRecorder.h"

#include <gmock/gmock.h>

#include <numbers>

namespace {

using testing::ElementsAre;

class ORVCircularProgressViewTest : public CircularProgressFixture {
protected:
    QImage screen()
    {
        runFrames();
        return FramePainter(frame).paintScreen();
    }
    static std::shared_ptr<UIColor> red() { return UIColor::colorWithRed(1, 0, 0, 1); }
    // In the middle of the ring's line, so many turns clockwise from the top.
    static QColor colorAt(const QImage& screen, double turns)
    {
        const double angle = 2 * std::numbers::pi * turns;
        const double scale = screenGeometry.scale;
        return screen.pixelColor(
            int((122 + 21 * std::sin(angle)) * scale), int((122 - 21 * std::cos(angle)) * scale));
    }
};

// --- A fresh view ------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, AFreshViewShowsNothingButItsGreyTrack)
{
    EXPECT_EQ(ring->direction(), ORVCircularProgressDirectionClockwise);
    EXPECT_EQ(ring->trackWidth(), 2);
    EXPECT_EQ(ring->progress(), 0);
    EXPECT_FALSE(ring->isIndeterminate());
    EXPECT_EQ(ring->trackTintColor()->getRed(), (RedGreenBlueAlpha { 0.612, 0.612, 0.624, 0.3 }));
    runFrames();
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

TEST_F(ORVCircularProgressViewTest, ItIsAControl) { EXPECT_TRUE(ring->isKindOfClass<UIControl>()); }

// --- The circle --------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, TheCircleBeginsAtTheTopRunsClockwiseAndKeepsTheLineInsideTheBounds)
{
    ring->layoutIfNeeded();
    const CGPathRef circle = arc().path();
    ASSERT_TRUE(circle);
    const auto expectNear = [](const CGPoint& point, const CGPoint& expected) {
        EXPECT_NEAR(point.x(), expected.x(), 0.01);
        EXPECT_NEAR(point.y(), expected.y(), 0.01);
    };
    expectNear(circle->pointAtPercent(0), { 22, 1 });
    expectNear(circle->pointAtPercent(0.25), { 43, 22 });
    expectNear(circle->pointAtPercent(0.5), { 22, 43 });
    expectNear(circle->pointAtPercent(0.75), { 1, 22 });
    expectNear(circle->pointAtPercent(1), { 22, 1 });
    EXPECT_EQ(track().path(), circle);
}

TEST_F(ORVCircularProgressViewTest, BothLayersHaveTheBoundsOfTheViewAndLieInItsMiddle)
{
    ring->layoutIfNeeded();
    for (const ORVProgressShapeLayer* layer : { &track(), &arc() }) {
        EXPECT_EQ(layer->bounds(), CGRect(0, 0, 44, 44));
        EXPECT_EQ(layer->position(), CGPoint(22, 22));
    }
}

TEST_F(ORVCircularProgressViewTest, AViewThatIsNotSquareHasACircleOfTheSmallerSideInItsMiddle)
{
    for (const CGSize size : { CGSize(100, 40), CGSize(40, 100) }) {
        ring->setBounds({ CGPoint(), size });
        ring->layoutIfNeeded();
        const CGRect box = arc().path()->boundingRect();
        EXPECT_NEAR(box.width(), 38, 0.01);
        EXPECT_NEAR(box.height(), 38, 0.01);
        EXPECT_NEAR(box.center().x(), size.width() / 2, 0.01);
        EXPECT_NEAR(box.center().y(), size.height() / 2, 0.01);
        EXPECT_EQ(arc().position(), CGPoint(size.width() / 2, size.height() / 2));
    }
}

TEST_F(ORVCircularProgressViewTest, ALayoutMovesNothingSlowly)
{
    runFrames();
    EXPECT_FALSE(track().hasAnimations()) << "the first one in a window";
    EXPECT_FALSE(arc().hasAnimations());
    ring->setFrame({ 0, 0, 80, 60 });
    runFrames();
    EXPECT_EQ(arc().position(), CGPoint(40, 30));
    EXPECT_FALSE(track().hasAnimations());
    EXPECT_FALSE(arc().hasAnimations());
}

TEST_F(ORVCircularProgressViewTest, ALayoutOfTheSameSizeKeepsThePath)
{
    runFrames();
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
    runFrames();
    ring->setTrackTintColor(red());
    EXPECT_TRUE(track().strokeColor()->isEqual(red().get()));
    EXPECT_FALSE(track().hasAnimations());
    ring->setTrackTintColor(nullptr);
    EXPECT_EQ(track().strokeColor(), nullptr);
    runFrames();
    EXPECT_FALSE(itemOf(track()));
}

TEST_F(ORVCircularProgressViewTest, ANewTrackWidthIsThatOfBothLinesAtOnceAndOfTheCircleAtTheNextLayout)
{
    runFrames();
    ring->setTrackWidth(6);
    EXPECT_EQ(ring->trackWidth(), 6);
    EXPECT_EQ(track().lineWidth(), 6);
    EXPECT_EQ(arc().lineWidth(), 6);
    EXPECT_FALSE(track().hasAnimations());
    EXPECT_TRUE(ring->layer()->needsLayout());
    EXPECT_NEAR(arc().path()->boundingRect().width(), 42, 0.01);
    runFrames();
    EXPECT_NEAR(arc().path()->boundingRect().width(), 38, 0.01);
}

TEST_F(ORVCircularProgressViewTest, ATrackWidthThatDiffersByLessThanTheEpsilonAsksForNoLayout)
{
    runFrames();
    ring->setTrackWidth(2 + 1e-7);
    EXPECT_EQ(ring->trackWidth(), 2 + 1e-7);
    EXPECT_EQ(track().lineWidth(), 2 + 1e-7);
    EXPECT_EQ(arc().lineWidth(), 2 + 1e-7);
    EXPECT_FALSE(ring->layer()->needsLayout());
    ring->setTrackWidth(2 + 1e-7 + 1.3e-7);
    EXPECT_TRUE(ring->layer()->needsLayout());
}

TEST_F(ORVCircularProgressViewTest, TheSameTrackWidthAsksForNoLayout)
{
    runFrames();
    ring->setTrackWidth(2);
    EXPECT_FALSE(ring->layer()->needsLayout());
}

TEST_F(ORVCircularProgressViewTest, ATrackWidthThatNoCircleHasDrawsNoneUntilTheNextOne)
{
    ring->setProgress(0.5, Animated::No);
    for (const double width : { huge, -huge, 44.0, 0.0, -1.0 }) {
        ring->setTrackWidth(width);
        EXPECT_EQ(ring->trackWidth(), width);
        EXPECT_FALSE(screen().isNull());
        EXPECT_FALSE(itemOf(arc())) << width;
        EXPECT_FALSE(itemOf(track())) << width;
        ring->setTrackWidth(2);
        EXPECT_FALSE(screen().isNull());
        ASSERT_TRUE(itemOf(arc())) << "after " << width;
        EXPECT_EQ(std::get<FrameShape>(itemOf(arc())->content).lineWidth, 2);
    }
}

TEST_F(ORVCircularProgressViewTest, ATrackWidthThatIsNotFiniteIsAProgrammingErrorAndChangesNothing)
{
    runFrames();
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
        EXPECT_FALSE(screen().isNull());
        ring->setBounds({ 0, 0, 44, 44 });
        EXPECT_FALSE(screen().isNull());
        ASSERT_TRUE(itemOf(arc())) << side;
        EXPECT_NEAR(arc().path()->boundingRect().width(), 42, 0.01);
    }
}

TEST_F(ORVCircularProgressViewTest, SetUpAgainItHasTwoNewLayersThatShowTheSame)
{
    ring->setProgress(0.75, Animated::No);
    ring->setTrackTintColor(red());
    ring->setTrackWidth(5);
    runFrames();
    const auto before = ring->layer()->sublayers();
    ring->setupSublayers();
    ASSERT_EQ(ring->layer()->sublayers().size(), 2U) << "the old ones are gone";
    EXPECT_NE(ring->layer()->sublayers()[0], before[0]);
    EXPECT_NE(ring->layer()->sublayers()[1], before[1]);
    EXPECT_TRUE(track().strokeColor()->isEqual(red().get()));
    EXPECT_EQ(track().lineWidth(), 5);
    EXPECT_EQ(arc().strokeEnd(), 0.75);
    EXPECT_FALSE(isSpinning());
    EXPECT_TRUE(ring->layer()->needsLayout());
    runFrames();
    EXPECT_NEAR(arc().path()->boundingRect().width(), 39, 0.01);
}

TEST_F(ORVCircularProgressViewTest, SetUpAgainWhileItSpinsItSpinsOn)
{
    ring->setIndeterminate(true);
    ring->setupSublayers();
    EXPECT_TRUE(isSpinning());
    EXPECT_EQ(arc().strokeEnd(), spinArc);
    ring->setIndeterminate(false);
    EXPECT_FALSE(isSpinning());
}

// --- Tint --------------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, TheArcFollowsTheTintAndTheTrackDoesNot)
{
    const auto grey = track().strokeColor();
    window->setTintColor(red());
    EXPECT_TRUE(arc().strokeColor()->isEqual(red().get()));
    EXPECT_EQ(track().strokeColor(), grey);
    window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    EXPECT_TRUE(arc().strokeColor()->isEqual(ring->tintColor().get()));
    EXPECT_FALSE(arc().strokeColor()->isEqual(red().get()));
}

TEST_F(ORVCircularProgressViewTest, ARingThatComesIntoAWindowHasItsColourAtOnce)
{
    window->setTintColor(red());
    const auto other = make<ORVCircularProgressView>(CGRect(0, 0, 44, 44));
    other->setProgress(0.5, Animated::No);
    window->addSubview(other);
    EXPECT_TRUE(sublayer(*other, 1).strokeColor()->isEqual(red().get()));
    EXPECT_FALSE(sublayer(*other, 1).hasAnimations());
}

TEST_F(ORVCircularProgressViewTest, TheArcChangesItsColourAlongWithAViewAnimation)
{
    window->setTintColor(red());
    runFrames();
    UIView::animate(0.3, [this] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed); });
    EXPECT_TRUE(shownIn(0).strokeColor->isEqual(red().get()));
    EXPECT_TRUE(shownIn(0.3).strokeColor->isEqual(ring->tintColor().get()));
}

// --- Announcements -----------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, EverySettingOfTheProgressIsAnnouncedOnceAfterItIsStored)
{
    const auto log
        = make<ChangeLog<double>>(ring, QStringLiteral("progress"), [this] { return ring->progress(); });
    ring->setProgress(0.25);
    ring->setProgress(0.25, Animated::No);
    ring->setIndeterminate(true);
    ring->setProgress(0.5, Animated::Yes);
    EXPECT_THAT(log->values, ElementsAre(0.25, 0.25, 0.5));
}

TEST_F(ORVCircularProgressViewTest, OtherChangesAreNotAnnouncedAsProgress)
{
    const auto log
        = make<ChangeLog<double>>(ring, QStringLiteral("progress"), [this] { return ring->progress(); });
    ring->setIndeterminate(true);
    ring->setIndeterminate(false);
    ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
    ring->setTrackWidth(3);
    EXPECT_THAT(log->values, ElementsAre());
}

TEST_F(ORVCircularProgressViewTest, AnObserverMayDropTheView)
{
    auto other = make<ORVCircularProgressView>(CGRect(0, 0, 44, 44));
    const std::weak_ptr<ORVCircularProgressView> weak = other;
    const auto log = make<ChangeLog<double>>(other, QStringLiteral("progress"), [] { return 0; });
    log->whenTold = [&] { other = nullptr; };
    weak.lock()->setProgress(0.5);
    EXPECT_TRUE(weak.expired());
}

TEST_F(ORVCircularProgressViewTest, AnObserverMaySetTheProgressAgain)
{
    const auto log
        = make<ChangeLog<double>>(ring, QStringLiteral("progress"), [this] { return ring->progress(); });
    log->whenTold = [&] {
        if (ring->progress() > 1)
            ring->setProgress(1, Animated::No);
    };
    ring->setProgress(1.5, Animated::No);
    EXPECT_THAT(log->values, ElementsAre(1.5, 1));
    EXPECT_EQ(arc().strokeEnd(), 1);
}

// --- The picture -------------------------------------------------------------------------------------

TEST_F(ORVCircularProgressViewTest, AQuarterIsTintedFromTheTopToTheRightAndTheRestIsTheTrack)
{
    window->setBackgroundColor(UIColor::whiteColor());
    ring->setTintColor(red());
    ring->setProgress(0.25, Animated::No);
    const QImage picture = screen();
    for (const double turns : { 0.02, 0.125, 0.23 })
        EXPECT_EQ(colorAt(picture, turns), QColor(Qt::red)) << turns;
    for (const double turns : { 0.27, 0.5, 0.75, 0.98 }) {
        const QColor color = colorAt(picture, turns);
        EXPECT_NEAR(color.red(), 255 - 0.3 * (255 - 0.612 * 255), 2) << turns;
        EXPECT_NEAR(color.blue(), 255 - 0.3 * (255 - 0.624 * 255), 2) << turns;
    }
}

TEST_F(ORVCircularProgressViewTest, AQuarterCounterclockwiseIsTintedFromTheTopToTheLeft)
{
    window->setBackgroundColor(UIColor::whiteColor());
    ring->setTintColor(red());
    ring->setDirection(ORVCircularProgressDirectionCounterclockwise);
    ring->setProgress(0.25, Animated::No);
    const QImage picture = screen();
    for (const double turns : { 0.77, 0.875, 0.98 })
        EXPECT_EQ(colorAt(picture, turns), QColor(Qt::red)) << turns;
    EXPECT_NE(colorAt(picture, 0.125), QColor(Qt::red));
    EXPECT_NE(colorAt(picture, 0.5), QColor(Qt::red));
}

TEST_F(ORVCircularProgressViewTest, AProgressThatIsNoFractionIsDrawnAsTheNearerEndAndDrawingGoesOn)
{
    window->setBackgroundColor(UIColor::whiteColor());
    ring->setTintColor(red());
    for (const double progress : { 1.5, huge, infinity }) {
        ring->setProgress(progress, Animated::No);
        EXPECT_EQ(colorAt(screen(), 0.9), QColor(Qt::red)) << progress;
    }
    for (const double progress : { -0.5, -huge, -infinity, notANumber }) {
        ring->setProgress(progress, Animated::No);
        EXPECT_NE(colorAt(screen(), 0.1), QColor(Qt::red)) << progress;
    }
    ring->setProgress(0.5, Animated::No);
    const QImage picture = screen();
    EXPECT_EQ(colorAt(picture, 0.45), QColor(Qt::red));
    EXPECT_NE(colorAt(picture, 0.55), QColor(Qt::red));
}

} // namespace
