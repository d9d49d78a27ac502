#include "platform/foundation/NSDecimalNumber.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

const NSDecimalNumberHandler downToTen { NSRoundingMode::Down, 10 };

NSDecimalNumber decimal(double value) { return NSDecimalNumber(value); }

} // namespace

TEST(NSDecimalNumberTest, HoldsIntegersToTheLastBit)
{
    EXPECT_EQ(NSDecimalNumber(0).stringValue(), QStringLiteral("0"));
    EXPECT_EQ(NSDecimalNumber(std::numeric_limits<std::uint64_t>::max()).stringValue(),
        QStringLiteral("18446744073709551615"));
    EXPECT_EQ(NSDecimalNumber(std::numeric_limits<std::int64_t>::min()).stringValue(),
        QStringLiteral("-9223372036854775808"));
    EXPECT_EQ(NSDecimalNumber(std::int8_t { -128 }).stringValue(), QStringLiteral("-128"));
    EXPECT_EQ(NSDecimalNumber(true).stringValue(), QStringLiteral("1"));
}

TEST(NSDecimalNumberTest, HoldsTenToTheEighteenthExactly)
{
    const auto number = NSDecimalNumber::powerOfTen(18);
    EXPECT_EQ(number.stringValue(), QStringLiteral("1000000000000000000"));
    EXPECT_EQ(number, NSDecimalNumber(std::int64_t { 1000000000000000000 }));
    EXPECT_EQ(number, decimal(1e18));
    EXPECT_LT(NSDecimalNumber(std::int64_t { 999999999999999999 }), number);
}

TEST(NSDecimalNumberTest, TakesTheShortestDigitsOfADouble)
{
    EXPECT_EQ(decimal(0.1).stringValue(), QStringLiteral("0.1"));
    EXPECT_EQ(decimal(999.9).stringValue(), QStringLiteral("999.9"));
    EXPECT_EQ(decimal(-37.817541).stringValue(), QStringLiteral("-37.817541"));
    EXPECT_EQ(decimal(1.0 / 3).stringValue(), QStringLiteral("0.3333333333333333"));
    EXPECT_EQ(decimal(-0.0).stringValue(), QStringLiteral("0"));
    EXPECT_EQ(decimal(1e21).stringValue(), QStringLiteral("1000000000000000000000"));
    EXPECT_EQ(decimal(5e-324).stringValue().size(), 326);
}

TEST(NSDecimalNumberTest, GivesBackTheDoubleItWasMadeFrom)
{
    for (const double value : { 0.0, 0.1, -1.5, 1e300, 5e-324, 123456789.123456789, 1.7976931348623157e308 })
        EXPECT_EQ(decimal(value).doubleValue(), value);
}

TEST(NSDecimalNumberTest, WhatIsNoNumberEqualsNothing)
{
    for (const double value : { std::nan(""), HUGE_VAL, -HUGE_VAL }) {
        const NSDecimalNumber number(value);
        EXPECT_TRUE(number.isNotANumber());
        EXPECT_FALSE(number == number);
        EXPECT_FALSE(number < NSDecimalNumber(1));
        EXPECT_FALSE(number > NSDecimalNumber(1));
        EXPECT_FALSE(number.isZero());
        EXPECT_TRUE(std::isnan(number.doubleValue()));
        EXPECT_EQ(number.stringValue(), QStringLiteral("NaN"));
        EXPECT_TRUE(number.multiplyingByPowerOf10(3, downToTen).isNotANumber());
        EXPECT_TRUE(number.negated().isNotANumber());
    }
}

TEST(NSDecimalNumberTest, ComparesByValue)
{
    EXPECT_EQ(decimal(1.0), NSDecimalNumber(1));
    EXPECT_EQ(NSDecimalNumber::withMantissa(1000, -3, false), NSDecimalNumber(1));
    EXPECT_LT(decimal(999.9), NSDecimalNumber(1000));
    EXPECT_GT(decimal(1000.1), NSDecimalNumber(1000));
    EXPECT_LT(NSDecimalNumber(-1000), decimal(-999.9));
    EXPECT_LT(NSDecimalNumber(-1), NSDecimalNumber(0));
    EXPECT_LT(NSDecimalNumber(0), decimal(1e-300));
    EXPECT_GT(NSDecimalNumber(0), decimal(-1e-300));
    EXPECT_EQ(decimal(-0.0), NSDecimalNumber(0));
    EXPECT_LT(decimal(1e-300), decimal(1e300));
    EXPECT_LT(NSDecimalNumber(12), decimal(12.5));
    EXPECT_LT(NSDecimalNumber(2), NSDecimalNumber(11));
}

TEST(NSDecimalNumberTest, MultipliesByAPowerOfTenWithoutLoss)
{
    const auto result = NSDecimalNumber(12345).multiplyingByPowerOf10(-3, downToTen);
    EXPECT_EQ(result.stringValue(), QStringLiteral("12.345"));
    EXPECT_EQ(result.multiplyingByPowerOf10(3, downToTen), NSDecimalNumber(12345));
    EXPECT_EQ(
        NSDecimalNumber::powerOfTen(18).multiplyingByPowerOf10(-12, downToTen), NSDecimalNumber(1000000));
}

TEST(NSDecimalNumberTest, RoundingDownGoesTowardsZero)
{
    const NSDecimalNumberHandler whole { NSRoundingMode::Down, 0 };
    EXPECT_EQ(decimal(1.999).multiplyingByPowerOf10(0, whole), NSDecimalNumber(1));
    EXPECT_EQ(decimal(-1.999).multiplyingByPowerOf10(0, whole), NSDecimalNumber(-1));
    EXPECT_EQ(decimal(-0.5).multiplyingByPowerOf10(0, whole).stringValue(), QStringLiteral("0"));
}

TEST(NSDecimalNumberTest, PlainRoundingTakesHalvesAwayFromZero)
{
    const NSDecimalNumberHandler whole { NSRoundingMode::Plain, 0 };
    EXPECT_EQ(decimal(0.5).multiplyingByPowerOf10(0, whole), NSDecimalNumber(1));
    EXPECT_EQ(decimal(0.49).multiplyingByPowerOf10(0, whole), NSDecimalNumber(0));
    EXPECT_EQ(decimal(0.09).multiplyingByPowerOf10(0, whole), NSDecimalNumber(0));
    EXPECT_EQ(decimal(-2.5).multiplyingByPowerOf10(0, whole), NSDecimalNumber(-3));
    EXPECT_EQ(decimal(9.99).multiplyingByPowerOf10(0, whole), NSDecimalNumber(10));
}

TEST(NSDecimalNumberTest, KeepsAsManyDigitsAsTheScaleSays)
{
    const auto number = decimal(1.23456789012345);
    EXPECT_EQ(number.multiplyingByPowerOf10(0, downToTen).stringValue(), QStringLiteral("1.2345678901"));
    EXPECT_EQ(decimal(1e-9).multiplyingByPowerOf10(-3, downToTen).stringValue(), QStringLiteral("0"));
    EXPECT_EQ(NSDecimalNumber(1234).multiplyingByPowerOf10(0, { NSRoundingMode::Down, -2 }).stringValue(),
        QStringLiteral("1200"));
}

TEST(NSDecimalNumberTest, PowersBeyondAllBoundsAreZeroOrNoNumber)
{
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int smallest = std::numeric_limits<int>::min();
    EXPECT_TRUE(NSDecimalNumber(1).multiplyingByPowerOf10(largest, downToTen).isNotANumber());
    EXPECT_TRUE(NSDecimalNumber(1).multiplyingByPowerOf10(smallest, downToTen).isZero());
    EXPECT_TRUE(NSDecimalNumber::powerOfTen(smallest).isZero());
    EXPECT_TRUE(NSDecimalNumber::powerOfTen(largest).isNotANumber());
    EXPECT_TRUE(NSDecimalNumber(0).multiplyingByPowerOf10(largest, downToTen).isZero());
}

TEST(NSDecimalNumberTest, NegatesAndKeepsZeroUnsigned)
{
    EXPECT_EQ(NSDecimalNumber::powerOfTen(3).negated(), NSDecimalNumber(-1000));
    EXPECT_EQ(NSDecimalNumber(-5).negated(), NSDecimalNumber(5));
    EXPECT_FALSE(NSDecimalNumber(0).negated().isNegative());
    EXPECT_TRUE(NSDecimalNumber::withMantissa(5, 0, true).isNegative());
}
