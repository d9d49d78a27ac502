#include "platform/foundation/NSNumberFormatter.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

class NSNumberFormatterTest : public testing::Test {
protected:
    NSNumberFormatterTest() { formatter->setLocale(QStringLiteral("en_US")); }
    std::string text(const NSNumber& number) const
    {
        return formatter->stringFromNumber(number).toStdString();
    }

    std::shared_ptr<NSNumberFormatter> formatter = make<NSNumberFormatter>();
};

} // namespace

TEST_F(NSNumberFormatterTest, PrintsWholeNumbersWithoutGrouping)
{
    EXPECT_EQ(text(0), "0");
    EXPECT_EQ(text(1000000), "1000000");
    EXPECT_EQ(text(-999), "-999");
    EXPECT_EQ(text(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(text(NSDecimalNumber::powerOfTen(18)), "1000000000000000000");
    EXPECT_EQ(text(NSDecimalNumber::powerOfTen(18).negated()), "-1000000000000000000");
}

TEST_F(NSNumberFormatterTest, RoundsTowardsZeroWhenAskedTo)
{
    formatter->setRoundingMode(NSNumberFormatter::RoundingMode::Down);
    EXPECT_EQ(text(999.9), "999");
    EXPECT_EQ(text(-1.999), "-1");
    EXPECT_EQ(text(NSDecimalNumber(12.345)), "12");
}

TEST_F(NSNumberFormatterTest, RoundsHalvesToTheEvenNeighbourByDefault)
{
    EXPECT_EQ(text(0.5), "0");
    EXPECT_EQ(text(1.5), "2");
    EXPECT_EQ(text(2.5), "2");
    EXPECT_EQ(text(2.51), "3");
}

TEST_F(NSNumberFormatterTest, WhatRoundsToZeroHasNoSign)
{
    formatter->setRoundingMode(NSNumberFormatter::RoundingMode::Down);
    EXPECT_EQ(text(-0.9), "0");
    EXPECT_EQ(text(-0.0), "0");
}

TEST_F(NSNumberFormatterTest, PrintsFractionsUpToTheMaximum)
{
    formatter->setMaximumFractionDigits(2);
    EXPECT_EQ(text(1.5), "1.5");
    EXPECT_EQ(text(0.125), "0.12");
    EXPECT_EQ(text(3), "3");
    formatter->setMaximumFractionDigits(-1);
    EXPECT_EQ(formatter->maximumFractionDigits(), 0);
    EXPECT_EQ(text(1.4), "1");
}

TEST_F(NSNumberFormatterTest, ANilSeparatorIsTheLocalesOwn)
{
    formatter->setMaximumFractionDigits(1);
    formatter->setLocale(QStringLiteral("de"));
    formatter->setDecimalSeparator(NSString());
    EXPECT_EQ(text(1.5), "1,5");
    formatter->setDecimalSeparator(QStringLiteral("'"));
    EXPECT_EQ(text(1.5), "1'5");
}

TEST_F(NSNumberFormatterTest, WritesInTheDigitsOfTheLocale)
{
    formatter->setLocale(QStringLiteral("ar-EG"));
    EXPECT_EQ(text(12), "١٢");
}

TEST_F(NSNumberFormatterTest, PrintsWhatIsNoFiniteNumber)
{
    EXPECT_EQ(text(std::nan("")), "NaN");
    EXPECT_EQ(text(-std::nan("")), "NaN");
    EXPECT_EQ(text(NSDecimalNumber::notANumber()), "NaN");
    EXPECT_EQ(text(HUGE_VAL), "∞");
    EXPECT_EQ(text(-HUGE_VAL), "-∞");
}

TEST_F(NSNumberFormatterTest, PrintsTheLargestAndTheSmallestDoubles)
{
    EXPECT_EQ(text(1e21), "1000000000000000000000");
    EXPECT_EQ(text(std::numeric_limits<double>::max()).size(), 309u);
    EXPECT_EQ(text(5e-324), "0");
}

TEST_F(NSNumberFormatterTest, AnObjectThatIsNoNumberIsNil)
{
    EXPECT_EQ(formatter->stringForObjectValue(5), QStringLiteral("5"));
    EXPECT_TRUE(formatter->stringForObjectValue(QStringLiteral("5")).isNull());
    EXPECT_TRUE(formatter->stringForObjectValue(nullptr).isNull());
    EXPECT_TRUE(formatter->stringForObjectValue(formatter).isNull());
}
