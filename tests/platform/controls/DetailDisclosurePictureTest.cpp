#include "platform/controls/DetailDisclosurePicture.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(DetailDisclosurePictureTest, IsATemplateOfTheSameSizeAtEveryDensity)
{
    for (const int scale : { 1, 2, 3 }) {
        const auto picture = detailDisclosurePicture(scale);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->size(), CGSize(22, 22));
        EXPECT_EQ(picture->qImage().size(), QSize(22, 22) * scale);
        EXPECT_EQ(picture->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    }
}

TEST(DetailDisclosurePictureTest, IsDrawnOncePerDensity)
{
    EXPECT_EQ(detailDisclosurePicture(2), detailDisclosurePicture(2));
    EXPECT_NE(detailDisclosurePicture(2), detailDisclosurePicture(3));
}

TEST(DetailDisclosurePictureTest, IsARingWithADotAboveAStem)
{
    const QImage pixels = detailDisclosurePicture(4)->qImage();
    const auto isInked
        = [&](double x, double y) { return qAlpha(pixels.pixel(qRound(4 * x), qRound(4 * y))) > 200; };
    EXPECT_TRUE(isInked(11, 1.75)); // the ring: top, left, bottom, right
    EXPECT_TRUE(isInked(1.75, 11));
    EXPECT_TRUE(isInked(11, 20.1));
    EXPECT_TRUE(isInked(20.1, 11));
    EXPECT_FALSE(isInked(11, 4));
    EXPECT_TRUE(isInked(11, 6.7)); // the dot
    EXPECT_FALSE(isInked(11, 8.5));
    EXPECT_TRUE(isInked(11, 13)); // the stem
    EXPECT_FALSE(isInked(11, 17.5));
    EXPECT_FALSE(isInked(7, 13));
    EXPECT_FALSE(isInked(0.5, 0.5));
}

TEST(DetailDisclosurePictureTest, IsCrispRatherThanEnlarged)
{
    // At a density of 8 the ring's edge takes a pixel or two from clear to black, not a whole point.
    const QImage pixels = detailDisclosurePicture(8)->qImage();
    int between = 0;
    for (int y = 0; y < 8 * 2; ++y) {
        const int alpha = qAlpha(pixels.pixel(8 * 11, y));
        between += alpha > 20 && alpha < 235;
    }
    EXPECT_LE(between, 2);
}

TEST(DetailDisclosurePictureTest, ThereIsNoneForADensityThatIsNone)
{
    for (const double scale :
        { 0.0, -1.0, 1e9, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN() })
        EXPECT_FALSE(detailDisclosurePicture(scale)) << scale;
}

} // namespace
