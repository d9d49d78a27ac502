#include "platform/graphics/UIGraphics.h"

#include "platform/graphics/MainScreenScale.h"
#include "tests/platform/graphics/Drawing.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>

namespace {

constexpr bool opaque = true;

std::shared_ptr<UIImage> imageOf(const CGSize& size, bool isOpaque = false, CGFloat scale = 1)
{
    UIGraphicsBeginImageContextWithOptions(size, isOpaque, scale);
    auto image = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    return image;
}

TEST(UIGraphicsTest, MakesAClearImageOfTheSizeInPoints)
{
    const auto image = imageOf({ 10, 20 }, !opaque, 2);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), CGSize(10, 20));
    EXPECT_EQ(image->scale(), 2);
    EXPECT_EQ(image->qImage().size(), QSize(20, 40));
    EXPECT_EQ(image->qImage().pixelColor(3, 3).alpha(), 0);
    EXPECT_FALSE(imageOf({ 1, 1 }, opaque)->qImage().hasAlphaChannel());
}

TEST(UIGraphicsTest, TakesTheMainScreensScaleForZero)
{
    MainScreenScale::set(3);
    const auto image = imageOf({ 10, 10 }, !opaque, 0);
    MainScreenScale::set(1);
    EXPECT_EQ(image->qImage().size(), QSize(30, 30));
    EXPECT_EQ(image->scale(), 3);
}

TEST(UIGraphicsTest, RoundsPartsOfAPixelUp)
{
    EXPECT_EQ(imageOf({ 10.2, 10 })->qImage().size(), QSize(11, 10));
    EXPECT_EQ(imageOf({ 100.0 / 3, 0.1 + 0.2 }, !opaque, 3)->qImage().size(), QSize(100, 1));
    EXPECT_EQ(imageOf({ 0.1 * 3, 1 }, !opaque, 10)->qImage().size(), QSize(3, 10));
}

TEST(UIGraphicsTest, AnImageHasTheSizeThatItsContextWasBegunWith)
{
    const auto image = imageOf({ 333.34, 10.1 }, !opaque, 3);
    EXPECT_EQ(image->size(), CGSize(333.34, 10.1));
    EXPECT_EQ(image->copy()->size(), CGSize(333.34, 10.1));
    EXPECT_EQ(image->qImage().size(), QSize(1001, 31));
    EXPECT_EQ(image->rectOfPixels({ CGPoint(5, 5), image->size() }), CGRect(5, 5, 1001 / 3.0, 31 / 3.0));
}

TEST(UIGraphicsTest, HasNoImageForASizeThatIsNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const CGSize sizes[] = { { 0, 10 }, { 10, 0 }, { -5, 10 }, { nan, 10 }, { 10, infinity }, { 1e300, 1 },
        { 20'000, 1 }, { 8000, 8000 } };
    for (const CGSize& size : sizes) {
        UIGraphicsBeginImageContextWithOptions(size, !opaque, 1);
        EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
        plainImage({ 2, 2 }, Qt::red)->drawInRect({ 0, 0, 2, 2 }); // draws nowhere
        EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nullptr)
            << size.width() << " x " << size.height();
        UIGraphicsEndImageContext();
    }
    EXPECT_EQ(imageOf({ 10, 10 }, !opaque, nan), nullptr);
    EXPECT_EQ(imageOf({ 10, 10 }, !opaque, -1), nullptr);
}

TEST(UIGraphicsTest, NestsContexts)
{
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    UIGraphicsBeginImageContextWithOptions({ 4, 4 }, !opaque, 1);
    CGContext* outer = UIGraphicsGetCurrentContext();
    UIGraphicsBeginImageContextWithOptions({ 0, 0 }, !opaque, 1);
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    UIGraphicsBeginImageContextWithOptions({ 2, 2 }, !opaque, 1);
    plainImage({ 2, 2 }, Qt::red)->drawInRect({ 0, 0, 2, 2 });
    const auto inner = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    UIGraphicsEndImageContext();
    EXPECT_EQ(UIGraphicsGetCurrentContext(), outer);
    const auto image = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    EXPECT_EQ(inner->qImage().pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(image->qImage().pixelColor(1, 1).alpha(), 0);
}

TEST(UIGraphicsTest, ToleratesAnEndTooMany)
{
    UIGraphicsEndImageContext();
    EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nullptr);
    EXPECT_NE(imageOf({ 1, 1 }), nullptr);
}

TEST(UIGraphicsTest, KeepsAnImageApartFromWhatIsDrawnLater)
{
    UIGraphicsBeginImageContextWithOptions({ 2, 2 }, !opaque, 1);
    const auto before = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsGetCurrentContext()->fillRect({ 0, 0, 2, 2 }, *UIColor::blackColor());
    UIGraphicsEndImageContext();
    EXPECT_EQ(before->qImage().pixelColor(0, 0).alpha(), 0);
}

TEST(UIGraphicsTest, MakesAContextCurrentForTheLengthOfABlock)
{
    QImage pixels(4, 4, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    CGContext context(painter);
    {
        const CurrentContextGuard guard(context);
        EXPECT_EQ(UIGraphicsGetCurrentContext(), &context);
        EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nullptr);
        UIGraphicsEndImageContext(); // not its to end
        plainImage({ 1, 1 }, Qt::red)->drawInRect({ 0, 0, 4, 4 });
        UIGraphicsBeginImageContextWithOptions({ 1, 1 }, !opaque, 1); // forgotten
    }
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    painter.end();
    EXPECT_EQ(pixels.pixelColor(2, 2), QColor(Qt::red));
}

TEST(UIGraphicsTest, StretchesAnImageOverTheRectangle)
{
    const auto image = plainImage({ 2, 2 }, Qt::red, 2);
    const QImage pixels = drawn({ 10, 10 }, 2, [&](CGContext&) { image->drawInRect({ 2, 3, 5, 4 }); });
    EXPECT_EQ(inkBounds(pixels), QRect(4, 6, 10, 8));
    EXPECT_EQ(pixels.pixelColor(8, 9), QColor(Qt::red));
}

TEST(UIGraphicsTest, DrawsOnEveryThreadApart)
{
    const auto image = plainImage({ 2, 2 }, Qt::green);
    UIGraphicsBeginImageContextWithOptions({ 4, 4 }, !opaque, 1);
    std::vector<std::shared_ptr<UIImage>> results(4);
    std::vector<std::thread> threads;
    for (std::size_t index = 0; index < results.size(); ++index) {
        threads.emplace_back([&, index] {
            EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
            for (int round = 0; round < 100; ++round) {
                UIGraphicsBeginImageContextWithOptions({ 8, 8 }, !opaque, 1);
                image->drawInRect({ 0, 0, static_cast<double>(index + 1), 8 });
                results[index] = UIGraphicsGetImageFromCurrentImageContext();
                UIGraphicsEndImageContext();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const auto untouched = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    for (std::size_t index = 0; index < results.size(); ++index)
        EXPECT_EQ(inkBounds(results[index]->qImage()), QRect(0, 0, static_cast<int>(index) + 1, 8));
    EXPECT_TRUE(inkBounds(untouched->qImage()).isNull());
}

} // namespace
