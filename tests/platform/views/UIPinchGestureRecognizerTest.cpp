#include "platform/views/UIPinchGestureRecognizer.h"

#include "tests/platform/views/ViewLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <limits>

namespace {

using States = std::vector<int>;

class UIPinchGestureRecognizerTest : public SceneFixture {
protected:
    void SetUp() override
    {
        view->addGestureRecognizer(pinch);
        target->onAction = [this](UIGestureRecognizer&) {
            scale = pinch->scale();
            velocity = pinch->velocity();
        };
    }
    // Two fingers 92 points from each other; those that open by 8 points have a distance of 100 then.
    void bothDown()
    {
        touch.down({ 100, 150 }, 1);
        touch.down({ 192, 150 }, 2);
    }

    std::shared_ptr<LoggingView> view = addView<LoggingView>({ 50, 100, 300, 300 });
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<UIPinchGestureRecognizer> pinch = make<UIPinchGestureRecognizer>(target->action());
    double scale = 0; // as the last action saw it
    double velocity = 0;
};

TEST_F(UIPinchGestureRecognizerTest, BeginsWhenTheFingersOpenChangesAndEndsWithTheLastOne)
{
    bothDown();
    touch.moveTo({ 200, 150 }, 2);
    EXPECT_TRUE(target->states.empty()); // not more than 8 points
    touch.moveTo({ 250, 150 }, 2);
    EXPECT_EQ(target->states, (States { 1 }));
    EXPECT_DOUBLE_EQ(scale, 1.5); // counted from a distance of 100
    touch.moveTo({ 300, 150 }, 2);
    EXPECT_DOUBLE_EQ(scale, 2);
    touch.up(1);
    EXPECT_EQ(target->states, (States { 1, 2 }));
    touch.up(2);
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_DOUBLE_EQ(scale, 2);
    EXPECT_EQ(pinch->state(), UIGestureRecognizerState::Possible);
    EXPECT_EQ(pinch->scale(), 1);
}

TEST_F(UIPinchGestureRecognizerTest, FingersThatCloseMakeTheScaleSmaller)
{
    touch.down({ 100, 150 }, 1);
    touch.down({ 208, 150 }, 2);
    touch.moveTo({ 150, 150 }, 2);
    EXPECT_EQ(target->states, (States { 1 }));
    EXPECT_DOUBLE_EQ(scale, 0.5);
}

TEST_F(UIPinchGestureRecognizerTest, FingersThatKeepTheirDistanceDoNotPinch)
{
    bothDown();
    for (int step = 1; step <= 50; ++step) {
        touch.moveTo({ 100.0 + step, 150 }, 1);
        touch.moveTo({ 192.0 + step, 150 }, 2);
    }
    touch.up(1);
    touch.up(2);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(pinch->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UIPinchGestureRecognizerTest, OneFingerDoesNotPinch)
{
    touch.drag({ 100, 150 }, { 300, 150 }, 0.2);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UIPinchGestureRecognizerTest, TheLocationIsTheMiddleOfTheFingers)
{
    bothDown();
    touch.moveTo({ 250, 150 }, 2);
    EXPECT_EQ(pinch->locationInView(view.get()), CGPoint(125, 50));
}

TEST_F(UIPinchGestureRecognizerTest, TheScaleMayBeSet)
{
    bothDown();
    touch.moveTo({ 250, 150 }, 2);
    pinch->setScale(1);
    touch.moveTo({ 280, 150 }, 2);
    EXPECT_DOUBLE_EQ(scale, 1.2);
}

TEST_F(UIPinchGestureRecognizerTest, TheVelocityIsThatOfTheLastMoments)
{
    bothDown();
    touch.moveTo({ 200, 150 }, 2);
    touch.glideTo({ 300, 150 }, 0.5, 2); // from 1 to 2
    EXPECT_NEAR(velocity, 2, 0.05);
    touch.wait(0.2);
    touch.up(1);
    touch.up(2);
    EXPECT_EQ(velocity, 0);
}

TEST_F(UIPinchGestureRecognizerTest, AFingerThatComesBackGoesOnFromThere)
{
    bothDown();
    touch.moveTo({ 300, 150 }, 2);
    EXPECT_DOUBLE_EQ(scale, 2);
    touch.up(1);
    touch.moveTo({ 250, 150 }, 2);
    EXPECT_DOUBLE_EQ(pinch->scale(), 2);
    touch.down({ 150, 150 }, 1);
    EXPECT_DOUBLE_EQ(pinch->scale(), 2);
    touch.moveTo({ 100, 150 }, 1); // from 100 to 150
    EXPECT_DOUBLE_EQ(scale, 3);
}

TEST_F(UIPinchGestureRecognizerTest, AThirdFingerIsNotWatched)
{
    bothDown();
    touch.down({ 200, 300 }, 3);
    touch.moveTo({ 300, 350 }, 3);
    EXPECT_TRUE(target->states.empty());
    touch.moveTo({ 250, 150 }, 2);
    EXPECT_DOUBLE_EQ(scale, 1.5);
    EXPECT_EQ(pinch->numberOfTouches(), 2);
    touch.up(3);
    touch.up(2);
    touch.up(1);
    EXPECT_EQ(target->states, (States { 1, 3 }));
}

TEST_F(UIPinchGestureRecognizerTest, FingersInOnePlaceMakeNoInfiniteScale)
{
    touch.down({ 150, 150 }, 1);
    touch.down({ 150, 150 }, 2);
    touch.moveTo({ 250, 150 }, 2);
    EXPECT_EQ(target->states, (States { 1 }));
    EXPECT_NEAR(scale, 100.0 / 9, 1e-9);
    touch.moveTo({ 150, 150 }, 2);
    EXPECT_GT(scale, 0);
    touch.moveTo({ 250, 150 }, 2);
    EXPECT_NEAR(scale, 100.0 / 9, 1e-9);
}

TEST_F(UIPinchGestureRecognizerTest, ACancelledTouchCancelsIt)
{
    bothDown();
    touch.moveTo({ 250, 150 }, 2);
    touch.cancel(1);
    EXPECT_EQ(target->states, (States { 1, 4 }));
    touch.moveTo({ 300, 150 }, 2);
    touch.up(2);
    EXPECT_EQ(target->states.size(), 2u);
}

TEST_F(UIPinchGestureRecognizerTest, AScaleThatIsNoneIsAProgrammingErrorAndChangesNothing)
{
    AssertionRecorder recorder;
    for (const double wrong :
        { 0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() })
        pinch->setScale(wrong);
    const NSString message = QStringLiteral("Invalid parameter not satisfying: scale is finite and > 0");
    EXPECT_EQ(recorder.messages(), (std::vector<NSString>(4, message)));
    EXPECT_EQ(pinch->scale(), 1);
}

TEST_F(UIPinchGestureRecognizerTest, AHugeScaleIsTakenAndGrowsNoFartherThanNumbersGo)
{
    bothDown();
    touch.moveTo({ 200.1, 150 }, 2);
    pinch->setScale(std::numeric_limits<double>::max());
    touch.moveTo({ 300, 150 }, 2);
    EXPECT_EQ(scale, std::numeric_limits<double>::max());
}

} // namespace
