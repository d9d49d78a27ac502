#include "platform/layers/CALayerContents.h"

#include "platform/graphics/UIColor.h"
#include "tests/support/Pictures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

std::shared_ptr<UIImage> picture(int width, int height, double scale)
{
    return plainImage({ width, height }, Qt::red, scale);
}

CALayerValues shownIn(const CGRect& bounds)
{
    CALayerValues values;
    values.bounds = bounds;
    return values;
}

TEST(CALayerContentsTest, GravityPlacesThePicture)
{
    CALayerContents contents;
    contents.setImage(picture(40, 20, 2)); // 20 × 10 points
    const struct {
        CAContentsGravity gravity;
        CGRect rect;
    } rows[] = {
        { CAContentsGravity::Resize, { 10, 0, 100, 100 } },
        { CAContentsGravity::ResizeAspect, { 10, 25, 100, 50 } },
        { CAContentsGravity::ResizeAspectFill, { -40, 0, 200, 100 } },
        { CAContentsGravity::Center, { 50, 45, 20, 10 } },
        { CAContentsGravity::Top, { 50, 0, 20, 10 } },
        { CAContentsGravity::Bottom, { 50, 90, 20, 10 } },
        { CAContentsGravity::Left, { 10, 45, 20, 10 } },
        { CAContentsGravity::Right, { 90, 45, 20, 10 } },
        { CAContentsGravity::TopLeft, { 10, 0, 20, 10 } },
        { CAContentsGravity::TopRight, { 90, 0, 20, 10 } },
        { CAContentsGravity::BottomLeft, { 10, 90, 20, 10 } },
        { CAContentsGravity::BottomRight, { 90, 90, 20, 10 } },
    };
    for (const auto& row : rows) {
        contents.setGravity(row.gravity);
        const FrameContent content = contents.frameContent(shownIn({ 10, 0, 100, 100 }));
        EXPECT_EQ(std::get<FrameImage>(content).rect, row.rect);
    }
}

TEST(CALayerContentsTest, APictureLargerThanTheLayerReachesBeyondItOnTheOtherSides)
{
    CALayerContents contents;
    contents.setImage(picture(40, 20, 1));
    contents.setGravity(CAContentsGravity::BottomRight);
    const FrameContent content = contents.frameContent(shownIn({ 0, 0, 10, 10 }));
    EXPECT_EQ(std::get<FrameImage>(content).rect, CGRect(-30, -10, 40, 20));
}

TEST(CALayerContentsTest, ACentredPictureKeepsItsSizeInTheMiddle)
{
    CALayerContents contents;
    contents.setImage(picture(20, 20, 1));
    contents.setGravity(CAContentsGravity::Center);
    const FrameContent content = contents.frameContent(shownIn({ 0, 0, 30.5, 31 }));
    EXPECT_EQ(std::get<FrameImage>(content).rect, CGRect(5.25, 5.5, 20, 20));
}

TEST(CALayerContentsTest, TheTintGoesWithThePicture)
{
    CALayerContents contents;
    contents.setImage(picture(1, 1, 1));
    CALayerValues shown = shownIn({ 0, 0, 1, 1 });
    EXPECT_FALSE(std::get<FrameImage>(contents.frameContent(shown)).tint.isValid());
    shown.contentsTintColor = UIColor::colorWithRed(0, 0, 1, 1);
    EXPECT_EQ(std::get<FrameImage>(contents.frameContent(shown)).tint, QColor(0, 0, 255));
}

TEST(CALayerContentsTest, WithoutAPictureOrAreaThereIsNoContent)
{
    CALayerContents contents;
    EXPECT_EQ(contents.frameContent(shownIn({ 0, 0, 10, 10 })).index(), 0u);
    contents.setImage(picture(1, 1, 1));
    for (const auto gravity : { CAContentsGravity::Resize, CAContentsGravity::Center })
        for (const CGSize& size : { CGSize(0, 0), CGSize(10, 0), CGSize(-1, 10) }) {
            contents.setGravity(gravity);
            EXPECT_EQ(contents.frameContent(shownIn({ CGPoint(0, 0), size })).index(), 0u);
        }
}

TEST(CALayerContentsTest, ThePictureIsTheSameFromFrameToFrame)
{
    CALayerContents contents;
    contents.setImage(picture(4, 4, 1));
    const CALayerValues shown = shownIn({ 0, 0, 10, 10 });
    EXPECT_EQ(contents.frameContent(shown), contents.frameContent(shown));
    contents.draw({ 0, 0, 10, 10 }, [](CGContext&) {});
    const FrameContent drawn = contents.frameContent(shown);
    EXPECT_EQ(drawn, contents.frameContent(shown));
    contents.draw({ 0, 0, 10, 10 }, [](CGContext&) {});
    EXPECT_NE(drawn, contents.frameContent(shown));
}

TEST(CALayerContentsTest, ADrawingOfPartOfAPixelIsNotStretched)
{
    CALayerContents contents;
    contents.setScale(2);
    contents.draw({ 0, 0, 10.2, 5.25 }, [](CGContext&) {});
    const FrameContent content = contents.frameContent(shownIn({ 0, 0, 10.2, 5.25 }));
    const auto& image = std::get<FrameImage>(content);
    EXPECT_EQ(image.image.size(), QSize(21, 11));
    EXPECT_EQ(image.rect, CGRect(0, 0, 10.5, 5.5));
}

TEST(CALayerContentsTest, BoundsThatCannotBeDrawnMakeNoBitmap)
{
    const double infinity = std::numeric_limits<double>::infinity();
    CALayerContents contents;
    for (const double bad : { 0.0, -5.0, std::nan(""), infinity, 1e9, 1e300 }) {
        contents.draw({ 0, 0, bad, 10 }, [](CGContext&) { ADD_FAILURE() << "nothing to draw into"; });
        EXPECT_FALSE(contents.hasDrawn()) << bad;
    }
}

TEST(CALayerContentsTest, ALengthThatIsWholeButForRoundingMakesThatManyPixels)
{
    CALayerContents contents;
    contents.setScale(3);
    contents.draw({ 0, 0, 0.1 + 0.2, 100.0 / 3 }, [](CGContext&) {});
    const FrameContent content = contents.frameContent(shownIn({ 0, 0, 0.3, 100.0 / 3 }));
    EXPECT_EQ(std::get<FrameImage>(content).image.size(), QSize(1, 100));
}

} // namespace
