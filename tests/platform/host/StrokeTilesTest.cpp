// A stroke whose ends move looks in tiles as a plain painter paints it, and only the tiles at its ends are
// made anew.
#include "platform/host/StrokeTiles.h"

#include "tests/platform/host/SceneStage.h"
#include "tests/support/FrameListMaker.h"
#include "tests/support/PictureComparison.h"

namespace {

std::shared_ptr<const QPainterPath> circle(double radius)
{
    const auto path = std::make_shared<QPainterPath>();
    path->addEllipse(CGPoint(22, 22), radius, radius);
    return path;
}

class StrokeTilesTest : public testing::Test {
protected:
    FrameShape stroke(double start, double end) const
    {
        return { path, {}, Qt::red, 2, Qt::RoundCap, start, end };
    }
    FrameList screen(const FrameShape& shape) const
    {
        return makeFrameList({ 50, 50 }, scale,
            layer(1)
                .at(0, 0, 50, 50)
                .fill(Qt::white)
                .with({
                    layer(2)
                        .at(3, 2, 44, 44)
                        .content(shape)
                        .with({
                            layer(3).at(30, 10, 10, 10).fill(Qt::green),
                        }),
                }));
    }
    // Shows the shape, and answers how many pictures were made for it.
    std::int64_t show(SceneStage& stage, const FrameShape& shape)
    {
        const std::int64_t before = stage.scene().uploadCount();
        stage.show(screen(shape));
        EXPECT_TRUE(picturesMatch(stage.shown(), stage.painted(), { .channel = 4 }))
            << "from " << shape.strokeStart << " to " << shape.strokeEnd << " at scale " << scale;
        return stage.scene().uploadCount() - before;
    }

    std::shared_ptr<const QPainterPath> path = circle(19);
    double scale = 2;
};

TEST_F(StrokeTilesTest, ShowAStrokeThatGrows)
{
    for (const double eachScale : { 1, 2, 3 }) {
        scale = eachScale;
        SceneStage stage(QSize(50, 50) * scale);
        show(stage, stroke(0, 0.005));
        show(stage, stroke(0, 0.01));
        show(stage, stroke(0, 0.015));
        std::int64_t made = 0;
        for (int step = 4; step <= 199; ++step) {
            const std::int64_t ofStep = show(stage, stroke(0, step / 200.0));
            EXPECT_LE(ofStep, 4) << "no more tiles meet in one place";
            made += ofStep;
        }
        EXPECT_LT(made, 3 * 196) << "two or three of up to 25";
        show(stage, stroke(0, 1));
        show(stage, stroke(0, 0.3));
    }
}

TEST_F(StrokeTilesTest, ShowBothEndsMoving)
{
    SceneStage stage(QSize(100, 100));
    for (int step = 0; step < 100; ++step)
        show(stage, stroke(std::abs(step % 40 - 20) / 21.0, (step * 7 % 100) / 100.0));
}

TEST_F(StrokeTilesTest, AreOnePictureAgainWhenSomethingElseChanges)
{
    SceneStage stage(QSize(100, 100));
    for (const double end : { 0.2, 0.3, 0.4, 0.5 })
        show(stage, stroke(0, end));
    FrameShape other = stroke(0, 0.5);
    other.strokeColor = Qt::blue;
    EXPECT_EQ(show(stage, other), 1);
    other.lineWidth = 3;
    EXPECT_EQ(show(stage, other), 1);
    path = circle(15);
    EXPECT_EQ(show(stage, stroke(0, 0.5)), 1);
    EXPECT_EQ(show(stage, stroke(0, 0.7)), 1) << "the first step of many, or the only one";
}

TEST_F(StrokeTilesTest, ShowOnlyAStrokeAndNoLargeOne)
{
    FrameItem item;
    item.bounds = { 0, 0, 44, 44 };
    item.content = stroke(0, 0.5);
    EXPECT_TRUE(StrokeTiles::strokeOf(item, 1));
    FrameItem other = item;
    other.backgroundColor = Qt::red;
    EXPECT_FALSE(StrokeTiles::strokeOf(other, 1)) << "a background";
    other = item;
    other.clipsToBounds = true;
    EXPECT_FALSE(StrokeTiles::strokeOf(other, 1)) << "a clip";
    other = item;
    std::get<FrameShape>(other.content).fillColor = Qt::red;
    EXPECT_FALSE(StrokeTiles::strokeOf(other, 1)) << "filled";
    EXPECT_FALSE(StrokeTiles::strokeOf(item, 20)) << "too large";
}

} // namespace
