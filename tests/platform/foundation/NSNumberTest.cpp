#include "platform/foundation/NSNumber.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

constexpr auto largestSigned = std::numeric_limits<std::int64_t>::max();
constexpr auto smallestSigned = std::numeric_limits<std::int64_t>::min();
constexpr auto largestUnsigned = std::numeric_limits<std::uint64_t>::max();

} // namespace

TEST(NSNumberTest, LosesNoBitOfAnInteger)
{
    EXPECT_EQ(NSNumber(largestSigned).integerValue(), largestSigned);
    EXPECT_EQ(NSNumber(smallestSigned).integerValue(), smallestSigned);
    EXPECT_EQ(NSNumber(largestUnsigned).unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(NSNumber(largestUnsigned).stringValue(), QStringLiteral("18446744073709551615"));
    EXPECT_FALSE(NSNumber(largestUnsigned) == NSNumber(largestUnsigned - 1));
}

TEST(NSNumberTest, ConvertsBetweenItsKinds)
{
    EXPECT_EQ(NSNumber(true).integerValue(), 1);
    EXPECT_EQ(NSNumber(true).doubleValue(), 1.0);
    EXPECT_EQ(NSNumber(2.9).integerValue(), 2);
    EXPECT_EQ(NSNumber(-2.9).integerValue(), -2);
    EXPECT_EQ(NSNumber(-2.9).unsignedIntegerValue(), 0u);
    EXPECT_EQ(NSNumber(NSDecimalNumber(2.9)).integerValue(), 2);
    EXPECT_EQ(NSNumber(NSDecimalNumber(2.9)).doubleValue(), 2.9);
    EXPECT_TRUE(NSNumber(0.5).boolValue());
    EXPECT_TRUE(NSNumber(-1).boolValue());
    EXPECT_FALSE(NSNumber(0u).boolValue());
    EXPECT_FALSE(NSNumber(-0.0).boolValue());
    EXPECT_FALSE(NSNumber(NSDecimalNumber()).boolValue());
}

TEST(NSNumberTest, WhatATypeCannotHoldBecomesItsNearestValue)
{
    EXPECT_EQ(NSNumber(-1).unsignedIntegerValue(), 0u);
    EXPECT_EQ(NSNumber(largestUnsigned).integerValue(), largestSigned);
    EXPECT_EQ(NSNumber(1e300).unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(NSNumber(1e300).integerValue(), largestSigned);
    EXPECT_EQ(NSNumber(-1e300).integerValue(), smallestSigned);
    EXPECT_EQ(NSNumber(-1e300).unsignedIntegerValue(), 0u);
    EXPECT_EQ(NSNumber(HUGE_VAL).integerValue(), largestSigned);
    EXPECT_EQ(NSNumber(0x1p63).integerValue(), largestSigned);
    EXPECT_EQ(NSNumber(0x1p64).unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(NSNumber(NSDecimalNumber::powerOfTen(30)).integerValue(), largestSigned);
    EXPECT_EQ(NSNumber(NSDecimalNumber::powerOfTen(30).negated()).integerValue(), smallestSigned);
    EXPECT_EQ(NSNumber(NSDecimalNumber::powerOfTen(30)).unsignedIntegerValue(), largestUnsigned);
    EXPECT_EQ(NSNumber(NSDecimalNumber(-1)).unsignedIntegerValue(), 0u);
}

TEST(NSNumberTest, WhatIsNoNumberConvertsToZero)
{
    EXPECT_EQ(NSNumber(std::nan("")).integerValue(), 0);
    EXPECT_EQ(NSNumber(std::nan("")).unsignedIntegerValue(), 0u);
    EXPECT_EQ(NSNumber(NSDecimalNumber::notANumber()).integerValue(), 0);
    EXPECT_TRUE(std::isnan(NSNumber(std::nan("")).doubleValue()));
}

TEST(NSNumberTest, ComparesByExactValueWhateverTheKind)
{
    EXPECT_EQ(NSNumber(1), NSNumber(1.0));
    EXPECT_EQ(NSNumber(true), NSNumber(1u));
    EXPECT_EQ(NSNumber(0.1), NSNumber(NSDecimalNumber::withMantissa(1, -1, false)));
    EXPECT_FALSE(NSNumber(std::int64_t { 9007199254740993 }) == NSNumber(9007199254740992.0));
    EXPECT_LT(NSNumber(-1), NSNumber(largestUnsigned));
}
