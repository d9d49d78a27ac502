#include "platform/location/NSValue+MKCoordinate.h"

namespace {

NSString kind() { return QStringLiteral("MKCoordinate"); }

} // namespace

NSValue NSValueWithMKCoordinate(const CLLocationCoordinate2D& coordinate)
{
    return { kind(), { coordinate.latitude, coordinate.longitude } };
}

CLLocationCoordinate2D MKCoordinateValue(const NSValue& value)
{
    if (value.kind() != kind() || value.members().size() != 2)
        return {};
    return { value.members()[0], value.members()[1] };
}
