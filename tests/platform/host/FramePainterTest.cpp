#include "platform/host/FramePainter.h"

#include "tests/support/FrameListMaker.h"
#include "tests/support/PictureComparison.h"
#include "tests/support/Pictures.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace {

QColor pixel(const QImage& image, int x, int y) { return image.pixelColor(x, y); }

FrameList listOf(const LayerSketch& root) { return makeFrameList({ 20, 20 }, 2, root); }

FramePicture subtree(const LayerSketch& root)
{
    const FrameList list = listOf(root);
    return FramePainter(list).paintSubtree(0);
}

TEST(FramePainterTest, PaintsTheScreenInDevicePixels)
{
    const FrameList list = listOf(layer(1).at(5, 5, 10, 10).fill(Qt::red));
    const QImage image = FramePainter(list).paintScreen();
    EXPECT_EQ(image.size(), QSize(40, 40));
    EXPECT_EQ(pixel(image, 9, 9), QColor(Qt::black));
    EXPECT_EQ(pixel(image, 10, 10), QColor(Qt::red));
    EXPECT_EQ(pixel(image, 29, 29), QColor(Qt::red));
    EXPECT_EQ(pixel(image, 30, 30), QColor(Qt::black));
}

TEST(FramePainterTest, LeavesTheTransformAndTheOpacityOfASubtreesRootAside)
{
    const FramePicture picture = subtree(layer(1).at(7, 7, 4, 4).fill(Qt::red).opacity(0.1));
    EXPECT_EQ(picture.rect, QRect(0, 0, 8, 8));
    EXPECT_EQ(pixel(picture.image, 4, 4), QColor(Qt::red));
}

TEST(FramePainterTest, MakesAPictureWithoutAlphaOfWhatIsCovered)
{
    EXPECT_FALSE(subtree(layer(1).at(0, 0, 4, 4).fill(Qt::red)).image.hasAlphaChannel());
    EXPECT_FALSE(subtree(layer(1).at(0, 0, 4, 4).with({ layer(2).at(0, 0, 4, 4).fill(Qt::red) }))
                     .image.hasAlphaChannel())
        << "a sublayer covers as well";
}

TEST(FramePainterTest, MakesAPictureWithAlphaOfEverythingElse)
{
    const auto hasAlpha = [](const LayerSketch& root) { return subtree(root).image.hasAlphaChannel(); };
    EXPECT_TRUE(hasAlpha(layer(1).at(0, 0, 4, 4).fill(QColor(0, 0, 0, 128))));
    EXPECT_TRUE(hasAlpha(layer(1).at(0, 0, 4, 4).fill(Qt::red).corner(1)));
    EXPECT_TRUE(
        hasAlpha(layer(1).at(0, 0, 4, 4).fill(Qt::red).with({ layer(2).at(2, 2, 4, 4).fill(Qt::blue) })));
    EXPECT_TRUE(
        hasAlpha(layer(1).at(0, 0, 4, 4).corner(2).clip().with({ layer(2).at(0, 0, 4, 4).fill(Qt::blue) })));
    EXPECT_TRUE(
        hasAlpha(layer(1).at(0, 0, 4, 4).with({ layer(2).at(0, 0, 4, 4).fill(Qt::red).opacity(0.5) })));
}

TEST(FramePainterTest, PaintsNothingOfASubtreeThatDrawsNothing)
{
    EXPECT_TRUE(subtree(layer(1).at(0, 0, 4, 4)).image.isNull());
    EXPECT_TRUE(subtree(layer(1).at(0, 0, 0, 0).fill(Qt::red)).image.isNull());
    EXPECT_TRUE(subtree(layer(1).at(0, 0, 4, 4).clip().with({ layer(2).at(9, 9, 4, 4).fill(Qt::red) }))
                    .image.isNull());
}

TEST(FramePainterTest, IncludesWhatReachesBeyondTheRootsBounds)
{
    const FramePicture picture
        = subtree(layer(1).at(0, 0, 4, 4).with({ layer(2).at(-3, 2, 4, 4).fill(Qt::red) }));
    EXPECT_EQ(picture.rect, QRect(-6, 4, 8, 8));
}

TEST(FramePainterTest, CutsCornersWithASoftEdge)
{
    const FramePicture picture = subtree(
        layer(1).at(0, 0, 10, 10).corner(5).clip().with({ layer(2).at(0, 0, 10, 10).fill(Qt::red) }));
    EXPECT_EQ(pixel(picture.image, 0, 0).alpha(), 0);
    EXPECT_EQ(pixel(picture.image, 10, 10), QColor(Qt::red));
    int soft = 0;
    for (int x = 0; x < 20; ++x) {
        const int alpha = pixel(picture.image, x, 3).alpha();
        soft += int(alpha > 0 && alpha < 255);
    }
    EXPECT_GT(soft, 0);
}

TEST(FramePainterTest, PaintsAnItemWithoutWhatLiesBelowIt)
{
    const FrameList list = listOf(
        layer(1).at(0, 0, 10, 10).fill(Qt::red).corner(2).with({ layer(2).at(0, 0, 10, 10).fill(Qt::blue) }));
    const FramePicture picture = FramePainter(list).paintItem(0);
    EXPECT_EQ(pixel(picture.image, 10, 10), QColor(Qt::red));
    EXPECT_EQ(pixel(picture.image, 0, 0).alpha(), 0);
}

TEST(FramePainterTest, FadesAGroupAsOne)
{
    const FrameList list = listOf(layer(1)
                                      .at(0, 0, 20, 20)
                                      .fill(Qt::white)
                                      .with({
                                          layer(2)
                                              .at(0, 0, 10, 10)
                                              .fill(Qt::red)
                                              .opacity(0.5)
                                              .with({ layer(3).at(2, 2, 4, 4).fill(Qt::black) }),
                                      }));
    const QImage image = FramePainter(list).paintScreen();
    const QColor shown = pixel(image, 8, 8);
    EXPECT_NEAR(shown.red(), 127, 1);
    EXPECT_EQ(shown.red(), shown.green()) << "black on white, no red through it";
}

TEST(FramePainterTest, FadesTheLineAndTheFillingOfAShapeAsOne)
{
    const auto path = std::make_shared<QPainterPath>();
    path->addRect(2, 2, 6, 6);
    const FrameShape shape { path, Qt::red, Qt::black, 2 };
    const FrameList list = listOf(layer(1)
                                      .at(0, 0, 20, 20)
                                      .fill(Qt::white)
                                      .with({ layer(2).at(0, 0, 10, 10).content(shape).opacity(0.5) }));
    const QColor line = pixel(FramePainter(list).paintScreen(), 5, 10);
    EXPECT_NEAR(line.red(), 127, 1);
    EXPECT_EQ(line.red(), line.green()) << "no red through the line";
}

TEST(FramePainterTest, FillsAPicturesAlphaWithItsTint)
{
    const QImage tinted = FramePainter::tinted(plainPixels({ 2, 2 }, QColor(9, 9, 9, 255)), Qt::green);
    EXPECT_EQ(pixel(tinted, 0, 0), QColor(Qt::green));
    const QImage clear = FramePainter::tinted(plainPixels({ 2, 2 }, Qt::transparent), Qt::green);
    EXPECT_EQ(pixel(clear, 0, 0).alpha(), 0);
    QImage retina = plainPixels({ 4, 4 }, Qt::black);
    retina.setDevicePixelRatio(2);
    EXPECT_EQ(pixel(FramePainter::tinted(retina, Qt::green), 3, 3), QColor(Qt::green));
}

TEST(FramePainterTest, StretchesAPictureOverItsRectangle)
{
    const FramePicture picture = subtree(layer(1).at(0, 0, 10, 10).image(plainPixels({ 2, 2 }, Qt::red)));
    EXPECT_EQ(picture.rect, QRect(0, 0, 20, 20));
    EXPECT_EQ(pixel(picture.image, 19, 19), QColor(Qt::red));
}

TEST(FramePainterTest, StrokesThePartOfAPathThatIsAskedFor)
{
    const auto path = std::make_shared<QPainterPath>();
    path->moveTo(0, 5);
    path->lineTo(10, 5);
    const FrameList list
        = listOf(layer(1).at(0, 0, 20, 20).content(FrameShape { path, {}, Qt::red, 2, Qt::FlatCap, 0.5, 1 }));
    const QImage image = FramePainter(list).paintScreen();
    EXPECT_EQ(pixel(image, 5, 10), QColor(Qt::black));
    EXPECT_EQ(pixel(image, 15, 10), QColor(Qt::red));
    EXPECT_EQ(pixel(image, 22, 10), QColor(Qt::black));
}

std::shared_ptr<const QPainterPath> circle()
{
    const auto path = std::make_shared<QPainterPath>();
    path->addEllipse(1, 1, 18, 18);
    return path;
}

FramePicture shape(const FrameShape& shape)
{
    const FrameList list = listOf(layer(1).at(0, 0, 20, 20).content(shape));
    return FramePainter(list).paintItem(0);
}

TEST(FramePainterTest, MakesTheStrokeOfAPartOfAPathASmallPicture)
{
    const double eighth = 0.125; // from the right, clockwise
    const FramePicture whole = shape({ circle(), {}, Qt::red, 2, Qt::FlatCap, 0, 1 });
    const FramePicture part = shape({ circle(), {}, Qt::red, 2, Qt::FlatCap, 0, eighth });
    EXPECT_LT(part.rect.width() * part.rect.height(), whole.rect.width() * whole.rect.height() / 3);
}

TEST(FramePainterTest, MakesNoPictureOfAStrokeWithoutLength)
{
    EXPECT_TRUE(shape({ circle(), {}, Qt::red, 2, Qt::RoundCap, 0.3, 0.3 }).image.isNull());
    EXPECT_TRUE(shape({ circle(), {}, Qt::red, 2, Qt::RoundCap, 0.3, 0.2 }).image.isNull());
}

TEST(FramePainterTest, LeavesNothingOfAStrokeOutOfItsPicture)
{
    for (const auto& [start, end] :
        { std::pair { 0.0, 0.1 }, std::pair { 0.2, 0.3 }, std::pair { 0.4, 0.9 } }) {
        const FrameList list
            = listOf(layer(1)
                         .at(0, 0, 20, 20)
                         .content(FrameShape { circle(), {}, Qt::red, 2, Qt::FlatCap, start, end }));
        const FramePicture part = FramePainter(list).paintItem(0);
        QImage put = plainPixels({ 40, 40 }, Qt::black).convertToFormat(QImage::Format_RGB32);
        QPainter(&put).drawImage(part.rect.topLeft(), part.image);
        EXPECT_TRUE(picturesMatch(put, FramePainter(list).paintScreen()));
    }
}

TEST(FramePainterTest, MakesAShapesPictureLargeEnoughForItsFillToo)
{
    const FramePicture picture = shape({ circle(), Qt::blue, Qt::red, 2, Qt::FlatCap, 0, 0.125 });
    EXPECT_EQ(pixel(picture.image, 4 - picture.rect.x(), 20 - picture.rect.y()), QColor(Qt::blue));
    const FramePicture fill = shape({ circle(), Qt::blue, {}, 2, Qt::FlatCap, 0, 0.125 });
    EXPECT_EQ(pixel(fill.image, 4 - fill.rect.x(), 20 - fill.rect.y()), QColor(Qt::blue));
}

TEST(FramePainterTest, PaintsNoPictureThatWouldTakeAllTheMemory)
{
    for (const double width : { 1e4, 1e6, 1e9, 1e300 })
        EXPECT_TRUE(shape({ circle(), {}, Qt::red, width, Qt::FlatCap, 0, 1 }).image.isNull()) << width;
    EXPECT_FALSE(shape({ circle(), {}, Qt::red, 100, Qt::FlatCap, 0, 1 }).image.isNull());
}

} // namespace
