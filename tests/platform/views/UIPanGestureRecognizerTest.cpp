#include "platform/views/UIPanGestureRecognizer.h"

#include "tests/platform/views/ViewLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <limits>

namespace {

using States = std::vector<int>;

class UIPanGestureRecognizerTest : public SceneFixture {
protected:
    void SetUp() override
    {
        view->addGestureRecognizer(pan);
        target->onAction = [this](UIGestureRecognizer&) {
            translation = pan->translationInView(view.get());
            velocity = pan->velocityInView(view.get());
        };
    }
    static void expectNear(const CGPoint& actual, const CGPoint& expected, double tolerance = 1e-6)
    {
        EXPECT_NEAR(actual.x(), expected.x(), tolerance);
        EXPECT_NEAR(actual.y(), expected.y(), tolerance);
    }

    std::shared_ptr<LoggingView> view = addView<LoggingView>({ 100, 100, 200, 200 });
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<UIPanGestureRecognizer> pan = make<UIPanGestureRecognizer>(target->action());
    CGPoint translation; // as the last action saw it
    CGPoint velocity;
};

TEST_F(UIPanGestureRecognizerTest, BeginsAfterTenPointsChangesAndEnds)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 160, 150 });
    EXPECT_TRUE(target->states.empty());
    touch.moveTo({ 161, 150 });
    touch.moveTo({ 170, 150 });
    touch.moveTo({ 150, 150 });
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 2, 2, 3 }));
    EXPECT_EQ(pan->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UIPanGestureRecognizerTest, ATouchThatDoesNotMoveIsNone)
{
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50" }));
}

TEST_F(UIPanGestureRecognizerTest, TheTranslationCountsFromWhereTheTenPointsWereReached)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 });
    expectNear(translation, { 0, 20 });
    touch.moveTo({ 155, 190 });
    expectNear(translation, { 5, 30 });
    touch.up();
    expectNear(translation, { 5, 30 });
}

TEST_F(UIPanGestureRecognizerTest, TheTranslationIsThatOfTheViewAskedFor)
{
    view->setTransform(CGAffineTransform::fromScale(2, 2));
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 });
    expectNear(translation, { 0, 10 });
    expectNear(pan->translationInView(nullptr), { 0, 20 });
    touch.up();
}

TEST_F(UIPanGestureRecognizerTest, TheTranslationMayBeSet)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 });
    pan->setTranslation({ 0, 0 }, view.get());
    touch.moveTo({ 150, 187 });
    expectNear(translation, { 0, 7 });
    pan->setTranslation({ 100, 0 }, view.get());
    touch.moveTo({ 151, 187 });
    expectNear(translation, { 101, 0 });
}

TEST_F(UIPanGestureRecognizerTest, TheLocationIsTheFingers)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 });
    expectNear(pan->locationInView(view.get()), { 50, 80 });
}

TEST_F(UIPanGestureRecognizerTest, TheVelocityIsThatOfTheLastMoments)
{
    touch.down({ 150, 110 });
    touch.glideTo({ 150, 210 }, 0.25); // 400 points a second
    expectNear(velocity, { 0, 400 }, 1);
    touch.glideTo({ 150, 110 }, 0.5);
    expectNear(velocity, { 0, -200 }, 1);
    touch.up();
    expectNear(velocity, { 0, -200 }, 1);
}

TEST_F(UIPanGestureRecognizerTest, TheLastMomentsAreEightHundredthsOfASecond)
{
    touch.down({ 150, 110 });
    touch.wait(0.077);
    touch.moveTo({ 150, 210 });
    expectNear(velocity, { 0, 100 / 0.077 });
    touch.up();
    touch.down({ 150, 110 });
    touch.wait(0.083);
    touch.moveTo({ 150, 210 });
    expectNear(velocity, { 0, 0 }); // where it was before is too long ago
    touch.up();
}

TEST_F(UIPanGestureRecognizerTest, AFingerThatRestsBeforeItLeavesHasStopped)
{
    touch.down({ 150, 110 });
    touch.glideTo({ 150, 210 }, 0.25);
    touch.wait(0.2);
    touch.up();
    EXPECT_EQ(target->states.back(), 3);
    expectNear(velocity, { 0, 0 });
}

TEST_F(UIPanGestureRecognizerTest, ASecondFingerDoesNotMakeItJump)
{
    touch.down({ 150, 150 }, 1);
    touch.moveTo({ 150, 180 }, 1);
    touch.down({ 250, 280 }, 2);
    expectNear(pan->translationInView(view.get()), { 0, 20 });
    touch.moveTo({ 250, 290 }, 2); // the middle moves half as far
    expectNear(translation, { 0, 25 });
    touch.up(1);
    EXPECT_EQ(target->states.back(), 2);
    expectNear(pan->translationInView(view.get()), { 0, 25 });
    touch.moveTo({ 250, 300 }, 2);
    expectNear(translation, { 0, 35 });
    touch.up(2);
    EXPECT_EQ(target->states.back(), 3);
}

TEST_F(UIPanGestureRecognizerTest, EachGestureStartsAnew)
{
    touch.drag({ 150, 150 }, { 150, 200 }, 0.2);
    target->states.clear();
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 171 });
    EXPECT_EQ(target->states, (States { 1 }));
    expectNear(translation, { 0, 11 });
    EXPECT_NEAR(velocity.y(), 0, 1e-6); // both positions are of the same moment
}

// --- How many fingers ------------------------------------------------------------------------------------

TEST_F(UIPanGestureRecognizerTest, MovesWithTooFewFingersDoNotCount)
{
    pan->setMinimumNumberOfTouches(2);
    touch.down({ 150, 150 }, 1);
    touch.moveTo({ 150, 200 }, 1);
    EXPECT_TRUE(target->states.empty());
    touch.down({ 250, 200 }, 2);
    touch.moveTo({ 150, 220 }, 1); // the middle by 10
    EXPECT_TRUE(target->states.empty());
    touch.moveTo({ 250, 220 }, 2);
    EXPECT_EQ(target->states, (States { 1 }));
    expectNear(translation, { 0, 10 });
    touch.up(2);
    touch.moveTo({ 150, 300 }, 1);
    EXPECT_EQ(target->states, (States { 1 }));
    touch.up(1);
    EXPECT_EQ(target->states, (States { 1, 3 }));
    expectNear(translation, { 0, 10 });
}

TEST_F(UIPanGestureRecognizerTest, AFingerTooManyBeforeTheBeginningMakesItFail)
{
    pan->setMaximumNumberOfTouches(1);
    touch.down({ 150, 150 }, 1);
    touch.down({ 250, 150 }, 2);
    touch.moveTo({ 150, 200 }, 1);
    touch.moveTo({ 250, 200 }, 2);
    touch.up(1);
    touch.up(2);
    EXPECT_TRUE(target->states.empty());
    touch.drag({ 150, 150 }, { 150, 200 }, 0.2);
    EXPECT_EQ(target->states.front(), 1);
}

TEST_F(UIPanGestureRecognizerTest, AFingerTooManyLaterIsNotWatched)
{
    pan->setMaximumNumberOfTouches(1);
    touch.down({ 150, 150 }, 1);
    touch.moveTo({ 150, 180 }, 1);
    touch.down({ 250, 280 }, 2);
    touch.moveTo({ 250, 180 }, 2);
    EXPECT_EQ(pan->numberOfTouches(), 1);
    EXPECT_EQ(target->states, (States { 1 }));
    touch.up(1);
    EXPECT_EQ(target->states, (States { 1, 3 }));
    expectNear(translation, { 0, 20 });
    touch.up(2);
    EXPECT_EQ(target->states.size(), 2u);
}

TEST_F(UIPanGestureRecognizerTest, MoreFingersNeededThanAllowedNeverPan)
{
    pan->setMinimumNumberOfTouches(std::numeric_limits<int>::max());
    pan->setMaximumNumberOfTouches(1);
    touch.drag({ 150, 150 }, { 150, 250 }, 0.2);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UIPanGestureRecognizerTest, NoFingerAtAllIsAProgrammingError)
{
    AssertionRecorder recorder;
    pan->setMinimumNumberOfTouches(0);
    pan->setMaximumNumberOfTouches(-1);
    const NSString message = QStringLiteral("Invalid parameter not satisfying: touches >= 1");
    EXPECT_EQ(recorder.messages(), (std::vector<NSString> { message, message }));
    EXPECT_EQ(pan->minimumNumberOfTouches(), 1);
    EXPECT_EQ(pan->maximumNumberOfTouches(), 1);
}

// --- Numbers that are none -------------------------------------------------------------------------------

TEST_F(UIPanGestureRecognizerTest, ATranslationThatIsNotFiniteIsAProgrammingErrorAndChangesNothing)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 });
    AssertionRecorder recorder;
    const double infinity = std::numeric_limits<double>::infinity();
    pan->setTranslation({ std::numeric_limits<double>::quiet_NaN(), 0 }, view.get());
    pan->setTranslation({ 0, infinity }, view.get());
    const NSString message = QStringLiteral("Invalid parameter not satisfying: translation is finite");
    EXPECT_EQ(recorder.messages(), (std::vector<NSString> { message, message }));
    expectNear(pan->translationInView(view.get()), { 0, 20 });
}

TEST_F(UIPanGestureRecognizerTest, AHugeTranslationIsTaken)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 });
    pan->setTranslation({ 1e12, 0 }, view.get());
    EXPECT_EQ(pan->translationInView(view.get()).x(), 1e12);
}

} // namespace
