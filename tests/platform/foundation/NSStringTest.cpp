#include "platform/foundation/NSString.h"

#include "platform/foundation/NSLocale.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

class Sample : public NSObject {
public:
    NSString description() const override { return QStringLiteral("100 % of a sample"); }
};

} // namespace

TEST(NSStringTest, FillsObjectsNumbersAndAddresses)
{
    const auto sample = make<Sample>();
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%@ by %@"), { QStringLiteral("A"), sample }),
        QStringLiteral("A by 100 % of a sample"));
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("@%ldx"), { 3L }), QStringLiteral("@3x"));
    EXPECT_EQ(
        NSStringWithFormat(QStringLiteral("%lu recordings"), { std::numeric_limits<std::uint64_t>::max() }),
        QStringLiteral("18446744073709551615 recordings"));
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%d %u"), { -1, 2u }), QStringLiteral("-1 2"));
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%p"), { reinterpret_cast<const void*>(0xBEEF) }),
        QStringLiteral("0xbeef"));
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%@"), { "plain" }), QStringLiteral("plain"));
}

TEST(NSStringTest, NilShowsAsNull)
{
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%@, %@"), { NSString(), std::shared_ptr<Sample>() }),
        QStringLiteral("(null), (null)"));
}

TEST(NSStringTest, TwoPercentSignsAreOne)
{
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%d%%"), { 50 }), QStringLiteral("50%"));
}

TEST(NSStringTest, AnArgumentIsNotReadAsAFormat)
{
    EXPECT_EQ(
        NSStringWithFormat(QStringLiteral("%@ %@"), { QStringLiteral("%@"), 1 }), QStringLiteral("%@ 1"));
}

TEST(NSStringTest, NumberedArgumentsComeInAnyOrder)
{
    EXPECT_EQ(
        NSStringWithFormat(QStringLiteral("%2$@%1$@"), { QStringLiteral("k"), 12 }), QStringLiteral("12k"));
}

TEST(NSStringTest, AFormatThatAsksForTooMuchNeverReadsPastItsArguments)
{
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%@ %@ %lu"), { 1 }), QStringLiteral("1 (null) (null)"));
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%9$@ %0$@ %99999999999999999999$@"), { 1 }),
        QStringLiteral("(null) (null) (null)"));
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%@"), {}), QStringLiteral("(null)"));
}

TEST(NSStringTest, AnArgumentShowsAsWhatItIs)
{
    EXPECT_EQ(NSStringWithFormat(QStringLiteral("%lu %p %@"), { QStringLiteral("text"), 5, 7 }),
        QStringLiteral("text 5 7"));
}

TEST(NSStringTest, WhatIsNoFormatStaysAsItIs)
{
    for (const char* text : { "", "100 % sure", "%", "50%", "%q", "%l", "%1$", "%-5d", "%\n" })
        EXPECT_EQ(NSStringWithFormat(NSString::fromLatin1(text), { 1 }), NSString::fromLatin1(text)) << text;
    EXPECT_FALSE(NSStringWithFormat(QStringLiteral(""), {}).isNull());
}

TEST(NSStringTest, ALocaleGroupsWholeNumbersAndLeavesTextAlone)
{
    const auto fill = [](const char* locale, const NSFormatArgument& argument) {
        return NSLocalizedStringWithFormat(NSString::fromLatin1(locale), QStringLiteral("%lu"), { argument });
    };
    EXPECT_EQ(fill("en_US", 15300), QStringLiteral("15,300"));
    EXPECT_EQ(fill("de", 15300), QStringLiteral("15.300"));
    EXPECT_EQ(
        fill("en", std::numeric_limits<std::uint64_t>::max()), QStringLiteral("18,446,744,073,709,551,615"));
    EXPECT_EQ(fill("en", -1000), QStringLiteral("-1,000"));
    EXPECT_EQ(fill("en", 1000.5), QStringLiteral("1000.5"));
    EXPECT_EQ(fill("en", QStringLiteral("15300")), QStringLiteral("15300"));
    EXPECT_EQ(fill("ar-EG", 12), QStringLiteral("١٢"));
}

TEST(NSStringTest, TheUsersLocaleIsTheDefault)
{
    NSLocale::setPreferredLanguages({ QStringLiteral("de-DE") });
    EXPECT_EQ(NSLocalizedStringWithFormat(QStringLiteral("%ld"), { 1234567 }), QStringLiteral("1.234.567"));
    NSLocale::setPreferredLanguages({});
}
