#include "platform/location/NSValue+MKCoordinate.h"

#include <gtest/gtest.h>

namespace {

TEST(CoordinateValueTest, GivesBackTheCoordinateItWraps)
{
    const CLLocationCoordinate2D coordinate { -37.8183, 144.9671 };
    EXPECT_EQ(MKCoordinateValue(NSValueWithMKCoordinate(coordinate)), coordinate);
}

TEST(CoordinateValueTest, IsZeroForNilAndForAValueOfAnotherKind)
{
    EXPECT_EQ(MKCoordinateValue(NSValue()), CLLocationCoordinate2D {});
    EXPECT_EQ(MKCoordinateValue(NSValue(QStringLiteral("CGPoint"), { 1, 2 })), CLLocationCoordinate2D {});
}

TEST(CoordinateValueTest, IsZeroForAValueThatWasCutShort)
{
    const NSValue whole = NSValueWithMKCoordinate({ 1, 2 });
    EXPECT_EQ(MKCoordinateValue(NSValue(whole.kind(), { 1 })), CLLocationCoordinate2D {});
}

} // namespace
