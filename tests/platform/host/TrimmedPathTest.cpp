#include "platform/host/TrimmedPath.h"

namespace {

QPainterPath corner() // 30 to the right, 10 down
{
    QPainterPath path(QPointF(0, 0));
    path.lineTo(30, 0);
    path.lineTo(30, 10);
    return path;
}

TEST(TrimmedPathTest, GivesTheWholePathAsItIs)
{
    EXPECT_EQ(trimmedPath(corner(), 0, 1, 2), corner());
    EXPECT_EQ(trimmedPath(corner(), -1, 7, 2), corner());
}

TEST(TrimmedPathTest, CutsByTheLengthOfTheWholePath)
{
    const QPainterPath part = trimmedPath(corner(), 0.25, 0.875, 2);
    ASSERT_EQ(part.elementCount(), 3);
    EXPECT_EQ(QPointF(part.elementAt(0)), QPointF(10, 0));
    EXPECT_EQ(QPointF(part.elementAt(1)), QPointF(30, 0));
    EXPECT_EQ(QPointF(part.elementAt(2)), QPointF(30, 5));
}

TEST(TrimmedPathTest, GivesNothingWhereTheEndIsNotAfterTheStart)
{
    EXPECT_TRUE(trimmedPath(corner(), 0.5, 0.5, 2).isEmpty());
    EXPECT_TRUE(trimmedPath(corner(), 0.8, 0.2, 2).isEmpty());
    EXPECT_TRUE(trimmedPath(corner(), 2, 3, 2).isEmpty());
    EXPECT_TRUE(trimmedPath(corner(), 0, std::nan(""), 2).isEmpty());
    EXPECT_TRUE(trimmedPath({}, 0.1, 0.9, 2).isEmpty());
}

TEST(TrimmedPathTest, DoesNotJoinSubpaths)
{
    QPainterPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.moveTo(0, 50);
    path.lineTo(10, 50);
    const QPainterPath part = trimmedPath(path, 0.25, 0.75, 2);
    ASSERT_EQ(part.elementCount(), 4);
    EXPECT_EQ(QPointF(part.elementAt(0)), QPointF(5, 0));
    EXPECT_EQ(QPointF(part.elementAt(1)), QPointF(10, 0));
    EXPECT_TRUE(part.elementAt(2).isMoveTo());
    EXPECT_EQ(QPointF(part.elementAt(2)), QPointF(0, 50));
    EXPECT_EQ(QPointF(part.elementAt(3)), QPointF(5, 50));
}

TEST(TrimmedPathTest, KeepsToACircle)
{
    QPainterPath circle;
    circle.addEllipse(QPointF(0, 0), 20, 20);
    const QPainterPath part = trimmedPath(circle, 0.1, 0.6, 2);
    EXPECT_NEAR(part.length(), 0.5 * circle.length(), 0.05);
    for (int i = 0; i < part.elementCount(); ++i)
        EXPECT_NEAR(std::hypot(part.elementAt(i).x, part.elementAt(i).y), 20, 0.02);
}

} // namespace
