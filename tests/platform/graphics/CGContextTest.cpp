#include "platform/graphics/CGContext.h"

#include "tests/platform/graphics/Drawing.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace {

const auto red = UIColor::colorWithRed(1, 0, 0, 1);
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

QImage ten(const std::function<void(CGContext&)>& drawing) { return drawn({ 10, 10 }, 1, drawing); }

// Half red, half blue, side by side.
std::shared_ptr<UIImage> twoColours(CGFloat scale)
{
    QImage image(4, 4, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    for (int y = 0; y < 4; ++y) {
        image.setPixelColor(2, y, Qt::blue);
        image.setPixelColor(3, y, Qt::blue);
    }
    return UIImage::imageWithQImage(image, scale);
}

TEST(CGContextTest, FillsInPoints)
{
    const QImage pixels = drawn({ 10, 10 }, 3, [](CGContext& context) {
        context.fillRect({ 1, 2, 3, 4 }, *red);
    });
    EXPECT_EQ(inkBounds(pixels), QRect(3, 6, 9, 12));
    EXPECT_EQ(pixels.pixelColor(5, 8), QColor(Qt::red));
}

TEST(CGContextTest, DrawsNothingForNumbersThatAreNotFinite)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const auto image = plainImage({ 2, 2 }, Qt::red);
    const QImage pixels = ten([&](CGContext& context) {
        for (const CGRect& rect : { CGRect(nan, 0, 5, 5), CGRect(0, 0, infinity, 5),
                 CGRect(0, -1e300, 5, 1e301), CGRect(0, 0, -5, 5), CGRect() }) {
            context.fillRect(rect, *red);
            context.drawImage(*image, rect);
        }
        QPainterPath path;
        path.addRect({ 0, 0, 1e200, 5 });
        context.fillPath(path, *red);
        context.strokePath(path, *red, nan);
        context.strokePath(path, *red, 3);
    });
    EXPECT_TRUE(inkBounds(pixels).isNull());
}

TEST(CGContextTest, KeepsItsTransformWhenGivenNone)
{
    const QImage pixels = ten([](CGContext& context) {
        context.translate(nan, 0);
        context.scale(1, nan);
        context.fillRect({ 1, 1, 2, 2 }, *red);
    });
    EXPECT_EQ(inkBounds(pixels), QRect(1, 1, 2, 2));
}

TEST(CGContextTest, TransformsTheInnerStepFirst)
{
    const QImage pixels = ten([](CGContext& context) {
        context.translate(4, 4);
        context.scale(2, 2);
        context.fillRect({ 0, 0, 1, 2 }, *red);
    });
    EXPECT_EQ(inkBounds(pixels), QRect(4, 4, 2, 4));
}

TEST(CGContextTest, RestoresItsStateWithTheGuard)
{
    const QImage pixels = ten([](CGContext& context) {
        {
            const CGContext::SavedState saved(context);
            context.clipToRect({ 0, 0, 1, 1 });
            context.setAlpha(0.5);
            context.setAlpha(0.5);
            context.fillRect({ 0, 0, 10, 10 }, *red);
        }
        context.fillRect({ 5, 5, 5, 5 }, *red);
    });
    EXPECT_NEAR(pixels.pixelColor(0, 0).alpha(), 64, 2);
    EXPECT_EQ(pixels.pixelColor(1, 1).alpha(), 0);
    EXPECT_EQ(pixels.pixelColor(9, 9).alpha(), 255);
}

TEST(CGContextTest, ClipsEverythingAwayForARectangleThatIsNone)
{
    const QImage pixels = ten([](CGContext& context) {
        context.clipToRect({ 0, nan, 5, 5 });
        context.fillRect({ 0, 0, 10, 10 }, *red);
    });
    EXPECT_TRUE(inkBounds(pixels).isNull());
}

TEST(CGContextTest, ClipsToAPathWithinAnEarlierClip)
{
    const QImage pixels = ten([](CGContext& context) {
        context.clipToRect({ 0, 0, 5, 10 });
        context.clipToPath(*UIBezierPath::bezierPathWithOvalInRect({ 0, 0, 10, 10 })->cgPath());
        context.fillRect({ 0, 0, 10, 10 }, *red);
    });
    EXPECT_EQ(pixels.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(pixels.pixelColor(4, 5).alpha(), 255);
    EXPECT_EQ(pixels.pixelColor(6, 5).alpha(), 0);
}

TEST(CGContextTest, StrokesAPathWithButtEnds)
{
    const auto line = UIBezierPath::bezierPath();
    line->moveToPoint({ 2, 5 });
    line->addLineToPoint({ 8, 5 });
    const QImage pixels = ten([&](CGContext& context) { context.strokePath(*line->cgPath(), *red, 4); });
    EXPECT_EQ(inkBounds(pixels), QRect(2, 3, 6, 4));
}

TEST(CGContextTest, StartsARingAtItsTop)
{
    constexpr double pi = std::numbers::pi;
    const auto quarter = UIBezierPath::bezierPathWithArcCenter({ 20, 20 }, 15, 1.5 * pi, 2 * pi, true);
    const QImage pixels
        = drawn({ 40, 40 }, 1, [&](CGContext& context) { context.strokePath(*quarter->cgPath(), *red, 4); });
    const QRect ink = inkBounds(pixels);
    EXPECT_EQ(ink, QRect(20, 3, 17, 17));
}

TEST(CGContextTest, ClearsWhatItCovered)
{
    const QImage pixels = ten([](CGContext& context) {
        context.fillRect({ 0, 0, 10, 10 }, *red);
        context.clearRect({ 0, 0, 10, 5 });
        context.fillRect({ 0, 0, 1, 1 }, *red);
    });
    EXPECT_EQ(pixels.pixelColor(5, 2).alpha(), 0);
    EXPECT_EQ(pixels.pixelColor(5, 7).alpha(), 255);
    EXPECT_EQ(pixels.pixelColor(0, 0).alpha(), 255);
}

TEST(CGContextTest, DrawsAPictureInItsOwnColours)
{
    const QImage pixels = drawn({ 4, 4 }, 2, [](CGContext& context) {
        context.drawImage(*twoColours(2), { 1, 1, 2, 2 });
    });
    EXPECT_EQ(inkBounds(pixels), QRect(2, 2, 4, 4));
    EXPECT_EQ(pixels.pixelColor(2, 3), QColor(Qt::red));
    EXPECT_EQ(pixels.pixelColor(5, 3), QColor(Qt::blue));
}

TEST(CGContextTest, FillsThePicturesAlphaWithATint)
{
    QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setPixelColor(0, 0, Qt::blue);
    const auto shape = UIImage::imageWithQImage(image, 1);
    const auto green = UIColor::colorWithRed(0, 1, 0, 1);
    const QImage pixels = ten([&](CGContext& context) {
        context.drawImage(*shape, { 0, 0, 2, 1 }, green.get());
    });
    EXPECT_EQ(pixels.pixelColor(0, 0), QColor(Qt::green));
    EXPECT_EQ(pixels.pixelColor(1, 0).alpha(), 0);
    EXPECT_EQ(shape->qImage().pixelColor(0, 0), QColor(Qt::blue));
}

TEST(CGContextTest, RepeatsATiledPictureFromTheRectanglesCorner)
{
    const auto tile = twoColours(2)->resizableImage({}, UIImageResizingMode::Tile);
    const QImage pixels = drawn({ 10, 4 }, 2, [&](CGContext& context) {
        context.drawImage(*tile, { 1, 0, 7, 4 });
    });
    EXPECT_EQ(inkBounds(pixels), QRect(2, 0, 14, 8));
    for (int x = 2; x < 16; ++x) {
        const bool isFirstHalf = (x - 2) % 4 < 2;
        EXPECT_EQ(pixels.pixelColor(x, 5), QColor(isFirstHalf ? Qt::red : Qt::blue)) << x;
    }
}

TEST(CGContextTest, AveragesAPictureThatShrinksALot)
{
    QImage stripes(300, 300, QImage::Format_RGB32);
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 300; ++x)
            stripes.setPixel(x, y, x % 5 == 0 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    }
    const auto image = UIImage::imageWithQImage(stripes, 1);
    const QImage pixels = ten([&](CGContext& context) { context.drawImage(*image, { 0, 0, 10, 10 }); });
    for (int x = 0; x < 10; ++x)
        EXPECT_NEAR(pixels.pixelColor(x, 5).red(), 51, 6) << x;
}

} // namespace
