#include "model/ORVCountFormatter.h"

#include "tests/support/AssertionRecorder.h"
#include "tests/support/TemporaryBundle.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class ORVCountFormatterTest : public testing::Test {
protected:
    ORVCountFormatterTest()
    {
        bundle.makeMain(); // without strings tables: every text is its base-language default
        formatter = make<ORVCountFormatter>();
        formatter->numberFormatter()->setLocale(QStringLiteral("en_US"));
    }

    std::string text(const NSNumber& number) const
    {
        return formatter->stringFromNumber(number).toStdString();
    }

    TemporaryBundle bundle;
    std::shared_ptr<ORVCountFormatter> formatter;
};

TEST_F(ORVCountFormatterTest, ShowsUpToThreeDigitsAsTheyAre)
{
    EXPECT_EQ(text(0), "0");
    EXPECT_EQ(text(7), "7");
    EXPECT_EQ(text(999), "999");
}

TEST_F(ORVCountFormatterTest, DropsFractions)
{
    EXPECT_EQ(text(999.9), "999");
    EXPECT_EQ(text(0.9), "0");
    EXPECT_EQ(text(1500), "1k");
}

TEST_F(ORVCountFormatterTest, ScalesByThousandsFromTheThresholdOn)
{
    EXPECT_EQ(text(1000), "1k");
    EXPECT_EQ(text(12345), "12k");
    EXPECT_EQ(text(999999), "999k");
    EXPECT_EQ(text(1000000), "1M");
    EXPECT_EQ(text(999999999), "999M");
    EXPECT_EQ(text(1000000000), "1G");
    EXPECT_EQ(text(1'000'000'000'000), "1T");
}

TEST_F(ORVCountFormatterTest, GrowsWithoutEndAfterTheLastSuffix)
{
    EXPECT_EQ(text(1'000'000'000'000'000), "1000T");
    EXPECT_EQ(text(1'000'000'000'000'000'000), "1000000T");
    EXPECT_EQ(text(std::numeric_limits<std::uint64_t>::max()), "18446744T");
}

TEST_F(ORVCountFormatterTest, CountsInExactDecimalsNotInBinaryFractions)
{
    EXPECT_EQ(text(999'999'999'999'999'999), "999999T"); // 10^18 as a double
    EXPECT_EQ(text(999.99999999999), "999");
}

TEST_F(ORVCountFormatterTest, TruncatesNegativeNumbersTowardsZero)
{
    EXPECT_EQ(text(-999), "-999");
    EXPECT_EQ(text(-1000), "-1k");
    EXPECT_EQ(text(-1500), "-1k");
    EXPECT_EQ(text(std::numeric_limits<std::int64_t>::min()), "-9223372T");
}

TEST_F(ORVCountFormatterTest, GivesNilForEverythingThatIsNoNumber)
{
    EXPECT_TRUE(formatter->stringForObjectValue(QStringLiteral("1000")).isNull());
    EXPECT_TRUE(formatter->stringForObjectValue(nullptr).isNull());
    EXPECT_TRUE(formatter->stringForObjectValue(formatter).isNull());
    EXPECT_EQ(formatter->stringForObjectValue(NSNumber(1000)), QStringLiteral("1k"));
}

TEST_F(ORVCountFormatterTest, SurvivesNotANumber)
{
    EXPECT_EQ(text(std::numeric_limits<double>::quiet_NaN()), "NaN");
}

TEST_F(ORVCountFormatterTest, ShowsMoreDigitsWhenAskedTo)
{
    formatter->setMaximumSignificantDigits(4);
    EXPECT_EQ(text(9999), "9999");
    EXPECT_EQ(text(10000), "10k");
    EXPECT_EQ(text(-9999), "-9999");
    EXPECT_EQ(text(-10000), "-10k");
}

TEST_F(ORVCountFormatterTest, NeverScalesEverythingHoweverManyDigitsAreAllowed)
{
    formatter->setMaximumSignificantDigits(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(text(1'000'000'000'000), "1000000000000");
}

TEST_F(ORVCountFormatterTest, RaisesFewerThanThreeDigitsToThree)
{
    EXPECT_EQ(formatter->maximumSignificantDigits(), 3U);
    for (const std::uint64_t digits : { 0U, 1U, 2U }) {
        formatter->setMaximumSignificantDigits(digits);
        EXPECT_EQ(formatter->maximumSignificantDigits(), 3U);
        EXPECT_EQ(text(999), "999");
    }
}

TEST_F(ORVCountFormatterTest, PutsNumberAndSuffixIntoTheFormat)
{
    EXPECT_EQ(formatter->suffixFormat(), QStringLiteral("%@%@"));
    formatter->setSuffixFormat(QStringLiteral("%2$@ %1$@"));
    EXPECT_EQ(text(1500), "k 1");
    EXPECT_EQ(text(15), "15") << "no suffix, no format";
}

TEST_F(ORVCountFormatterTest, TakesItsSuffixFormatFromTheStringsTable)
{
    TemporaryBundle translated;
    translated.writeFolder(QStringLiteral("en.lproj"));
    translated.writeFile(
        QStringLiteral("en.lproj/ORVCountFormatter.strings"), "\"Suffix Format\" = \"%@ %@\";\n");
    translated.makeMain();
    EXPECT_EQ(make<ORVCountFormatter>()->stringFromNumber(2000), QStringLiteral("2 k"));
}

TEST_F(ORVCountFormatterTest, KeepsANumberFormatterThatPrintsWholeNumbers)
{
    EXPECT_EQ(formatter->numberFormatter()->maximumFractionDigits(), 0);
    EXPECT_EQ(formatter->numberFormatter()->roundingMode(), NSNumberFormatter::RoundingMode::Down);
    EXPECT_EQ(formatter->numberFormatter()->stringFromNumber(1234567.9), QStringLiteral("1234567"));
}

TEST_F(ORVCountFormatterTest, WithoutSuffixesFailsAnAssertionAndShowsTheBareNumber)
{
    class WithoutSuffixes : public ORVCountFormatter {
    protected:
        const std::vector<NSString>& suffixes() const override { return m_none; }

    private:
        std::vector<NSString> m_none;
    };
    AssertionRecorder assertions;
    EXPECT_EQ(make<WithoutSuffixes>()->stringFromNumber(12345), QStringLiteral("12345"));
    ASSERT_EQ(assertions.failures().size(), 1U);
    EXPECT_EQ(assertions.failures()[0].message, QStringLiteral("Expecting at least one exponential suffix."));
    EXPECT_EQ(assertions.failures()[0].source, QStringLiteral("ORVCountFormatter"));
}

} // namespace
