#include "playback/ORVProgressShapeLayer.h"

#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CALayerTree.h"
#include "platform/layers/CATransaction.h"
#include "tests/playback/Course.h"
#include "tests/support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class ORVProgressShapeLayerTest : public testing::Test {
protected:
    static std::shared_ptr<CABasicAnimation> basic(const std::shared_ptr<CAAnimation>& animation)
    {
        return std::dynamic_pointer_cast<CABasicAnimation>(animation);
    }
    double shownEndIn(double seconds) const
    {
        return layer->presentationValuesAt(scheduler.now() + seconds).strokeEnd;
    }
    void expectEnds(const Course& course) const
    {
        expectCourse([this](double seconds) { return shownEndIn(seconds); }, course);
    }

    const NSString strokeStart = QStringLiteral("strokeStart");
    const NSString strokeEnd = QStringLiteral("strokeEnd");
    ManualScheduler scheduler;
    std::shared_ptr<ORVProgressShapeLayer> layer = make<ORVProgressShapeLayer>();
};

TEST_F(ORVProgressShapeLayerTest, AtFirstItsStrokeEndsDoNotMoveNotEvenInAWindow)
{
    EXPECT_FALSE(layer->progressAnimationsEnabled());
    EXPECT_EQ(layer->actionForKey(strokeStart), nullptr);
    EXPECT_EQ(layer->actionForKey(strokeEnd), nullptr);
    const CALayerTree tree(layer);
    layer->setStrokeStart(0.25);
    layer->setStrokeEnd(0.5);
    EXPECT_FALSE(layer->hasAnimations());
    EXPECT_EQ(shownEndIn(0), 0.5);
}

TEST_F(ORVProgressShapeLayerTest, SwitchedOnAStrokeEndEasesOutFromTheCurrentValue)
{
    layer->setStrokeStart(0.125);
    layer->setStrokeEnd(0.75);
    layer->setProgressAnimationsEnabled(true);
    for (const NSString& key : { strokeStart, strokeEnd }) {
        const auto animation = basic(layer->actionForKey(key));
        ASSERT_TRUE(animation);
        EXPECT_EQ(animation->keyPath(), key);
        EXPECT_EQ(animation->fromValue(), CAValue(key == strokeStart ? 0.125 : 0.75));
        EXPECT_FALSE(animation->hasToValue());
        EXPECT_FALSE(animation->hasByValue());
        EXPECT_EQ(animation->fillMode(), kCAFillModeBackwards);
        EXPECT_EQ(animation->timingFunction(),
            CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut));
        EXPECT_EQ(animation->duration(), 0) << "the transaction's";
    }
}

TEST_F(ORVProgressShapeLayerTest, AMotionTakesAQuarterOfASecondOrTheDurationOfItsTransaction)
{
    layer->setProgressAnimationsEnabled(true);
    layer->setStrokeEnd(0.5);
    EXPECT_EQ(layer->strokeEnd(), 0.5);
    expectEnds({ { 0, 1 }, { 0.125, 1 - 0.5 * easeOut(0.5) }, { 0.25, 0.5 } });
    scheduler.advance(0.25);
    EXPECT_FALSE(layer->hasAnimations());
    {
        const CATransaction::Guard transaction;
        CATransaction::setAnimationDuration(2);
        layer->setStrokeEnd(0);
    }
    expectEnds({ { 1, 0.5 - 0.5 * easeOut(0.5) }, { 1.99, 0.5 - 0.5 * easeOut(0.995) }, { 2, 0 } });
}

TEST_F(ORVProgressShapeLayerTest, AMotionDuringAnotherStartsFromTheValueAndNotFromWhatIsShown)
{
    layer->setStrokeEnd(0);
    layer->setProgressAnimationsEnabled(true);
    layer->setStrokeEnd(0.4);
    scheduler.advance(0.1);
    EXPECT_LT(shownEndIn(0), 0.4);
    layer->setStrokeEnd(0.5);
    expectEnds({ { 0, 0.4 }, { 0.125, 0.4 + 0.1 * easeOut(0.5) }, { 0.25, 0.5 } });
}

TEST_F(ORVProgressShapeLayerTest, SwitchedOffInMidFlightItIsAtItsEndAtOnce)
{
    layer->setStrokeStart(0.5);
    layer->setStrokeEnd(0.5);
    layer->setProgressAnimationsEnabled(true);
    layer->setStrokeStart(0);
    layer->setStrokeEnd(1);
    scheduler.advance(0.05);
    layer->setProgressAnimationsEnabled(false);
    EXPECT_EQ(shownEndIn(0), 1);
    EXPECT_EQ(layer->presentationValues().strokeStart, 0);
}

TEST_F(ORVProgressShapeLayerTest, AnEqualValueMovesNothing)
{
    layer->setProgressAnimationsEnabled(true);
    layer->setStrokeStart(layer->strokeStart());
    layer->setStrokeEnd(layer->strokeEnd());
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(ORVProgressShapeLayerTest, EveryOtherKeyIsTheSuperclasses)
{
    const CALayerTree tree(layer);
    for (const bool enabled : { false, true }) {
        layer->setProgressAnimationsEnabled(enabled);
        for (const char* key : { "lineWidth", "strokeColor", "position", "opacity" }) {
            const auto animation = basic(layer->actionForKey(QLatin1String(key)));
            ASSERT_TRUE(animation) << key;
            EXPECT_EQ(animation->timingFunction(),
                CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionDefault));
        }
        EXPECT_EQ(layer->actionForKey(QStringLiteral("nothing")), nullptr);
        EXPECT_EQ(layer->actionForKey({}), nullptr);
    }
}

TEST_F(ORVProgressShapeLayerTest, StrokeEndsThatAreNoFractionsAreKeptAndNeverDrawnBeyondThePath)
{
    layer->setPath(UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 }));
    layer->setFillColor(nullptr);
    layer->setStrokeColor(UIColor::blackColor());
    layer->setProgressAnimationsEnabled(true);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double end :
        { 1e300, -1e300, infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), 0.5 }) {
        layer->setStrokeEnd(end);
        EXPECT_TRUE(layer->strokeEnd() == end || std::isnan(end));
        for (const double seconds : { 0.0, 0.1, 0.2, 0.25 }) {
            const auto content = layer->frameContent(layer->presentationValuesAt(scheduler.now() + seconds));
            if (const auto* shape = std::get_if<FrameShape>(&content)) {
                EXPECT_EQ(shape->strokeStart, 0);
                EXPECT_GT(shape->strokeEnd, 0);
                EXPECT_LE(shape->strokeEnd, 1);
            }
        }
    }
    EXPECT_EQ(shownEndIn(0.25), 0.5);
}

} // namespace
