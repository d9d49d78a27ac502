#include "platform/views/UITapGestureRecognizer.h"

#include "tests/platform/views/ViewLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

namespace {

using States = std::vector<int>;

class UITapGestureRecognizerTest : public SceneFixture {
protected:
    void SetUp() override { view->addGestureRecognizer(tap); }

    std::shared_ptr<LoggingView> view = addView<LoggingView>({ 100, 100, 200, 200 });
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<UITapGestureRecognizer> tap = make<UITapGestureRecognizer>(target->action());
};

TEST_F(UITapGestureRecognizerTest, ATapEndsOnceWhenTheFingerLeaves)
{
    touch.down({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    touch.up();
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "cancelled 50 50" }));
}

TEST_F(UITapGestureRecognizerTest, TellsWhereItWas)
{
    CGPoint place;
    target->onAction
        = [&](UIGestureRecognizer& recognizer) { place = recognizer.locationInView(view.get()); };
    touch.tap({ 150, 160 });
    EXPECT_EQ(place, CGPoint(50, 60));
}

TEST_F(UITapGestureRecognizerTest, AFingerMayMoveTenPoints)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 160, 150 });
    touch.up();
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UITapGestureRecognizerTest, AFingerThatMovesFartherDoesNotTapEvenIfItComesBack)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 160.5 });
    EXPECT_EQ(tap->state(), UIGestureRecognizerState::Failed);
    touch.moveTo({ 150, 150 });
    touch.up();
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(tap->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UITapGestureRecognizerTest, AFingerThatLeavesFarFromWhereItCameDoesNotTap)
{
    touch.down({ 150, 150 });
    window->touches().touchEnded(TouchID { 0 }, { 180, 150 });
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UITapGestureRecognizerTest, TwoFingersDoNotTap)
{
    touch.down({ 150, 150 }, 1);
    touch.down({ 170, 150 }, 2);
    touch.up(1);
    touch.up(2);
    EXPECT_TRUE(target->states.empty());
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UITapGestureRecognizerTest, ADoubleTapNeedsTwoTaps)
{
    tap->setNumberOfTapsRequired(2);
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    touch.wait(0.2);
    touch.tap({ 155, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states.size(), 1u); // the first of another two
}

TEST_F(UITapGestureRecognizerTest, TheSecondTapMustComeSoon)
{
    tap->setNumberOfTapsRequired(2);
    touch.tap({ 150, 150 });
    touch.wait(0.35);
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    touch.wait(0.1);
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UITapGestureRecognizerTest, TheSecondTapMustBeNear)
{
    tap->setNumberOfTapsRequired(2);
    touch.tap({ 110, 110 });
    touch.wait(0.1);
    touch.tap({ 200, 200 });
    EXPECT_TRUE(target->states.empty());
}

// How long, how far: what a finger feels. A tenth more or less of each is noticed here.
TEST_F(UITapGestureRecognizerTest, TheSecondTapMayComeWithinThreeTenthsOfASecondAndFortyPoints)
{
    const auto taps = [&](double pause, double distance) {
        target->states.clear();
        touch.tap({ 110, 110 });
        touch.wait(pause);
        touch.tap({ 110 + distance, 110 });
        const bool found = !target->states.empty();
        touch.wait(1);
        return found;
    };
    tap->setNumberOfTapsRequired(2);
    EXPECT_TRUE(taps(0.29, 0));
    EXPECT_FALSE(taps(0.31, 0));
    EXPECT_TRUE(taps(0.1, 39));
    EXPECT_FALSE(taps(0.1, 41));
}

TEST_F(UITapGestureRecognizerTest, MayGoWhileItWaitsForTheSecondTap)
{
    tap->setNumberOfTapsRequired(2);
    touch.tap({ 150, 150 });
    view->removeGestureRecognizer(*tap);
    tap = nullptr;
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
}

// --- Several fingers -------------------------------------------------------------------------------------

TEST_F(UITapGestureRecognizerTest, ATapOfTwoFingersNeedsBothDownTogether)
{
    tap->setNumberOfTouchesRequired(2);
    touch.down({ 150, 150 }, 1);
    touch.down({ 190, 150 }, 2);
    touch.up(1);
    EXPECT_TRUE(target->states.empty());
    touch.up(2);
    EXPECT_EQ(target->states, (States { 3 }));
    touch.tap({ 150, 150 });
    touch.tap({ 190, 150 }); // one after the other
    EXPECT_EQ(target->states.size(), 1u);
}

TEST_F(UITapGestureRecognizerTest, ATapOfTwoFingersWasInTheMiddleOfBoth)
{
    CGPoint place;
    target->onAction
        = [&](UIGestureRecognizer& recognizer) { place = recognizer.locationInView(view.get()); };
    tap->setNumberOfTouchesRequired(2);
    touch.down({ 150, 150 }, 1);
    touch.down({ 190, 160 }, 2);
    touch.up(1);
    touch.up(2);
    EXPECT_EQ(place, CGPoint(70, 55));
}

TEST_F(UITapGestureRecognizerTest, AFingerThatReplacesAnotherIsNoTapOfTwo)
{
    tap->setNumberOfTouchesRequired(2);
    touch.down({ 150, 150 }, 1);
    touch.down({ 190, 150 }, 2);
    touch.up(1);
    touch.down({ 150, 150 }, 1);
    touch.up(1);
    touch.up(2);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(tap->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UITapGestureRecognizerTest, AThirdFingerIsTooManyForTwo)
{
    tap->setNumberOfTouchesRequired(2);
    for (int finger = 1; finger <= 3; ++finger)
        touch.down({ 120.0 + 30 * finger, 150 }, finger);
    for (int finger = 1; finger <= 3; ++finger)
        touch.up(finger);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UITapGestureRecognizerTest, EachOfTwoFingersMayMoveTenPoints)
{
    tap->setNumberOfTouchesRequired(2);
    touch.down({ 150, 150 }, 1);
    touch.down({ 190, 150 }, 2);
    touch.moveTo({ 160, 150 }, 1);
    touch.moveTo({ 190, 160 }, 2);
    touch.up(1);
    touch.up(2);
    EXPECT_EQ(target->states, (States { 3 }));
    touch.down({ 150, 150 }, 1);
    touch.down({ 190, 150 }, 2);
    touch.moveTo({ 190, 161 }, 2);
    touch.up(1);
    touch.up(2);
    EXPECT_EQ(target->states.size(), 1u);
}

TEST_F(UITapGestureRecognizerTest, TwoFingersMayTapTwice)
{
    tap->setNumberOfTouchesRequired(2);
    tap->setNumberOfTapsRequired(2);
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(target->states.empty());
        touch.wait(0.1);
        touch.down({ 150, 150 }, 1);
        touch.down({ 250, 150 }, 2);
        touch.up(2);
        touch.up(1);
    }
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UITapGestureRecognizerTest, ACancelledTouchIsNoTap)
{
    touch.down({ 150, 150 });
    touch.cancel();
    EXPECT_TRUE(target->states.empty());
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UITapGestureRecognizerTest, NoFingerAtAllIsAProgrammingError)
{
    AssertionRecorder recorder;
    tap->setNumberOfTouchesRequired(-3);
    EXPECT_EQ(recorder.messages(),
        (std::vector<NSString> { QStringLiteral("Invalid parameter not satisfying: touches >= 1") }));
    EXPECT_EQ(tap->numberOfTouchesRequired(), 1);
}

TEST_F(UITapGestureRecognizerTest, NoTapAtAllIsAProgrammingError)
{
    AssertionRecorder recorder;
    tap->setNumberOfTapsRequired(0);
    EXPECT_EQ(recorder.messages(),
        (std::vector<NSString> { QStringLiteral("Invalid parameter not satisfying: taps >= 1") }));
    EXPECT_EQ(tap->numberOfTapsRequired(), 1);
}

} // namespace
