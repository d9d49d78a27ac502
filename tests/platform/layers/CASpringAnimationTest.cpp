#include "platform/layers/CASpringAnimation.h"

#include "tests/platform/layers/LayersFixture.h"

namespace {

using CASpringAnimationTest = LayersFixture;

TEST_F(CASpringAnimationTest, SwingsOverItsEndAndRestsExactlyOnIt)
{
    layer->setPosition({ 0, 100 });
    const auto spring = CASpringAnimation::animationWithKeyPath(QStringLiteral("position"));
    spring->setDampingRatio(0.800000011920929);
    spring->setFromValue(CGPoint(0, 844));
    spring->setDuration(0.4);
    spring->setFillMode(kCAFillModeForwards);
    layer->addAnimation(spring, QStringLiteral("position"));
    const SpringCurve curve(0.800000011920929);
    double lowest = 844;
    for (int step = 0; step < 100; ++step) {
        const double y = positionAt(*layer, 0.4 * step / 100).y();
        EXPECT_NEAR(y, 844 - 744 * curve.valueAt(step / 100.0, 0), 1e-9);
        lowest = std::min(lowest, y);
    }
    EXPECT_LT(lowest, 100); // over the end
    EXPECT_EQ(positionAt(*layer, 0.4), CGPoint(0, 100));
    EXPECT_NEAR(positionAt(*layer, 0.3999).y(), 100, 0.75); // so the last step cannot be seen
}

TEST_F(CASpringAnimationTest, FollowsTheModelInFlight)
{
    const auto spring = CASpringAnimation::animationWithKeyPath(QStringLiteral("position.x"));
    spring->setFromValue(10.0);
    spring->setDuration(1);
    layer->setPosition({ 20, 0 });
    layer->addAnimation(spring, {});
    const double fraction = (positionAt(*layer, 0.2).x() - 10) / 10;
    layer->setPosition({ 110, 0 });
    EXPECT_NEAR(positionAt(*layer, 0.2).x(), 10 + 100 * fraction, 1e-9);
}

TEST_F(CASpringAnimationTest, ItsVelocityIsInWaysASecond)
{
    const auto spring = CASpringAnimation::animationWithKeyPath(QStringLiteral("position.x"));
    spring->setFromValue(0.0);
    spring->setToValue(100.0);
    spring->setDuration(2);
    spring->setInitialVelocity(3);
    layer->addAnimation(spring, {});
    EXPECT_NEAR(positionAt(*layer, 1e-6).x() / 1e-6, 300, 0.1);
}

TEST_F(CASpringAnimationTest, ACopyIsASpringWithTheSameNature)
{
    const auto spring = CASpringAnimation::animationWithKeyPath(QStringLiteral("opacity"));
    spring->setDampingRatio(0.3);
    spring->setInitialVelocity(2);
    const auto copy = std::dynamic_pointer_cast<CASpringAnimation>(spring->copy());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->dampingRatio(), 0.3);
    EXPECT_EQ(copy->initialVelocity(), 2);
    EXPECT_EQ(copy->keyPath(), QStringLiteral("opacity"));
}

} // namespace
