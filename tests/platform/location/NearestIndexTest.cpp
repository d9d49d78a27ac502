#include "platform/location/NearestIndex.h"

#include <GeographicLib/Geodesic.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>

namespace {

using Places = std::vector<CLLocationCoordinate2D>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// The plain way that the index must agree with: measure everything, sort everything.
std::vector<double> plainDistances(
    const Places& places, const CLLocationCoordinate2D& centre, std::size_t limit)
{
    std::vector<double> distances;
    for (const CLLocationCoordinate2D& place : places)
        distances.push_back(geodesicDistance(centre, place));
    const auto numbers = std::partition(
        distances.begin(), distances.end(), [](double distance) { return !std::isnan(distance); });
    std::sort(distances.begin(), numbers);
    distances.resize(std::min(limit, distances.size()));
    return distances;
}

// Answers are the same when the distances are, to the last bit, rank by rank: equally distant places may
// change places, others may not.
void expectPlainAnswer(const Places& places, const CLLocationCoordinate2D& centre, std::size_t limit)
{
    const std::vector<std::size_t> answer = NearestIndex(places).nearest(centre, limit);
    const std::vector<double> expected = plainDistances(places, centre, limit);
    ASSERT_EQ(answer.size(), expected.size());
    EXPECT_EQ(std::set<std::size_t>(answer.begin(), answer.end()).size(), answer.size())
        << "a place came twice";
    for (std::size_t rank = 0; rank < answer.size(); ++rank) {
        const double distance = geodesicDistance(centre, places[answer[rank]]);
        ASSERT_TRUE(distance == expected[rank] || (std::isnan(distance) && std::isnan(expected[rank])))
            << "rank " << rank << " of " << limit << ": " << distance << " instead of " << expected[rank];
    }
}

class Box {
public:
    Box(CLLocationCoordinate2D centre, double halfWidth)
        : m_centre(centre)
        , m_halfWidth(halfWidth)
    {
    }

    CLLocationCoordinate2D place()
    {
        const double latitude = m_centre.latitude + m_spread(m_random) * m_halfWidth;
        return { std::clamp(latitude, -90.0, 90.0), m_centre.longitude + m_spread(m_random) * m_halfWidth };
    }
    Places places(std::size_t count)
    {
        Places all(count);
        std::generate(all.begin(), all.end(), [this] { return place(); });
        return all;
    }

private:
    CLLocationCoordinate2D m_centre;
    double m_halfWidth;
    std::mt19937 m_random { 7 };
    std::uniform_real_distribution<double> m_spread { -1, 1 };
};

class NearestIndexBoxTest : public testing::TestWithParam<std::tuple<CLLocationCoordinate2D, double>> { };

TEST_P(NearestIndexBoxTest, AgreesWithTheFullSortByGeodesic)
{
    const auto [centre, halfWidth] = GetParam();
    Box box(centre, halfWidth);
    for (const std::size_t count : { 1, 2, 60, 1'000 }) {
        const Places places = box.places(count);
        for (const std::size_t limit : { std::size_t { 1 }, std::size_t { 30 }, count / 2, count })
            for (const CLLocationCoordinate2D& from : { centre, box.place(), places.front() })
                expectPlainAnswer(places, from, limit);
    }
}

INSTANTIATE_TEST_SUITE_P(AllSizesEverywhere, NearestIndexBoxTest,
    testing::Combine(testing::Values(CLLocationCoordinate2D { -37.8183, 144.9671 }, // the sample area
                         CLLocationCoordinate2D { 0, 0 }, // the tightest curve
                         CLLocationCoordinate2D { 90, 0 }, CLLocationCoordinate2D { -90, 30 }, // the poles
                         CLLocationCoordinate2D { 12, 180 }), // the antimeridian
        testing::Values(
            1e-9, 1e-6, 1e-3, 0.02, 1.0, 20.0, 90.0, 180.0))); // degrees: from a hair to the globe

TEST(NearestIndexTest, AgreesSeenFromTheOtherSideOfTheEarth)
{
    for (const double halfWidth : { 1e-6, 0.02, 1.0, 10.0 }) {
        const Places places = Box({ 30, 0 }, halfWidth).places(500);
        for (const CLLocationCoordinate2D& from : { CLLocationCoordinate2D { -30, 180 },
                 CLLocationCoordinate2D { -29.9, 179.8 }, CLLocationCoordinate2D { 0, 180 } })
            expectPlainAnswer(places, from, 30);
    }
}

TEST(NearestIndexTest, OrdersPlacesWhoseChordsSayOtherwise)
{
    // Rings of places whose distances differ by less than a geodesic differs from its chord, in directions
    // in which the earth is bent differently: the order of the chords is not the order of the geodesics.
    std::mt19937 random { 11 };
    std::uniform_real_distribution<double> direction { 0, 360 };
    std::uniform_real_distribution<double> wobble { -0.5, 0.5 };
    for (const CLLocationCoordinate2D& centre :
        { CLLocationCoordinate2D { 0, 0 }, { -37.8183, 144.9671 }, { 89.9, 0 } })
        for (const double radius : { 1e3, 1e5, 2e6, 9e6 }) {
            const double gap = radius * radius * radius / (24 * 6.3e6 * 6.3e6) * 0.01;
            Places ring;
            for (int i = 0; i < 500; ++i) {
                CLLocationCoordinate2D place;
                GeographicLib::Geodesic::WGS84().Direct(centre.latitude, centre.longitude, direction(random),
                    radius + gap * wobble(random), place.latitude, place.longitude);
                ring.push_back(place);
            }
            expectPlainAnswer(ring, centre, 100);
        }
}

TEST(NearestIndexTest, HandlesManyPlacesAtTheSameSpot)
{
    Places places(400, { -37.8183, 144.9671 });
    places.insert(places.end(), 400, { -37.8141, 144.9762 });
    expectPlainAnswer(places, { -37.8183, 144.9671 }, 30);
    expectPlainAnswer(places, { -37.8141, 144.9762 }, 500);
}

TEST(NearestIndexTest, AnswersNoMoreThanThereAre)
{
    const NearestIndex index(Places { { 0, 2 }, { 0, 1 }, { 0, 3 } });
    EXPECT_EQ(index.nearest({ 0, 0 }, 100), (std::vector<std::size_t> { 1, 0, 2 }));
    EXPECT_EQ(index.nearest({ 0, 0 }, std::numeric_limits<std::size_t>::max()).size(), 3U);
}

TEST(NearestIndexTest, AnswersNothingToALimitOfZeroOrFromAnEmptySet)
{
    EXPECT_TRUE(NearestIndex(Places { { 0, 2 } }).nearest({ 0, 0 }, 0).empty());
    EXPECT_TRUE(NearestIndex().nearest({ 0, 0 }, 30).empty());
    EXPECT_EQ(NearestIndex().size(), 0U);
}

TEST(NearestIndexTest, PutsPlacesThatAreNowhereLast)
{
    const NearestIndex index(Places { { nan, 0 }, { 0, 2 }, { 0, nan }, { 91, 0 }, { 0, 1 },
        { 0, std::numeric_limits<double>::infinity() } });
    EXPECT_EQ(index.nearest({ 0, 0 }, 2), (std::vector<std::size_t> { 4, 1 }));
    std::vector<std::size_t> all = index.nearest({ 0, 0 }, 6);
    ASSERT_EQ(all.size(), 6U);
    EXPECT_EQ(all[0], 4U);
    EXPECT_EQ(all[1], 1U);
    std::sort(all.begin(), all.end());
    EXPECT_EQ(all, (std::vector<std::size_t> { 0, 1, 2, 3, 4, 5 }));
}

TEST(NearestIndexTest, StillAnswersFromACentreThatIsNowhere)
{
    const NearestIndex index(Places { { 0, 1 }, { nan, 0 }, { 0, 2 } });
    EXPECT_EQ(index.nearest({ nan, 0 }, 2).size(), 2U);
    EXPECT_EQ(index.nearest({ 91, 0 }, 9).size(), 3U);
}

TEST(NearestIndexTest, CountsWholeTurnsOfLongitudeAsNone)
{
    expectPlainAnswer({ { 0, 361 }, { 0, 2 }, { 0, -359.5 } }, { 0, 360 }, 3);
}

} // namespace
