#include "platform/location/CLLocation.h"

#include "tests/support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

double distance(CLLocationCoordinate2D from, CLLocationCoordinate2D to) { return geodesicDistance(from, to); }

TEST(CLLocationCoordinate2DTest, IsMadeOfALatitudeAndALongitude)
{
    const CLLocationCoordinate2D coordinate = CLLocationCoordinate2DMake(-37.8183, 144.9671);
    EXPECT_EQ(coordinate.latitude, -37.8183);
    EXPECT_EQ(coordinate.longitude, 144.9671);
    EXPECT_EQ(CLLocationCoordinate2D {}, CLLocationCoordinate2DMake(0, 0));
}

TEST(CLLocationCoordinate2DTest, IsValidUpToThePolesAndTheAntimeridian)
{
    EXPECT_TRUE(CLLocationCoordinate2DIsValid({ 90, 180 }));
    EXPECT_TRUE(CLLocationCoordinate2DIsValid({ -90, -180 }));
    EXPECT_FALSE(CLLocationCoordinate2DIsValid({ 90.0001, 0 }));
    EXPECT_FALSE(CLLocationCoordinate2DIsValid({ 0, -180.0001 }));
}

TEST(CLLocationCoordinate2DTest, IsInvalidWhenItIsNoNumber)
{
    EXPECT_FALSE(CLLocationCoordinate2DIsValid({ nan, 0 }));
    EXPECT_FALSE(CLLocationCoordinate2DIsValid({ 0, nan }));
    EXPECT_FALSE(CLLocationCoordinate2DIsValid({ 0, infinity }));
}

TEST(GeodesicDistanceTest, IsZeroForTheSamePoint)
{
    EXPECT_EQ(distance({ -37.8183, 144.9671 }, { -37.8183, 144.9671 }), 0);
    EXPECT_EQ(distance({ 0, 180 }, { 0, -180 }), 0);
    EXPECT_EQ(distance({ 90, 0 }, { 90, 0 }), 0);
}

TEST(GeodesicDistanceTest, IsPracticallyZeroBetweenTheMeridiansOfAPole)
{
    EXPECT_LT(distance({ 90, 0 }, { 90, 77 }), 1e-7);
}

TEST(GeodesicDistanceTest, FollowsTheFiguresOfWGS84)
{
    // One degree of the equator, a quarter and a half of a meridian, and a published geodesic
    // (Karney, "Algorithms for geodesics", table 3: phi1 = -30, phi2 = 29.9, lambda12 = 179.8).
    EXPECT_NEAR(distance({ 0, 0 }, { 0, 1 }), 111'319.490793, 1e-6);
    EXPECT_NEAR(distance({ 0, 0 }, { 90, 0 }), 10'001'965.729313, 1e-6);
    EXPECT_NEAR(distance({ 90, 0 }, { -90, 0 }), 20'003'931.458625, 1e-6);
    EXPECT_NEAR(distance({ -30, 0 }, { 29.9, 179.8 }), 19'989'832.827610, 1e-6);
}

TEST(GeodesicDistanceTest, TakesTheShortWayAcrossTheAntimeridian)
{
    EXPECT_NEAR(distance({ 0, 179.5 }, { 0, -179.5 }), 111'319.490793, 1e-6);
}

TEST(GeodesicDistanceTest, CountsWholeTurnsOfLongitudeAsNone)
{
    EXPECT_EQ(distance({ 10, 20 }, { 10, 380 }), 0);
}

TEST(GeodesicDistanceTest, IsNoNumberWhenAPlaceIsNowhere)
{
    EXPECT_TRUE(std::isnan(distance({ nan, 0 }, { 0, 0 })));
    EXPECT_TRUE(std::isnan(distance({ 0, 0 }, { 0, nan })));
    EXPECT_TRUE(std::isnan(distance({ 90.5, 0 }, { 0, 0 })));
    EXPECT_TRUE(std::isnan(distance({ 0, 0 }, { 0, infinity })));
}

TEST(CLLocationTest, KeepsWhatItIsMadeWith)
{
    const NSDate date = NSDate::fromSecsSinceEpoch(1'000'000);
    const auto location = make<CLLocation>(CLLocationCoordinate2D { -37.8, 144.9 }, 31.0, 5.0, 7.0, date);
    EXPECT_EQ(location->coordinate(), (CLLocationCoordinate2D { -37.8, 144.9 }));
    EXPECT_EQ(location->altitude(), 31);
    EXPECT_EQ(location->horizontalAccuracy(), 5);
    EXPECT_EQ(location->verticalAccuracy(), 7);
    EXPECT_EQ(location->timestamp(), date);
}

TEST(CLLocationTest, MadeFromTwoNumbersIsAsOfNow)
{
    ManualScheduler scheduler;
    const auto location = make<CLLocation>(1.5, 2.5);
    EXPECT_EQ(location->coordinate(), (CLLocationCoordinate2D { 1.5, 2.5 }));
    EXPECT_EQ(location->altitude(), 0);
    EXPECT_EQ(location->horizontalAccuracy(), 0);
    EXPECT_LT(location->verticalAccuracy(), 0);
    EXPECT_EQ(location->timestamp(), scheduler.currentDate());
}

TEST(CLLocationTest, MeasuresAlongTheSurfaceWhateverTheAltitude)
{
    const NSDate date = NSDate::fromSecsSinceEpoch(0);
    const auto low = make<CLLocation>(CLLocationCoordinate2D { 0, 0 }, 0.0, 1.0, 1.0, date);
    const auto high = make<CLLocation>(CLLocationCoordinate2D { 0, 0 }, 8'000.0, 1.0, 1.0, date);
    const auto away = make<CLLocation>(CLLocationCoordinate2D { 0, 1 }, 0.0, 1.0, 1.0, date);
    EXPECT_EQ(low->distanceFromLocation(*high), 0);
    EXPECT_NEAR(high->distanceFromLocation(*away), 111'319.490793, 1e-6);
    EXPECT_EQ(low->distanceFromLocation(*away), away->distanceFromLocation(*low));
}

} // namespace
