#include "platform/host/FrameDifference.h"

#include "tests/support/FrameListMaker.h"

#include <gtest/gtest.h>

namespace {

LayerSketch row(std::uint64_t id, double y, const QColor& color = Qt::white)
{
    return layer(id).at(0, y, 100, 20).fill(color).with({ layer(id + 1).at(5, 5, 10, 10).fill(Qt::red) });
}

FrameList listOf(std::vector<LayerSketch> rows)
{
    return makeFrameList({ 100, 100 }, 2, layer(1).at(0, 0, 100, 100).with(std::move(rows)));
}

TEST(FrameDifferenceTest, FindsEverythingSteadyInAnEqualList)
{
    const FrameList list = listOf({ row(10, 0), row(20, 20) });
    FrameDifference difference;
    difference.compare(list, list);
    EXPECT_TRUE(difference.hasSameStructure());
    for (int index = 0; index < int(list.items.size()); ++index) {
        EXPECT_TRUE(difference.isSubtreeSteady(index));
        EXPECT_TRUE(difference.isContentEqual(index));
        EXPECT_FALSE(difference.hasMoved(index));
    }
}

TEST(FrameDifferenceTest, TellsWhatHoldsEachItem)
{
    const FrameList list = listOf({ row(10, 0), row(20, 20) });
    FrameDifference difference;
    difference.compare({}, list);
    EXPECT_EQ(difference.parentIndex(0), FrameDifference::None);
    EXPECT_EQ(difference.parentIndex(1), 0);
    EXPECT_EQ(difference.parentIndex(2), 1);
    EXPECT_EQ(difference.parentIndex(3), 0);
    EXPECT_EQ(difference.parentIndex(4), 3);
}

TEST(FrameDifferenceTest, KnowsNothingOfLayersThatWereNotThere)
{
    const FrameList list = listOf({ row(10, 0) });
    FrameDifference difference;
    difference.compare({}, list);
    EXPECT_EQ(difference.previousIndex(1), FrameDifference::None);
    EXPECT_FALSE(difference.isSubtreeSteady(1));
    EXPECT_TRUE(difference.hasMoved(1));
}

TEST(FrameDifferenceTest, CallsASubtreeSteadyThatHasOnlyMovedOrFaded)
{
    const FrameList before = listOf({ row(10, 0) });
    const FrameList after = listOf({ row(10, 7).opacity(0.5) });
    FrameDifference difference;
    difference.compare(before, after);
    EXPECT_TRUE(difference.isSubtreeSteady(1));
    EXPECT_FALSE(difference.isTransformEqual(1));
    EXPECT_FALSE(difference.isOpacityEqual(1));
    EXPECT_TRUE(difference.hasMoved(2)) << "its sublayer moves along";
    EXPECT_FALSE(difference.isSubtreeSteady(0));
}

TEST(FrameDifferenceTest, CallsASubtreeUnsteadyWhenSomethingDeepInItChanges)
{
    const FrameList before = listOf({ row(10, 0), row(20, 20) });
    FrameList after = before;
    after.items[2].backgroundColor = Qt::blue;
    FrameDifference difference;
    difference.compare(before, after);
    EXPECT_FALSE(difference.isSubtreeSteady(1));
    EXPECT_TRUE(difference.isContentEqual(1));
    EXPECT_TRUE(difference.isSubtreeSteady(3));
}

TEST(FrameDifferenceTest, FollowsLayersToOtherPlacesInTheList)
{
    const FrameList before = listOf({ row(10, 0), row(20, 20), row(30, 40) });
    const FrameList after = listOf({ row(20, 20), row(30, 40), row(40, 60) });
    FrameDifference difference;
    difference.compare(before, after);
    EXPECT_FALSE(difference.hasSameStructure());
    EXPECT_EQ(difference.previousIndex(1), 3);
    EXPECT_EQ(difference.previousIndex(3), 5);
    EXPECT_EQ(difference.previousIndex(5), FrameDifference::None);
    EXPECT_TRUE(difference.isSubtreeSteady(1));
    EXPECT_TRUE(difference.isSubtreeSteady(3));
    EXPECT_FALSE(difference.isSubtreeSteady(5));
}

TEST(FrameDifferenceTest, CallsASubtreeUnsteadyWhoseSublayersChangedTheirOrder)
{
    const auto child = [](std::uint64_t id) { return layer(id).at(0, 0, 10, 10).fill(Qt::red); };
    const auto list = [](std::vector<LayerSketch> children) {
        return listOf({ layer(10).at(0, 0, 50, 50).with(std::move(children)) });
    };
    FrameDifference difference;
    const FrameList before = list({ child(11), child(12) });
    const FrameList after = list({ child(12), child(11) });
    difference.compare(before, after);
    EXPECT_FALSE(difference.isSubtreeSteady(1));
}

TEST(FrameDifferenceTest, CallsASubtreeUnsteadyThatLostOrGotASublayer)
{
    FrameDifference difference;
    const FrameList whole = listOf({ row(10, 0) });
    const FrameList bare = listOf({ layer(10).at(0, 0, 100, 20).fill(Qt::white) });
    difference.compare(whole, bare);
    EXPECT_FALSE(difference.isSubtreeSteady(1));
    difference.compare(bare, whole);
    EXPECT_FALSE(difference.isSubtreeSteady(1));
}

TEST(FrameDifferenceTest, FindsNothingEqualAtAnotherScale)
{
    const FrameList before = listOf({ row(10, 0) });
    FrameList after = before;
    after.scale = 3;
    FrameDifference difference;
    difference.compare(before, after);
    EXPECT_FALSE(difference.isSubtreeSteady(1));
}

TEST(FrameDifferenceTest, GivesALayerThatIsListedTwiceOnlyOnePast)
{
    const FrameList before = listOf({ row(10, 0) });
    const FrameList after = listOf({ row(10, 0), row(10, 20) });
    FrameDifference difference;
    difference.compare(before, after);
    EXPECT_EQ(difference.previousIndex(1), 1);
    EXPECT_EQ(difference.previousIndex(3), FrameDifference::None);
}

} // namespace
