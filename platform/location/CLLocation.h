// Where something is, how well that is known, and when it was known. Never changes once made.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/location/CLLocationCoordinate2D.h"

class CLLocation final : public NSObject {
public:
    // initWithLatitude:longitude: — as of now, at altitude 0; the accuracies are those of a place that was
    // not measured: horizontally exact, vertically unknown.
    CLLocation(double latitude, double longitude);
    // initWithCoordinate:altitude:horizontalAccuracy:verticalAccuracy:timestamp:
    CLLocation(const CLLocationCoordinate2D& coordinate, double altitude, double horizontalAccuracy,
        double verticalAccuracy, NSDate timestamp);

    const CLLocationCoordinate2D& coordinate() const { return m_coordinate; }
    double altitude() const { return m_altitude; } // metres
    double horizontalAccuracy() const { return m_horizontalAccuracy; } // metres; negative: unknown
    double verticalAccuracy() const { return m_verticalAccuracy; } // metres; negative: unknown
    const NSDate& timestamp() const { return m_timestamp; }

    // Metres along the earth's surface; altitudes do not count. 0 for the same point, NaN when one of the
    // two is no valid place (see geodesicDistance()).
    double distanceFromLocation(const CLLocation& other) const;

private:
    CLLocationCoordinate2D m_coordinate;
    double m_altitude;
    double m_horizontalAccuracy;
    double m_verticalAccuracy;
    NSDate m_timestamp;
};
