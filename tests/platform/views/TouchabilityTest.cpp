// Views that stop being touchable while fingers are on them: everything ends in that moment.
#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

using States = std::vector<int>;

struct Way {
    const char* name;
    std::function<void(UIView&)> end;
    std::function<void(UIView&)> restore;
};

class TouchabilityTest : public SceneFixture, public ::testing::WithParamInterface<Way> {
protected:
    void SetUp() override
    {
        outer->addSubview(view);
        view->addGestureRecognizer(pan);
    }
    void beginDrag()
    {
        touch.down({ 110, 110 });
        touch.moveTo({ 110, 140 });
        ASSERT_EQ(target->states, (States { 1 }));
    }

    std::shared_ptr<UIView> outer = addView({ 50, 50, 300, 300 });
    std::shared_ptr<LoggingView> view = make<LoggingView>(CGRect(50, 50, 100, 100)); // at 100 100
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<UIPanGestureRecognizer> pan = make<UIPanGestureRecognizer>(target->action());
};

TEST_P(TouchabilityTest, TheGestureIsCancelledInsideTheCall)
{
    for (UIView* const ended : { static_cast<UIView*>(view.get()), outer.get() }) {
        target->states.clear();
        beginDrag();
        GetParam().end(*ended);
        EXPECT_EQ(target->states, (States { 1, 4 }));
        EXPECT_EQ(pan->state(), UIGestureRecognizerState::Possible);
        GetParam().restore(*ended);
        touch.moveTo({ 110, 200 });
        touch.up();
        EXPECT_EQ(target->states, (States { 1, 4 }));
    }
}

TEST_P(TouchabilityTest, OneThatHasNotBegunNeverDoes)
{
    touch.down({ 110, 110 });
    GetParam().end(*view);
    GetParam().restore(*view);
    touch.moveTo({ 110, 160 });
    touch.up();
    EXPECT_TRUE(target->states.empty());
}

TEST_P(TouchabilityTest, TheTouchedViewLosesItsTouch)
{
    pan->setEnabled(false);
    touch.down({ 110, 110 });
    GetParam().end(*outer);
    EXPECT_EQ(view->lines, (Lines { "began 10 10", "cancelled 10 10" }));
    GetParam().restore(*outer);
    touch.moveTo({ 120, 110 });
    touch.up();
    EXPECT_EQ(view->lines.size(), 2u);
}

TEST_P(TouchabilityTest, GesturesAroundTheViewGoOn)
{
    const auto outerTarget = make<GestureTarget>();
    outer->addGestureRecognizer(make<UIPanGestureRecognizer>(outerTarget->action()));
    pan->setEnabled(false);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    GetParam().end(*view);
    touch.moveTo({ 110, 150 });
    touch.up();
    EXPECT_EQ(outerTarget->states, (States { 1, 2, 3 }));
}

TEST_P(TouchabilityTest, TheActionRunsAfterTheChangeAndOutsideOfTheAnimationThatMadeIt)
{
    bool animated = true;
    bool stillTouchable = true;
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        if (recognizer.state() != UIGestureRecognizerState::Cancelled)
            return;
        animated = UIView::isInAnimation();
        stillTouchable = view->window() && view->isTouchable();
        EXPECT_EQ(recognizer.locationInView(view.get()), CGPoint(10, 40));
        outer->setCenter({ 10, 10 });
        EXPECT_EQ(outer->layer()->animationForKey(QStringLiteral("position")), nullptr);
    };
    beginDrag();
    UIView::animate(1, [&] { GetParam().end(*view); });
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_FALSE(animated);
    EXPECT_FALSE(stillTouchable);
}

TEST_P(TouchabilityTest, WhatTheActionUndoesStaysUndone)
{
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        if (recognizer.state() == UIGestureRecognizerState::Cancelled)
            GetParam().restore(*view);
    };
    beginDrag();
    GetParam().end(*view);
    touch.up();
    target->states.clear();
    EXPECT_TRUE(view->window() && view->isTouchable());
    beginDrag();
}

TEST_P(TouchabilityTest, EveryFingerOnItIsToldWhateverTheFirstOneDoes)
{
    const auto other = make<LoggingView>(CGRect(200, 0, 50, 50));
    const auto otherTarget = make<GestureTarget>();
    const auto otherPan = make<UIPanGestureRecognizer>(otherTarget->action());
    other->addGestureRecognizer(otherPan);
    outer->addSubview(other);
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        if (recognizer.state() == UIGestureRecognizerState::Cancelled)
            GetParam().restore(*outer);
    };
    beginDrag();
    touch.down({ 260, 60 }, 1);
    touch.moveTo({ 260, 90 }, 1);
    ASSERT_EQ(otherTarget->states, (States { 1 }));
    GetParam().end(*outer);
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_EQ(otherTarget->states, (States { 1, 4 }));
}

INSTANTIATE_TEST_SUITE_P(Ways, TouchabilityTest,
    ::testing::Values(Way { "hidden", [](UIView& view) { view.setHidden(true); },
                          [](UIView& view) { view.setHidden(false); } },
        Way { "transparent", [](UIView& view) { view.setAlpha(0.009); },
            [](UIView& view) { view.setAlpha(1); } },
        Way { "withoutInteraction", [](UIView& view) { view.setUserInteractionEnabled(false); },
            [](UIView& view) { view.setUserInteractionEnabled(true); } }),
    [](const auto& way) { return std::string(way.param.name); });

class TouchabilityOfOneViewTest : public SceneFixture {
protected:
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<UIPanGestureRecognizer> pan = make<UIPanGestureRecognizer>(target->action());
};

TEST_F(TouchabilityOfOneViewTest, AnAnimationThatKeepsNewTouchesOutStopsNoneThatIsUnderWay)
{
    const auto view = addView<LoggingView>({ 100, 100, 100, 100 });
    pan->setCancelsTouchesInView(false);
    view->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    UIView::animate(1, [&] { view->setAlpha(0.5); });
    EXPECT_EQ(window->hitTest({ 110, 110 }), window.get()) << "new touches are kept out";
    touch.moveTo({ 110, 140 });
    touch.wait(0.5);
    touch.moveTo({ 110, 150 });
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 2, 3 }));
    EXPECT_EQ(view->lines, (Lines { "began 10 10", "moved 10 40", "moved 10 50", "ended 10 50" }));
}

TEST_F(TouchabilityOfOneViewTest, AViewThatIsPutIntoAHiddenOneLosesItsTouch)
{
    const auto hidden = addView({ 0, 0, 50, 50 });
    hidden->setHidden(true);
    const auto view = addView<LoggingView>({ 100, 100, 100, 100 });
    view->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    hidden->addSubview(view);
    EXPECT_EQ(target->states, (States { 1, 4 }));
}

TEST_F(TouchabilityOfOneViewTest, ALayerHiddenWithoutTheViewsKnowledgeEndsTheGestureWithTheNextMove)
{
    const auto view = addView<LoggingView>({ 100, 100, 100, 100 });
    view->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    view->layer()->setHidden(true);
    touch.moveTo({ 110, 150 });
    EXPECT_EQ(target->states, (States { 1, 4 }));
}

TEST_F(TouchabilityOfOneViewTest, AViewMayBeDroppedFromInsideTheSetterThatHidesIt)
{
    auto view = addView<LoggingView>({ 100, 100, 100, 100 });
    const std::weak_ptr<LoggingView> watched = view;
    view->onCancel = [&] {
        view->removeFromSuperview();
        view = nullptr;
    };
    touch.down({ 110, 110 });
    UIView* const raw = view.get();
    raw->setHidden(true);
    EXPECT_TRUE(watched.expired());
}

} // namespace
