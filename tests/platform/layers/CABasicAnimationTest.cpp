#include "platform/layers/CABasicAnimation.h"

#include "tests/platform/layers/LayersFixture.h"

#include <numbers>

namespace {

using CABasicAnimationTest = LayersFixture;

// The model stands at 10 and is moved to 20 in mid-flight. Values are those seen before, at 0 s, at 0.5 s,
// at 0.5 s with the moved model, and after the end.
TEST_F(CABasicAnimationTest, EveryCombinationOfFromToAndBy)
{
    const CAValue no;
    const struct {
        const char* what;
        CAValue from;
        CAValue to;
        CAValue by;
        double start;
        double middle;
        double middleWithMovedModel;
    } rows[] = {
        { "none", no, no, no, 10, 10, 20 },
        { "from", 2.0, no, no, 2, 6, 11 },
        { "to", no, 30.0, no, 10, 20, 25 },
        { "by", no, no, 4.0, 10, 12, 22 },
        { "from, to", 2.0, 4.0, no, 2, 3, 3 },
        { "from, by", 2.0, no, 4.0, 2, 4, 4 },
        { "by, to", no, 30.0, 4.0, 26, 28, 28 },
        { "from, to, by", 2.0, 4.0, 100.0, 2, 3, 3 },
    };
    for (const auto& row : rows) {
        const auto moving = CALayer::layer();
        moving->setCornerRadius(10);
        const auto animation = basic("cornerRadius", row.from, row.to, row.by);
        animation->setBeginTime(5);
        moving->addAnimation(animation, QStringLiteral("key"));
        const auto at = [&](double time) { return moving->presentationValuesAt(time).cornerRadius; };
        EXPECT_DOUBLE_EQ(at(4.9), 10) << row.what;
        EXPECT_DOUBLE_EQ(at(5), row.start) << row.what;
        EXPECT_DOUBLE_EQ(at(5.5), row.middle) << row.what;
        EXPECT_DOUBLE_EQ(at(6), 10) << row.what;
        EXPECT_EQ(moving->cornerRadius(), 10) << row.what;
        moving->setCornerRadius(20);
        EXPECT_DOUBLE_EQ(at(5.5), row.middleWithMovedModel) << row.what;
    }
}

TEST_F(CABasicAnimationTest, AdditiveAnimationsStartFromNothingAndAreAddedToWhatIsShown)
{
    const CAValue no;
    const struct {
        const char* what;
        CAValue from;
        CAValue to;
        CAValue by;
        double start;
        double middle;
    } rows[] = {
        { "from", 2.0, no, no, 12, 11 },
        { "to", no, 4.0, no, 10, 12 },
        { "by", no, no, 4.0, 10, 12 },
        { "from, to", 2.0, 4.0, no, 12, 13 },
        { "from, by", 2.0, no, 4.0, 12, 14 },
        { "by, to", no, 30.0, 4.0, 36, 38 },
        { "none", no, no, no, 10, 10 },
    };
    for (const auto& row : rows) {
        const auto moving = CALayer::layer();
        moving->setCornerRadius(10);
        const auto animation = basic("cornerRadius", row.from, row.to, row.by);
        animation->setAdditive(true);
        moving->addAnimation(animation, {});
        EXPECT_DOUBLE_EQ(moving->presentationValuesAt(0).cornerRadius, row.start) << row.what;
        EXPECT_DOUBLE_EQ(moving->presentationValuesAt(0.5).cornerRadius, row.middle) << row.what;
    }
}

TEST_F(CABasicAnimationTest, LaterAnimationsWorkOnWhatEarlierOnesShow)
{
    layer->addAnimation(basic("position.x", 100.0, 100.0), QStringLiteral("first"));
    layer->addAnimation(basic("position.x", {}, {}, 8.0), QStringLiteral("second"));
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.5).x(), 104);
}

TEST_F(CABasicAnimationTest, AFromValueAloneLeadsToTheModelAndNotToWhatOthersShow)
{
    layer->setPosition({ 100, 0 });
    layer->addAnimation(basic("position", CGPoint(0, 0)), QStringLiteral("enforcer"));
    layer->addAnimation(basic("position", CGPoint(0, 0)), QStringLiteral("position"));
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.5).x(), 50);
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.75).x(), 75);
}

TEST_F(CABasicAnimationTest, AnimatesPointsRectsColoursAndTransforms)
{
    layer->addAnimation(basic("position", CGPoint(0, 0), CGPoint(10, 20)), {});
    layer->addAnimation(basic("bounds", CGRect(0, 0, 10, 10), CGRect(0, 0, 20, 30)), {});
    layer->addAnimation(basic("bounds.size", {}, {}, CGSize(2, 2)), {});
    layer->addAnimation(basic("backgroundColor", UIColor::blackColor(), UIColor::whiteColor()), {});
    layer->addAnimation(basic("transform.rotation.z", 0.0, 2 * std::numbers::pi), {});
    layer->addAnimation(basic("transform.scale.xy", {}, 0.0), {});
    const CALayerValues shown = layer->presentationValuesAt(0.25);
    EXPECT_EQ(shown.position, CGPoint(2.5, 5));
    EXPECT_EQ(shown.bounds, CGRect(0, 0, 13, 15.5));
    EXPECT_NEAR(shown.backgroundColor->qColor().redF(), 0.25, 0.001);
    EXPECT_NEAR(shown.transform.m11(), 0, 1e-12); // a quarter turn at three quarters of the size
    EXPECT_NEAR(shown.transform.m12(), 0.75, 1e-12);
}

TEST_F(CABasicAnimationTest, TheIconShrinksToNothingAndGrowsBack)
{
    const auto animation = basic("transform.scale.xy", {}, 0.0, {}, 0.15);
    animation->setAutoreverses(true);
    layer->addAnimation(animation, QStringLiteral("imageViewSwitch"));
    const auto scaleAt = [this](double time) { return layer->presentationValuesAt(time).transform.m11(); };
    EXPECT_DOUBLE_EQ(scaleAt(0), 1);
    EXPECT_DOUBLE_EQ(scaleAt(0.075), 0.5);
    EXPECT_DOUBLE_EQ(scaleAt(0.15), 0);
    EXPECT_NEAR(scaleAt(0.225), 0.5, 1e-12);
    EXPECT_DOUBLE_EQ(scaleAt(0.3), 1);
    scheduler.advance(0.29);
    EXPECT_TRUE(layer->hasAnimations());
    scheduler.advance(0.01);
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CABasicAnimationTest, TheStripScrollsByAPanelWidthForEver)
{
    layer->setPosition({ 390, 0 });
    const auto animation = basic("position.x", {}, {}, -390.0, 0.4);
    animation->setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear));
    animation->setRepeatCount(forever);
    layer->addAnimation(animation, QStringLiteral("waveformScrolling"));
    EXPECT_DOUBLE_EQ(positionAt(*layer, 0.2).x(), 195);
    EXPECT_NEAR(positionAt(*layer, 1000.3).x(), 390 - 0.75 * 390, 1e-6);
    scheduler.advance(1000);
    EXPECT_TRUE(layer->hasAnimations());
}

TEST_F(CABasicAnimationTest, AnOffsetOfTheCentreShiftsWhatIsShownAndNothingElse)
{
    layer->setPosition({ 100, 50 });
    const auto offset = basic("center.x", 20.0, 20.0);
    offset->setAdditive(true);
    offset->setRepeatCount(forever);
    layer->addAnimation(offset, QStringLiteral("tilt"));
    EXPECT_EQ(positionAt(*layer, 3), CGPoint(120, 50));
    layer->setPosition({ 0, 0 });
    EXPECT_EQ(positionAt(*layer, 3), CGPoint(20, 0));
    EXPECT_EQ(layer->position(), CGPoint(0, 0));
}

TEST_F(CABasicAnimationTest, BackwardsFillShowsTheStartDuringADelay)
{
    const auto late = basic("strokeEnd", 0.0, 0.5);
    late->setBeginTime(2);
    late->setFillMode(kCAFillModeBackwards);
    layer->addAnimation(late, {});
    const auto endAt = [this](double time) { return layer->presentationValuesAt(time).strokeEnd; };
    EXPECT_EQ(endAt(0), 0);
    EXPECT_EQ(endAt(1.99), 0);
    EXPECT_DOUBLE_EQ(endAt(2.5), 0.25);
    EXPECT_EQ(endAt(3), 1); // the model again
}

TEST_F(CABasicAnimationTest, TheTimingFunctionSetsThePace)
{
    const auto animation = basic("opacity", 0.0, 1.0);
    const auto easeOut = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut);
    animation->setTimingFunction(easeOut);
    layer->addAnimation(animation, {});
    EXPECT_DOUBLE_EQ(opacityAt(*layer, 0.25), easeOut->valueAt(0.25));
}

TEST_F(CABasicAnimationTest, AnUnknownKeyPathOrAValueOfTheWrongKindChangesNothing)
{
    layer->setOpacity(0.5);
    layer->addAnimation(basic("zPosition", 0.0, 1.0), {});
    layer->addAnimation(basic("opacity", CGPoint(0, 0), CGPoint(1, 1)), {});
    layer->addAnimation(basic("opacity", {}, CGPoint(1, 1)), {});
    EXPECT_EQ(opacityAt(*layer, 0.5), 0.5);
    scheduler.advance(1);
    EXPECT_FALSE(layer->hasAnimations());
}

TEST_F(CABasicAnimationTest, ACopyHasEverythingAndIsIndependent)
{
    const auto original = basic("opacity", 0.0, 1.0, 0.5, 3);
    original->setAdditive(true);
    original->setAutoreverses(true);
    original->setFillMode(kCAFillModeBoth);
    original->setRemovedOnCompletion(false);
    const auto copy = std::dynamic_pointer_cast<CABasicAnimation>(original->copy());
    original->setKeyPath(QStringLiteral("position"));
    original->setDuration(9);
    EXPECT_EQ(copy->keyPath(), QStringLiteral("opacity"));
    EXPECT_TRUE(copy->animates(CAProperty::Opacity));
    EXPECT_EQ(copy->fromValue(), CAValue(0.0));
    EXPECT_EQ(copy->toValue(), CAValue(1.0));
    EXPECT_EQ(copy->byValue(), CAValue(0.5));
    EXPECT_EQ(copy->duration(), 3);
    EXPECT_TRUE(copy->isAdditive());
    EXPECT_TRUE(copy->autoreverses());
    EXPECT_EQ(copy->fillMode(), kCAFillModeBoth);
    EXPECT_FALSE(copy->isRemovedOnCompletion());
}

TEST_F(CABasicAnimationTest, NumbersThatAreNoneOrHugeDoNoHarm)
{
    for (const double bad : { notANumber, infinity, -infinity, 1e308, -1e308 }) {
        const auto moving = CALayer::layer();
        for (const char* path :
            { "position.x", "transform.scale.xy", "transform.rotation.z", "bounds.size.width" }) {
            moving->addAnimation(basic(path, bad, -bad), {});
            moving->addAnimation(basic(path, {}, {}, bad), {});
        }
        const auto timed = basic("opacity", 0.0, 1.0);
        timed->setSpeed(bad);
        timed->setTimeOffset(bad);
        timed->setRepeatCount(bad);
        moving->addAnimation(timed, {});
        const auto late = basic("opacity", 0.0, 1.0);
        late->setBeginTime(bad);
        moving->addAnimation(late, {});
        moving->presentationValuesAt(0.5);
        moving->presentationValuesAt(bad);
        scheduler.advance(2);
        moving->removeAllAnimations();
        EXPECT_EQ(opacityAt(*moving, scheduler.now()), 1);
        EXPECT_EQ(positionAt(*moving, scheduler.now()), CGPoint());
    }
}

} // namespace
