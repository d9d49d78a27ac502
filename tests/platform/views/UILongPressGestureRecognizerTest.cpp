#include "platform/views/UILongPressGestureRecognizer.h"

#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <limits>

namespace {

using States = std::vector<int>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class UILongPressGestureRecognizerTest : public SceneFixture {
protected:
    void SetUp() override { view->addGestureRecognizer(press); }

    std::shared_ptr<LoggingView> view = addView<LoggingView>({ 100, 100, 200, 200 });
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<UILongPressGestureRecognizer> press
        = make<UILongPressGestureRecognizer>(target->action());
};

TEST_F(UILongPressGestureRecognizerTest, BeginsAfterHalfASecondChangesAndEnds)
{
    touch.down({ 150, 150 });
    touch.wait(0.499);
    EXPECT_TRUE(target->states.empty());
    touch.wait(0.002);
    EXPECT_EQ(target->states, (States { 1 }));
    EXPECT_EQ(press->locationInView(view.get()), CGPoint(50, 50));
    touch.moveTo({ 250, 250 });
    EXPECT_EQ(press->locationInView(view.get()), CGPoint(150, 150));
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(press->state(), UIGestureRecognizerState::Possible);
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "cancelled 50 50" }));
}

TEST_F(UILongPressGestureRecognizerTest, AFingerThatLeavesEarlierDoesNotPress)
{
    touch.down({ 150, 150 });
    touch.wait(0.45);
    touch.up();
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50" }));
}

TEST_F(UILongPressGestureRecognizerTest, AFingerMayMoveTenPointsUntilThen)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 160, 150 });
    touch.wait(0.6);
    EXPECT_EQ(target->states, (States { 1 }));
    touch.up();
    target->states.clear();
    touch.down({ 150, 150 });
    touch.moveTo({ 160.5, 150 });
    touch.wait(0.6);
    touch.up();
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UILongPressGestureRecognizerTest, TheDurationAndTheMovementMayBeSet)
{
    press->setMinimumPressDuration(2);
    press->setAllowableMovement(infinity);
    touch.down({ 110, 110 });
    touch.moveTo({ 290, 290 });
    touch.wait(1.9);
    EXPECT_TRUE(target->states.empty());
    touch.wait(0.2);
    EXPECT_EQ(target->states, (States { 1 }));
}

TEST_F(UILongPressGestureRecognizerTest, WithoutADurationItBeginsWithTheTouch)
{
    press->setMinimumPressDuration(0);
    touch.down({ 150, 150 });
    EXPECT_EQ(target->states, (States { 1 }));
    EXPECT_TRUE(view->lines.empty());
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 3 }));
}

TEST_F(UILongPressGestureRecognizerTest, AHugeDurationIsNeverReached)
{
    press->setMinimumPressDuration(1e300);
    touch.down({ 150, 150 });
    touch.wait(1e6);
    touch.up();
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UILongPressGestureRecognizerTest, ASecondFingerBeforeTheBeginningMakesItFail)
{
    touch.down({ 150, 150 }, 1);
    touch.down({ 200, 150 }, 2);
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UILongPressGestureRecognizerTest, ASecondFingerLaterIsNotWatched)
{
    touch.down({ 150, 150 }, 1);
    touch.wait(0.6);
    touch.down({ 200, 150 }, 2);
    touch.moveTo({ 200, 200 }, 2);
    EXPECT_EQ(press->locationInView(view.get()), CGPoint(50, 50));
    touch.up(2);
    EXPECT_EQ(target->states, (States { 1 }));
    touch.up(1);
    EXPECT_EQ(target->states, (States { 1, 3 }));
}

TEST_F(UILongPressGestureRecognizerTest, ALongTouchIsNoTapAndAShortOneNoPress)
{
    const auto tapTarget = make<GestureTarget>();
    view->addGestureRecognizer(make<UITapGestureRecognizer>(tapTarget->action()));
    touch.down({ 150, 150 });
    touch.wait(0.6);
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 3 }));
    EXPECT_TRUE(tapTarget->states.empty());
    target->states.clear();
    touch.tap({ 150, 150 });
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(tapTarget->states, (States { 3 }));
}

TEST_F(UILongPressGestureRecognizerTest, MayGoWhileTheFingerRests)
{
    const std::weak_ptr<UILongPressGestureRecognizer> watched = press;
    touch.down({ 150, 150 });
    view->removeGestureRecognizer(*press);
    press = nullptr;
    EXPECT_TRUE(watched.expired());
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UILongPressGestureRecognizerTest, OnAViewThatIsHiddenMeanwhileItDoesNotBegin)
{
    touch.down({ 150, 150 });
    view->setHidden(true);
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UILongPressGestureRecognizerTest, TheWindowMayBeDroppedFromInsideItsAction)
{
    target->onAction = [this](UIGestureRecognizer&) {
        view = nullptr;
        window = nullptr;
    };
    touch.down({ 150, 150 });
    touch.wait(0.6);
    EXPECT_EQ(target->states.front(), 1);
    EXPECT_EQ(press->view(), nullptr);
}

TEST_F(UILongPressGestureRecognizerTest, ADurationThatIsNoneIsAProgrammingErrorAndChangesNothing)
{
    AssertionRecorder recorder;
    for (const double seconds : { -0.1, notANumber, infinity })
        press->setMinimumPressDuration(seconds);
    const NSString message = QStringLiteral("Invalid parameter not satisfying: seconds is finite and >= 0");
    EXPECT_EQ(recorder.messages(), (std::vector<NSString> { message, message, message }));
    EXPECT_EQ(press->minimumPressDuration(), 0.5);
}

TEST_F(UILongPressGestureRecognizerTest, AMovementThatIsNoneIsAProgrammingErrorAndChangesNothing)
{
    AssertionRecorder recorder;
    press->setAllowableMovement(-1);
    press->setAllowableMovement(notANumber);
    const NSString message = QStringLiteral("Invalid parameter not satisfying: points >= 0");
    EXPECT_EQ(recorder.messages(), (std::vector<NSString> { message, message }));
    EXPECT_EQ(press->allowableMovement(), 10);
}

} // namespace
