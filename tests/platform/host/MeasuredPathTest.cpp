// Cutting is tested with TrimmedPath, which cuts a path once.
#include "platform/host/MeasuredPath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

QPainterPath wave()
{
    QPainterPath path(QPointF(0, 0));
    path.cubicTo(QPointF(20, 40), QPointF(40, -40), QPointF(60, 0));
    path.lineTo(60, 30);
    path.moveTo(10, 50);
    path.lineTo(50, 50);
    path.addEllipse(QPointF(30, 30), 20, 10);
    return path;
}

// The rectangle with its edges, which the type's own test leaves out where it is empty.
bool holds(const CGRect& rect, const QPointF& point, double tolerance)
{
    return point.x() >= rect.left() - tolerance && point.x() <= rect.right() + tolerance
        && point.y() >= rect.top() - tolerance && point.y() <= rect.bottom() + tolerance;
}

// A point so far along the path, found by cutting nearly nothing there.
QPointF pointAt(const MeasuredPath& path, double fraction)
{
    return path.cut({ fraction, fraction + 1e-6 }).elementAt(0);
}

TEST(MeasuredPathTest, BoundsEachPart)
{
    const MeasuredPath path(wave());
    std::mt19937 random(1);
    std::uniform_real_distribution<double> fraction(0, 1);
    for (int round = 0; round < 200; ++round) {
        const double first = fraction(random);
        const double second = fraction(random);
        const PathPart part { std::min(first, second), std::max(first, second) };
        const CGRect rect = path.boundingRect(part);
        for (double along = part.start; along < part.end; along += 0.01)
            ASSERT_TRUE(holds(rect, pointAt(path, along), 0.5)) << part.start << " to " << along;
    }
    EXPECT_LT(path.boundingRect({ 0, 0.1 }).width(), 30);
}

TEST(MeasuredPathTest, FindsAllOfAPartThatMeetsARectangle)
{
    const MeasuredPath path(wave());
    std::mt19937 random(2);
    std::uniform_real_distribution<double> place(-10, 60);
    std::uniform_real_distribution<double> fraction(0, 1);
    int found = 0;
    for (int round = 0; round < 300; ++round) {
        const CGRect rect(place(random), place(random), 12, 12);
        const double first = fraction(random);
        const double second = fraction(random);
        const PathPart part { std::min(first, second), std::max(first, second) };
        const PathPart near = path.partNear(rect, part);
        found += int(!near.isEmpty());
        for (double along = part.start; along < part.end; along += 0.01) {
            const bool isInside = holds(rect, pointAt(path, along), -0.5);
            ASSERT_TRUE(!isInside || (near.start <= along && along <= near.end)) << along;
        }
        if (!near.isEmpty()) {
            EXPECT_GE(near.start, part.start);
            EXPECT_LE(near.end, part.end);
        }
    }
    EXPECT_GT(found, 50);
    EXPECT_TRUE(path.partNear({ 100, 100, 10, 10 }, { 0, 1 }).isEmpty());
}

TEST(MeasuredPathTest, CutsBetweenTwoPiecesLeaveNothingOfTheOther)
{
    QPainterPath circle;
    circle.addEllipse(QPointF(0, 0), 20, 20);
    const MeasuredPath path(circle);
    for (int piece = 0; piece < 32; ++piece) {
        const double angle = (piece + 0.5) / 32 * 2 * M_PI;
        const QPointF middle(20 * std::cos(angle), 20 * std::sin(angle));
        const PathPart part = path.partNear({ middle - QPointF(0.2, 0.2), CGSize(0.4, 0.4) }, { 0, 1 });
        EXPECT_NEAR(part.end - part.start, 1 / 32.0, 2e-3);
        EXPECT_EQ(path.cut(part).elementCount(), 4) << "a move and one curve of three points";
    }
}

TEST(MeasuredPathTest, KnowsCorners)
{
    QPainterPath path;
    path.addEllipse(QPointF(0, 0), 20, 20);
    EXPECT_FALSE(MeasuredPath(path).hasCorners());
    path = {};
    path.addRoundedRect(0, 0, 30, 20, 5, 5);
    EXPECT_FALSE(MeasuredPath(path).hasCorners());
    path.addRect(0, 0, 10, 10);
    EXPECT_TRUE(MeasuredPath(path).hasCorners());
    EXPECT_TRUE(MeasuredPath(wave()).hasCorners());
}

TEST(MeasuredPathTest, OfNothingHasNoParts)
{
    const MeasuredPath path { QPainterPath() };
    EXPECT_TRUE(path.cut({ 0.2, 0.7 }).isEmpty());
    EXPECT_TRUE(path.partNear({ -10, -10, 20, 20 }, { 0, 1 }).isEmpty());
    EXPECT_TRUE(path.boundingRect({ 0, 1 }).isEmpty());
}

} // namespace
