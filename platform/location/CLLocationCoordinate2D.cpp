#include "platform/location/CLLocationCoordinate2D.h"

#include <GeographicLib/Geodesic.hpp>

#include <cmath>

CLLocationCoordinate2D CLLocationCoordinate2DMake(double latitude, double longitude)
{
    return { latitude, longitude };
}

bool CLLocationCoordinate2DIsValid(const CLLocationCoordinate2D& coordinate)
{
    return std::abs(coordinate.latitude) <= 90 && std::abs(coordinate.longitude) <= 180;
}

double geodesicDistance(const CLLocationCoordinate2D& from, const CLLocationCoordinate2D& to)
{
    double metres = 0;
    GeographicLib::Geodesic::WGS84().Inverse(
        from.latitude, from.longitude, to.latitude, to.longitude, metres);
    return metres;
}
