// View animations in a group that is held, as a transition that follows a finger holds them: a card over a
// dark layer over a screen whose tint is dimmed.
#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CAMotionGroup.h"
#include "platform/layers/CASpringAnimation.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"

#include <random>

namespace {

using Outcome = CAMotionGroup::Outcome;

class TintedPicture : public UIView {
public:
    using UIView::UIView;
    void tintColorDidChange() override { layer()->setContentsTintColor(tintColor()); }
};

class UIViewHeldAnimationTest : public SceneFixture {
protected:
    UIViewHeldAnimationTest()
    {
        background->addSubview(picture);
        picture->layer()->setContents(plainImage({ 8, 8 }, Qt::black));
        background->setTintColor(UIColor::colorWithRed(1, 0, 0, 1));
        background->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
        shade->setBackgroundColor(UIColor::colorWithWhite(0, 0.5));
        card->setBackgroundColor(UIColor::whiteColor());
        runFrames();
        atRest = frame;
    }
    UIView::Completion remember()
    {
        return [this](bool finished) { ends.push_back(finished); };
    }
    // The card leaves downwards in 0.2 s, the shade fades, the screen behind gets its tint back.
    void dismiss(UIViewAnimationCurve curve = UIViewAnimationCurve::Linear)
    {
        const CAMotionGroup::Collection collection(group);
        const auto enforcer = CABasicAnimation::animationWithKeyPath(QStringLiteral("position"));
        enforcer->setFromValue(card->layer()->position());
        card->layer()->addAnimation(enforcer, QStringLiteral("enforcer"));
        UIView::animate(
            0.2, 0, optionsOfCurve(curve),
            [this] {
                card->setFrame({ 0, 844, 390, 844 });
                shade->setAlpha(0);
                background->setTintAdjustmentMode(UIViewTintAdjustmentMode::Automatic);
            },
            remember());
        group->setDuration(0.2);
    }
    double shownTop() const
    {
        const CALayerValues shown = card->layer()->presentationValues();
        return shown.frame().top();
    }
    double shownShade() const { return shade->layer()->presentationValues().opacity; }
    QColor shownTint() const { return picture->layer()->presentationValues().contentsTintColor->qColor(); }
    // The frame of this very moment.
    FrameList shown()
    {
        window->layer()->setNeedsFrame();
        runFrames();
        return frame;
    }

    const std::shared_ptr<UIView> background = addView({ 0, 0, 390, 844 });
    const std::shared_ptr<TintedPicture> picture = make<TintedPicture>(CGRect(20, 100, 40, 40));
    const std::shared_ptr<UIView> shade = addView({ 0, 0, 390, 844 });
    const std::shared_ptr<UIView> card = addView({ 0, 0, 390, 844 });
    std::shared_ptr<CAMotionGroup> group = make<CAMotionGroup>();
    std::vector<bool> ends;
    FrameList atRest;
};

TEST_F(UIViewHeldAnimationTest, EverythingIsHeldAtTheSameFraction)
{
    const QColor grey = shownTint();
    dismiss();
    std::mt19937 random(3); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same tries every time
    std::uniform_real_distribution<double> number(0, 1);
    for (int attempt = 0; attempt < 200; ++attempt) {
        const double fraction = attempt % 50 == 0 ? attempt / 150.0 : number(random);
        group->setFraction(fraction);
        scheduler.advance(number(random) / 20);
        EXPECT_NEAR(shownTop(), 844 * fraction, 1e-9);
        EXPECT_NEAR(shownShade(), 1 - fraction, 1e-12);
        // From the dimmed grey at 80 % to full red, mixed as light.
        const double alpha = 0.8 + 0.2 * fraction;
        EXPECT_NEAR(shownTint().alphaF(), alpha, 1e-4);
        EXPECT_NEAR(shownTint().redF(), ((1 - fraction) * grey.redF() * 0.8 + fraction) / alpha, 1e-4);
    }
    group->setFraction(1);
    EXPECT_EQ(shownTop(), 844);
    EXPECT_EQ(shownShade(), 0);
    group->setFraction(0);
    EXPECT_EQ(shown(), atRest);
    EXPECT_TRUE(ends.empty());
}

TEST_F(UIViewHeldAnimationTest, CancelledItNeverShowsItsEnd)
{
    for (const auto curve : { UIViewAnimationCurve::Linear, UIViewAnimationCurve::EaseIn }) {
        group = make<CAMotionGroup>();
        ends.clear();
        dismiss(curve);
        group->setFraction(0.6);
        group->cancel(0.5, CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut));
        double last = shownTop();
        for (int step = 0; step < 60; ++step) { // 0.24 s back, and 0.36 s at the start
            scheduler.advance(0.01);
            EXPECT_LE(shownTop(), last);
            last = shownTop();
            if (step >= 24) {
                EXPECT_EQ(shown(), atRest) << step;
            }
        }
        EXPECT_EQ(ends, std::vector { false });
        group->settle(Outcome::TakenBack);
        EXPECT_EQ(shown(), atRest);
        EXPECT_EQ(card->frame(), CGRect(0, 0, 390, 844));
        EXPECT_EQ(shade->alpha(), 1);
        EXPECT_EQ(background->tintAdjustmentMode(), UIViewTintAdjustmentMode::Dimmed);
        EXPECT_FALSE(card->layer()->hasAnimations());
        scheduler.advance(1);
        EXPECT_EQ(shown(), atRest);
        EXPECT_EQ(ends.size(), 1U);
    }
}

TEST_F(UIViewHeldAnimationTest, WhatSomebodyHasSetSinceIsNotTakenBack)
{
    dismiss();
    group->setFraction(0.3);
    shade->setAlpha(0.5);
    group->cancel();
    scheduler.advance(0.2);
    background->setTintAdjustmentMode(
        UIViewTintAdjustmentMode::Dimmed); // as the completion of a dismissal does
    EXPECT_EQ(shown(), atRest);
    group->settle(Outcome::TakenBack);
    EXPECT_EQ(shade->alpha(), 0.5);
    EXPECT_EQ(card->frame(), CGRect(0, 0, 390, 844));
    EXPECT_EQ(background->tintAdjustmentMode(), UIViewTintAdjustmentMode::Dimmed);
}

TEST_F(UIViewHeldAnimationTest, FinishedItStaysAtItsEndUntilItIsSettled)
{
    dismiss();
    group->setFraction(0.5);
    group->finish();
    scheduler.advance(0.15);
    EXPECT_EQ(ends, std::vector { true });
    scheduler.advance(0.03); // the explicit animation below would have 0.02 s to go
    EXPECT_EQ(shownTop(), 844);
    group->settle(Outcome::Kept);
    EXPECT_EQ(card->frame(), CGRect(0, 844, 390, 844));
    EXPECT_EQ(background->tintAdjustmentMode(), UIViewTintAdjustmentMode::Normal);
}

TEST_F(UIViewHeldAnimationTest, AModelThatIsMirroredWhileItIsHeldMirrorsWhatIsShown)
{
    dismiss();
    group->setFraction(0.25);
    EXPECT_NEAR(shownTop(), 211, 1e-9);
    card->setFrame({ 0, -844, 390, 844 });
    EXPECT_NEAR(shownTop(), -211, 1e-9);
    card->setFrame({ 0, 844, 390, 844 });
    group->setFraction(0.5);
    EXPECT_NEAR(shownTop(), 422, 1e-9);
}

TEST_F(UIViewHeldAnimationTest, DelaysAreHeldToo)
{
    const auto late = addView({ 0, 0, 10, 10 });
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(0.3, 0.1, optionsOfCurve(UIViewAnimationCurve::Linear), [&] { late->setAlpha(0); });
        UIView::animate(0.4, [&] { card->setAlpha(0); });
    }
    EXPECT_DOUBLE_EQ(group->duration(), 0.4);
    for (const double fraction : { 0.0, 0.1, 0.25, 0.5, 0.9, 1.0 }) {
        group->setFraction(fraction);
        EXPECT_NEAR(late->layer()->presentationValues().opacity,
            1 - std::clamp((fraction * 0.4 - 0.1) / 0.3, 0.0, 1.0), 1e-12);
    }
    EXPECT_EQ(late->layer()->presentationValues().opacity, 0);
}

TEST_F(UIViewHeldAnimationTest, ABlockThatMovesNothingEndsWithTheOthers)
{
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(
            0.2, [] {}, remember());
        UIView::animate(
            0, [this] { shade->setAlpha(0.25); }, remember());
    }
    scheduler.advance(1);
    EXPECT_TRUE(ends.empty());
    group->cancel();
    scheduler.advance(1);
    EXPECT_EQ(ends, (std::vector { false, false }));
    group->settle(Outcome::TakenBack);
    EXPECT_EQ(shade->alpha(), 1);
}

TEST_F(UIViewHeldAnimationTest, ViewsPlacedByTheirSuperviewGoBackWithIt)
{
    const auto inside = make<UIView>(CGRect(10, 10, 100, 100));
    inside->setAutoresizingMask(UIViewAutoresizing::FlexibleWidth | UIViewAutoresizing::FlexibleHeight);
    card->addSubview(inside);
    runFrames();
    const FrameList before = shown();
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(0.2, [this] { card->setFrame({ 0, 0, 195, 422 }); });
    }
    EXPECT_NE(inside->frame(), CGRect(10, 10, 100, 100));
    group->cancel();
    scheduler.advance(0.1);
    group->settle(Outcome::TakenBack);
    EXPECT_EQ(inside->frame(), CGRect(10, 10, 100, 100));
    EXPECT_EQ(shown(), before);
}

TEST_F(UIViewHeldAnimationTest, SafeAreasFollowTheViewsThatGoBack)
{
    const auto inside = make<UIView>(CGRect(0, 0, 390, 100));
    card->addSubview(inside);
    const auto top = [&] { return inside->safeAreaLayoutGuide().layoutInsets()->top; };
    EXPECT_EQ(top(), 47);
    dismiss();
    EXPECT_EQ(top(), 0);
    group->cancel();
    scheduler.advance(0.3);
    group->settle(Outcome::TakenBack);
    EXPECT_EQ(top(), 47);
}

TEST_F(UIViewHeldAnimationTest, AViewThatIsTransparentAgainLosesItsTouches)
{
    class Button : public UIView {
    public:
        using UIView::UIView;
        void touchesCancelled(const UITouches&, UIEvent&) override { wasCancelled = true; }
        bool wasCancelled = false;
    };
    for (const bool hides : { false, true }) {
        const auto button = addView<Button>({ 0, 0, 100, 100 });
        UIView::performWithoutAnimation([&] { hides ? button->setHidden(true) : button->setAlpha(0); });
        group = make<CAMotionGroup>();
        {
            const CAMotionGroup::Collection collection(group);
            UIView::animate(0.2, 0, UIViewAnimationOptions::AllowUserInteraction,
                [&] { hides ? button->setHidden(false) : button->setAlpha(1); });
        }
        touch.down({ 50, 50 });
        group->cancel();
        scheduler.advance(0.3);
        EXPECT_FALSE(button->wasCancelled);
        group->settle(Outcome::TakenBack);
        EXPECT_TRUE(button->wasCancelled) << hides;
        touch.up();
    }
}

TEST_F(UIViewHeldAnimationTest, ASpringStaysWithinTheRangeOfTheOpacity)
{
    shade->setAlpha(0);
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(0.4, 0, 0.3, 0, UIViewAnimationOptions::None, [this] {
            shade->setAlpha(1);
            card->setFrame({ 0, 100, 390, 844 });
        });
    }
    const auto spring = std::dynamic_pointer_cast<const CASpringAnimation>(
        shade->layer()->animationForKey(QStringLiteral("opacity")));
    ASSERT_TRUE(spring);
    const SpringCurve curve(0.3);
    bool swings = false;
    for (int step = 0; step <= 100; ++step) {
        group->setFraction(step / 100.0);
        const double value = curve.valueAt(step / 100.0 * 0.4 / 0.4, 0);
        swings = swings || value > 1;
        EXPECT_NEAR(shownShade(), std::min(value, 1.0), 1e-9);
        EXPECT_NEAR(shownTop(), 100 * value, 1e-6);
    }
    EXPECT_TRUE(swings);
}

} // namespace
