#include "platform/layers/FrameBuilder.h"

#include "platform/graphics/UIUserInterfaceStyle.h"
#include "platform/layers/CAShapeLayer.h"
#include "platform/layers/LayerDump.h"
#include "tests/platform/layers/LayersFixture.h"
#include "tests/support/Pictures.h"

namespace {

class FrameBuilderTest : public LayersFixture {
protected:
    FrameBuilderTest()
    {
        layer->setAnchorPoint({ 0, 0 });
        layer->setBounds({ 0, 0, 100, 100 });
        layer->setBackgroundColor(white);
    }

    std::shared_ptr<CALayer> box(const CGRect& frame, const std::shared_ptr<CALayer>& parent = nullptr)
    {
        const auto made = CALayer::layer();
        made->setFrame(frame);
        made->setBackgroundColor(red);
        (parent ? parent : layer)->addSublayer(made);
        return made;
    }
    CAFrame frame(double time = 0) const { return FrameBuilder::buildFrame(*layer, time, { 100, 100 }, 2); }
    std::string dump(double time = 0) const { return LayerDump::frame(frame(time).list).toStdString(); }
    std::size_t itemCount() const { return frame().list.items.size(); }

    std::shared_ptr<UIColor> white = UIColor::whiteColor();
    std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
};

TEST_F(FrameBuilderTest, ListsTheTreeInDrawingOrder)
{
    const auto card = box({ 10, 20, 50, 50 });
    box({ 1, 2, 3, 4 }, card);
    box({ 5, 6, 7, 8 }, card);
    box({ 70, 70, 10, 10 });
    EXPECT_EQ(dump(),
        "frame 100x100 at scale 2\n"
        "  #0 move(0 0) (0 0; 100x100) background #ffffff\n"
        "    #1 move(10 20) (0 0; 50x50) background #ff0000\n"
        "      #2 move(1 2) (0 0; 3x4) background #ff0000\n"
        "      #3 move(5 6) (0 0; 7x8) background #ff0000\n"
        "    #4 move(70 70) (0 0; 10x10) background #ff0000\n");
}

TEST_F(FrameBuilderTest, ItemsCarryTheLooksOfTheirLayers)
{
    const auto card = box({ 10, 20, 40, 40 });
    card->setOpacity(0.5);
    card->setCornerRadius(8);
    card->setMasksToBounds(true);
    const FrameItem item = frame().list.items.at(1);
    EXPECT_EQ(item.layer, card->layerID());
    EXPECT_EQ(item.opacity, 0.5);
    EXPECT_EQ(item.cornerRadius, 8);
    EXPECT_TRUE(item.clipsToBounds);
    EXPECT_EQ(item.backgroundColor, QColor(255, 0, 0));
    EXPECT_EQ(item.subtreeEnd, 2);
}

TEST_F(FrameBuilderTest, TransformsLeadFromALayersCoordinatesToItsParents)
{
    const auto card = box({ 10, 20, 40, 40 });
    card->setBounds({ 100, 200, 40, 40 });
    card->setTransform(CGAffineTransform::fromScale(2, 2));
    const FrameItem item = frame().list.items.at(1);
    EXPECT_EQ(item.transform.map(CGPoint(120, 220)), CGPoint(30, 40)); // its middle
    EXPECT_EQ(item.transform.map(CGPoint(100, 200)), CGPoint(-10, 0));
}

TEST_F(FrameBuilderTest, ScrollingMovesSublayersAndNothingElse)
{
    const auto list = box({ 0, 0, 100, 100 });
    box({ 0, 30, 100, 20 }, list);
    const FrameList before = frame().list;
    list->setBounds({ 0, 10, 100, 100 });
    const FrameList after = frame().list;
    EXPECT_EQ(before.items.at(2), after.items.at(2));
    EXPECT_EQ(after.items.at(1).transform.map(CGPoint(0, 30)), CGPoint(0, 20));
}

TEST_F(FrameBuilderTest, EqualTreesMakeEqualFrames)
{
    box({ 10, 20, 50, 50 })->setContents(plainImage({ 2, 2 }, Qt::red));
    EXPECT_EQ(frame().list, frame().list);
}

TEST_F(FrameBuilderTest, HiddenAndTransparentSubtreesAreLeftOut)
{
    const auto card = box({ 10, 20, 50, 50 });
    box({ 1, 2, 3, 4 }, card);
    EXPECT_EQ(itemCount(), 3u);
    card->setHidden(true);
    EXPECT_EQ(itemCount(), 1u);
    card->setHidden(false);
    for (const double nothing : { 0.0, -1.0 }) {
        card->setOpacity(nothing);
        EXPECT_EQ(itemCount(), 1u) << nothing;
    }
    card->addAnimation(basic("opacity", notANumber, notANumber), QStringLiteral("key"));
    EXPECT_EQ(itemCount(), 1u);
    card->removeAllAnimations();
    card->setOpacity(7);
    EXPECT_EQ(frame().list.items.at(1).opacity, 1);
}

TEST_F(FrameBuilderTest, LayersInWhichNothingIsDrawnAreLeftOut)
{
    const auto empty = box({ 10, 20, 50, 50 });
    empty->setBackgroundColor(nullptr);
    EXPECT_EQ(itemCount(), 1u);
    empty->setBackgroundColor(UIColor::clearColor());
    EXPECT_EQ(itemCount(), 1u);
    const auto child = box({ 1, 2, 3, 4 }, empty);
    EXPECT_EQ(itemCount(), 3u); // it places its sublayer
    child->setHidden(true);
    EXPECT_EQ(itemCount(), 1u);
}

TEST_F(FrameBuilderTest, TheRootIsAlwaysTheFirstItem)
{
    layer->setBackgroundColor(nullptr);
    layer->setHidden(true);
    box({ 1, 2, 3, 4 });
    const FrameList list = frame().list;
    ASSERT_EQ(list.items.size(), 1u);
    EXPECT_EQ(list.items[0].layer, layer->layerID());
    EXPECT_EQ(list.items[0].subtreeEnd, 1);
    EXPECT_FALSE(list.items[0].backgroundColor.isValid());
}

TEST_F(FrameBuilderTest, ALayerOfNoSizeDrawsNothingButItsUnclippedSublayers)
{
    const auto point = box({ 50, 50, 0, 0 });
    point->setContents(plainImage({ 2, 2 }, Qt::red));
    EXPECT_EQ(itemCount(), 1u);
    box({ 0, 0, 10, 10 }, point);
    const FrameList list = frame().list;
    ASSERT_EQ(list.items.size(), 3u);
    EXPECT_FALSE(list.items[1].backgroundColor.isValid());
    EXPECT_EQ(list.items[1].content.index(), 0u);
    point->setMasksToBounds(true);
    EXPECT_EQ(itemCount(), 1u);
}

TEST_F(FrameBuilderTest, SubtreesOutsideTheirClippingSuperlayerAreLeftOut)
{
    const auto list = box({ 0, 0, 100, 100 });
    list->setMasksToBounds(true);
    for (int row = 0; row < 10; ++row) {
        const auto cell = box({ 0, 40.0 * row, 100, 40 }, list);
        box({ 5, 5, 10, 10 }, cell);
    }
    EXPECT_EQ(itemCount(), 2u + 3 * 2); // rows at 0, 40 and 80
    list->setBounds({ 0, 40, 100, 100 });
    EXPECT_EQ(itemCount(), 2u + 3 * 2); // the one that only touches the edge is out
    list->setMasksToBounds(false);
    EXPECT_EQ(itemCount(), 2u + 10 * 2);
}

TEST_F(FrameBuilderTest, ASublayerThatReachesIntoTheClipKeepsItsParent)
{
    const auto list = box({ 0, 0, 100, 100 });
    list->setMasksToBounds(true);
    const auto outside = box({ 0, 200, 100, 40 }, list);
    box({ 0, -150, 10, 10 }, outside);
    EXPECT_EQ(itemCount(), 4u);
}

// What is half in sight is drawn whole, so that a row which is scrolled out has only moved.
TEST_F(FrameBuilderTest, ARowHalfInSightKeepsAllItsItems)
{
    const auto list = box({ 0, 0, 100, 100 });
    list->setMasksToBounds(true);
    const auto cell = box({ 0, 80, 100, 40 }, list);
    box({ 0, 30, 10, 10 }, cell); // below the edge
    const FrameList before = frame().list;
    ASSERT_EQ(before.items.size(), 4u);
    list->setBounds({ 0, 5, 100, 100 });
    const FrameList after = frame().list;
    EXPECT_EQ(before.items[2], after.items[2]);
    EXPECT_EQ(before.items[3], after.items[3]);
}

TEST_F(FrameBuilderTest, AShapeIsOutsideWhereItsStrokeIs)
{
    layer->setMasksToBounds(true);
    const auto shape = CAShapeLayer::layer();
    shape->setStrokeColor(red);
    shape->setFillColor(nullptr);
    shape->setPath(UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 }));
    shape->setPosition({ 50, 103 });
    shape->setLineWidth(8);
    layer->addSublayer(shape); // of no size itself: the path is not tied to the bounds
    EXPECT_EQ(itemCount(), 2u);
    shape->setPosition({ 50, 150 });
    EXPECT_EQ(itemCount(), 1u);
}

TEST_F(FrameBuilderTest, GeometryThatCannotBeDrawnLeavesTheSubtreeOut)
{
    const auto card = box({ 10, 20, 50, 50 });
    box({ 1, 2, 3, 4 }, card);
    card->setBounds({ 0, 0, 10, 10 });
    for (const double bad : { notANumber, infinity, -infinity, 1.7e308 }) {
        const auto show = [&](const char* path, const CAValue& value) {
            card->removeAllAnimations();
            card->addAnimation(basic(path, value, value), {});
        };
        show("position", CGPoint(bad, bad));
        EXPECT_EQ(itemCount(), 1u) << "position " << bad;
        show("bounds", CGRect(bad, 0, 10, bad));
        EXPECT_EQ(itemCount(), 1u) << "bounds " << bad;
        show("transform", CGAffineTransform::fromScale(bad, bad));
        EXPECT_EQ(itemCount(), 1u) << "transform " << bad;
        show("cornerRadius", bad);
        EXPECT_EQ(frame().list.items.at(1).cornerRadius, bad > 0 ? 5 : 0) << "radius " << bad;
    }
    card->removeAllAnimations();
    card->setPosition({ 1.7e308, 1.7e308 });
    EXPECT_EQ(itemCount(), 1u);
    card->setPosition({ 10, 10 });
    card->setTransform(CGAffineTransform::fromScale(0, 1)); // no area
    EXPECT_EQ(itemCount(), 1u);
    card->setTransform({});
    EXPECT_EQ(itemCount(), 3u);
}

TEST_F(FrameBuilderTest, ColoursFollowTheAppearanceOfTheMoment)
{
    const auto dynamic = UIColor::colorWithLight(UIColor::whiteColor(), UIColor::blackColor());
    layer->setBackgroundColor(dynamic);
    EXPECT_EQ(frame().list.items[0].backgroundColor, QColor(Qt::white));
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    EXPECT_EQ(frame().list.items[0].backgroundColor, QColor(Qt::black));
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light);
}

TEST_F(FrameBuilderTest, ShowsTheAnimationsOfTheMoment)
{
    const auto card = box({ 10, 20, 50, 50 });
    card->addAnimation(basic("position.x", {}, {}, 100.0), QStringLiteral("x"));
    card->addAnimation(basic("backgroundColor", white, red), QStringLiteral("colour"));
    const FrameItem middle = frame(0.5).list.items.at(1);
    EXPECT_EQ(middle.transform.dx(), 60);
    EXPECT_NEAR(middle.backgroundColor.greenF(), 0.5, 0.01);
    EXPECT_EQ(frame(1).list.items.at(1).transform.dx(), 10);
    EXPECT_EQ(frame(0.5).nextAnimationTime, 0.5);
    EXPECT_EQ(frame(1).nextAnimationTime, infinity);
}

TEST_F(FrameBuilderTest, WhatASpringTakesBelowNothingIsDrawnAsNothing)
{
    const auto card = box({ 10, 10, 50, 50 });
    card->setCornerRadius(8);
    box({ 0, 0, 10, 10 }, card);
    card->addAnimation(basic("bounds.size.width", -4.0, -4.0), QStringLiteral("bounds"));
    const FrameItem item = frame(0.5).list.items.at(1);
    EXPECT_EQ(item.bounds.width(), -4);
    EXPECT_FALSE(item.backgroundColor.isValid());
    EXPECT_EQ(item.cornerRadius, 0);

    layer->setMasksToBounds(true);
    const auto shape = CAShapeLayer::layer();
    shape->setPath(UIBezierPath::bezierPathWithRoundedRect({ 95, 95, 20, 20 }, 0));
    layer->addSublayer(shape);
    shape->addAnimation(basic("lineWidth", -6.0, -6.0), QStringLiteral("lineWidth"));
    EXPECT_EQ(frame(0.5).list.items.back().layer, shape->layerID());
}

TEST_F(FrameBuilderTest, SubtreesHaveATimeOfTheirOwn)
{
    const auto slow = box({ 10, 20, 50, 50 });
    const auto child = box({ 0, 0, 10, 10 }, slow);
    child->addAnimation(basic("opacity", 0.0, 1.0), QStringLiteral("key"));
    slow->setSpeed(0.5);
    EXPECT_DOUBLE_EQ(frame(1).list.items.at(2).opacity, 0.5);
    slow->setSpeed(0);
    slow->setTimeOffset(0.25);
    EXPECT_DOUBLE_EQ(frame(7).list.items.at(2).opacity, 0.25);
    EXPECT_EQ(frame(7).nextAnimationTime, infinity);
}

TEST_F(FrameBuilderTest, TellsTheEarliestMomentAtWhichAnythingMoves)
{
    for (const double begin : { 9.0, 5.0, 7.0 }) {
        const auto animation = basic("opacity", 0.0, 1.0);
        animation->setBeginTime(begin);
        box({ 1, 2, 3, 4 })->addAnimation(animation, QStringLiteral("key"));
    }
    EXPECT_EQ(frame(1).nextAnimationTime, 5);
    EXPECT_EQ(frame(6.5).nextAnimationTime, 7);
    EXPECT_EQ(frame(7.5).nextAnimationTime, 7.5);
}

TEST_F(FrameBuilderTest, DeepAndWideTreesAreBuilt)
{
    auto parent = layer;
    for (int depth = 0; depth < 1000; ++depth)
        parent = box({ 0, 0, 10, 10 }, parent);
    for (int count = 0; count < 10000; ++count)
        box({ 1.0 * (count % 100), 0, 1, 1 });
    const FrameList list = frame().list;
    EXPECT_EQ(list.items.size(), 11001u);
    EXPECT_EQ(list.items[0].subtreeEnd, 11001);
    EXPECT_EQ(list.items[1].subtreeEnd, 1001);
}

} // namespace
