// A place on the earth: latitude and longitude in degrees on WGS84.
#pragma once

struct CLLocationCoordinate2D {
    double latitude = 0;
    double longitude = 0;

    bool operator==(const CLLocationCoordinate2D&) const = default;
};

CLLocationCoordinate2D CLLocationCoordinate2DMake(double latitude, double longitude);

// Whether the latitude lies within ±90 and the longitude within ±180 degrees. Not-a-number is not valid.
bool CLLocationCoordinate2DIsValid(const CLLocationCoordinate2D&);

// Metres along the shortest way on the earth's surface, exact to nanometres. The longitude may be any
// number of turns; NaN where a latitude is not within ±90 degrees or a longitude is not finite.
double geodesicDistance(const CLLocationCoordinate2D& from, const CLLocationCoordinate2D& to);
