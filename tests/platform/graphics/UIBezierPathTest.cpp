#include "platform/graphics/UIBezierPath.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr bool clockwise = true;
constexpr double lengthTolerance = 0.2; // lengths are those of short straight pieces

std::shared_ptr<UIBezierPath> arc(double start, double end, bool isClockwise, double radius = 10)
{
    return UIBezierPath::bezierPathWithArcCenter({ 50, 50 }, radius, start, end, isClockwise);
}

void expectNear(const CGPoint& point, const CGPoint& expected)
{
    EXPECT_NEAR(point.x(), expected.x(), 0.02);
    EXPECT_NEAR(point.y(), expected.y(), 0.02);
}

TEST(UIBezierPathTest, RunsAFullCircleFromItsTopClockwiseOnScreen)
{
    const auto circle = arc(3 * pi / 2, 7 * pi / 2, clockwise)->cgPath();
    expectNear(circle->pointAtPercent(0), { 50, 40 });
    expectNear(circle->pointAtPercent(0.25), { 60, 50 });
    expectNear(circle->pointAtPercent(0.5), { 50, 60 });
    expectNear(circle->pointAtPercent(0.75), { 40, 50 });
    expectNear(circle->pointAtPercent(1), { 50, 40 });
    EXPECT_NEAR(circle->length(), 20 * pi, lengthTolerance);
}

TEST(UIBezierPathTest, TurnsTheWayItIsTold)
{
    const auto forward = arc(0, pi / 2, clockwise)->cgPath();
    EXPECT_NEAR(forward->length(), 5 * pi, lengthTolerance);
    expectNear(forward->pointAtPercent(0.5), { 50 + 10 / std::sqrt(2), 50 + 10 / std::sqrt(2) });
    const auto backward = arc(0, pi / 2, !clockwise)->cgPath();
    EXPECT_NEAR(backward->length(), 15 * pi, lengthTolerance);
    expectNear(backward->pointAtPercent(0.5), { 50 - 10 / std::sqrt(2), 50 - 10 / std::sqrt(2) });
    expectNear(backward->pointAtPercent(1), { 50, 60 });
}

TEST(UIBezierPathTest, GoesTheLongWayRoundWhereTheEndLiesBeforeTheStart)
{
    EXPECT_NEAR(arc(pi / 2, 0, clockwise)->cgPath()->length(), 15 * pi, lengthTolerance);
    EXPECT_NEAR(arc(0, -pi / 2, !clockwise)->cgPath()->length(), 5 * pi, lengthTolerance);
}

TEST(UIBezierPathTest, NeverTurnsMoreThanOnce)
{
    EXPECT_NEAR(arc(0, 9 * pi, clockwise)->cgPath()->length(), 20 * pi, lengthTolerance);
    EXPECT_NEAR(arc(0, -9 * pi, !clockwise)->cgPath()->length(), 20 * pi, lengthTolerance);
}

TEST(UIBezierPathTest, IsEmptyForARadiusBelowZero)
{
    EXPECT_TRUE(arc(0, pi, clockwise, -1)->isEmpty());
    EXPECT_TRUE(arc(0, pi, clockwise, 0)->isEmpty());
    EXPECT_TRUE(UIBezierPath::bezierPathWithRoundedRect({ 0, 0, 10, 10 }, -1)->isEmpty());
    EXPECT_NE(arc(0, pi, clockwise, -1)->cgPath(), nullptr);
}

TEST(UIBezierPathTest, IsEmptyForNumbersThatAreNotFinite)
{
    for (const double bad : { nan, infinity, -infinity }) {
        EXPECT_TRUE(arc(bad, pi, clockwise)->isEmpty());
        EXPECT_TRUE(arc(0, bad, clockwise)->isEmpty());
        EXPECT_TRUE(arc(0, pi, clockwise, bad)->isEmpty());
        EXPECT_TRUE(UIBezierPath::bezierPathWithArcCenter({ bad, 0 }, 1, 0, 1, clockwise)->isEmpty());
        EXPECT_TRUE(UIBezierPath::bezierPathWithRect({ 0, 0, bad, 1 })->isEmpty());
        EXPECT_TRUE(UIBezierPath::bezierPathWithOvalInRect({ bad, 0, 1, 1 })->isEmpty());
        EXPECT_TRUE(UIBezierPath::bezierPathWithRoundedRect({ 0, 0, 1, bad }, 1)->isEmpty());
    }
    EXPECT_TRUE(UIBezierPath::bezierPathWithRoundedRect({ 0, 0, 10, 10 }, nan)->isEmpty());
}

TEST(UIBezierPathTest, LeavesOutStepsThatAreNotFinite)
{
    const auto path = UIBezierPath::bezierPath();
    path->moveToPoint({ 1, 2 });
    path->addLineToPoint({ nan, 3 });
    path->addCurveToPoint({ 5, 5 }, { infinity, 0 }, { 0, 0 });
    path->addQuadCurveToPoint({ 5, nan }, { 0, 0 });
    path->applyTransform(QTransform::fromScale(infinity, 1));
    EXPECT_TRUE(path->isEmpty());
    expectNear(path->currentPoint(), { 1, 2 });
}

TEST(UIBezierPathTest, RoundsTheCornersOfARectangle)
{
    const auto path = UIBezierPath::bezierPathWithRoundedRect({ 10, 20, 100, 60 }, 15);
    EXPECT_EQ(path->bounds(), CGRect(10, 20, 100, 60));
    EXPECT_FALSE(path->containsPoint({ 11, 21 }));
    EXPECT_FALSE(path->containsPoint({ 109, 79 }));
    EXPECT_TRUE(path->containsPoint({ 25, 21 }));
    EXPECT_TRUE(path->containsPoint({ 16, 26 }));
    EXPECT_NEAR(path->cgPath()->length(), 2 * (70 + 30) + 30 * pi, lengthTolerance);
    expectNear(path->cgPath()->pointAtPercent(0), { 25, 20 });
}

TEST(UIBezierPathTest, LimitsTheCornerRadiusToHalfASide)
{
    const auto path = UIBezierPath::bezierPathWithRoundedRect({ 0, 0, 40, 20 }, 500);
    EXPECT_NEAR(path->cgPath()->length(), 40 + 20 * pi, lengthTolerance);
    EXPECT_EQ(UIBezierPath::bezierPathWithRoundedRect({ 0, 0, 40, 20 }, 0)->bounds(), CGRect(0, 0, 40, 20));
}

TEST(UIBezierPathTest, FillsRectanglesAndOvals)
{
    const auto rectangle = UIBezierPath::bezierPathWithRect({ 0, 0, 10, 20 });
    EXPECT_TRUE(rectangle->containsPoint({ 1, 1 }));
    const auto oval = UIBezierPath::bezierPathWithOvalInRect({ 0, 0, 10, 20 });
    EXPECT_FALSE(oval->containsPoint({ 1, 1 }));
    EXPECT_TRUE(oval->containsPoint({ 5, 1 }));
    EXPECT_EQ(oval->bounds(), CGRect(0, 0, 10, 20));
}

TEST(UIBezierPathTest, IsBuiltStepByStep)
{
    const auto path = UIBezierPath::bezierPath();
    path->moveToPoint({ 10, 10 });
    path->addLineToPoint({ 20, 10 });
    path->addQuadCurveToPoint({ 20, 20 }, { 30, 15 });
    path->addCurveToPoint({ 10, 20 }, { 18, 25 }, { 12, 25 });
    path->closePath();
    EXPECT_TRUE(path->containsPoint({ 15, 15 }));
    expectNear(path->currentPoint(), { 10, 10 });
    path->applyTransform(QTransform::fromTranslate(100, 0));
    EXPECT_TRUE(path->containsPoint({ 115, 15 }));
    EXPECT_FALSE(path->containsPoint({ 15, 15 }));
}

TEST(UIBezierPathTest, JoinsAnArcToWhatIsThereByALine)
{
    const auto path = UIBezierPath::bezierPath();
    path->moveToPoint({ 50, 50 });
    path->addArc({ 50, 50 }, 10, 0, pi / 2, clockwise);
    path->closePath();
    EXPECT_TRUE(path->containsPoint({ 55, 55 }));
    EXPECT_FALSE(path->containsPoint({ 45, 45 }));
    EXPECT_NEAR(path->cgPath()->length(), 20 + 5 * pi, lengthTolerance);
}

TEST(UIBezierPathTest, GivesSnapshotsThatLaterChangesDoNotReach)
{
    const auto path = UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 });
    const CGPathRef before = path->cgPath();
    EXPECT_EQ(path->cgPath(), before);
    path->appendPath(*UIBezierPath::bezierPathWithRect({ 100, 0, 10, 10 }));
    EXPECT_EQ(before->boundingRect(), CGRect(0, 0, 10, 10));
    EXPECT_NE(path->cgPath(), before);
    EXPECT_EQ(path->bounds(), CGRect(0, 0, 110, 10));
}

TEST(UIBezierPathTest, MayBeAppendedToItself)
{
    const auto path = UIBezierPath::bezierPathWithRect({ 0, 0, 10, 10 });
    path->appendPath(*path);
    EXPECT_NEAR(path->cgPath()->length(), 80, 1e-9);
}

} // namespace
