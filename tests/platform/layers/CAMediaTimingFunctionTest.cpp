#include "platform/layers/CAMediaTimingFunction.h"

#include "tests/support/AssertionRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

// The curve at a parameter, in extended precision: the pair that valueAt() has to connect.
struct CurvePoint {
    long double time;
    long double value;
};
CurvePoint pointAt(const CAMediaTimingFunction& function, long double parameter)
{
    const auto coordinate = [parameter](long double first, long double second) {
        const long double rest = 1 - parameter;
        return 3 * rest * rest * parameter * first + 3 * rest * parameter * parameter * second
            + parameter * parameter * parameter;
    };
    return { coordinate(function.firstControlPoint().x(), function.secondControlPoint().x()),
        coordinate(function.firstControlPoint().y(), function.secondControlPoint().y()) };
}

void expectExact(const CAMediaTimingFunction& function, double tolerance)
{
    for (int step = 1; step < 1000; ++step) {
        const CurvePoint point = pointAt(function, step / 1000.0L);
        const double value = function.valueAt(static_cast<double>(point.time));
        EXPECT_NEAR(value, static_cast<double>(point.value), tolerance) << "at " << step << "/1000";
    }
}

TEST(CAMediaTimingFunctionTest, NamedCurvesHaveTheirControlPoints)
{
    struct Row {
        CAMediaTimingFunctionName name;
        CGPoint first;
        CGPoint second;
    };
    const Row rows[] = {
        { kCAMediaTimingFunctionLinear, { 0, 0 }, { 1, 1 } },
        { kCAMediaTimingFunctionEaseIn, { 0.42, 0 }, { 1, 1 } },
        { kCAMediaTimingFunctionEaseOut, { 0, 0 }, { 0.58, 1 } },
        { kCAMediaTimingFunctionEaseInEaseOut, { 0.42, 0 }, { 0.58, 1 } },
        { kCAMediaTimingFunctionDefault, { 0.25, 0.1 }, { 0.25, 1 } },
    };
    for (const Row& row : rows) {
        const auto function = CAMediaTimingFunction::functionWithName(row.name);
        EXPECT_EQ(function->firstControlPoint(), row.first);
        EXPECT_EQ(function->secondControlPoint(), row.second);
    }
}

TEST(CAMediaTimingFunctionTest, ANamedCurveIsOneObject)
{
    EXPECT_EQ(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut),
        CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut));
}

TEST(CAMediaTimingFunctionTest, EveryNamedCurveIsSolvedExactly)
{
    for (const auto name :
        { kCAMediaTimingFunctionLinear, kCAMediaTimingFunctionEaseIn, kCAMediaTimingFunctionEaseOut,
            kCAMediaTimingFunctionEaseInEaseOut, kCAMediaTimingFunctionDefault })
        expectExact(*CAMediaTimingFunction::functionWithName(name), 1e-12);
}

TEST(CAMediaTimingFunctionTest, TheMiddleOfEaseInEaseOutIsTheMiddle)
{
    EXPECT_DOUBLE_EQ(
        CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut)->valueAt(0.5), 0.5);
}

TEST(CAMediaTimingFunctionTest, LinearAnswersTheVeryTime)
{
    const auto linear = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear);
    for (const double time : { 0.1, 1.0 / 3, 0.7, 0.9999999 })
        EXPECT_EQ(linear->valueAt(time), time);
}

TEST(CAMediaTimingFunctionTest, EndsAreExactAndStandBeyondThem)
{
    const auto function = CAMediaTimingFunction::functionWithControlPoints({ 0.3, -0.5 }, { 0.6, 1.5 });
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double time : { 0.0, -1.0, -infinity, std::nan("") })
        EXPECT_EQ(function->valueAt(time), 0);
    for (const double time : { 1.0, 2.0, infinity })
        EXPECT_EQ(function->valueAt(time), 1);
}

TEST(CAMediaTimingFunctionTest, CurvesThatOvershootAreSolvedToo)
{
    expectExact(*CAMediaTimingFunction::functionWithControlPoints({ 0.3, -0.5 }, { 0.6, 1.5 }), 1e-12);
}

// The time has no slope at one moment: a plain Newton step would divide by nothing there.
TEST(CAMediaTimingFunctionTest, CurvesThatStandStillInTimeAreSolved)
{
    expectExact(*CAMediaTimingFunction::functionWithControlPoints({ 1, 0 }, { 0, 1 }), 1e-4);
    expectExact(*CAMediaTimingFunction::functionWithControlPoints({ 0, 0.2 }, { 0, 1 }), 1e-9);
    expectExact(*CAMediaTimingFunction::functionWithControlPoints({ 1, 0.2 }, { 1, 1 }), 1e-4);
}

TEST(CAMediaTimingFunctionTest, ValuesNeverRunBackwardsOnAMonotonousCurve)
{
    const auto function = CAMediaTimingFunction::functionWithControlPoints({ 1, 0 }, { 0, 1 });
    double last = 0;
    for (int step = 0; step <= 10000; ++step) {
        const double value = function->valueAt(step / 10000.0);
        EXPECT_GE(value, last);
        last = value;
    }
}

TEST(CAMediaTimingFunctionTest, AControlPointOutsideTimeIsAProgrammingErrorAndIsTakenIn)
{
    const AssertionRecorder assertions;
    const auto function = CAMediaTimingFunction::functionWithControlPoints({ -0.5, 0 }, { 1.5, 1 });
    EXPECT_THAT(assertions.messages(),
        ::testing::ElementsAre(QStringLiteral(
            "Invalid parameter not satisfying: isFraction(first.x()) && isFraction(second.x())")));
    EXPECT_EQ(function->firstControlPoint(), CGPoint(0, 0));
    EXPECT_EQ(function->secondControlPoint(), CGPoint(1, 1));
}

} // namespace
