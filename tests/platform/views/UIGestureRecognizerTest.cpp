#include "platform/views/UIGestureRecognizer.h"

#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

using States = std::vector<int>;

class Judge : public NSObject, public UIGestureRecognizerDelegate {
public:
    bool gestureRecognizerShouldReceiveTouch(UIGestureRecognizer& recognizer, UITouch& asked) override
    {
        places.push_back(asked.locationInView(recognizer.view()));
        return receives;
    }
    bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override { return begins; }
    bool gestureRecognizerShouldRecognizeSimultaneously(UIGestureRecognizer&, UIGestureRecognizer&) override
    {
        return together;
    }
    std::vector<CGPoint> places;
    bool receives = true;
    bool begins = true;
    bool together = false;
};

class UIGestureRecognizerTest : public SceneFixture {
protected:
    void SetUp() override
    {
        outer->addSubview(view);
        tap->setDelegate(judge);
        pan->setDelegate(judge);
    }
    std::shared_ptr<UIPanGestureRecognizer> addOuterPan()
    {
        const auto added = make<UIPanGestureRecognizer>(outerTarget->action());
        outer->addGestureRecognizer(added);
        return added;
    }
    std::shared_ptr<UITapGestureRecognizer> addOuterTap()
    {
        const auto added = make<UITapGestureRecognizer>(outerTarget->action());
        outer->addGestureRecognizer(added);
        return added;
    }
    void dragFrom(const CGPoint& start)
    {
        touch.down(start);
        touch.moveTo(start + CGPoint(0, 30));
        touch.moveTo(start + CGPoint(0, 40));
        touch.up();
    }

    std::shared_ptr<UIView> outer = addView({ 50, 50, 300, 300 });
    std::shared_ptr<LoggingView> view = make<LoggingView>(CGRect(50, 50, 100, 100)); // at 100 100
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<GestureTarget> outerTarget = make<GestureTarget>();
    std::shared_ptr<Judge> judge = make<Judge>();
    std::shared_ptr<UITapGestureRecognizer> tap = make<UITapGestureRecognizer>(target->action());
    std::shared_ptr<UIPanGestureRecognizer> pan = make<UIPanGestureRecognizer>(target->action());
};

TEST_F(UIGestureRecognizerTest, BelongsToOneView)
{
    view->addGestureRecognizer(tap);
    EXPECT_EQ(tap->view(), view.get());
    outer->addGestureRecognizer(tap);
    EXPECT_EQ(tap->view(), outer.get());
    EXPECT_TRUE(view->gestureRecognizers().empty());
    outer->removeGestureRecognizer(*tap);
    EXPECT_EQ(tap->view(), nullptr);
    view->addGestureRecognizer(tap);
    view->removeFromSuperview();
    view = nullptr;
    EXPECT_EQ(tap->view(), nullptr);
}

TEST_F(UIGestureRecognizerTest, SeesTouchesOnSubviews)
{
    outer->addGestureRecognizer(tap);
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_EQ(tap->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UIGestureRecognizerTest, TheTouchedViewLosesTheTouch)
{
    view->addGestureRecognizer(pan);
    dragFrom({ 110, 110 });
    EXPECT_EQ(view->lines, (Lines { "began 10 10", "cancelled 10 40" }));
}

TEST_F(UIGestureRecognizerTest, TheTouchedViewKeepsTheTouchWhereItIsNotCancelled)
{
    view->addGestureRecognizer(pan);
    pan->setCancelsTouchesInView(false);
    dragFrom({ 110, 110 });
    EXPECT_EQ(view->lines, (Lines { "began 10 10", "moved 10 40", "moved 10 50", "ended 10 50" }));
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
}

TEST_F(UIGestureRecognizerTest, TheDelegateIsAskedForEachTouchFirst)
{
    view->addGestureRecognizer(tap);
    judge->receives = false;
    touch.tap({ 150, 160 });
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(judge->places, (std::vector<CGPoint> { { 50, 60 } }));
    EXPECT_EQ(view->lines.size(), 2u);
    judge->receives = true;
    touch.tap({ 150, 160 });
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerTest, TheDelegateMayRefuseTheBeginning)
{
    view->addGestureRecognizer(pan);
    judge->begins = false;
    dragFrom({ 110, 110 });
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(view->lines.back(), "ended 10 50");
    judge->begins = true;
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
}

TEST_F(UIGestureRecognizerTest, AViewUnderTheTouchMayRefuseTheBeginning)
{
    class Refusing : public UIView {
    public:
        using UIView::UIView;
        bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override { return false; }
    };
    const auto refusing = make<Refusing>(CGRect(0, 0, 50, 50));
    view->addSubview(refusing);
    outer->addGestureRecognizer(pan);
    dragFrom({ 110, 110 });
    EXPECT_TRUE(target->states.empty());
    dragFrom({ 170, 110 });
    EXPECT_EQ(target->states.front(), 1);
}

TEST_F(UIGestureRecognizerTest, ADelegateThatIsGoneIsNotAsked)
{
    view->addGestureRecognizer(tap);
    judge = nullptr;
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

// --- Several recognisers ---------------------------------------------------------------------------------

TEST_F(UIGestureRecognizerTest, TheFirstToRecognizeMakesTheOthersFail)
{
    view->addGestureRecognizer(pan);
    addOuterPan();
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_TRUE(outerTarget->states.empty());
}

TEST_F(UIGestureRecognizerTest, OfTwoTapsTheDeeperOneWins)
{
    view->addGestureRecognizer(tap);
    addOuterTap();
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_TRUE(outerTarget->states.empty());
    touch.tap({ 60, 60 });
    EXPECT_EQ(outerTarget->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerTest, OneThatGoesOnKeepsLaterOnesFromBeginning)
{
    // The pan of the outer view is under way when a second finger taps the inner view.
    outer->addGestureRecognizer(pan);
    const auto inner = make<UIPanGestureRecognizer>(outerTarget->action());
    touch.down({ 60, 60 }, 1);
    touch.moveTo({ 60, 90 }, 1);
    view->addGestureRecognizer(inner);
    touch.down({ 110, 110 }, 2);
    touch.moveTo({ 110, 150 }, 2);
    EXPECT_TRUE(outerTarget->states.empty());
    EXPECT_EQ(target->states, (States { 1, 2 }));
}

TEST_F(UIGestureRecognizerTest, ADelegateMayLetTwoGoOnTogether)
{
    view->addGestureRecognizer(pan);
    addOuterPan();
    judge->together = true;
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(outerTarget->states, (States { 1, 2, 3 }));
}

TEST_F(UIGestureRecognizerTest, ADragIsNoTapAndATapNoDrag)
{
    view->addGestureRecognizer(tap);
    addOuterPan();
    dragFrom({ 110, 110 });
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(outerTarget->states, (States { 1, 2, 3 }));
    outerTarget->states.clear();
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_TRUE(outerTarget->states.empty());
}

// --- Targets ---------------------------------------------------------------------------------------------

TEST_F(UIGestureRecognizerTest, TellsSeveralTargetsEachOnce)
{
    const auto second = make<GestureTarget>();
    view->addGestureRecognizer(tap);
    tap->addTarget(second->action());
    tap->addTarget(target->action());
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_EQ(second->states, (States { 3 }));
    tap->removeTarget(target->action());
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states.size(), 1u);
    EXPECT_EQ(second->states.size(), 2u);
}

TEST_F(UIGestureRecognizerTest, ATargetAddedWhileAStateIsSentHearsOfTheNextOne)
{
    const auto second = make<GestureTarget>();
    view->addGestureRecognizer(pan);
    target->onAction = [&](UIGestureRecognizer& recognizer) { recognizer.addTarget(second->action()); };
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(second->states, (States { 2, 3 }));
}

TEST_F(UIGestureRecognizerTest, ATargetRemovedWhileAStateIsSentHearsNothingMore)
{
    const auto second = make<GestureTarget>();
    view->addGestureRecognizer(pan);
    pan->addTarget(second->action());
    target->onAction = [&](UIGestureRecognizer& recognizer) { recognizer.removeTarget(second->action()); };
    dragFrom({ 110, 110 });
    EXPECT_TRUE(second->states.empty());
}

TEST_F(UIGestureRecognizerTest, ATargetThatLeavesAndComesBackWhileAStateIsSentHearsOfTheNextOne)
{
    const auto second = make<GestureTarget>();
    view->addGestureRecognizer(pan);
    pan->addTarget(second->action());
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        if (recognizer.state() != UIGestureRecognizerState::Began)
            return;
        recognizer.removeTarget(second->action());
        recognizer.addTarget(second->action());
    };
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(second->states, (States { 2, 3 }));
}

TEST_F(UIGestureRecognizerTest, ATargetAddedToTheOtherOfTwoThatGoOnTogetherHearsItsState)
{
    const auto second = make<GestureTarget>();
    view->addGestureRecognizer(pan);
    const auto outerPan = addOuterPan();
    judge->together = true;
    target->onAction = [&](UIGestureRecognizer&) { outerPan->addTarget(second->action()); };
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(outerTarget->states, (States { 1, 2, 3 }));
    EXPECT_EQ(second->states, (States { 1, 2, 3 })) << "the other one was not sending yet";
}

TEST_F(UIGestureRecognizerTest, OfThreeOnlyThoseGoOnTogetherThatAreLet)
{
    class Picky final : public NSObject, public UIGestureRecognizerDelegate {
    public:
        bool gestureRecognizerShouldRecognizeSimultaneously(
            UIGestureRecognizer&, UIGestureRecognizer& asked) override
        {
            return &asked == friendly;
        }
        UIGestureRecognizer* friendly = nullptr;
    };
    const auto picky = make<Picky>();
    const auto third = make<GestureTarget>();
    view->addGestureRecognizer(pan);
    pan->setDelegate(picky);
    picky->friendly = addOuterPan().get();
    const auto stranger = make<UIPanGestureRecognizer>(third->action());
    window->addGestureRecognizer(stranger);
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(outerTarget->states, (States { 1, 2, 3 }));
    EXPECT_TRUE(third->states.empty());
}

TEST_F(UIGestureRecognizerTest, ATargetThatIsGoneIsNotTold)
{
    view->addGestureRecognizer(tap);
    target = nullptr;
    touch.tap({ 150, 150 });
    EXPECT_EQ(tap->state(), UIGestureRecognizerState::Possible);
}

// --- Ends before their time ------------------------------------------------------------------------------

TEST_F(UIGestureRecognizerTest, ADisabledOneDoesNotFire)
{
    view->addGestureRecognizer(tap);
    tap->setEnabled(false);
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    tap->setEnabled(true);
    touch.tap({ 150, 150 });
    EXPECT_EQ(target->states, (States { 3 }));
}

TEST_F(UIGestureRecognizerTest, DisablingCancelsWhatGoesOn)
{
    view->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    pan->setEnabled(false);
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_EQ(pan->state(), UIGestureRecognizerState::Possible);
    touch.moveTo({ 110, 160 });
    touch.up();
    EXPECT_EQ(target->states.size(), 2u);
}

TEST_F(UIGestureRecognizerTest, OnAHiddenViewItDoesNotFire)
{
    view->addGestureRecognizer(tap);
    view->setHidden(true);
    touch.tap({ 150, 150 });
    EXPECT_TRUE(target->states.empty());
    view->setHidden(false);
    touch.down({ 150, 150 });
    outer->setHidden(true); // hidden while the finger is down
    touch.up();
    EXPECT_TRUE(target->states.empty());
}

TEST_F(UIGestureRecognizerTest, HidingItsViewCancelsWhatGoesOnInThatMoment)
{
    outer->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    outer->setHidden(true);
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_EQ(pan->state(), UIGestureRecognizerState::Possible);
    outer->setHidden(false);
    touch.moveTo({ 110, 160 });
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 4 })) << "the finger is not taken up again";
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states.size(), 5u);
}

TEST_F(UIGestureRecognizerTest, GoesOnWhenOnlyTheTouchedViewIsHidden)
{
    outer->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    view->setHidden(true);
    touch.moveTo({ 110, 150 });
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
}

TEST_F(UIGestureRecognizerTest, OneThatHasFoundNothingWhenItsLastTouchLeavesHasFailed)
{
    class Idle : public UIGestureRecognizer {
    public:
        void reset() override { ++resets; }
        int resets = 0;
    };
    const auto idle = make<Idle>();
    idle->setDelaysTouchesBegan(true);
    view->addGestureRecognizer(idle);
    touch.tap({ 110, 110 });
    EXPECT_EQ(idle->resets, 1);
    EXPECT_EQ(idle->state(), UIGestureRecognizerState::Possible);
    EXPECT_EQ(view->lines, (Lines { "began 10 10", "ended 10 10" }));
}

TEST_F(UIGestureRecognizerTest, DisablingItWhileItIsAskedWhetherItMayBeginMakesItFail)
{
    class Disabling : public Judge {
    public:
        bool gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer) override
        {
            recognizer.setEnabled(false);
            return true;
        }
    };
    const auto disabling = make<Disabling>();
    view->addGestureRecognizer(pan);
    pan->setDelegate(disabling);
    dragFrom({ 110, 110 });
    EXPECT_TRUE(target->states.empty());
    EXPECT_EQ(pan->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UIGestureRecognizerTest, ACancelledTouchCancelsTheGesture)
{
    view->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.cancel(); // before it has begun: failed, and nobody hears of it
    EXPECT_TRUE(target->states.empty());
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    touch.cancel();
    EXPECT_EQ(target->states, (States { 1, 4 }));
}

TEST_F(UIGestureRecognizerTest, RemovingItCancelsWhatGoesOn)
{
    view->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    view->removeGestureRecognizer(*pan);
    EXPECT_EQ(target->states, (States { 1, 4 }));
    touch.up();
    EXPECT_EQ(target->states.size(), 2u);
}

TEST_F(UIGestureRecognizerTest, RemovingItsViewCancelsWhatGoesOn)
{
    outer->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    outer->removeFromSuperview();
    EXPECT_EQ(target->states, (States { 1, 4 }));
    touch.moveTo({ 110, 160 });
    touch.up();
    EXPECT_EQ(target->states.size(), 2u);
    EXPECT_EQ(pan->state(), UIGestureRecognizerState::Possible);
}

TEST_F(UIGestureRecognizerTest, MayBeRemovedAndDroppedFromInsideItsOwnAction)
{
    view->addGestureRecognizer(pan);
    const std::weak_ptr<UIPanGestureRecognizer> watched = pan;
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        if (recognizer.state() != UIGestureRecognizerState::Began)
            return;
        pan = nullptr;
        view->removeGestureRecognizer(recognizer);
    };
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_TRUE(watched.expired());
}

TEST_F(UIGestureRecognizerTest, ItsViewMayBeDroppedFromInsideItsAction)
{
    outer->addGestureRecognizer(pan);
    target->onAction = [&](UIGestureRecognizer&) {
        if (!outer)
            return;
        outer->removeFromSuperview();
        outer = nullptr;
        view = nullptr;
    };
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_EQ(pan->view(), nullptr);
}

TEST_F(UIGestureRecognizerTest, DisablingItInItsOwnActionSendsEachTargetTheCancellationOnce)
{
    const auto second = make<GestureTarget>();
    view->addGestureRecognizer(pan);
    pan->addTarget(second->action());
    target->onAction = [&](UIGestureRecognizer& recognizer) { recognizer.setEnabled(false); };
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_EQ(second->states, (States { 4 }));
}

TEST_F(UIGestureRecognizerTest, ABeginningThatTheViewPutsAnEndToIsToldAsCancelledOnly)
{
    view->addGestureRecognizer(pan);
    view->onCancel = [&] { pan->setEnabled(false); };
    dragFrom({ 110, 110 });
    EXPECT_EQ(target->states, (States { 4 }));
}

TEST_F(UIGestureRecognizerTest, GoesOnWhenOnlyTheTouchedViewLeaves)
{
    outer->addGestureRecognizer(pan);
    pan->setCancelsTouchesInView(false);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    view->removeFromSuperview();
    touch.moveTo({ 110, 150 });
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(view->lines.back(), "cancelled 10 40");
}

TEST_F(UIGestureRecognizerTest, TheRawValuesOfTheStatesAreTheWrittenOnes)
{
    EXPECT_EQ(static_cast<int>(UIGestureRecognizerState::Began), 1);
    EXPECT_EQ(static_cast<int>(UIGestureRecognizerState::Changed), 2);
    EXPECT_EQ(static_cast<int>(UIGestureRecognizerState::Ended), 3);
    EXPECT_EQ(static_cast<int>(UIGestureRecognizerState::Cancelled), 4);
    EXPECT_EQ(static_cast<int>(UIGestureRecognizerState::Failed), 5);
}

} // namespace
