#include "platform/host/TrimmedPath.h"

#include <gtest/gtest.h>

#include <limits>

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
    EXPECT_EQ(trimmedPath(corner(), 0, 1), corner());
    EXPECT_EQ(trimmedPath(corner(), -1, 7), corner());
}

TEST(TrimmedPathTest, CutsByTheLengthOfTheWholePath)
{
    const QPainterPath part = trimmedPath(corner(), 0.25, 0.875);
    ASSERT_EQ(part.elementCount(), 3);
    EXPECT_EQ(QPointF(part.elementAt(0)), QPointF(10, 0));
    EXPECT_EQ(QPointF(part.elementAt(1)), QPointF(30, 0));
    EXPECT_EQ(QPointF(part.elementAt(2)), QPointF(30, 5));
}

TEST(TrimmedPathTest, GivesNothingWhereTheEndIsNotAfterTheStart)
{
    EXPECT_TRUE(trimmedPath(corner(), 0.5, 0.5).isEmpty());
    EXPECT_TRUE(trimmedPath(corner(), 0.8, 0.2).isEmpty());
    EXPECT_TRUE(trimmedPath(corner(), 2, 3).isEmpty());
    EXPECT_TRUE(trimmedPath(corner(), 0, std::nan("")).isEmpty());
    EXPECT_TRUE(trimmedPath({}, 0.1, 0.9).isEmpty());
}

TEST(TrimmedPathTest, TakesFractionsBeyondTheEndsForTheEnds)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double far : { 1.5, 1e300, infinity }) {
        EXPECT_EQ(trimmedPath(corner(), -far, far), corner());
        EXPECT_EQ(trimmedPath(corner(), 0.5, far), trimmedPath(corner(), 0.5, 1));
        EXPECT_EQ(trimmedPath(corner(), -far, 0.5), trimmedPath(corner(), 0, 0.5));
        EXPECT_TRUE(trimmedPath(corner(), far, infinity).isEmpty());
        EXPECT_TRUE(trimmedPath(corner(), -infinity, -far).isEmpty());
    }
    EXPECT_TRUE(trimmedPath(corner(), std::nan(""), 1).isEmpty());
    EXPECT_TRUE(trimmedPath(corner(), std::nan(""), std::nan("")).isEmpty());
}

TEST(TrimmedPathTest, DoesNotJoinSubpaths)
{
    QPainterPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.moveTo(0, 50);
    path.lineTo(10, 50);
    const QPainterPath part = trimmedPath(path, 0.25, 0.75);
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
    const double circumference = circle.length();
    for (const double start : { 0.0, 0.1, 0.3 }) {
        for (const double end : { 0.31, 0.6, 0.999 }) {
            const QPainterPath part = trimmedPath(circle, start, end);
            EXPECT_NEAR(part.length(), (end - start) * circumference, 0.03);
            for (double along = 0; along <= 1; along += 0.05) {
                const QPointF point = part.pointAtPercent(along);
                EXPECT_NEAR(std::hypot(point.x(), point.y()), 20, 0.01);
            }
        }
    }
}

TEST(TrimmedPathTest, KeepsCurvesAsCurves)
{
    QPainterPath circle;
    circle.addEllipse(QPointF(0, 0), 20, 20);
    // Quarters in eight pieces each: 4.8 of one quarter, 8 of the next and 3.2 of the third make one move and
    // 17 curves of three points.
    EXPECT_EQ(trimmedPath(circle, 0.1, 0.6).elementCount(), 1 + 17 * 3);
}

TEST(TrimmedPathTest, PassesOverSegmentsWithoutLength)
{
    QPainterPath path(QPointF(0, 0));
    path.cubicTo(QPointF(0, 0), QPointF(0, 0), QPointF(0, 0));
    path.lineTo(10, 0);
    const QPainterPath part = trimmedPath(path, 0, 0.5);
    ASSERT_EQ(part.elementCount(), 2);
    EXPECT_EQ(QPointF(part.elementAt(1)), QPointF(5, 0));
}

} // namespace
