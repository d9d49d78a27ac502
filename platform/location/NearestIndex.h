// Answers which of many places are nearest to another one, in the exact order of their geodesics.
//
// A geodesic costs a microsecond, and only the order is asked for. The straight chord through the
// earth costs next to nothing and bounds the geodesic from both sides, so near places are ordered
// without a single geodesic; one is computed only for places whose bounds overlap.
//
// Made once for a set of places and never changed, so it may be asked from every thread.
#pragma once

#include "platform/location/CLLocationCoordinate2D.h"

#include <cstddef>
#include <vector>

class NearestIndex {
public:
    NearestIndex() = default;
    explicit NearestIndex(std::vector<CLLocationCoordinate2D> places);

    std::size_t size() const { return m_places.size(); }

    // The positions, in the set, of the nearest min(size, limit) places, nearest first; equally distant ones
    // in no particular order. Places whose distance is NaN come after all others.
    std::vector<std::size_t> nearest(const CLLocationCoordinate2D& centre, std::size_t limit) const;

private:
    struct Candidate {
        // The squared chord while collecting, then the chord; the geodesic where it is needed.
        double distance;
        std::size_t place;
    };
    static bool isNearer(const Candidate& first, const Candidate& second)
    {
        return first.distance < second.distance;
    }
    static double narrow(std::vector<Candidate>&, std::size_t limit);
    std::vector<Candidate> candidates(const CLLocationCoordinate2D& centre, std::size_t limit) const;
    void orderByGeodesic(
        std::vector<Candidate>&, const CLLocationCoordinate2D& centre, std::size_t limit) const;

    std::vector<CLLocationCoordinate2D> m_places;
    // Earth-centred positions in metres, an axis each, so that a scan runs through memory in order.
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<double> m_z;
};
