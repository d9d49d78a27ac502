// What layers answer to numbers that are none, or huge.
#include "platform/layers/CALayer.h"
#include "tests/platform/layers/LayersFixture.h"
#include "tests/support/AssertionRecorder.h"

namespace {

using CALayerNumbersTest = LayersFixture;
using ::testing::ElementsAre;

class AskingLayer final : public CALayer {
public:
    std::shared_ptr<CAAnimation> actionForKey(const NSString& key) override
    {
        ++questions;
        return CALayer::actionForKey(key);
    }
    int questions = 0;
};

TEST_F(CALayerNumbersTest, NumbersThatAreNotFiniteAreProgrammingErrorsAndChangeNothing)
{
    layer->setFrame({ 10, 20, 30, 40 });
    for (const double bad : { notANumber, infinity, -infinity }) {
        const AssertionRecorder assertions;
        layer->setBounds({ 0, 0, bad, 1 });
        layer->setBounds({ bad, 0, 1, 1 });
        layer->setPosition({ 0, bad });
        layer->setAnchorPoint({ bad, 0 });
        layer->setTransform(CGAffineTransform::fromTranslate(bad, 0));
        layer->setFrame({ 0, 0, 1, bad });
        layer->setOpacity(bad);
        layer->setCornerRadius(bad);
        layer->setContentsScale(bad);
        layer->setRasterizationScale(bad);
        layer->setValueForKeyPath(bad, QStringLiteral("position.x"));
        layer->setValueForKeyPath(bad, QStringLiteral("lineWidth"));
        const QString refused = QStringLiteral("Invalid parameter not satisfying: ");
        EXPECT_THAT(assertions.messages(),
            ElementsAre(refused + "isfinite(bounds)", refused + "isfinite(bounds)",
                refused + "isfinite(position)", refused + "isfinite(anchorPoint)",
                refused + "isfinite(transform)", refused + "isfinite(frame)", refused + "isfinite(opacity)",
                refused + "isfinite(cornerRadius)", refused + "contentsScale > 0",
                refused + "rasterizationScale > 0", refused + "isfinite(position)",
                refused + "isfinite(lineWidth)"));
    }
    EXPECT_EQ(layer->frame(), CGRect(10, 20, 30, 40));
    EXPECT_EQ(layer->bounds(), CGRect(0, 0, 30, 40));
    EXPECT_EQ(layer->anchorPoint(), CGPoint(0.5, 0.5));
    EXPECT_TRUE(layer->transform().isIdentity());
    EXPECT_EQ(layer->opacity(), 1);
    EXPECT_EQ(layer->cornerRadius(), 0);
    EXPECT_EQ(layer->contentsScale(), 1);
    EXPECT_EQ(layer->rasterizationScale(), 1);
    EXPECT_EQ(layer->valueForKeyPath(QStringLiteral("lineWidth")), CAValue(1.0));
}

TEST_F(CALayerNumbersTest, ScalesOfNothingAreProgrammingErrors)
{
    const AssertionRecorder assertions;
    layer->setContentsScale(0);
    layer->setContentsScale(-2);
    layer->setRasterizationScale(0);
    EXPECT_EQ(assertions.failures().size(), 3u);
    EXPECT_EQ(layer->contentsScale(), 1);
    EXPECT_EQ(layer->rasterizationScale(), 1);
}

TEST_F(CALayerNumbersTest, ARefusedNumberAsksForNoActionAndNoLayout)
{
    const AssertionRecorder assertions;
    const auto asking = make<AskingLayer>();
    asking->layoutIfNeeded();
    asking->setOpacity(notANumber);
    asking->setBounds({ 0, 0, infinity, infinity });
    EXPECT_TRUE(asking->questions == 0);
    EXPECT_FALSE(asking->needsLayout());
}

TEST_F(CALayerNumbersTest, HugeNumbersAreKept)
{
    layer->setBounds({ 0, 0, 1e300, 1e300 });
    layer->setPosition({ -1e300, 1e300 });
    layer->setOpacity(1e300);
    layer->setCornerRadius(1e300);
    EXPECT_EQ(layer->bounds().width(), 1e300);
    EXPECT_EQ(layer->position().x(), -1e300);
    EXPECT_EQ(layer->opacity(), 1e300);
    EXPECT_EQ(layer->cornerRadius(), 1e300);
    EXPECT_EQ(layer->frame().width(), 1e300);
}

TEST_F(CALayerNumbersTest, AFrameWhoseMiddleIsOutOfReachIsRefused)
{
    const AssertionRecorder assertions;
    layer->setFrame({ 1.7e308, 0, 1.7e308, 1 });
    EXPECT_EQ(assertions.messages(),
        std::vector { QStringLiteral("Invalid parameter not satisfying: isfinite(frame)") });
    EXPECT_EQ(layer->frame(), CGRect());
}

TEST_F(CALayerNumbersTest, SpeedsThatAreNoneDoNoHarm)
{
    layer->addAnimation(basic("opacity", 0.0, 1.0), QStringLiteral("key"));
    for (const double bad : { notANumber, infinity, -infinity, 1e308, 0.0 }) {
        layer->setSpeed(bad);
        layer->setTimeOffset(bad);
        layer->setBeginTime(bad);
        layer->presentationValues();
        layer->convertTimeToMedia(1);
        scheduler.advance(0.1);
    }
    layer->setSpeed(1);
    layer->setTimeOffset(0);
    layer->setBeginTime(0);
    EXPECT_EQ(layer->convertTimeFromMedia(7), 7);
    EXPECT_EQ(layer->presentationValuesAt(7).bounds, layer->bounds());
}

} // namespace
