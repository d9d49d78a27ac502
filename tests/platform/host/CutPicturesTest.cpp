#include "platform/host/CutPictures.h"

#include "tests/platform/host/SceneStage.h"
#include "tests/support/FrameListMaker.h"
#include "tests/support/PictureComparison.h"

namespace {

// No two columns of it are alike.
const QImage& slope()
{
    static const QImage image = [] {
        QImage made(100, 20, QImage::Format_RGB32);
        for (int y = 0; y < made.height(); ++y)
            for (int x = 0; x < made.width(); ++x)
                made.setPixelColor(x, y, QColor(2 * x, 12 * y, 255 - 2 * x));
        return made;
    }();
    return image;
}

// One picture in two halves, the right one with a tint; each half's layer moves with its edge.
FrameList halves(double middle)
{
    const auto half = [](std::uint64_t id, double from, double to, const QColor& tint) {
        return layer(id)
            .at(from, 0, to - from, 20)
            .clip()
            .with({
                layer(id + 1).at(-from, 0, 100, 20).image(slope(), tint),
            });
    };
    return makeFrameList({ 100, 20 }, 1,
        layer(1)
            .at(0, 0, 100, 20)
            .fill(Qt::white)
            .with({
                half(2, 0, middle, {}),
                half(4, middle, 100, Qt::red),
            }));
}

bool canShow(LayerSketch clipping)
{
    return CutPictures::canShow(
        makeFrameList({ 100, 20 }, 1, layer(1).at(0, 0, 100, 20).with({ std::move(clipping) })), 1);
}

LayerSketch clipping(std::vector<LayerSketch> sublayers)
{
    return layer(2).at(0, 0, 50, 20).clip().with(std::move(sublayers));
}

LayerSketch picture() { return layer(3).at(0, 0, 100, 20).image(slope()); }

TEST(CutPicturesTest, ShowUprightPicturesPixelForPixel)
{
    EXPECT_TRUE(canShow(clipping({ picture() })));
    EXPECT_TRUE(canShow(clipping({ layer(5).at(2, 2, 20, 20).fill(Qt::red).with({ picture() }) })));
    EXPECT_FALSE(canShow(layer(2).at(0, 0, 50, 20).with({ picture() }))) << "nothing is cut";
    EXPECT_FALSE(canShow(clipping({ picture().at(0, 0, 90, 20).image(slope()) }))) << "squeezed";
    EXPECT_FALSE(canShow(clipping({ picture() }).corner(4))) << "cut roundly";
    EXPECT_FALSE(canShow(clipping({ picture() }).transform(CGAffineTransform().rotate(10)))) << "turned";
    EXPECT_FALSE(canShow(clipping({ picture().opacity(0.5) }))) << "seen through";
    EXPECT_FALSE(canShow(clipping(std::vector(20, picture())))) << "too much to look at";
}

TEST(CutPicturesTest, MeetInOnePixelWhereverTheEdgeIs)
{
    const QImage tinted = FramePainter::tinted(slope(), Qt::red);
    SceneStage stage({ 100, 20 });
    for (int third = 0; third <= 300; third += 7) {
        stage.show(halves(third / 3.0));
        const QImage shown = stage.shown();
        const int edge = qRound(third / 3.0);
        for (int x = 0; x < 100; ++x)
            ASSERT_EQ(shown.pixelColor(x, 10), (x < edge ? slope() : tinted).pixelColor(x, 10))
                << "edge " << edge << ", pixel " << x;
    }
}

} // namespace
