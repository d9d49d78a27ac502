#include "platform/tables/ScrollPhysics.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace ScrollPhysics;

namespace {

const Range range { 0, 1000 };

TEST(RubberBand, FollowsMoreThanHalfOfASmallPullAndNeverAWholeScreen)
{
    EXPECT_NEAR(rubberBand(1, 800), 0.55, 0.001);
    EXPECT_LT(rubberBand(1e9, 800), 800);
    EXPECT_DOUBLE_EQ(rubberBand(-100, 800), -rubberBand(100, 800));
    EXPECT_EQ(rubberBand(100, 0), 0);
}

TEST(RubberBand, IsUndoneByThePullThatShowsIt)
{
    for (const double pull : { -500.0, -3.0, 0.0, 40.0, 2000.0 })
        EXPECT_NEAR(rubberBandPull(rubberBand(pull, 800), 800), pull, 1e-6) << pull;
}

TEST(RubberBand, LeavesOffsetsInsideTheRangeAlone)
{
    EXPECT_EQ(rubberBandOffset(300, range, 800), 300);
    EXPECT_EQ(rubberBandOffset(1000, range, 800), 1000);
    EXPECT_LT(rubberBandOffset(1100, range, 800), 1056);
    EXPECT_GT(rubberBandOffset(-100, range, 800), -56);
}

TEST(ScrollFlight, LosesTwoThousandthsOfItsVelocityEachMillisecond)
{
    const ScrollFlight flight(0, 1000, range);
    EXPECT_NEAR(flight.velocityAt(0.001), 998, 1e-9);
    EXPECT_NEAR(flight.velocityAt(0.5), 1000 * std::pow(0.998, 500), 1e-9);
}

TEST(ScrollFlight, MovesAsItsVelocitySays)
{
    for (const double velocity : { 900.0, -6000.0, 6000.0 }) {
        const ScrollFlight flight(500, velocity, range);
        const double step = 1e-6;
        for (double time = 0.01; time < flight.duration() - 0.01; time += 0.0137) {
            const double slope = (flight.offsetAt(time + step) - flight.offsetAt(time - step)) / (2 * step);
            // At the moment the spring takes over the velocity has a corner, so allow the slope's own error.
            EXPECT_NEAR(slope, flight.velocityAt(time), std::abs(velocity) * 1e-3)
                << velocity << " at " << time;
        }
    }
}

TEST(ScrollFlight, RestsWhereItsVelocityCarriesIt)
{
    const ScrollFlight flight(200, 600, range);
    EXPECT_NEAR(flight.destination(), 200 + 600 / -(1000 * std::log(0.998)), 1e-9);
    EXPECT_EQ(flight.offsetAt(flight.duration()), flight.destination());
    EXPECT_NEAR(flight.offsetAt(flight.duration() - 1e-9), flight.destination(), restDistance + 1e-6);
}

TEST(ScrollFlight, ShootsPastTheEndAndComesBackToIt)
{
    const ScrollFlight flight(900, 4000, range);
    double farthest = 0;
    for (double time = 0; time < flight.duration(); time += 0.005)
        farthest = std::max(farthest, flight.offsetAt(time));
    EXPECT_GT(farthest, 1030);
    EXPECT_LT(farthest, 1200);
    EXPECT_EQ(flight.destination(), 1000);
    EXPECT_EQ(flight.offsetAt(60), 1000);
}

TEST(ScrollFlight, SpringsBackAtOnceWhenReleasedPastTheEnd)
{
    const ScrollFlight flight(-80, 0, range);
    EXPECT_EQ(flight.offsetAt(0), -80);
    EXPECT_EQ(flight.destination(), 0);
    double previous = -80;
    for (double time = 0.01; time < flight.duration(); time += 0.01) {
        EXPECT_GT(flight.offsetAt(time), previous);
        EXPECT_LE(flight.offsetAt(time), 0);
        previous = flight.offsetAt(time);
    }
    EXPECT_LT(flight.duration(), 1);
}

// A critically damped spring of 12 a second: (1 + 12 t) · exp(-12 t).
TEST(ScrollFlight, SpringsBackAtThePaceThatAFingerFeels)
{
    const ScrollFlight flight(-80, 0, range);
    for (const double time : { 0.05, 0.1, 0.2, 0.3 })
        EXPECT_NEAR(flight.offsetAt(time), -80 * (1 + 12 * time) * std::exp(-12 * time), 1e-9) << time;
}

TEST(ScrollFlight, EndsWhenAQuarterOfAPointIsLeft)
{
    const ScrollFlight free(200, 600, range);
    EXPECT_NEAR(free.destination() - free.offsetAt(free.duration() - 1e-9), 0.25, 0.01);
    const ScrollFlight sprung(-80, 0, range);
    EXPECT_NEAR(sprung.offsetAt(sprung.duration() - 1e-9), -0.25, 0.01);
}

TEST(ScrollFlight, WithoutVelocityIsOverAtOnce)
{
    const ScrollFlight flight(300, 0, range);
    EXPECT_EQ(flight.duration(), 0);
    EXPECT_EQ(flight.offsetAt(0), 300);
}

TEST(ScrollFlight, IsDefinedForContentThatFitsItsView)
{
    const ScrollFlight flight(0, 3000, { 0, 0 });
    EXPECT_EQ(flight.destination(), 0);
    EXPECT_GT(flight.offsetAt(0.05), 0);
    EXPECT_EQ(flight.offsetAt(flight.duration()), 0);
}

} // namespace
