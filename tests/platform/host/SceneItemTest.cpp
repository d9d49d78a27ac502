#include "platform/host/SceneItem.h"

#include "tests/platform/host/SceneStage.h"
#include "tests/support/FrameListMaker.h"
#include "tests/support/PictureComparison.h"

namespace {

const CGSize screen(120, 160);
constexpr double scale = 2;

// A soft edge is rounded in another order when it is painted into a picture first.
constexpr PictureTolerance softEdges { .channel = 3 };

QImage checkered(int width, int height, const QColor& first, const QColor& second)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y, (x / 4 + y / 4) % 2 ? first : second);
    return image;
}

const QImage& avatar()
{
    static const QImage image = checkered(40, 40, Qt::darkBlue, Qt::yellow);
    return image;
}

const QImage& icon()
{
    static const QImage image = checkered(20, 20, Qt::black, Qt::transparent);
    return image;
}

FrameShape ring(double end)
{
    static const auto path = [] {
        auto circle = std::make_shared<QPainterPath>();
        circle->addEllipse(CGPoint(10, 10), 8, 8);
        return circle;
    }();
    return { path, {}, Qt::red, 2, Qt::RoundCap, 0, end };
}

// A row with a round picture, an icon, a ring and a line below it.
LayerSketch row(std::uint64_t id, double y)
{
    return layer(id)
        .at(0, y, 120, 40)
        .fill(Qt::white)
        .with({
            layer(id + 1).at(10, 10, 20, 20).image(avatar()).corner(10).clip(),
            layer(id + 2).at(40, 15, 10, 10).image(icon(), Qt::blue),
            layer(id + 3).at(60, 10, 20, 20).content(ring(0.7)),
            layer(id + 4)
                .at(90, 10, 20, 20)
                .fill(QColor(0, 128, 0, 128))
                .corner(4)
                .with({ layer(id + 5).at(10, 10, 20, 20).fill(Qt::magenta) }),
            layer(id + 6).at(0, 39.5, 120, 0.5).fill(Qt::lightGray),
        });
}

LayerSketch listView(double offset)
{
    return layer(1)
        .at(0, 0, 120, 160)
        .fill(Qt::gray)
        .with({
            layer(2)
                .transform(CGAffineTransform::fromTranslate(0, 10 - offset))
                .bounds({ 0, offset, 120, 140 })
                .clip()
                .with({ row(100, 0), row(200, 40), row(300, 80), row(400, 120) }),
        });
}

FrameList listOf(const LayerSketch& root) { return makeFrameList(screen, scale, root); }

class SceneItemTest : public testing::Test {
protected:
    void showAndCompare(const LayerSketch& root, const char* moment)
    {
        stage.show(listOf(root));
        EXPECT_TRUE(picturesMatch(stage.shown(), stage.painted(), softEdges)) << moment;
    }

    SceneStage stage { { 240, 320 } };
};

TEST_F(SceneItemTest, ShowsWhatAPlainPainterPaints)
{
    showAndCompare(listView(0), "at rest");
    EXPECT_EQ(stage.scene().pictureCount(), 0);
}

TEST_F(SceneItemTest, ShowsScrolledRowsAsPicturesThatLookTheSame)
{
    showAndCompare(listView(0), "at rest");
    for (const double offset : { 1, 2, 3, 4 }) // more and more of the rows are pictures
        showAndCompare(listView(offset), "first steps");
    EXPECT_EQ(stage.scene().pictureCount(), 4);
    const auto uploads = stage.scene().uploadCount();
    showAndCompare(listView(8.5), "next step");
    showAndCompare(listView(20), "last step");
    EXPECT_EQ(stage.scene().uploadCount(), uploads) << "moving a picture uploads nothing";
}

// A label that moves at one stroke to a place, under a bar that lies over the screen's lower half.
LayerSketch labelUnderABar(double y, double clipHeight)
{
    return layer(1)
        .at(0, 0, 120, 160)
        .fill(Qt::gray)
        .with({
            layer(2)
                .at(0, 0, 120, clipHeight)
                .clip()
                .with({ layer(3).at(10, 20, 0, 0).with({ layer(4).at(0, y, 10, 10).image(icon()) }) }),
            layer(5).at(0, 80, 120, 80).with({ layer(6).at(0, 0, 120, 80).fill(Qt::white) }),
        });
}

TEST_F(SceneItemTest, WhatGoesOutOfSightAtOneStrokeLeavesNothingBehind)
{
    for (int round = 0; round < 2; ++round) {
        showAndCompare(labelUnderABar(10, 160), "in sight");
        showAndCompare(labelUnderABar(90, 160), "behind the bar");
        showAndCompare(labelUnderABar(100, 160), "behind the bar, elsewhere");
        showAndCompare(labelUnderABar(20, 160), "in sight again");
        showAndCompare(labelUnderABar(20, 30), "cut off");
        showAndCompare(labelUnderABar(20, 160), "no more cut off");
        showAndCompare(labelUnderABar(10, 15), "moved and cut off");
    }
}

TEST_F(SceneItemTest, DrawsNothingForAnEqualList)
{
    EXPECT_TRUE(stage.show(listOf(listView(0))));
    EXPECT_FALSE(stage.show(listOf(listView(0))));
}

TEST_F(SceneItemTest, ShowsNothingForAnEmptyList)
{
    stage.show(listOf(listView(0)));
    stage.show({ screen, scale, {} });
    QImage black(240, 320, QImage::Format_RGB32);
    black.fill(Qt::black);
    EXPECT_TRUE(picturesMatch(stage.shown(), black));
    showAndCompare(listView(4), "filled again");
}

TEST_F(SceneItemTest, UploadsAPictureThatManyLayersShowOnce)
{
    stage.show(listOf(layer(1)
                          .at(0, 0, 120, 160)
                          .with({
                              layer(2).at(0, 0, 20, 20).image(avatar()),
                              layer(3).at(30, 0, 20, 20).image(avatar()),
                              layer(4).at(60, 0, 10, 10).image(icon(), Qt::blue),
                              layer(5).at(80, 0, 10, 10).image(icon(), Qt::blue),
                              layer(6).at(100, 0, 10, 10).image(icon(), Qt::red),
                          })));
    EXPECT_EQ(stage.scene().uploadCount(), 3);
}

TEST_F(SceneItemTest, FadesOverlappingSublayersAsOnePicture)
{
    stage.show(listOf(layer(1)
                          .at(0, 0, 120, 160)
                          .fill(Qt::white)
                          .with({
                              layer(2)
                                  .at(10, 10, 40, 40)
                                  .fill(Qt::red)
                                  .opacity(0.5)
                                  .with({ layer(3).at(10, 10, 20, 20).fill(Qt::red) }),
                          })));
    const QImage shown = stage.shown();
    EXPECT_EQ(shown.pixelColor(24, 24), shown.pixelColor(60, 60)) << "the overlap does not show";
}

TEST_F(SceneItemTest, ShowsTheNodesOfAWindowThatLostThem)
{
    stage.show(listOf(listView(0)));
    stage.show(listOf(listView(5)));
    stage.window().setPersistentSceneGraph(false);
    stage.window().hide();
    stage.window().releaseResources();
    stage.window().show();
    showAndCompare(listView(7), "after it came back");
}

TEST_F(SceneItemTest, OutlivesTenThousandRowsThatComeAndGo)
{
    for (int step = 0; step < 10000; step += 40) {
        const auto first = std::uint64_t(step / 40) * 10 + 100;
        stage.scene().setFrameList(
            listOf(layer(1)
                       .at(0, 0, 120, 160)
                       .with({
                           row(first, 0).transform(CGAffineTransform::fromTranslate(0, -step % 40)),
                           row(first + 10, 40),
                           row(first + 20, 80),
                       })));
        QCoreApplication::processEvents();
    }
    showAndCompare(listView(0), "at the end");
}

TEST_F(SceneItemTest, ShowsTheSamePictureAtEveryScale)
{
    // Without the hairline, whose edges lie on whole pixels at an even scale only.
    const auto hairless = [](double offset) {
        LayerSketch root = listView(offset);
        for (LayerSketch& each : root.sublayers()[0].sublayers())
            each.sublayers().pop_back();
        return root;
    };
    for (const double anyScale : { 1.0, 2.0, 3.0 }) {
        SceneStage other(QSize(240, 318));
        for (const double offset : { 0.0, 4.0, 6.0 }) {
            other.show(makeFrameList(CGSize(240, 318) / anyScale, anyScale, hairless(offset)));
            EXPECT_TRUE(picturesMatch(other.shown(), other.painted(), softEdges))
                << "scale " << anyScale << ", offset " << offset;
        }
    }
}

// Every way in which something that is flattened can change.
struct Change {
    const char* name;
    std::function<void(LayerSketch& root)> apply;
    PictureTolerance tolerance = softEdges;
};

// What is made smaller is so pixel by pixel, or as one picture: its inner edges come out a little otherwise.
constexpr PictureTolerance resampledRow { .channel = 3, .pixels = 200 };

LayerSketch& list(LayerSketch& root) { return root.sublayers()[0]; }
LayerSketch& secondRow(LayerSketch& root) { return list(root).sublayers()[1]; }
LayerSketch& inSecondRow(LayerSketch& root, std::size_t index) { return secondRow(root).sublayers()[index]; }

const Change changes[] = {
    { "Content", [](LayerSketch& root) { inSecondRow(root, 1).image(avatar(), Qt::black); } },
    { "Tint", [](LayerSketch& root) { inSecondRow(root, 1).image(icon(), Qt::green); } },
    { "Shape", [](LayerSketch& root) { inSecondRow(root, 2).content(ring(0.3)); } },
    { "ContentGone", [](LayerSketch& root) { inSecondRow(root, 0).content({}); } },
    { "Colour", [](LayerSketch& root) { secondRow(root).fill(Qt::cyan); } },
    { "ColourGone", [](LayerSketch& root) { secondRow(root).fill({}); } },
    { "OpacityOfTheWhole", [](LayerSketch& root) { secondRow(root).opacity(0.4); } },
    { "OpacityInside", [](LayerSketch& root) { inSecondRow(root, 3).opacity(0.4); } },
    { "Hidden", [](LayerSketch& root) { inSecondRow(root, 0).opacity(0); } },
    { "Clip", [](LayerSketch& root) { inSecondRow(root, 3).clip(); } },
    { "ClipOfTheWhole", [](LayerSketch& root) { secondRow(root).at(0, 40, 100, 20).clip(); } },
    { "ChildAdded",
        [](LayerSketch& root) {
            secondRow(root).sublayers().push_back(layer(999).at(0, 0, 30, 8).fill(Qt::darkCyan));
        } },
    { "ChildRemoved",
        [](LayerSketch& root) { secondRow(root).sublayers().erase(secondRow(root).sublayers().begin()); } },
    { "ChildMoved", [](LayerSketch& root) { inSecondRow(root, 1).at(45, 20, 10, 10); } },
    { "ChildMovedToAnotherRow",
        [](LayerSketch& root) {
            list(root).sublayers()[2].sublayers().push_back(inSecondRow(root, 2));
            secondRow(root).sublayers().erase(secondRow(root).sublayers().begin() + 2);
        } },
    { "ChildMovedUpToTheRoot",
        [](LayerSketch& root) {
            root.sublayers().push_back(inSecondRow(root, 0));
            secondRow(root).sublayers().erase(secondRow(root).sublayers().begin());
        } },
    { "Bounds", [](LayerSketch& root) { secondRow(root).at(0, 40, 90, 30); } },
    { "BoundsInside", [](LayerSketch& root) { inSecondRow(root, 3).at(90, 10, 8, 24); } },
    { "CornerRadius", [](LayerSketch& root) { secondRow(root).corner(12); } },
    { "CornerRadiusWithClip", [](LayerSketch& root) { secondRow(root).corner(12).clip(); } },
    { "CornerRadiusInside", [](LayerSketch& root) { inSecondRow(root, 0).corner(3); } },
    { "Translation",
        [](LayerSketch& root) { secondRow(root).transform(CGAffineTransform::fromTranslate(10, 50)); } },
    { "Scaling",
        [](LayerSketch& root) {
            secondRow(root).transform({ 0.5, 0, 0, 0.5, 10, 50 });
        },
        resampledRow },
    { "Appearance",
        [](LayerSketch& root) {
            for (LayerSketch& each : list(root).sublayers())
                each.fill(Qt::black);
        } },
    { "Order", [](LayerSketch& root) { std::swap(inSecondRow(root, 2), inSecondRow(root, 3)); } },
    { "OrderOfRows",
        [](LayerSketch& root) {
            secondRow(root).at(0, 20, 120, 40);
            std::swap(list(root).sublayers()[0], list(root).sublayers()[1]);
        } },
    { "RowRemoved",
        [](LayerSketch& root) { list(root).sublayers().erase(list(root).sublayers().begin() + 1); } },
    { "RowAdded", [](LayerSketch& root) { list(root).sublayers().push_back(row(500, 25)); } },
    { "RowsWrapped",
        [](LayerSketch& root) {
            LayerSketch wrapper = layer(50).at(0, 0, 120, 160).with(list(root).sublayers());
            list(root).with({ wrapper });
        } },
    { "ListFaded", [](LayerSketch& root) { list(root).opacity(0.5); } },
};

class FlattenedChangeTest : public testing::TestWithParam<Change> {
protected:
    // At the scrolling offset, before or after the change.
    void showAndCompare(double offset, bool changed, const char* moment)
    {
        LayerSketch root = listView(offset);
        if (changed)
            GetParam().apply(root);
        stage.show(listOf(root));
        EXPECT_TRUE(picturesMatch(stage.shown(), stage.painted(), GetParam().tolerance)) << moment;
    }

    void flatten()
    {
        showAndCompare(0, false, "at rest");
        for (const double offset : { 1, 2, 3, 4 })
            showAndCompare(offset, false, "moving");
        ASSERT_GE(stage.scene().pictureCount(), 4);
    }

    SceneStage stage { { 240, 320 } };
};

TEST_P(FlattenedChangeTest, IsSeenAtRest)
{
    flatten();
    showAndCompare(4, true, "changed");
    showAndCompare(4, false, "changed back");
    showAndCompare(9, false, "moving on");
}

TEST_P(FlattenedChangeTest, IsSeenWhileMoving)
{
    flatten();
    showAndCompare(8, true, "changed");
    showAndCompare(12, true, "moving on");
    showAndCompare(15, false, "changed back");
    showAndCompare(18, true, "changed again");
    showAndCompare(22, true, "moving on");
}

std::string nameOf(const testing::TestParamInfo<Change>& change) { return change.param.name; }

INSTANTIATE_TEST_SUITE_P(Everything, FlattenedChangeTest, testing::ValuesIn(changes), nameOf);

} // namespace
