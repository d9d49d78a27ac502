#include "platform/location/CLLocation.h"

#include "platform/foundation/Scheduler.h"

CLLocation::CLLocation(double latitude, double longitude)
    : CLLocation({ latitude, longitude }, 0, 0, -1, Scheduler::current().currentDate())
{
}

CLLocation::CLLocation(const CLLocationCoordinate2D& coordinate, double altitude, double horizontalAccuracy,
    double verticalAccuracy, NSDate timestamp)
    : m_coordinate(coordinate)
    , m_altitude(altitude)
    , m_horizontalAccuracy(horizontalAccuracy)
    , m_verticalAccuracy(verticalAccuracy)
    , m_timestamp(std::move(timestamp))
{
}

double CLLocation::distanceFromLocation(const CLLocation& other) const
{
    return geodesicDistance(m_coordinate, other.m_coordinate);
}
