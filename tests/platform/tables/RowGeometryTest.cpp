#include "platform/tables/RowGeometry.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

RowGeometry geometryOf(const std::vector<double>& heights)
{
    return { static_cast<int>(heights.size()),
        [&](int row) { return heights[static_cast<std::size_t>(row)]; } };
}

using Span = RowGeometry::Span;

TEST(RowGeometry, WithoutRowsHasNoHeightAndFindsNothing)
{
    const RowGeometry empty;
    EXPECT_EQ(empty.rowCount(), 0);
    EXPECT_EQ(empty.totalHeight(), 0);
    EXPECT_EQ(empty.rowAt(0), -1);
    EXPECT_EQ(empty.rowsBetween(0, 1000), Span());
}

TEST(RowGeometry, FindsTheRowAtAHeight)
{
    const RowGeometry rows = geometryOf({ 64, 108, 64 });
    EXPECT_EQ(rows.rowAt(-0.1), -1);
    EXPECT_EQ(rows.rowAt(0), 0);
    EXPECT_EQ(rows.rowAt(63.9), 0);
    EXPECT_EQ(rows.rowAt(64), 1);
    EXPECT_EQ(rows.rowAt(171.9), 1);
    EXPECT_EQ(rows.rowAt(235.9), 2);
    EXPECT_EQ(rows.rowAt(236), -1);
    EXPECT_EQ(rows.rowAt(std::numeric_limits<double>::quiet_NaN()), -1);
}

TEST(RowGeometry, ListsOnlyRowsThatShow)
{
    const RowGeometry rows = geometryOf({ 64, 64, 64, 64 });
    EXPECT_EQ(rows.rowsBetween(0, 64), (Span { 0, 1 }));
    EXPECT_EQ(rows.rowsBetween(0, 64.5), (Span { 0, 2 }));
    EXPECT_EQ(rows.rowsBetween(64, 128), (Span { 1, 2 }));
    EXPECT_EQ(rows.rowsBetween(-100, 1000), (Span { 0, 4 }));
    EXPECT_EQ(rows.rowsBetween(-100, 0), Span());
    EXPECT_EQ(rows.rowsBetween(256, 300), Span());
    EXPECT_EQ(rows.rowsBetween(10, 10), Span());
}

TEST(RowGeometry, TreatsAnImpossibleHeightAsNone)
{
    const RowGeometry rows = geometryOf({ -5, std::numeric_limits<double>::quiet_NaN(), 10 });
    EXPECT_EQ(rows.totalHeight(), 10);
    EXPECT_EQ(rows.rowAt(3), 2);
}

TEST(RowGeometry, FindsEachOfAHundredThousandRows)
{
    const RowGeometry rows(100'000, [](int row) { return row % 7 ? 64.0 : 108.0; });
    for (int row = 0; row < rows.rowCount(); row += 331) {
        EXPECT_EQ(rows.rowAt(rows.top(row)), row);
        EXPECT_EQ(rows.rowAt(rows.top(row) + rows.height(row) - 0.01), row);
    }
}

} // namespace
