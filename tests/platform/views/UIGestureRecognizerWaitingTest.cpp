// One gesture waits for the failure of another.

#include "platform/views/UILongPressGestureRecognizer.h"
#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

namespace {

using States = std::vector<int>;

// Says of two recognisers that one has to wait for the other.
class Arbiter : public NSObject, public UIGestureRecognizerDelegate {
public:
    bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override
    {
        ++beginnings;
        return begins;
    }
    bool gestureRecognizerShouldRequireFailure(
        UIGestureRecognizer& first, UIGestureRecognizer& second) override
    {
        return demands && &first == waiting && &second == other;
    }
    bool gestureRecognizerShouldBeRequiredToFail(
        UIGestureRecognizer& first, UIGestureRecognizer& second) override
    {
        return isRequired && &first == other && &second == waiting;
    }
    UIGestureRecognizer* waiting = nullptr;
    UIGestureRecognizer* other = nullptr;
    bool demands = false;
    bool isRequired = false;
    bool begins = true;
    int beginnings = 0;
};

class UIGestureRecognizerWaitingTest : public SceneFixture {
protected:
    void SetUp() override
    {
        outer->addSubview(view);
        doubleTap->setNumberOfTapsRequired(2);
        view->addGestureRecognizer(single);
        view->addGestureRecognizer(doubleTap);
        arbiter->waiting = single.get();
        arbiter->other = doubleTap.get();
    }
    void singleWaits() { single->requireGestureRecognizerToFail(doubleTap); }

    std::shared_ptr<UIView> outer = addView({ 50, 50, 300, 300 });
    std::shared_ptr<LoggingView> view = make<LoggingView>(CGRect(50, 50, 200, 200)); // at 100 100
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<GestureTarget> doubleTarget = make<GestureTarget>();
    std::shared_ptr<Arbiter> arbiter = make<Arbiter>();
    std::shared_ptr<UITapGestureRecognizer> single = make<UITapGestureRecognizer>(target->action());
    std::shared_ptr<UITapGestureRecognizer> doubleTap = make<UITapGestureRecognizer>(doubleTarget->action());
};

TEST_F(UIGestureRecognizerWaitingTest, WithoutARequirementTheSingleTapDoesNotWait)
{
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, ASingleTapThatWaitsForADoubleTapFiresAfterItsInterval)
{
    singleWaits();
    CGPoint place;
    int fingers = 0;
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        place = recognizer.locationInView(view.get());
        fingers = recognizer.numberOfTouches();
    };
    touch.tap({ 150, 160 });
    touch.wait(0.299);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(single->state(), UIGestureRecognizerState::Possible);
    touch.wait(0.002);
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_EQ(place, CGPoint(50, 60));
    EXPECT_EQ(fingers, 1);
    EXPECT_EQ(single->numberOfTouches(), 0);
    EXPECT_EQ(single->state(), UIGestureRecognizerState::Possible);
    touch.tap({ 150, 160 });
    touch.wait(0.4);
    EXPECT_EQ(target->states, (States { 3, 3 }));
    EXPECT_TRUE(doubleTarget->states.empty());
}

TEST_F(UIGestureRecognizerWaitingTest, TheDoubleTapMakesTheSingleOneFail)
{
    singleWaits();
    touch.tap({ 150, 150 });
    touch.wait(0.1);
    touch.tap({ 150, 150 });
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(doubleTarget->states, (States { 3 }));
    touch.tap({ 150, 150 });
    touch.wait(1);
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, ASecondTouchThatFailsTheDoubleTapSetsTheSingleOneFree)
{
    singleWaits();
    touch.tap({ 150, 150 });
    touch.wait(0.1);
    touch.down({ 160, 150 });
    EXPECT_TRUE(target->states.empty());
    touch.moveTo({ 160, 200 });
    EXPECT_EQ(target->states, (States { 3 }));
    touch.up();
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, WhoWatchesNoTouchKeepsNobodyWaiting)
{
    const auto elsewhere = addView({ 0, 500, 50, 50 });
    elsewhere->addGestureRecognizer(doubleTap);
    singleWaits();
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, OneThatHasFailedAlreadyKeepsNobodyWaiting)
{
    const auto pan = make<UIPanGestureRecognizer>(target->action());
    view->addGestureRecognizer(pan);
    pan->requireGestureRecognizerToFail(single);
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 }); // no tap any more
    EXPECT_EQ(target->states, (States { 1 }));
    touch.up();
}

TEST_F(UIGestureRecognizerWaitingTest, TheOneWaitedForMayHearOfTheTouchLater)
{
    const auto press = make<UILongPressGestureRecognizer>(target->action());
    press->setMinimumPressDuration(0);
    view->addGestureRecognizer(press);
    const auto pan = make<UIPanGestureRecognizer>(doubleTarget->action());
    outer->addGestureRecognizer(pan); // sees the touch after the recognisers inside
    press->requireGestureRecognizerToFail(pan);
    view->removeGestureRecognizer(*single);
    touch.down({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    pan->setEnabled(false);
    EXPECT_EQ(target->states, (States { 1 }));
}

TEST_F(UIGestureRecognizerWaitingTest, AGestureThatLastsGoesOnFromWhereItWaited)
{
    const auto pan = make<UIPanGestureRecognizer>(target->action());
    view->addGestureRecognizer(pan);
    const auto press = make<UILongPressGestureRecognizer>(doubleTarget->action());
    press->setAllowableMovement(100);
    view->addGestureRecognizer(press);
    pan->requireGestureRecognizerToFail(press);
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 180 });
    touch.moveTo({ 150, 200 });
    EXPECT_TRUE(target->states.empty());
    touch.moveTo({ 150, 260 }); // too far for the press
    EXPECT_EQ(target->states.front(), 1);
    EXPECT_EQ(pan->translationInView(nullptr), CGPoint(0, 100));
    touch.up();
    EXPECT_EQ(target->states.back(), 3);
    EXPECT_TRUE(doubleTarget->states.empty());
}

TEST_F(UIGestureRecognizerWaitingTest, AGestureThatLastsFailsWhenItEndsBeforeTheOtherHasDecided)
{
    const auto press = make<UILongPressGestureRecognizer>(target->action());
    view->addGestureRecognizer(press);
    press->setMinimumPressDuration(0.1);
    press->requireGestureRecognizerToFail(doubleTap);
    view->removeGestureRecognizer(*single);
    touch.down({ 150, 150 });
    touch.wait(0.2);
    touch.up();
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(press->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UIGestureRecognizerWaitingTest, WaitingRunsAlongAChain)
{
    const auto tripleTarget = make<GestureTarget>();
    const auto triple = make<UITapGestureRecognizer>(tripleTarget->action());
    triple->setNumberOfTapsRequired(3);
    view->addGestureRecognizer(triple);
    singleWaits();
    doubleTap->requireGestureRecognizerToFail(triple);
    touch.tap({ 150, 150 });
    touch.tap({ 150, 150 });
    EXPECT_TRUE(doubleTarget->states.empty());
    touch.wait(0.4);
    EXPECT_EQ(doubleTarget->states, (States { 3 }));
    EXPECT_TRUE(target->states.empty());
    touch.tap({ 150, 150 });
    touch.wait(0.4);
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_TRUE(tripleTarget->states.empty());
}

TEST_F(UIGestureRecognizerWaitingTest, OfTwoThatWaitForEachOtherTheSecondGoesAhead)
{
    const auto second = make<UITapGestureRecognizer>(doubleTarget->action());
    view->removeGestureRecognizer(*doubleTap);
    view->addGestureRecognizer(second);
    single->requireGestureRecognizerToFail(second);
    second->requireGestureRecognizerToFail(single);
    touch.tap({ 150, 150 });
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(doubleTarget->states, (States { 3 }));
    EXPECT_EQ(single->state(), UIGestureRecognizerState::Possible);
}

// --- Delegates -------------------------------------------------------------------------------------------

TEST_F(UIGestureRecognizerWaitingTest, TheDelegateOfTheFirstMayAskForTheFailureOfTheOther)
{
    single->setDelegate(arbiter);
    arbiter->demands = true;
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    touch.wait(0.4);
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, TheDelegateOfTheOtherMayDemandItToo)
{
    doubleTap->setDelegate(arbiter);
    arbiter->isRequired = true;
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    touch.wait(0.1);
    touch.tap({ 150, 150 });
    touch.wait(0.4);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(doubleTarget->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, WhetherItMayBeginIsAskedOnceAndAfterTheWait)
{
    singleWaits();
    single->setDelegate(arbiter);
    touch.tap({ 150, 150 });
    EXPECT_EQ(arbiter->beginnings, 0);
    arbiter->begins = false;
    touch.wait(0.4);
    EXPECT_EQ(arbiter->beginnings, 1);
    EXPECT_TRUE(target->states.empty());
}

// --- Those who go meanwhile ------------------------------------------------------------------------------

TEST_F(UIGestureRecognizerWaitingTest, DisablingTheOneWaitedForSetsTheOtherFree)
{
    singleWaits();
    touch.tap({ 150, 150 });
    doubleTap->setEnabled(false);
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, DroppingTheOneWaitedForSetsTheOtherFree)
{
    singleWaits();
    touch.tap({ 150, 150 });
    const std::weak_ptr<UITapGestureRecognizer> watched = doubleTap;
    view->removeGestureRecognizer(*doubleTap);
    doubleTap = nullptr;
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(target->states, (States { 3 }));
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3, 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, TheViewOfTheOneWaitedForMayLeave)
{
    const auto inner = make<UIView>(CGRect(0, 0, 100, 100));
    view->addSubview(inner);
    inner->addGestureRecognizer(doubleTap);
    singleWaits();
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    inner->removeFromSuperview();
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerWaitingTest, OneThatWaitsOnAViewThatLeavesDoesNotFire)
{
    singleWaits();
    touch.tap({ 150, 150 });
    view->removeFromSuperview();
    outer->addSubview(view);
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(single->numberOfTouches(), 0);
}

TEST_F(UIGestureRecognizerWaitingTest, OneThatIsDisabledWhileItWaitsDoesNotFire)
{
    singleWaits();
    touch.tap({ 150, 150 });
    single->setEnabled(false);
    single->setEnabled(true);
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UIGestureRecognizerWaitingTest, OneThatWaitsOnAViewThatIsHiddenDoesNotFire)
{
    singleWaits();
    touch.tap({ 150, 150 });
    view->setHidden(true);
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UIGestureRecognizerWaitingTest, OneThatIsDroppedWhileItWaitsDoesNotFire)
{
    singleWaits();
    touch.tap({ 150, 150 });
    const std::weak_ptr<UITapGestureRecognizer> watched = single;
    view->removeGestureRecognizer(*single);
    single = nullptr;
    EXPECT_TRUE(watched.expired());
    touch.wait(1);
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UIGestureRecognizerWaitingTest, WhenTheScreenIsLostNothingWaitsAnyMore)
{
    doubleTap->setDelaysTouchesBegan(true);
    touch.tap({ 150, 150 });
    target->states.clear();
    window->touches().cancelAllTouches();
    touch.tap({ 150, 150 });
    EXPECT_TRUE(doubleTarget->states.empty()); // the first of another two
}

TEST_F(UIGestureRecognizerWaitingTest, ToWaitForNobodyOrForItselfIsAProgrammingError)
{
    AssertionRecorder recorder;
    single->requireGestureRecognizerToFail(nullptr);
    single->requireGestureRecognizerToFail(single);
    const NSString message = QStringLiteral("Invalid parameter not satisfying: other is another recogniser");
    EXPECT_EQ(recorder.messages(), (std::vector<NSString> { message, message }));
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

} // namespace
