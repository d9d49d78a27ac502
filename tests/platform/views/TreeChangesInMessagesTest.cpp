// Views that change the tree from inside the messages of a change of the tree: whatever they do, views,
// window, layers, constraints and touches agree with each other in the end. RandomTreeChangesTest does it at
// random.
#include "platform/layout/NSLayoutConstraint.h"
#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

// Meddles in every message it is sent.
class MeddlingView : public UIView {
public:
    using UIView::UIView;

    void willMoveToSuperview(UIView*) override { meddle(); }
    void didMoveToSuperview() override { meddle(); }
    void willMoveToWindow(UIWindow*) override { meddle(); }
    void didMoveToWindow() override
    {
        windowToldLast = window();
        ++timesToldOfWindow;
        meddle();
    }
    void didAddSubview(UIView&) override { meddle(); }
    void willRemoveSubview(UIView&) override { meddle(); }
    void tintColorDidChange() override { meddle(); }
    void layoutSubviews() override { meddle(); }
    void touchesBegan(const UITouches& touches, UIEvent&) override
    {
        ++begun;
        EXPECT_TRUE(touches.front()->view());
        meddle();
    }
    void touchesEnded(const UITouches&, UIEvent&) override
    {
        ++ended;
        meddle();
    }
    void touchesCancelled(const UITouches&, UIEvent&) override
    {
        ++ended;
        meddle();
    }
    void meddle() const
    {
        if (onMessage)
            onMessage();
    }

    std::function<void()> onMessage;
    UIWindow* windowToldLast = nullptr;
    int timesToldOfWindow = 0;
    int begun = 0;
    int ended = 0;
};

class TreeChangesInMessagesTest : public SceneFixture {
protected:
    static void expectAgreement(const UIView& view)
    {
        std::vector<CALayer*> layersOfSubviews;
        for (const auto& subview : view.subviews()) {
            EXPECT_EQ(subview->superview(), &view);
            EXPECT_EQ(subview->window(), view.window());
            EXPECT_EQ(subview->layer()->superlayer(), view.layer().get());
            layersOfSubviews.push_back(subview->layer().get());
            expectAgreement(*subview);
        }
        std::vector<CALayer*> sublayers;
        for (const auto& sublayer : view.layer()->sublayers())
            sublayers.push_back(sublayer.get());
        EXPECT_EQ(sublayers, layersOfSubviews);
        for (const auto& constraint : view.constraints())
            for (const auto& item : { constraint->firstItem(), constraint->secondItem() }) {
                const auto* const inside = dynamic_cast<const UIView*>(item.get());
                EXPECT_TRUE(!inside || view.containsView(*inside)) << qPrintable(constraint->description());
            }
    }
    void expectAgreementOfAll() const
    {
        expectAgreement(*window);
        for (const auto& view : views) {
            expectAgreement(*view);
            EXPECT_EQ(view->windowToldLast, view->window());
            if (!view->superview()) {
                EXPECT_EQ(view->window(), nullptr);
                EXPECT_EQ(view->layer()->superlayer(), nullptr);
            } else {
                const auto& siblings = view->superview()->subviews();
                EXPECT_EQ(std::count(siblings.begin(), siblings.end(), view), 1);
            }
        }
    }
    std::shared_ptr<MeddlingView> addMeddling(UIView& superview, const CGRect& place)
    {
        auto view = make<MeddlingView>(place);
        views.push_back(view);
        superview.addSubview(view);
        return view;
    }

    std::vector<std::shared_ptr<MeddlingView>> views;
};

TEST_F(TreeChangesInMessagesTest, WhatACancelledGestureAddsAgainStays)
{
    const auto view = addMeddling(*window, { 100, 100, 100, 100 });
    const auto target = make<GestureTarget>();
    view->addGestureRecognizer(make<UIPanGestureRecognizer>(target->action()));
    CGPoint last;
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        last = recognizer.locationInView(view.get());
        if (recognizer.state() == UIGestureRecognizerState::Cancelled && !view->superview())
            window->addSubview(view); // as one does that looks first whether it is there
    };
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    view->removeFromSuperview();
    EXPECT_EQ(target->states, (std::vector<int> { 1, 4 }));
    EXPECT_EQ(last, CGPoint(10, 40)) << "the finger is where it was in the view";
    EXPECT_EQ(view->superview(), window.get());
    EXPECT_EQ(view->window(), window.get());
    EXPECT_EQ(view->timesToldOfWindow, 3) << "of its coming, its going and its coming again, once each";
    expectAgreementOfAll();
    touch.moveTo({ 110, 160 });
    touch.up();
    EXPECT_EQ(target->states.size(), 2u) << "the old finger is not taken up again";
}

TEST_F(TreeChangesInMessagesTest, PlacesInAViewThatLeftAreThoseItHadInTheWindow)
{
    const auto outer = addMeddling(*window, { 100, 100, 200, 200 });
    outer->setTransform(CGAffineTransform::fromScale(2, 2));
    const auto inner = addMeddling(*outer, { 50, 50, 100, 100 });
    const auto target = make<GestureTarget>();
    const auto pan = make<UIPanGestureRecognizer>(target->action());
    inner->addGestureRecognizer(pan);
    CGPoint place;
    CGPoint before;
    CGPoint translation;
    CGPoint velocity;
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        const CGPoint now = recognizer.locationInView(inner.get());
        if (recognizer.state() != UIGestureRecognizerState::Cancelled) {
            place = now;
            before = recognizer.locationInView(outer.get());
            translation = pan->translationInView(inner.get());
            velocity = pan->velocityInView(inner.get());
            return;
        }
        EXPECT_EQ(now, place);
        EXPECT_EQ(recognizer.locationInView(outer.get()), before);
        EXPECT_EQ(pan->translationInView(inner.get()), translation);
        EXPECT_EQ(pan->velocityInView(inner.get()), velocity);
        EXPECT_EQ(outer->window(), nullptr);
    };
    const CGPoint start = inner->convertPointToView({ 10, 10 }, nullptr);
    touch.down(start);
    touch.wait(0.01);
    touch.moveTo(start + CGPoint(40, 20));
    outer->removeFromSuperview();
    EXPECT_EQ(target->states, (std::vector<int> { 1, 4 }));
    EXPECT_EQ(place, CGPoint(30, 20));
}

TEST_F(TreeChangesInMessagesTest, TheResponderChainOfATouchReachesTheSuperviewThatItsViewHasLeft)
{
    const auto outer = addView<LoggingView>({ 100, 100, 200, 200 });
    const auto inner = make<UIView>(CGRect(0, 0, 50, 50));
    outer->addSubview(inner);
    touch.down({ 110, 110 });
    inner->removeFromSuperview();
    EXPECT_EQ(outer->lines, (Lines { "began 10 10", "cancelled 10 10" }));
    EXPECT_EQ(inner->nextResponder(), nullptr) << "later it leads nowhere";
}

TEST_F(TreeChangesInMessagesTest, AViewThatIsPutElsewhereBeforeItMovesStaysThere)
{
    const auto first = addMeddling(*window, { 0, 0, 50, 50 });
    const auto second = addMeddling(*window, { 0, 100, 50, 50 });
    const auto view = addMeddling(*window, { 0, 200, 50, 50 });
    view->onMessage = [&] {
        view->onMessage = nullptr;
        second->addSubview(view);
    };
    first->addSubview(view);
    EXPECT_EQ(view->superview(), second.get());
    expectAgreementOfAll();
}

TEST_F(TreeChangesInMessagesTest, TwoViewsNeverComeToLieInEachOther)
{
    const auto outer = addMeddling(*window, { 0, 0, 50, 50 });
    const auto inner = addMeddling(*window, { 0, 100, 50, 50 });
    inner->onMessage = [&] {
        inner->onMessage = nullptr;
        inner->addSubview(outer);
    };
    outer->addSubview(inner);
    EXPECT_EQ(outer->superview(), inner.get());
    EXPECT_EQ(inner->superview(), window.get());
    expectAgreementOfAll();
}

TEST_F(TreeChangesInMessagesTest, ConstraintsMadeInsideARemovalAreThoseOfTheNewPlace)
{
    const auto view = addMeddling(*window, { 100, 100, 100, 100 });
    const auto touched = addView<LoggingView>({ 0, 0, 50, 50 });
    view->addSubview(touched);
    const auto constrain = [&] {
        NSLayoutConstraint::activateConstraints(
            std::vector { touched->leftAnchor().constraintEqualToAnchor(view->leftAnchor(), 5),
                touched->topAnchor().constraintEqualToAnchor(view->topAnchor(), 6),
                touched->widthAnchor().constraintEqualToConstant(50),
                touched->heightAnchor().constraintEqualToConstant(50) });
    };
    touched->setTranslatesAutoresizingMaskIntoConstraints(false);
    constrain();
    touched->onCancel = [&] {
        view->addSubview(touched);
        constrain();
    };
    runFrames();
    touch.down({ 110, 110 });
    touched->removeFromSuperview();
    runFrames();
    EXPECT_EQ(touched->superview(), view.get());
    EXPECT_EQ(touched->frame(), CGRect(5, 6, 50, 50));
    EXPECT_EQ(view->constraints().size(), 2u);
    touched->onCancel = nullptr;
}

} // namespace
