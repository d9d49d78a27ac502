// Coordinates as values, which is how they are coded.
#pragma once

#include "platform/foundation/NSValue.h"
#include "platform/location/CLLocationCoordinate2D.h"

// valueWithMKCoordinate:
NSValue NSValueWithMKCoordinate(const CLLocationCoordinate2D&);
// MKCoordinateValue — 0, 0 for a value of another kind and for nil.
CLLocationCoordinate2D MKCoordinateValue(const NSValue&);
