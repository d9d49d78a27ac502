// Where the frame list puts layers, in the pixels of the screen.
#include "platform/layers/PixelGrid.h"

#include "platform/layers/FrameBuilder.h"
#include "tests/platform/layers/LayersFixture.h"
#include "tests/support/Pictures.h"

#include <cmath>
#include <random>

namespace {

class PixelGridTest : public LayersFixture {
protected:
    PixelGridTest() { setUp(*layer, { 0, 0, 400, 400 }); }

    static void setUp(CALayer& made, const CGRect& frame)
    {
        made.setFrame(frame);
        made.setBackgroundColor(UIColor::whiteColor());
    }
    static std::shared_ptr<CALayer> add(const std::shared_ptr<CALayer>& parent, const CGRect& frame)
    {
        const auto made = CALayer::layer();
        setUp(*made, frame);
        parent->addSublayer(made);
        return made;
    }
    FrameList list(double time = 0) const
    {
        return FrameBuilder::buildFrame(*layer, time, { 400, 400 }, scale).list;
    }
    static const FrameItem& itemOf(const FrameList& list, const CALayer& layer)
    {
        const auto found = std::find_if(list.items.begin(), list.items.end(),
            [&](const FrameItem& item) { return item.layer == layer.layerID(); });
        return *found;
    }
    // From the item's coordinates to the screen, in points.
    static CGAffineTransform transformToScreen(const FrameList& list, const FrameItem& item)
    {
        CGAffineTransform transform;
        const auto index = &item - list.items.data();
        for (auto i = index; i >= 0; --i)
            if (list.items[std::size_t(i)].subtreeEnd > index)
                transform = transform * list.items[std::size_t(i)].transform;
        return transform;
    }
    CGRect inPixels(const FrameList& list, const FrameItem& item, const CGRect& rect) const
    {
        const CGRect points = transformToScreen(list, item).mapRect(rect);
        return { points.topLeft() * scale, points.size() * scale };
    }
    // Where the layer's bounds are drawn.
    CGRect pixelsOf(const CALayer& asked, double time = 0) const
    {
        const FrameList shown = list(time);
        const FrameItem& item = itemOf(shown, asked);
        return inPixels(shown, item, item.bounds);
    }
    CGRect pictureOf(const CALayer& asked) const
    {
        const FrameList shown = list();
        const FrameItem& item = itemOf(shown, asked);
        return inPixels(shown, item, std::get<FrameImage>(item.content).rect);
    }
    // Where they would be without a grid.
    CGRect exactPixelsOf(const CALayer& asked) const
    {
        CGAffineTransform transform;
        for (const CALayer* each = &asked; each; each = each->superlayer())
            transform = transform * each->modelValues().transformToSuperlayer();
        const CGRect points = transform.mapRect(asked.bounds());
        return { points.topLeft() * scale, points.size() * scale };
    }

    static bool isWhole(double place) { return std::abs(place - std::round(place)) < 1e-9; }
    static bool isWhole(const CGRect& rect)
    {
        return isWhole(rect.left()) && isWhole(rect.top()) && isWhole(rect.right()) && isWhole(rect.bottom());
    }

    double scale = 2;
};

TEST_F(PixelGridTest, WhatRestsLiesOnTheNearestPixelsOfTheScreen)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(-20, 20);
    std::uniform_real_distribution<double> side(0.6, 60);
    for (const double each : { 1.0, 2.0, 3.0, 1.25 }) {
        scale = each;
        for (int round = 0; round < 50; ++round) {
            std::vector<std::shared_ptr<CALayer>> path { layer };
            for (int depth = 0; depth < 8; ++depth)
                path.push_back(
                    add(path.back(), { place(random), place(random), side(random), side(random) }));
            for (const auto& laid : path) {
                const CGRect pixels = pixelsOf(*laid);
                const CGRect exact = exactPixelsOf(*laid);
                ASSERT_TRUE(isWhole(pixels));
                EXPECT_LE(std::abs(pixels.left() - exact.left()), 0.5 + 1e-6);
                EXPECT_LE(std::abs(pixels.top() - exact.top()), 0.5 + 1e-6);
                EXPECT_GE(pixels.width(), 1 - 1e-9);
                // What is thinner than a pixel is made thicker.
                EXPECT_LE(std::abs(pixels.right() - exact.right()), exact.width() < 1 ? 1 : 0.5 + 1e-6);
                EXPECT_LE(std::abs(pixels.bottom() - exact.bottom()), exact.height() < 1 ? 1 : 0.5 + 1e-6);
            }
            path[1]->removeFromSuperlayer();
        }
    }
}

TEST_F(PixelGridTest, AWholeDistanceIsTheNearestOneAndHalvesGoTheSameWay)
{
    EXPECT_DOUBLE_EQ(PixelGrid::nearestWholeDistance(10.2, 3), 10 + 1.0 / 3);
    EXPECT_DOUBLE_EQ(PixelGrid::nearestWholeDistance(-0.4, 3), -1.0 / 3);
    EXPECT_EQ(PixelGrid::nearestWholeDistance(10.2, 1), 10);
    EXPECT_EQ(PixelGrid::nearestWholeDistance(0.5, 1), 1);
    EXPECT_EQ(PixelGrid::nearestWholeDistance(-0.5, 1), 0);
}

TEST_F(PixelGridTest, LayersThatTouchTouchOnTheScreen)
{
    for (const double each : { 1.0, 2.0, 3.0 }) {
        scale = each;
        const auto column = add(layer, { 3.3, 0.2, 100, 333.34 });
        std::vector<std::shared_ptr<CALayer>> rows;
        for (int row = 0; row < 30; ++row)
            rows.push_back(add(column, { 0, row * 10.37, 100, 10.37 }));
        const auto filled = add(rows.back(), { 0, 0, 100, 10.37 });
        for (std::size_t row = 1; row < rows.size(); ++row)
            EXPECT_NEAR(pixelsOf(*rows[row - 1]).bottom(), pixelsOf(*rows[row]).top(), 1e-9) << row;
        EXPECT_EQ(pixelsOf(*filled), pixelsOf(*rows.back()));
        column->removeFromSuperlayer();
    }
}

TEST_F(PixelGridTest, WhatMovesBackInsideOfAMovedLayerStandsStill)
{
    scale = 3;
    const auto window = add(layer, { 0, 0, 100, 20 });
    const auto picture = add(window, { 0, 0, 100, 20 });
    for (double x = 0; x < 40; x += 0.13) {
        window->setFrame({ x, 0, 100 - x, 20 });
        picture->setFrame({ -x, 0, 100, 20 });
        ASSERT_EQ(pixelsOf(*picture), CGRect(0, 0, 300, 60)) << x;
    }
}

TEST_F(PixelGridTest, AHairlineIsNeverLost)
{
    scale = 1;
    for (double y = 0; y < 2; y += 0.1) {
        const auto line = add(layer, { 10, y, 100, 1 / 3.0 });
        EXPECT_EQ(pixelsOf(*line).height(), 1) << y;
        line->removeFromSuperlayer();
    }
}

TEST_F(PixelGridTest, WhatIsScrolledOrTranslatedStaysAsItIsInside)
{
    scale = 3;
    const auto content = add(layer, { 1.7, 2.2, 300, 300 });
    const auto row = add(content, { 3.4, 20.31, 200, 44.4 });
    add(row, { 0.77, 5.55, 20.2, 20.2 });
    const FrameList before = list();
    for (double offset = -5; offset < 5; offset += 0.21) {
        content->setBounds({ offset, offset, 300, 300 });
        row->setTransform(CGAffineTransform::fromTranslate(offset / 2, offset));
        const FrameList after = list();
        ASSERT_TRUE(isWhole(pixelsOf(*row))) << offset;
        EXPECT_EQ(after.items[2].bounds, before.items[2].bounds) << offset;
        EXPECT_EQ(after.items[3], before.items[3]) << offset;
    }
}

TEST_F(PixelGridTest, WhatMovesMayLieAnywhereAndEndsOnPixels)
{
    const auto card = add(layer, { 10.3, 10.3, 50.4, 50.4 });
    const auto inner = add(card, { 5.2, 5.2, 10.1, 10.1 });
    card->addAnimation(basic("position", CGPoint(100, 100)), QStringLiteral("way"));
    const FrameItem still = itemOf(list(0), *inner);
    int between = 0;
    CGRect last = pixelsOf(*card, 0);
    for (int step = 1; step < 1000; ++step) {
        const double time = step / 1000.0;
        const CGRect shown = pixelsOf(*card, time);
        between += isWhole(shown.left()) ? 0 : 1;
        EXPECT_EQ(itemOf(list(time), *inner), still) << "nothing in it changes";
        EXPECT_EQ(shown.size(), last.size());
        EXPECT_LT(std::abs(shown.left() - last.left()), 0.2) << "no step on the way";
        last = shown;
    }
    EXPECT_GT(between, 900);
    card->removeAllAnimations();
    EXPECT_TRUE(isWhole(pixelsOf(*card)));
    EXPECT_LT(std::abs(pixelsOf(*card).left() - last.left()), 0.2) << "and none at its end";
}

TEST_F(PixelGridTest, AChangeOfSizeEndsOnPixelsWithoutAStep)
{
    const auto card = add(layer, { 10.3, 10.3, 50.4, 50.4 });
    card->addAnimation(basic("bounds", CGRect(0, 0, 20.7, 50.4)), QStringLiteral("growth"));
    CGRect last = pixelsOf(*card, 0.999);
    card->removeAllAnimations();
    EXPECT_TRUE(isWhole(pixelsOf(*card)));
    EXPECT_LT(std::abs(pixelsOf(*card).width() - last.width()), 0.2);
}

TEST_F(PixelGridTest, NothingIsMovedInWhatRestsTurnedOrScaled)
{
    for (const CGAffineTransform& transform :
        { CGAffineTransform().rotate(30), CGAffineTransform::fromScale(0.7, 0.7) }) {
        const auto card = add(layer, { 100.3, 100.3, 50.3, 50.3 });
        card->setTransform(transform);
        const auto inner = add(card, { 5.2, 5.2, 10.1, 10.1 });
        const CGRect shown = pixelsOf(*inner);
        const CGRect exact = exactPixelsOf(*inner);
        EXPECT_NEAR(shown.left(), exact.left(), 1e-9);
        EXPECT_NEAR(shown.bottom(), exact.bottom(), 1e-9);
        card->removeFromSuperlayer();
    }
}

TEST_F(PixelGridTest, APictureKeepsItsPixels)
{
    for (const double each : { 1.0, 2.0, 3.0 }) {
        scale = each;
        for (double x = 0; x < 1; x += 0.07) {
            const auto view = add(layer, { 10 + x, 10 + x, 50.4, 30.3 });
            view->setContentsGravity(CAContentsGravity::Center);
            view->setContents(plainImage({ 31, 17 }, Qt::red, scale));
            EXPECT_EQ(pictureOf(*view).size(), CGSize(31, 17)) << x;
            EXPECT_TRUE(isWhole(pictureOf(*view))) << x;
            view->setContentsGravity(CAContentsGravity::Resize);
            EXPECT_EQ(pictureOf(*view), pixelsOf(*view)) << "stretched it fills what the layer fills";
            view->removeFromSuperlayer();
        }
    }
}

TEST_F(PixelGridTest, NumbersThatAreNoPlacesMoveNothing)
{
    for (const double far : { 1e12, -1e300 }) {
        const auto lost = add(layer, { far, 10.3, 50, 50 });
        EXPECT_EQ(itemOf(list(), *lost).transform.dx(), far);
        lost->removeFromSuperlayer();
    }
}

} // namespace
