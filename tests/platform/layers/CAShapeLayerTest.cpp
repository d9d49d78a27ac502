#include "platform/layers/CAShapeLayer.h"

#include "tests/platform/layers/LayersFixture.h"

#include <numbers>

namespace {

class CAShapeLayerTest : public LayersFixture {
protected:
    static std::shared_ptr<UIBezierPath> circle(double radius)
    {
        return UIBezierPath::bezierPathWithArcCenter(
            { 20, 20 }, radius, 3 * std::numbers::pi / 2, 7 * std::numbers::pi / 2, true);
    }
    FrameContent content() const { return shape->frameContent(shape->modelValues()); }

    std::shared_ptr<CAShapeLayer> shape = CAShapeLayer::layer();
};

TEST_F(CAShapeLayerTest, HasItsDefaults)
{
    EXPECT_EQ(shape->path(), nullptr);
    EXPECT_EQ(shape->strokeColor(), nullptr);
    EXPECT_TRUE(isEqual(shape->fillColor().get(), UIColor::blackColor().get()));
    EXPECT_EQ(shape->lineWidth(), 1);
    EXPECT_EQ(shape->lineCap(), kCALineCapButt);
    EXPECT_EQ(shape->strokeStart(), 0);
    EXPECT_EQ(shape->strokeEnd(), 1);
    EXPECT_EQ(content().index(), 0u);
}

TEST_F(CAShapeLayerTest, DrawsItsPathAsItStands)
{
    shape->setPath(circle(10));
    shape->setFillColor(nullptr);
    shape->setStrokeColor(UIColor::colorWithRed(1, 0, 0, 1));
    shape->setLineWidth(3);
    shape->setLineCap(kCALineCapRound);
    shape->setStrokeStart(0.25);
    shape->setStrokeEnd(0.5);
    const FrameShape drawn = std::get<FrameShape>(content());
    EXPECT_EQ(drawn.path, shape->path());
    EXPECT_FALSE(drawn.fillColor.isValid());
    EXPECT_EQ(drawn.strokeColor, QColor(255, 0, 0));
    EXPECT_EQ(drawn.lineWidth, 3);
    EXPECT_EQ(drawn.lineCap, Qt::RoundCap);
    EXPECT_EQ(drawn.strokeStart, 0.25);
    EXPECT_EQ(drawn.strokeEnd, 0.5);
}

TEST_F(CAShapeLayerTest, StrokeEndsOutsideThePathAreKeptAndDrawnAsTheNearerEnd)
{
    shape->setPath(circle(10));
    shape->setStrokeColor(UIColor::blackColor());
    shape->setStrokeStart(-0.5);
    shape->setStrokeEnd(1.5);
    EXPECT_EQ(shape->strokeStart(), -0.5);
    EXPECT_EQ(shape->strokeEnd(), 1.5);
    const FrameShape drawn = std::get<FrameShape>(content());
    EXPECT_EQ(drawn.strokeStart, 0);
    EXPECT_EQ(drawn.strokeEnd, 1);
    shape->setStrokeEnd(notANumber);
    EXPECT_FALSE(std::get<FrameShape>(content()).strokeColor.isValid()); // the fill is left
}

TEST_F(CAShapeLayerTest, WhatLeavesNoMarkIsNotDrawn)
{
    shape->setPath(circle(10));
    shape->setFillColor(nullptr);
    EXPECT_EQ(content().index(), 0u);
    shape->setStrokeColor(UIColor::clearColor());
    EXPECT_EQ(content().index(), 0u);
    shape->setStrokeColor(UIColor::blackColor());
    EXPECT_NE(content().index(), 0u);
    shape->setLineWidth(0);
    EXPECT_EQ(content().index(), 0u);
    shape->setLineWidth(2);
    shape->setStrokeStart(0.5);
    shape->setStrokeEnd(0.5);
    EXPECT_EQ(content().index(), 0u);
    shape->setStrokeEnd(1);
    shape->setPath(circle(-1)); // a ring in a view of no size
    EXPECT_EQ(content().index(), 0u);
    shape->setPath(std::shared_ptr<UIBezierPath>());
    EXPECT_EQ(content().index(), 0u);
}

TEST_F(CAShapeLayerTest, AnEqualPathIsNoChange)
{
    const CALayerTree tree(shape);
    shape->setPath(circle(10));
    const CGPathRef first = shape->path();
    tree.root()->tree()->makeFrame({ 100, 100 }, 1);
    shape->setPath(circle(10));
    EXPECT_EQ(shape->path(), first);
    EXPECT_FALSE(tree.needsFrame());
    shape->setPath(circle(11));
    EXPECT_NE(shape->path(), first);
    EXPECT_TRUE(tree.needsFrame());
}

TEST_F(CAShapeLayerTest, ThePathIsASnapshot)
{
    const auto path = circle(10);
    shape->setPath(path);
    path->addLineToPoint({ 1000, 1000 });
    EXPECT_LT(shape->path()->boundingRect().right(), 100);
}

TEST_F(CAShapeLayerTest, EverythingButThePathIsAnimated)
{
    shape->setPath(circle(10));
    shape->setStrokeColor(UIColor::blackColor());
    shape->addAnimation(basic("strokeStart", 0.0, 0.5), {});
    shape->addAnimation(basic("strokeEnd", 0.5, 1.0), {});
    shape->addAnimation(basic("lineWidth", 2.0, 4.0), {});
    shape->addAnimation(basic("strokeColor", UIColor::blackColor(), UIColor::whiteColor()), {});
    shape->addAnimation(basic("fillColor", UIColor::clearColor(), UIColor::whiteColor()), {});
    const FrameShape drawn = std::get<FrameShape>(shape->frameContent(shape->presentationValuesAt(0.5)));
    EXPECT_EQ(drawn.strokeStart, 0.25);
    EXPECT_EQ(drawn.strokeEnd, 0.75);
    EXPECT_EQ(drawn.lineWidth, 3);
    EXPECT_NEAR(drawn.strokeColor.redF(), 0.5, 0.01);
    EXPECT_NEAR(drawn.fillColor.alphaF(), 0.5, 0.01);
}

TEST_F(CAShapeLayerTest, ItsValuesAreSetByKeyPath)
{
    for (const char* path : { "strokeStart", "strokeEnd", "lineWidth" })
        shape->setValueForKeyPath(0.375, QLatin1String(path));
    const auto red = UIColor::colorWithRed(1, 0, 0, 1);
    shape->setValueForKeyPath(red, QStringLiteral("strokeColor"));
    shape->setValueForKeyPath(red, QStringLiteral("fillColor"));
    EXPECT_EQ(shape->strokeStart(), 0.375);
    EXPECT_EQ(shape->strokeEnd(), 0.375);
    EXPECT_EQ(shape->lineWidth(), 0.375);
    EXPECT_EQ(shape->strokeColor(), red);
    EXPECT_EQ(shape->fillColor(), red);
}

// A layer whose stroke ends are animated only when asked for: from the value before the change.
class RingLayer final : public CAShapeLayer {
public:
    std::shared_ptr<CAAnimation> actionForKey(const NSString& key) override
    {
        if (key != QLatin1String("strokeEnd"))
            return CAShapeLayer::actionForKey(key);
        if (!animates)
            return nullptr;
        const auto animation = CABasicAnimation::animationWithKeyPath(key);
        animation->setFromValue(strokeEnd());
        animation->setFillMode(kCAFillModeBackwards);
        animation->setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut));
        return animation;
    }
    bool animates = false;
};

TEST_F(CAShapeLayerTest, ASubclassDecidesAboutItsActions)
{
    const auto ring = make<RingLayer>();
    const CALayerTree tree(ring);
    ring->setStrokeEnd(0.2);
    EXPECT_FALSE(ring->hasAnimations());
    ring->animates = true;
    ring->setStrokeEnd(0.6);
    const auto shown = [&](double time) { return ring->presentationValuesAt(time).strokeEnd; };
    const auto easeOut = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut);
    EXPECT_DOUBLE_EQ(shown(0), 0.2);
    EXPECT_NEAR(shown(0.125), 0.2 + 0.4 * easeOut->valueAt(0.5), 1e-12);
    EXPECT_DOUBLE_EQ(shown(0.25), 0.6);
    ring->setOpacity(0); // every other key goes to the superclass
    EXPECT_TRUE(ring->animationForKey(QStringLiteral("opacity")));
}

TEST_F(CAShapeLayerTest, APathGoesOverPointByPointIntoOneOfTheSameLinesAndCurves)
{
    const auto circle = [](double radius) {
        return UIBezierPath::bezierPathWithArcCenter({ radius, radius }, radius, 0, 7, true)->cgPath();
    };
    const auto moved = CAShapeLayer::layer();
    moved->setPath(circle(20));
    moved->addAnimation(basic("path", circle(10)), QStringLiteral("path"));
    EXPECT_EQ(moved->presentationValuesAt(0).path->controlPointRect(), CGRect(0, 0, 20, 20));
    EXPECT_EQ(moved->presentationValuesAt(0.5).path->controlPointRect(), CGRect(0, 0, 30, 30));
    EXPECT_EQ(moved->presentationValuesAt(1).path, moved->path()) << "the very object at the end";
    const auto drawn = std::get<FrameShape>(moved->frameContent(moved->presentationValuesAt(0.5)));
    EXPECT_EQ(drawn.path->controlPointRect(), CGRect(0, 0, 30, 30));
}

TEST_F(CAShapeLayerTest, APathOfOtherLinesIsThereFromTheStart)
{
    const auto moved = CAShapeLayer::layer();
    moved->setPath(UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 }));
    for (const CGPathRef& from :
        { CGPathRef(), UIBezierPath::bezierPathWithOvalInRect({ 0, 0, 5, 5 })->cgPath(),
            UIBezierPath::bezierPath()->cgPath() }) {
        moved->addAnimation(basic("path", from), QStringLiteral("path"));
        EXPECT_EQ(moved->presentationValuesAt(0.5).path, moved->path());
    }
}

TEST_F(CAShapeLayerTest, AChangedPathHasNoActionOfItsOwn)
{
    const auto moved = CAShapeLayer::layer();
    layer->addSublayer(moved);
    const CALayerTree tree(layer);
    moved->setPath(UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 }));
    moved->setPath(UIBezierPath::bezierPathWithRect({ 0, 0, 20, 10 }));
    EXPECT_FALSE(moved->hasAnimations());
}

} // namespace
