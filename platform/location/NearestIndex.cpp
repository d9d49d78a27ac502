#include "platform/location/NearestIndex.h"

#include <GeographicLib/Geocentric.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// The chord c bounds the geodesic s: c ≤ s ≤ 2r·asin(c/2r). A curve bends away from its chord the more
// the tighter it is, and no geodesic is tighter than r, the radius of the meridian at the equator,
// rounded down.
constexpr double tightestRadius = 6'335'400;
// Farther apart than the tightest circle is wide: the other side of the earth, at most half a meridian.
constexpr double halfMeridian = 20'003'932;
// What a chord and a geodesic, both computed with rounding, may miss their true values by.
constexpr double rounding = 1e-7;

double shortestGeodesic(double chord) { return chord - rounding; }

double longestGeodesic(double chord)
{
    if (chord >= 2 * tightestRadius)
        return halfMeridian + rounding;
    return 2 * tightestRadius * std::asin(chord / (2 * tightestRadius)) + rounding;
}

struct Position {
    double x;
    double y;
    double z;
};

Position positionOf(const CLLocationCoordinate2D& place)
{
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    if (!(std::abs(place.latitude) <= 90) || !std::isfinite(place.longitude))
        return { nowhere, nowhere, nowhere };
    Position position {};
    GeographicLib::Geocentric::WGS84().Forward(
        place.latitude, place.longitude, 0, position.x, position.y, position.z);
    return position;
}

} // namespace

NearestIndex::NearestIndex(std::vector<CLLocationCoordinate2D> places)
    : m_places(std::move(places))
{
    m_x.reserve(m_places.size());
    m_y.reserve(m_places.size());
    m_z.reserve(m_places.size());
    for (const CLLocationCoordinate2D& place : m_places) {
        const Position position = positionOf(place);
        m_x.push_back(position.x);
        m_y.push_back(position.y);
        m_z.push_back(position.z);
    }
}

std::vector<std::size_t> NearestIndex::nearest(const CLLocationCoordinate2D& centre, std::size_t limit) const
{
    limit = std::min(limit, size());
    std::vector<Candidate> ordered = candidates(centre, limit);
    orderByGeodesic(ordered, centre, limit);

    std::vector<std::size_t> result;
    result.reserve(limit);
    for (std::size_t i = 0; i < std::min(limit, ordered.size()); ++i)
        result.push_back(ordered[i].place);
    // Only when every measurable place is taken are there others left to take.
    const Position from = positionOf(centre);
    for (std::size_t place = 0; result.size() < limit; ++place)
        if (std::isnan(from.x) || std::isnan(m_x[place]))
            result.push_back(place);
    return result;
}

// Keeps the candidates that may be among the nearest; answers the squared chord beyond which none is.
double NearestIndex::narrow(std::vector<Candidate>& found, std::size_t limit)
{
    const auto last = found.begin() + static_cast<std::ptrdiff_t>(limit - 1);
    std::nth_element(found.begin(), last, found.end(), isNearer);
    const double reach = longestGeodesic(std::sqrt(last->distance)) + rounding;
    const double squaredReach = reach * reach;
    std::erase_if(found, [squaredReach](const Candidate& each) { return each.distance > squaredReach; });
    return squaredReach;
}

// Every place that may be among the nearest, by chord.
std::vector<NearestIndex::Candidate> NearestIndex::candidates(
    const CLLocationCoordinate2D& centre, std::size_t limit) const
{
    std::vector<Candidate> found;
    if (limit == 0)
        return found;
    std::size_t room = std::min(2 * limit + 32, size());
    found.reserve(room);
    const Position from = positionOf(centre);
    double squaredReach = std::numeric_limits<double>::infinity();
    for (std::size_t place = 0; place < size(); ++place) {
        const double x = m_x[place] - from.x;
        const double y = m_y[place] - from.y;
        const double z = m_z[place] - from.z;
        const double squaredChord = x * x + y * y + z * z;
        if (!(squaredChord <= squaredReach)) // too far, or not a number
            continue;
        found.push_back({ squaredChord, place });
        if (found.size() == room && limit < size()) {
            squaredReach = narrow(found, limit);
            room = std::max(room, 2 * found.size());
        }
    }
    if (found.size() > limit)
        narrow(found, limit);
    for (Candidate& each : found)
        each.distance = std::sqrt(each.distance);
    std::sort(found.begin(), found.end(), isNearer);
    return found;
}

// Puts places that are in the order of their chords into the order of their geodesics, as far as the limit.
// Places form runs in which the bounds of neighbours overlap; between runs the chords have settled the order.
void NearestIndex::orderByGeodesic(
    std::vector<Candidate>& ordered, const CLLocationCoordinate2D& centre, std::size_t limit) const
{
    const auto limitEnd = ordered.begin() + static_cast<std::ptrdiff_t>(std::min(limit, ordered.size()));
    for (auto begin = ordered.begin(); begin < limitEnd;) {
        auto end = begin + 1;
        while (
            end != ordered.end() && shortestGeodesic(end->distance) <= longestGeodesic((end - 1)->distance))
            ++end;
        if (end - begin > 1) {
            for (auto each = begin; each != end; ++each)
                each->distance = geodesicDistance(centre, m_places[each->place]);
            std::sort(begin, end, isNearer);
        }
        begin = end;
    }
}
