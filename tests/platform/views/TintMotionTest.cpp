#include "platform/views/TintMotion.h"

#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CAMotionGroup.h"
#include "platform/layers/CAShapeLayer.h"
#include "platform/layers/CASpringAnimation.h"
#include "tests/support/SceneFixture.h"

namespace {

// A view with a layer of its own for each colour that can follow the tint, and one that answers for itself.
class ManyColors : public UIView {
public:
    class OwnAction : public CAShapeLayer {
    public:
        std::shared_ptr<CAAnimation> actionForKey(const NSString&) override { return nullptr; }
    };

    using UIView::UIView;
    void init() override
    {
        UIView::init();
        layer()->addSublayer(shape);
        layer()->addSublayer(stubborn);
    }
    void tintColorDidChange() override
    {
        layer()->setContentsTintColor(tintColor());
        shape->setStrokeColor(tintColor());
        shape->setFillColor(tintColor());
        shape->setBackgroundColor(tintColor());
        shape->setLineWidth(shape->lineWidth() + 1);
        stubborn->setStrokeColor(tintColor());
    }

    const std::shared_ptr<CAShapeLayer> shape = CAShapeLayer::layer();
    const std::shared_ptr<OwnAction> stubborn = make<OwnAction>();
};

class TintMotionTest : public SceneFixture {
protected:
    TintMotionTest()
    {
        window->setTintColor(red);
        CATransaction::flush();
        scheduler.advance(1);
    }
    static QColor colorOf(const std::shared_ptr<UIColor>& color) { return color->qColor(); }
    void expectAllShow(const QColor& color) const
    {
        const CALayerValues own = view->layer()->presentationValues();
        const CALayerValues inside = view->shape->presentationValues();
        EXPECT_EQ(colorOf(own.contentsTintColor), color);
        EXPECT_EQ(colorOf(inside.strokeColor), color);
        EXPECT_EQ(colorOf(inside.fillColor), color);
        EXPECT_EQ(colorOf(inside.backgroundColor), color);
    }
    QColor leading() const { return colorOf(view->layer()->presentationValues().contentsTintColor); }

    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    const std::shared_ptr<UIColor> blue = UIColor::colorWithRed(0, 0, 1, 1);
    const std::shared_ptr<ManyColors> view = addView<ManyColors>({ 0, 0, 50, 50 });
};

TEST_F(TintMotionTest, ColoursOfAllLayersShiftTogetherOverTheBlocksTimeAndPace)
{
    UIView::animate(
        0.4, 0.1, optionsOfCurve(UIViewAnimationCurve::EaseIn), [&] { window->setTintColor(blue); });
    for (int step = 0; step < 50; ++step) {
        const double share = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseIn)
                                 ->valueAt((scheduler.now() - 1 - 0.1) / 0.4);
        EXPECT_NEAR(leading().blueF(), share, 1e-4);
        expectAllShow(leading());
        scheduler.advance(0.01);
    }
    EXPECT_EQ(leading(), QColor(Qt::blue));
    EXPECT_FALSE(view->shape->animationForKey(QStringLiteral("strokeColor")));
}

TEST_F(TintMotionTest, DimmingIsOneMotionThatCanBeHeldAndPlayedBack)
{
    const auto group = make<CAMotionGroup>();
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(0.4, [&] { window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed); });
    }
    EXPECT_EQ(group->duration(), 0.4);
    for (const double fraction : { 0.3, 0.9, 0.5, 1.0, 0.0 }) {
        group->setFraction(fraction);
        scheduler.advance(0.1);
        expectAllShow(leading());
    }
    EXPECT_EQ(leading(), QColor(Qt::red));
    group->settle(CAMotionGroup::Outcome::TakenBack);
    EXPECT_EQ(view->tintColor(), red);
    expectAllShow(QColor(Qt::red));
}

TEST_F(TintMotionTest, NothingElseAboutTheLayersActionsChanges)
{
    UIView::animate(0.4, [&] { window->setTintColor(blue); });
    EXPECT_FALSE(view->stubborn->hasAnimations()); // it has refused
    const auto width = view->shape->animationForKey(QStringLiteral("lineWidth"));
    ASSERT_TRUE(width);
    EXPECT_EQ(width->duration(), 0.25); // not a colour: the layer's own action
    UIView::animate(0.4, [&] { view->shape->setStrokeColor(red); }); // not the tint
    EXPECT_EQ(view->shape->animationForKey(QStringLiteral("strokeColor"))->duration(), 0.25);
}

TEST_F(TintMotionTest, OutsideOfABlockLayersKeepTheirOwnAction)
{
    window->setTintColor(blue);
    EXPECT_EQ(view->shape->animationForKey(QStringLiteral("strokeColor"))->duration(), 0.25);
    EXPECT_FALSE(view->layer()->hasAnimations());
    EXPECT_FALSE(TintMotion::isUnderWay());
}

TEST_F(TintMotionTest, WhatIsAddedInsideABlockHasItsColoursAtOnce)
{
    const auto added = make<ManyColors>(CGRect(0, 60, 50, 50));
    UIView::animate(0.4, [&] { window->addSubview(added); });
    EXPECT_FALSE(added->layer()->hasAnimations());
    EXPECT_EQ(colorOf(added->layer()->presentationValues().contentsTintColor), QColor(Qt::red));
}

TEST_F(TintMotionTest, WhereActionsAreSwitchedOffNothingMoves)
{
    const CATransaction::Guard transaction;
    CATransaction::setDisableActions(true);
    UIView::animate(0.4, [&] { window->setTintColor(blue); });
    EXPECT_FALSE(view->shape->hasAnimations());
    EXPECT_FALSE(view->layer()->hasAnimations());
}

TEST_F(TintMotionTest, ASpringSwingsTheColoursTogether)
{
    UIView::animate(0.4, 0, 0.8, 0, UIViewAnimationOptions::None, [&] { window->setTintColor(blue); });
    for (int step = 0; step < 40; ++step) {
        scheduler.advance(0.01);
        expectAllShow(leading());
    }
}

} // namespace
