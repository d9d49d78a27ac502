#include "platform/host/FlatteningPlan.h"

#include "tests/support/FrameListMaker.h"

#include <gtest/gtest.h>

namespace {

using Way = FlatteningPlan::Way;

// Plans one frame after the other, as the node tree does.
class FlatteningPlanTest : public testing::Test {
protected:
    void show(const FrameList& list)
    {
        m_difference.compare(m_shown, list);
        m_plan.plan(list, m_difference);
        m_shown = list;
    }

    // Answers the way of the layer in the frame shown last.
    Way way(std::uint64_t id) const { return m_plan.way(indexOf(id)); }
    bool keepsPicture(std::uint64_t id) const { return m_plan.keepsPicture(indexOf(id)); }

    FlatteningPlan m_plan;

private:
    int indexOf(std::uint64_t id) const
    {
        for (std::size_t index = 0; index < m_shown.items.size(); ++index)
            if (m_shown.items[index].layer == LayerID { id })
                return int(index);
        ADD_FAILURE() << "no layer " << id;
        return 0;
    }

    FrameDifference m_difference;
    FrameList m_shown;
};

LayerSketch row(std::uint64_t id, double y, const QColor& color = Qt::red)
{
    return layer(id)
        .at(0, y, 100, 20)
        .fill(Qt::white)
        .with({
            layer(id + 1).at(5, 5, 10, 10).fill(color),
            layer(id + 2).at(25, 5, 10, 10).fill(Qt::green),
        });
}

FrameList scrolled(double offset, std::vector<LayerSketch> rows)
{
    return makeFrameList({ 100, 100 }, 1,
        layer(1)
            .at(0, 0, 100, 100)
            .fill(Qt::gray)
            .with({
                layer(2)
                    .transform(CGAffineTransform::fromTranslate(0, -offset))
                    .bounds({ 0, offset, 100, 100 })
                    .clip()
                    .with(std::move(rows)),
            }));
}

TEST_F(FlatteningPlanTest, DrawsWhatStandsStillAsNodes)
{
    show(scrolled(0, { row(10, 0) }));
    show(scrolled(0, { row(10, 0) }));
    EXPECT_EQ(way(10), Way::Nodes);
    EXPECT_EQ(way(11), Way::Nodes);
}

TEST_F(FlatteningPlanTest, FlattensTheRowsOfAListThatScrolls)
{
    show(scrolled(0, { row(10, 0), row(20, 20) }));
    show(scrolled(5, { row(10, 0), row(20, 20) }));
    EXPECT_EQ(way(1), Way::Nodes);
    EXPECT_EQ(way(2), Way::Nodes);
    EXPECT_EQ(way(10), Way::Picture);
    EXPECT_EQ(way(20), Way::Picture);
    EXPECT_EQ(way(11), Way::Nothing);
    EXPECT_FALSE(keepsPicture(10)) << "there was none";
    show(scrolled(9, { row(10, 0), row(20, 20) }));
    EXPECT_TRUE(keepsPicture(10));
}

TEST_F(FlatteningPlanTest, FlattensNoMoreInOneFrameThanLeavesItShort)
{
    const std::vector<LayerSketch> rows { row(10, 0), row(20, 20), row(30, 40), row(40, 60), row(50, 80) };
    show(scrolled(0, rows));
    show(scrolled(1, rows));
    EXPECT_EQ(way(10), Way::Picture);
    EXPECT_EQ(way(20), Way::Picture);
    EXPECT_EQ(way(30), Way::Nodes);
    EXPECT_EQ(way(31), Way::Nodes);
    show(scrolled(2, rows));
    EXPECT_TRUE(keepsPicture(20));
    EXPECT_EQ(way(30), Way::Picture);
    EXPECT_EQ(way(40), Way::Picture);
    EXPECT_EQ(way(50), Way::Nodes);
    show(scrolled(3, rows));
    EXPECT_EQ(way(50), Way::Picture);
    EXPECT_EQ(way(51), Way::Nothing);
}

TEST_F(FlatteningPlanTest, DrawsRowsAsNodesThatAreUsedAgainAllAtOnceUntilTheirTurnComes)
{
    show(scrolled(0, { row(10, 0), row(20, 20), row(30, 40) }));
    show(scrolled(1, { row(10, 0), row(20, 20), row(30, 40) }));
    show(scrolled(2, { row(10, 0), row(20, 20), row(30, 40) }));
    show(scrolled(3, { row(10, 60, Qt::blue), row(20, 80, Qt::blue), row(30, 100, Qt::blue) }));
    EXPECT_EQ(way(20), Way::Picture);
    EXPECT_EQ(way(30), Way::Nodes);
    show(scrolled(4, { row(10, 60, Qt::blue), row(20, 80, Qt::blue), row(30, 100, Qt::blue) }));
    EXPECT_TRUE(keepsPicture(20));
    EXPECT_EQ(way(30), Way::Picture);
}

TEST_F(FlatteningPlanTest, KeepsThePictureWhenTheMotionStops)
{
    show(scrolled(0, { row(10, 0) }));
    show(scrolled(5, { row(10, 0) }));
    show(scrolled(5, { row(10, 0) }));
    EXPECT_EQ(way(10), Way::Picture);
    EXPECT_TRUE(keepsPicture(10));
}

TEST_F(FlatteningPlanTest, TakesAPictureApartWhenSomethingInItChangesAtRest)
{
    show(scrolled(0, { row(10, 0), row(20, 20) }));
    show(scrolled(5, { row(10, 0), row(20, 20) }));
    show(scrolled(5, { row(10, 0, Qt::blue), row(20, 20) }));
    EXPECT_EQ(way(10), Way::Nodes);
    EXPECT_EQ(way(11), Way::Nodes);
    EXPECT_EQ(way(20), Way::Picture);
}

TEST_F(FlatteningPlanTest, FlattensARowAtOnceThatComesIntoAMovingList)
{
    show(scrolled(0, { row(10, 0), row(20, 20) }));
    show(scrolled(5, { row(10, 0), row(20, 20) }));
    show(scrolled(9, { row(20, 20), row(30, 40) }));
    EXPECT_EQ(way(30), Way::Picture);
    EXPECT_FALSE(keepsPicture(30));
}

TEST_F(FlatteningPlanTest, FlattensARowAtOnceThatIsUsedAgainInAMovingList)
{
    show(scrolled(0, { row(10, 0), row(20, 20) }));
    show(scrolled(5, { row(10, 0), row(20, 20) }));
    show(scrolled(25, { row(20, 20), row(10, 40, Qt::blue) }));
    EXPECT_EQ(way(10), Way::Picture);
    EXPECT_FALSE(keepsPicture(10));
}

TEST_F(FlatteningPlanTest, DrawsARowAsNodesThatKeepsChangingWhileItMoves)
{
    show(scrolled(0, { row(10, 0), row(20, 20) }));
    show(scrolled(5, { row(10, 0), row(20, 20) }));
    show(scrolled(6, { row(10, 0, Qt::blue), row(20, 20) }));
    show(scrolled(7, { row(10, 0, Qt::black), row(20, 20) }));
    EXPECT_EQ(way(10), Way::Nodes);
    show(scrolled(8, { row(10, 0, Qt::blue), row(20, 20) }));
    EXPECT_EQ(way(10), Way::Nodes);
    show(scrolled(9, { row(10, 0, Qt::blue), row(20, 20) }));
    EXPECT_EQ(way(10), Way::Picture) << "steady again";
}

TEST_F(FlatteningPlanTest, FlattensOnlyTheTopmostOfWhatMovesAsOne)
{
    const auto card = [](double y) {
        return makeFrameList({ 100, 100 }, 1,
            layer(1)
                .at(0, 0, 100, 100)
                .with({ layer(5).at(0, y, 90, 90).fill(Qt::white).with({ row(10, 0), row(20, 20) }) }));
    };
    show(card(0));
    show(card(3));
    EXPECT_EQ(way(5), Way::Picture);
    EXPECT_EQ(way(10), Way::Nothing);
}

TEST_F(FlatteningPlanTest, LeavesASingleDrawingAlone)
{
    const auto thumb = [](double x) {
        return makeFrameList({ 100, 100 }, 1,
            layer(1)
                .at(0, 0, 100, 100)
                .with({ layer(5).at(x, 0, 10, 10).with({ layer(6).at(0, 0, 10, 10).fill(Qt::red) }) }));
    };
    show(thumb(0));
    show(thumb(3));
    EXPECT_EQ(way(5), Way::Nodes);
}

TEST_F(FlatteningPlanTest, FlattensNothingThatIsLargerThanTheScreen)
{
    const auto wide = [](double x) {
        return makeFrameList({ 100, 100 }, 1,
            layer(1)
                .at(0, 0, 100, 100)
                .with({ layer(5).at(x, 0, 300, 90).fill(Qt::white).with({ row(10, 0), row(20, 20) }) }));
    };
    show(wide(0));
    show(wide(-3));
    EXPECT_EQ(way(5), Way::Nodes);
    EXPECT_EQ(way(10), Way::Picture);
}

TEST_F(FlatteningPlanTest, DrawsAFadingGroupAsOnePictureAlsoWhenItChanges)
{
    show(scrolled(0, { row(10, 0).opacity(0.5) }));
    EXPECT_EQ(way(10), Way::Picture);
    show(scrolled(0, { row(10, 0, Qt::blue).opacity(0.4) }));
    EXPECT_EQ(way(10), Way::Picture);
    EXPECT_FALSE(keepsPicture(10));
    show(scrolled(0, { row(10, 0, Qt::blue).opacity(0.3) }));
    EXPECT_TRUE(keepsPicture(10)) << "only the opacity is another";
    show(scrolled(0, { row(10, 0, Qt::blue) }));
    EXPECT_EQ(way(10), Way::Nodes);
}

TEST_F(FlatteningPlanTest, DrawsRoundlyClippedSublayersAsOnePicture)
{
    show(scrolled(0, { row(10, 0).corner(4).clip() }));
    EXPECT_EQ(way(10), Way::Picture);
}

TEST_F(FlatteningPlanTest, DrawsATurnedClipAsOnePicture)
{
    show(scrolled(0, { row(10, 0).clip().transform(CGAffineTransform().rotate(10)) }));
    EXPECT_EQ(way(10), Way::Picture);
    show(scrolled(0, { row(10, 0).transform(CGAffineTransform().rotate(10)) }));
    EXPECT_EQ(way(10), Way::Nodes);
}

TEST_F(FlatteningPlanTest, DrawsNothingThatIsTransparentOrEmpty)
{
    show(scrolled(0, { row(10, 0).opacity(0), layer(20).at(0, 0, 50, 50) }));
    EXPECT_EQ(way(10), Way::Nothing);
    EXPECT_EQ(way(11), Way::Nothing);
    EXPECT_EQ(way(20), Way::Nothing);
}

TEST(FlatteningPlanPlainTest, FlattensNoMotionInThePlainForm)
{
    FlatteningPlan plan(FlatteningPlan::FlattensMoving::No);
    FrameDifference difference;
    const FrameList first = scrolled(0, { row(10, 0) });
    const FrameList second = scrolled(5, { row(10, 0) });
    difference.compare({}, first);
    plan.plan(first, difference);
    difference.compare(first, second);
    plan.plan(second, difference);
    EXPECT_EQ(plan.way(2), Way::Nodes);
}

} // namespace
