#include "platform/layers/SpringCurve.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double ratios[] = { 0.01, 0.2, 0.5, 0.8, 0.800000011920929, 0.95, 0.9999, 1, 1.0001, 1.5, 5, 100 };

TEST(SpringCurveTest, StartsAt0AndEndsExactlyAt1)
{
    for (const double ratio : ratios) {
        const SpringCurve curve(ratio);
        EXPECT_EQ(curve.valueAt(0, 0), 0);
        EXPECT_EQ(curve.valueAt(-1, 0), 0);
        EXPECT_EQ(curve.valueAt(1, 0), 1);
        EXPECT_EQ(curve.valueAt(1.5, 0), 1);
        EXPECT_NEAR(curve.valueAt(1e-12, 0), 0, 1e-9);
    }
}

TEST(SpringCurveTest, HasFallenToAThousandthAtItsEnd)
{
    for (const double ratio : ratios) {
        const SpringCurve curve(ratio);
        EXPECT_NEAR(SpringCurve::envelope(ratio, curve.frequency(), 1), 0.001, 1e-9) << ratio;
        EXPECT_LE(std::abs(1 - curve.valueAt(1 - 1e-9, 0)), 0.001001) << ratio;
    }
}

TEST(SpringCurveTest, StaysWithinItsEnvelope)
{
    for (const double ratio : ratios) {
        const SpringCurve curve(ratio);
        for (int step = 1; step < 1000; ++step) {
            const double time = step / 1000.0;
            const double bound = SpringCurve::envelope(ratio, curve.frequency(), time);
            EXPECT_LE(std::abs(1 - curve.valueAt(time, 0)), bound + 1e-12) << ratio << " at " << time;
        }
    }
}

// x″ + 2ζω x′ + ω²(x − 1) = 0, with the derivatives taken as differences.
TEST(SpringCurveTest, ObeysTheEquationOfADampedOscillator)
{
    for (const double ratio : { 0.2, 0.8, 1.0, 1.5 }) {
        const SpringCurve curve(ratio);
        const double omega = curve.frequency();
        const double h = 1e-5;
        for (const double time : { 0.1, 0.25, 0.5, 0.75 }) {
            const double before = curve.valueAt(time - h, 0.7);
            const double here = curve.valueAt(time, 0.7);
            const double after = curve.valueAt(time + h, 0.7);
            const double acceleration = (after - 2 * here + before) / (h * h);
            const double velocity = (after - before) / (2 * h);
            EXPECT_NEAR(acceleration + 2 * ratio * omega * velocity + omega * omega * (here - 1), 0, 1e-3);
        }
    }
}

TEST(SpringCurveTest, StartsWithTheGivenVelocity)
{
    for (const double ratio : { 0.3, 0.8, 1.0, 2.0 })
        for (const double velocity : { 0.0, 1.0, -3.0 })
            EXPECT_NEAR(SpringCurve(ratio).valueAt(1e-7, velocity) / 1e-7, velocity, 1e-3);
}

TEST(SpringCurveTest, SwingsOverOnlyWhenUnderdamped)
{
    const auto peak = [](double ratio) {
        double highest = 0;
        for (int step = 0; step < 1000; ++step)
            highest = std::max(highest, SpringCurve(ratio).valueAt(step / 1000.0, 0));
        return highest;
    };
    // The first overshoot of a damped oscillator is exp(−πζ/√(1−ζ²)).
    EXPECT_NEAR(peak(0.8), 1 + std::exp(-M_PI * 0.8 / 0.6), 1e-4);
    EXPECT_NEAR(peak(0.5), 1 + std::exp(-M_PI * 0.5 / std::sqrt(0.75)), 1e-3);
    EXPECT_LT(peak(1), 1);
    EXPECT_LT(peak(2), 1);
}

TEST(SpringCurveTest, TakesImpossibleRatiosIntoItsRange)
{
    EXPECT_EQ(SpringCurve(0).dampingRatio(), 0.01);
    EXPECT_EQ(SpringCurve(-3).dampingRatio(), 0.01);
    EXPECT_EQ(SpringCurve(std::nan("")).dampingRatio(), 0.01);
    EXPECT_EQ(SpringCurve(INFINITY).dampingRatio(), 100);
}

TEST(SpringCurveTest, AnInitialVelocityThatIsNoNumberCountsAsNone)
{
    const SpringCurve curve(0.8);
    EXPECT_EQ(curve.valueAt(0.3, std::nan("")), curve.valueAt(0.3, 0));
    EXPECT_EQ(curve.valueAt(0.3, INFINITY), curve.valueAt(0.3, 0));
    EXPECT_EQ(curve.valueAt(std::nan(""), 0), 0);
}

} // namespace
