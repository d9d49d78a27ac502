// What moves wholly below something opaque leaves nothing where it was. Each screen shows two frames, and is
// compared with what a plain painter makes of the second one.
#include "platform/host/CoveredMoves.h"

#include "tests/platform/host/SceneStage.h"
#include "tests/support/FrameListMaker.h"
#include "tests/support/PictureComparison.h"

namespace {

const QImage& picture()
{
    static const QImage image = [] {
        QImage made(20, 20, QImage::Format_ARGB32_Premultiplied);
        made.fill(QColor(200, 0, 0, 128));
        return made;
    }();
    return image;
}

LayerSketch cover() { return layer(9).at(0, 60, 100, 40).fill(Qt::blue); }

// A sheet below a cover that is drawn after it.
FrameList screen(LayerSketch onSheet, LayerSketch covering = cover())
{
    return makeFrameList({ 100, 100 }, 1,
        layer(1)
            .at(0, 0, 100, 100)
            .fill(Qt::gray)
            .with({
                layer(2).at(0, 0, 100, 100).fill(Qt::white).with({ std::move(onSheet) }),
                std::move(covering),
            }));
}

LayerSketch pictureAt(double y) { return layer(3).at(10, y, 20, 20).image(picture()); }

void expectNothingLeft(const FrameList& first, const FrameList& second, const char* what)
{
    SceneStage stage({ 100, 100 });
    stage.show(first);
    EXPECT_TRUE(picturesMatch(stage.shown(), stage.painted())) << what << ", first";
    stage.show(second);
    EXPECT_TRUE(picturesMatch(stage.shown(), stage.painted())) << what;
    stage.show(first);
    EXPECT_TRUE(picturesMatch(stage.shown(), stage.painted())) << what << ", back again";
}

TEST(CoveredMovesTest, LeaveNothingWhereTheyWere)
{
    expectNothingLeft(screen(pictureAt(10)), screen(pictureAt(70)), "a picture");
    expectNothingLeft(screen(pictureAt(50)), screen(pictureAt(70)), "half covered before");
    const auto box = [](double y) { return layer(3).at(10, y, 20, 20).fill(Qt::green); };
    expectNothingLeft(screen(box(10)), screen(box(70)), "a rectangle");
    const auto group = [](double y) {
        return layer(3).at(10, y, 40, 20).with({ pictureAt(0), layer(4).at(35, 0, 5, 5).fill(Qt::red) });
    };
    expectNothingLeft(screen(group(10)), screen(group(70)), "what lies in something that moves");
    const auto clipped = [](double height) {
        return layer(3).at(0, 40, 100, height).clip().with({ layer(4).at(10, 15, 20, 30).image(picture()) });
    };
    expectNothingLeft(screen(clipped(40)), screen(clipped(30)), "what is cut");
    const auto shrunk = [](double size) { return layer(3).at(10, 70 - size, 10, 10 + size).fill(Qt::green); };
    expectNothingLeft(screen(shrunk(40)), screen(shrunk(0)), "what shrinks");
}

TEST(CoveredMovesTest, LeaveNothingWhereSeveralCoverThem)
{
    const auto covering = layer(8)
                              .at(0, 60, 100, 40)
                              .with({
                                  layer(9).at(0, 0, 20, 40).fill(Qt::blue),
                                  layer(10).at(20, 0, 80, 40).fill(Qt::darkBlue),
                              });
    expectNothingLeft(screen(pictureAt(10), covering), screen(pictureAt(70), covering), "two halves");
    const auto tree = [](double y) {
        return layer(3)
            .at(0, y, 50, 20)
            .fill(Qt::green)
            .with({ layer(4).at(0, 70 - y, 60, 25).fill(Qt::red) });
    };
    expectNothingLeft(screen(tree(10)), screen(tree(72)), "a sublayer of its own");
}

TEST(CoveredMovesTest, AreShownWhereWhatCoversThemIsSeenThrough)
{
    expectNothingLeft(
        screen(pictureAt(10), cover().opacity(0.5)), screen(pictureAt(70), cover().opacity(0.5)), "faded");
    expectNothingLeft(screen(pictureAt(10), cover().fill(QColor(0, 0, 255, 100))),
        screen(pictureAt(70), cover().fill(QColor(0, 0, 255, 100))), "of a transparent colour");
}

} // namespace
