#include "platform/graphics/UIColor.h"
#include "platform/layers/CASpringAnimation.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

#include <optional>

namespace {

using enum UIViewAnimationOptions;

class UIViewAnimationTest : public SceneFixture {
protected:
    UIViewAnimationTest() { runFrames(); }

    UIView::Completion remember()
    {
        return [this](bool done) {
            ++completions;
            finished = done;
        };
    }
    CGPoint shownCenter() const { return view->layer()->presentationValues().position; }
    double shownAlpha() const { return view->layer()->presentationValues().opacity; }
    std::shared_ptr<const CABasicAnimation> animation(const char* key) const
    {
        return std::dynamic_pointer_cast<const CABasicAnimation>(
            view->layer()->animationForKey(QString::fromLatin1(key)));
    }
    void moveLinearly(double duration, const CGPoint& center, UIViewAnimationOptions options = None)
    {
        UIView::animate(
            duration, 0, optionsOfCurve(UIViewAnimationCurve::Linear) | options,
            [&] { view->setCenter(center); }, remember());
    }

    std::shared_ptr<UIView> view = addView({ 0, 0, 20, 20 }); // its centre is 10 10
    int completions = 0;
    std::optional<bool> finished;
};

TEST_F(UIViewAnimationTest, TheModelChangesAtOnceAndTheShownValueFollows)
{
    moveLinearly(1, { 110, 10 });
    EXPECT_EQ(view->center(), CGPoint(110, 10));
    EXPECT_EQ(shownCenter(), CGPoint(10, 10));
    scheduler.advance(0.25);
    EXPECT_NEAR(shownCenter().x(), 35, 1e-9);
    scheduler.advance(0.5);
    EXPECT_NEAR(shownCenter().x(), 85, 1e-9);
    scheduler.advance(0.5);
    EXPECT_EQ(shownCenter(), CGPoint(110, 10));
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(UIViewAnimationTest, EasesInAndOutUnlessToldOtherwise)
{
    UIView::animate(1, [&] { view->setCenter({ 110, 10 }); });
    scheduler.advance(0.1);
    EXPECT_LT(shownCenter().x(), 15); // slow at first …
    scheduler.advance(0.4);
    EXPECT_NEAR(shownCenter().x(), 60, 0.01); // … half way in the middle …
    scheduler.advance(0.4);
    EXPECT_GT(shownCenter().x(), 105); // … and slow at the end
}

TEST_F(UIViewAnimationTest, AddsAnAnimationWithOnlyAFromValueUnderThePropertysKey)
{
    UIView::animate(0.4, [&] { view->setFrame({ 100, 100, 40, 40 }); });
    for (const char* key : { "position", "bounds" }) {
        const auto added = animation(key);
        ASSERT_TRUE(added) << key;
        EXPECT_TRUE(added->hasFromValue());
        EXPECT_FALSE(added->hasToValue());
        EXPECT_FALSE(added->hasByValue());
        EXPECT_EQ(added->duration(), 0.4);
    }
}

TEST_F(UIViewAnimationTest, AModelThatChangesInFlightRedirectsTheFlight)
{
    moveLinearly(1, { 110, 10 });
    scheduler.advance(0.5);
    view->setCenter({ 10, 210 });
    EXPECT_NEAR(shownCenter().x(), 10, 1e-9);
    EXPECT_NEAR(shownCenter().y(), 110, 1e-9);
    scheduler.advance(0.6);
    EXPECT_EQ(shownCenter(), CGPoint(10, 210));
    EXPECT_EQ(finished, true);
}

TEST_F(UIViewAnimationTest, TwoChangesInOneBlockAreOneMotionFromTheFirstValue)
{
    UIView::animate(
        1, 0, optionsOfCurve(UIViewAnimationCurve::Linear),
        [&] {
            view->setCenter({ 50, 50 });
            view->setCenter({ 110, 10 });
        },
        remember());
    scheduler.advance(0.5);
    EXPECT_NEAR(shownCenter().x(), 60, 1e-9);
    EXPECT_NEAR(shownCenter().y(), 10, 1e-9);
    scheduler.advance(1);
    EXPECT_EQ(finished, true);
    EXPECT_EQ(completions, 1);
}

TEST_F(UIViewAnimationTest, CompletesOnceWhenAllMotionsHaveEnded)
{
    const auto other = addView({ 0, 100, 20, 20 });
    UIView::animate(
        0.5,
        [&] {
            view->setAlpha(0.5);
            view->setCenter({ 99, 99 });
            other->setAlpha(0);
        },
        remember());
    scheduler.advance(0.49);
    EXPECT_EQ(completions, 0);
    scheduler.advance(0.02);
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(finished, true);
}

TEST_F(UIViewAnimationTest, WithoutAChangeItCompletesSoonButNotInsideTheCall)
{
    UIView::animate(
        5, [] {}, remember());
    EXPECT_EQ(completions, 0);
    scheduler.runDue();
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(finished, true);
}

TEST_F(UIViewAnimationTest, AValueThatStaysTheSameIsNoChange)
{
    UIView::animate(
        5, [&] { view->setAlpha(1); }, remember());
    scheduler.runDue();
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(animation("opacity"));
}

TEST_F(UIViewAnimationTest, ADurationOfNothingAppliesAtOnce)
{
    UIView::animate(
        0, [&] { view->setAlpha(0.3); }, remember());
    EXPECT_EQ(shownAlpha(), 0.3);
    EXPECT_FALSE(view->layer()->hasAnimations());
    EXPECT_EQ(completions, 0);
    scheduler.runDue();
    EXPECT_EQ(finished, true);
}

TEST_F(UIViewAnimationTest, ADelayHoldsTheOldValue)
{
    UIView::animate(
        1, 0.5, optionsOfCurve(UIViewAnimationCurve::Linear), [&] { view->setAlpha(0); }, remember());
    scheduler.advance(0.4);
    EXPECT_EQ(shownAlpha(), 1);
    scheduler.advance(0.6);
    EXPECT_NEAR(shownAlpha(), 0.5, 1e-9);
    scheduler.advance(0.45);
    EXPECT_EQ(completions, 0);
    scheduler.advance(0.1);
    EXPECT_EQ(completions, 1);
}

TEST_F(UIViewAnimationTest, AnotherAnimationOfThePropertyInterruptsTheFirst)
{
    moveLinearly(1, { 110, 10 });
    scheduler.advance(0.5);
    UIView::animate(1, [&] { view->setCenter({ 10, 10 }); });
    scheduler.advance(0.1);
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(finished, false);
}

TEST_F(UIViewAnimationTest, StartsFromTheShownValueWhateverTheOptionsSay)
{
    for (const auto options : { None, BeginFromCurrentState }) {
        view->setCenter({ 10, 10 });
        moveLinearly(1, { 110, 10 }, options);
        scheduler.advance(0.5);
        moveLinearly(1, { 10, 10 }, options);
        EXPECT_NEAR(shownCenter().x(), 60, 1e-9);
        scheduler.advance(0.5);
        EXPECT_NEAR(shownCenter().x(), 35, 1e-9);
        scheduler.advance(0.6);
        EXPECT_EQ(shownCenter(), CGPoint(10, 10));
    }
}

TEST_F(UIViewAnimationTest, ASpringEndsExactlyAtItsTarget)
{
    UIView::animate(
        0.4, 0, 0.800000011920929, 0, None,
        [&] {
            view->setCenter({ 110, 10 });
        },
        remember());
    const auto spring = std::dynamic_pointer_cast<const CASpringAnimation>(
        view->layer()->animationForKey(QStringLiteral("position")));
    ASSERT_TRUE(spring);
    EXPECT_EQ(spring->dampingRatio(), 0.800000011920929);
    double farthest = 0;
    for (int step = 0; step < 40; ++step) {
        scheduler.advance(0.01);
        farthest = std::max(farthest, shownCenter().x());
    }
    EXPECT_GT(farthest, 110); // it swings beyond …
    EXPECT_LT(farthest, 115); // … a little
    scheduler.advance(0.01);
    EXPECT_EQ(shownCenter(), CGPoint(110, 10));
    EXPECT_EQ(finished, true);
}

TEST_F(UIViewAnimationTest, WhatALayoutInsideTheBlockMovesIsAnimated)
{
    class Stacked : public UIView {
    public:
        using UIView::UIView;
        void layoutSubviews() override { subviews().front()->setCenter({ x, 0 }); }
        double x = 0;
    };
    const auto outer = addView<Stacked>({ 0, 0, 100, 100 });
    outer->addSubview(view);
    runFrames();
    outer->x = 50;
    outer->setNeedsLayout();
    UIView::animate(0.5, [&] { outer->layoutIfNeeded(); });
    EXPECT_TRUE(animation("position"));
}

TEST_F(UIViewAnimationTest, WhatAChangedConstraintMovesIsAnimatedUnderTheKeysOfPlaceAndSize)
{
    const auto outer = addView({ 0, 0, 200, 100 });
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    outer->addSubview(view);
    const auto left = view->leftAnchor().constraintEqualToAnchor(outer->leftAnchor(), 0);
    const auto width = view->widthAnchor().constraintEqualToConstant(20);
    const NSLayoutConstraint::List constraints { left, width,
        view->topAnchor().constraintEqualToAnchor(outer->topAnchor()),
        view->heightAnchor().constraintEqualToConstant(20) };
    NSLayoutConstraint::activateConstraints(constraints);
    runFrames();
    left->setConstant(80);
    width->setConstant(60);
    UIView::animate(
        1, 0, optionsOfCurve(UIViewAnimationCurve::Linear), [&] { outer->layoutIfNeeded(); }, remember());
    EXPECT_EQ(view->frame(), CGRect(80, 0, 60, 20));
    for (const char* key : { "position", "bounds" }) {
        ASSERT_TRUE(animation(key)) << key;
        EXPECT_TRUE(animation(key)->hasFromValue());
        EXPECT_FALSE(animation(key)->hasToValue());
    }
    scheduler.advance(0.5);
    EXPECT_NEAR(shownCenter().x(), (10 + 110) / 2.0, 1e-9);
    EXPECT_NEAR(view->layer()->presentationValues().bounds.width(), 40, 1e-9);
    scheduler.advance(0.6);
    EXPECT_EQ(finished, true);
}

TEST_F(UIViewAnimationTest, NothingIsAnimatedOutsideOfABlockOrWhereItIsSwitchedOff)
{
    EXPECT_FALSE(UIView::isInAnimation());
    view->setAlpha(0.5);
    UIView::animate(1, [&] {
        EXPECT_TRUE(UIView::isInAnimation());
        UIView::performWithoutAnimation([&] {
            EXPECT_FALSE(UIView::isInAnimation());
            view->setAlpha(0.2);
        });
        EXPECT_TRUE(UIView::isInAnimation());
    });
    EXPECT_FALSE(view->layer()->hasAnimations());
    EXPECT_FALSE(UIView::isInAnimation());
}

TEST_F(UIViewAnimationTest, AViewOutsideOfAWindowChangesAtOnce)
{
    const auto loose = make<UIView>();
    UIView::animate(
        1, [&] { loose->setAlpha(0); }, remember());
    EXPECT_FALSE(loose->layer()->hasAnimations());
    scheduler.runDue();
    EXPECT_EQ(finished, true);
}

TEST_F(UIViewAnimationTest, TheTintModeMovesTheColoursThatFollowIt)
{
    class Tinted : public UIView {
    public:
        using UIView::UIView;
        void tintColorDidChange() override { setBackgroundColor(tintColor()); }
    };
    const auto tinted = addView<Tinted>({ 0, 0, 10, 10 });
    tinted->setTintColor(UIColor::colorWithRed(1, 0, 0, 1));
    UIView::animate(1, [&] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed); });
    EXPECT_TRUE(tinted->layer()->animationForKey(QStringLiteral("backgroundColor")));
    EXPECT_TRUE(tinted->backgroundColor()->getWhite());
}

TEST_F(UIViewAnimationTest, TouchesPassByWhatIsAnimatedUnlessAllowed)
{
    moveLinearly(1, { 110, 10 });
    EXPECT_EQ(window->hitTest({ 110, 10 }), window.get());
    scheduler.advance(1.1);
    EXPECT_EQ(window->hitTest({ 110, 10 }), view.get());
    moveLinearly(1, { 10, 10 }, AllowUserInteraction);
    EXPECT_EQ(window->hitTest({ 10, 10 }), view.get());
}

TEST_F(UIViewAnimationTest, AViewMayBeRemovedAndDroppedWhileItMoves)
{
    moveLinearly(1, { 110, 10 });
    scheduler.advance(0.5);
    view->removeFromSuperview();
    view = nullptr;
    scheduler.advance(1);
    EXPECT_EQ(completions, 1);
}

TEST_F(UIViewAnimationTest, ACompletionMayStartTheNextAnimation)
{
    UIView::animate(
        0.2, [&] { view->setAlpha(0); },
        [&](bool) {
            UIView::animate(
                0.2, [&] { view->setAlpha(1); }, remember());
        });
    scheduler.advance(0.3);
    EXPECT_EQ(completions, 0);
    scheduler.advance(0.2);
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(view->alpha(), 1);
}

TEST_F(UIViewAnimationTest, TheRawValuesOfTheOptionsAreTheWrittenOnes)
{
    EXPECT_EQ(static_cast<unsigned>(AllowUserInteraction | BeginFromCurrentState), 6u);
    EXPECT_EQ(static_cast<unsigned>(optionsOfCurve(UIViewAnimationCurve::Linear)), 3u << 16);
    EXPECT_EQ(
        curveOfOptions(static_cast<UIViewAnimationOptions>((1u << 16) | 6u)), UIViewAnimationCurve::EaseIn);
}

TEST_F(UIViewAnimationTest, ACurveThatThereIsNotEasesInAndOut)
{
    UIView::animate(1, 0, static_cast<UIViewAnimationOptions>(9u << 16), [&] {
        view->setCenter({ 110, 10 });
    });
    EXPECT_EQ(animation("position")->timingFunction(),
        CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut));
}

struct Pace {
    UIViewAnimationCurve curve;
    double atAQuarter; // of the way, after a quarter of the time
    const char* name;
};
void PrintTo(const Pace& entry, std::ostream* out) { *out << entry.name; }

class UIViewAnimationCurveTest : public UIViewAnimationTest, public ::testing::WithParamInterface<Pace> { };

TEST_P(UIViewAnimationCurveTest, GivesThePace)
{
    UIView::animate(1, 0, optionsOfCurve(GetParam().curve), [&] { view->setCenter({ 110, 10 }); });
    scheduler.advance(0.25);
    EXPECT_NEAR((shownCenter().x() - 10) / 100, GetParam().atAQuarter, 0.005);
}

INSTANTIATE_TEST_SUITE_P(All, UIViewAnimationCurveTest,
    ::testing::Values(Pace { UIViewAnimationCurve::EaseInOut, 0.129, "EaseInOut" },
        Pace { UIViewAnimationCurve::EaseIn, 0.093, "EaseIn" },
        Pace { UIViewAnimationCurve::EaseOut, 0.378, "EaseOut" },
        Pace { UIViewAnimationCurve::Linear, 0.25, "Linear" }),
    [](const auto& entry) { return entry.param.name; });

} // namespace
