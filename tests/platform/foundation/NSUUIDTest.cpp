#include "platform/foundation/NSUUID.h"

#include "tests/support/SeededRandomSource.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

#include <set>

TEST(NSUUIDTest, HasThirtySixUpperCaseCharactersInFiveGroups)
{
    const QRegularExpression form(
        QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"));
    for (int index = 0; index < 1000; ++index) {
        const NSString text = NSUUID().uuidString();
        EXPECT_TRUE(form.match(text).hasMatch()) << text.toStdString();
    }
}

TEST(NSUUIDTest, EachIsAnother)
{
    std::set<NSString> seen;
    for (int index = 0; index < 10000; ++index)
        seen.insert(NSUUID().uuidString());
    EXPECT_EQ(seen.size(), 10000u);
}

TEST(NSUUIDTest, IsDrawnFromTheSourceInForce)
{
    const auto draw = [] {
        SeededRandomSource source(3);
        return NSUUID();
    };
    EXPECT_EQ(draw(), draw());
    EXPECT_FALSE(draw() == NSUUID());
}
