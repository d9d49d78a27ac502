// How view animations end: by themselves, by another one, and with the view that leaves its window.
#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "tests/support/SceneFixture.h"

#include <gmock/gmock.h>

#include <optional>

namespace {

using enum UIViewAnimationOptions;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UIViewAnimationEndTest : public SceneFixture {
protected:
    UIViewAnimationEndTest() { runFrames(); }

    UIView::Completion remember()
    {
        return [this](bool done) { ends.push_back(done); };
    }
    void fade(double duration, double alpha, UIViewAnimationOptions options = None)
    {
        UIView::animate(
            duration, 0, optionsOfCurve(UIViewAnimationCurve::Linear) | options,
            [this, alpha] { view->setAlpha(alpha); }, remember());
    }
    // By one radian in one second.
    static std::shared_ptr<CABasicAnimation> turning()
    {
        auto animation = CABasicAnimation::animationWithKeyPath(QStringLiteral("transform.rotation.z"));
        animation->setByValue(1.0);
        animation->setDuration(1);
        return animation;
    }
    double shownAlpha() const { return view->layer()->presentationValues().opacity; }

    std::shared_ptr<UIView> view = addView({ 0, 0, 20, 20 });
    std::vector<bool> ends; // what the completions were told
};

TEST_F(UIViewAnimationEndTest, TheAnimationIsGoneFromTheLayerBeforeTheCompletionRuns)
{
    bool isAnimated = true;
    UIView::animate(
        0.3, [this] { view->setAlpha(0); }, [&](bool) { isAnimated = view->layer()->hasAnimations(); });
    scheduler.advance(0.3);
    EXPECT_FALSE(isAnimated);
}

TEST_F(UIViewAnimationEndTest, OnePropertyOfTwoThatIsInterruptedMakesTheWholeBlockUnfinished)
{
    UIView::animate(
        1,
        [this] {
            view->setAlpha(0);
            view->setCenter({ 50, 50 });
        },
        remember());
    scheduler.advance(0.5);
    fade(0.2, 1);
    scheduler.advance(0.3);
    EXPECT_THAT(ends, ElementsAre(true)); // the interrupter; the other one still moves the centre
    scheduler.advance(0.3);
    EXPECT_THAT(ends, ElementsAre(true, false));
}

TEST_F(UIViewAnimationEndTest, AChangeWithoutAnimationInterruptsNothing)
{
    fade(1, 0);
    scheduler.advance(0.5);
    view->setAlpha(0.2);
    EXPECT_NEAR(shownAlpha(), 0.6, 1e-9); // half way between where it came from and the new model
    scheduler.advance(0.6);
    EXPECT_THAT(ends, ElementsAre(true));
}

TEST_F(UIViewAnimationEndTest, FromTheCurrentStateAnInterruptedFadeHasNoJump)
{
    fade(1, 0);
    scheduler.advance(0.25);
    fade(1, 1, BeginFromCurrentState);
    EXPECT_NEAR(shownAlpha(), 0.75, 1e-9);
    scheduler.advance(0.5);
    EXPECT_NEAR(shownAlpha(), 0.875, 1e-9);
    scheduler.advance(0.6);
    EXPECT_THAT(ends, ElementsAre(false, true));
}

TEST_F(UIViewAnimationEndTest, AViewThatIsRemovedStopsMovingAndHasNotFinished)
{
    fade(1, 0);
    scheduler.advance(0.5);
    view->removeFromSuperview();
    EXPECT_FALSE(view->layer()->hasAnimations());
    EXPECT_THAT(ends, IsEmpty()); // not from inside the call
    scheduler.runDue();
    EXPECT_THAT(ends, ElementsAre(false));
    window->addSubview(view);
    EXPECT_EQ(shownAlpha(), 0);
}

TEST_F(UIViewAnimationEndTest, ASuperviewThatIsRemovedStopsWhatMovesInside)
{
    const auto inner = make<UIView>(CGRect(0, 0, 5, 5));
    view->addSubview(inner);
    const auto dot = CALayer::layer();
    inner->layer()->addSublayer(dot);
    dot->addAnimation(turning(), QStringLiteral("turn"));
    UIView::animate(
        1, [&] { inner->setAlpha(0); }, remember());
    view->removeFromSuperview();
    scheduler.runDue();
    EXPECT_THAT(ends, ElementsAre(false));
    EXPECT_FALSE(inner->layer()->hasAnimations());
    EXPECT_FALSE(dot->hasAnimations());
}

TEST_F(UIViewAnimationEndTest, AnEndlessAnimationIsSeenAgainWhenItsViewComesBack)
{
    const auto endless = turning();
    endless->setRepeatCount(3.4028235e38);
    view->setBackgroundColor(UIColor::blackColor());
    view->layer()->addAnimation(endless, QStringLiteral("indeterminateGroup"));
    view->layer()->addAnimation(turning(), QStringLiteral("once"));
    view->removeFromSuperview();
    EXPECT_THAT(view->layer()->animationKeys(), ElementsAre(QStringLiteral("indeterminateGroup")));
    runFrames();
    EXPECT_FALSE(scheduler.isFrameRequested()) << "what is in no window costs no frames";
    scheduler.advance(10.25);
    window->addSubview(view);
    runFrames();
    EXPECT_NEAR(view->layer()->presentationValues().transform.m11(), std::cos(0.25), 1e-9);
    EXPECT_TRUE(scheduler.isFrameRequested());
}

TEST_F(UIViewAnimationEndTest, AViewThatMovesWithinItsWindowGoesOnMoving)
{
    const auto elsewhere = addView({ 100, 100, 50, 50 });
    fade(1, 0);
    scheduler.advance(0.5);
    elsewhere->addSubview(view);
    window->bringSubviewToFront(*elsewhere);
    EXPECT_NEAR(shownAlpha(), 0.5, 1e-9);
    scheduler.advance(0.6);
    EXPECT_THAT(ends, ElementsAre(true));
}

TEST_F(UIViewAnimationEndTest, AViewThatGoesIntoAnotherWindowStopsMoving)
{
    const auto other = make<UIWindow>(UIScreen::mainScreen()->bounds());
    fade(1, 0);
    other->addSubview(view);
    scheduler.runDue();
    EXPECT_THAT(ends, ElementsAre(false));
    EXPECT_FALSE(view->layer()->hasAnimations());
}

TEST_F(UIViewAnimationEndTest, AViewMayBeDroppedWhileItMovesAndTakesTouchesAgainWhenItComesBack)
{
    fade(1, 0.5);
    view->removeFromSuperview();
    window->addSubview(view);
    scheduler.runDue();
    EXPECT_EQ(window->hitTest({ 10, 10 }), view.get());
    fade(1, 1);
    view->removeFromSuperview();
    view = nullptr;
    scheduler.runDue();
    EXPECT_THAT(ends, ElementsAre(false, false));
}

TEST_F(UIViewAnimationEndTest, ACompletionThatRemovesTheNextViewStopsThatOnesAnimation)
{
    const auto other = addView({ 0, 50, 20, 20 });
    UIView::animate(
        0.5, [&] { view->setAlpha(0); }, [&](bool) { other->removeFromSuperview(); });
    UIView::animate(
        1, [&] { other->setAlpha(0); }, remember());
    scheduler.advance(0.6);
    EXPECT_THAT(ends, ElementsAre(false));
}

TEST_F(UIViewAnimationEndTest, AWindowThatGoesAwayStopsEverything)
{
    fade(1, 0);
    window = nullptr;
    scheduler.advance(2);
    EXPECT_THAT(ends, ElementsAre(false));
}

TEST_F(UIViewAnimationEndTest, WithoutTimeADelayOnlyDelaysTheCompletion)
{
    UIView::animate(
        0, 0.5, None, [this] { view->setAlpha(0.3); }, remember());
    EXPECT_EQ(shownAlpha(), 0.3);
    scheduler.advance(0.4);
    EXPECT_THAT(ends, IsEmpty());
    scheduler.advance(0.2);
    EXPECT_THAT(ends, ElementsAre(true));
}

TEST_F(UIViewAnimationEndTest, WithoutTimeARunningAnimationOfThePropertyGoesOnTowardsTheNewValue)
{
    fade(1, 0);
    scheduler.advance(0.5);
    fade(0, 0.2);
    EXPECT_NEAR(shownAlpha(), 0.6, 1e-9);
    scheduler.advance(1);
    EXPECT_EQ(shownAlpha(), 0.2);
}

// --- Tint --------------------------------------------------------------------------------------------

TEST_F(UIViewAnimationEndTest, AnAnimatedDimmingPassesThroughTheColoursBetween)
{
    class Tinted final : public UIView {
    public:
        using UIView::UIView;
        void tintColorDidChange() override { layer()->setContentsTintColor(tintColor()); }
    };
    const auto tinted = addView<Tinted>({ 0, 0, 10, 10 });
    tinted->setTintColor(UIColor::colorWithRed(1, 0, 0, 1));
    const auto shown = [&] { return tinted->layer()->presentationValues().contentsTintColor->qColor(); };
    UIView::animate(1, 0, optionsOfCurve(UIViewAnimationCurve::Linear),
        [&] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed); });
    EXPECT_EQ(shown(), QColor(255, 0, 0));
    scheduler.advance(0.5);
    EXPECT_NEAR(shown().alphaF(), 0.9, 0.001);
    EXPECT_GT(shown().redF(), 0.5);
    EXPECT_LT(shown().redF(), 0.7);
    EXPECT_NEAR(shown().greenF(), 0.8 * 0.2126 * 0.5 / 0.9, 0.002); // mixed as light
    scheduler.advance(0.5);
    EXPECT_NEAR(shown().redF(), 0.2126, 0.001);
    EXPECT_NEAR(shown().alphaF(), 0.8, 0.001);
    UIView::animate(1, [&] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Automatic); });
    scheduler.advance(1.1);
    EXPECT_EQ(shown(), QColor(255, 0, 0));
}

} // namespace
