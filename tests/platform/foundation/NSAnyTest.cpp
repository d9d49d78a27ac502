#include "platform/foundation/NSAny.h"

#include <gmock/gmock.h>

namespace {

class Sample : public NSObject {
public:
    bool isEqual(const NSObject* other) const override { return other && other->isKindOfClass<Sample>(); }
    NSString description() const override { return QStringLiteral("a sample"); }
};
class OtherSample : public NSObject { };

const NSDate noon(QDate(2024, 5, 17), QTime(12, 0), Qt::UTC);
const NSURL address(QStringLiteral("file:///a/b%20c.jpg"));

} // namespace

TEST(NSAnyTest, EveryNullIsNil)
{
    EXPECT_TRUE(NSAny().isNil());
    EXPECT_TRUE(NSAny(nullptr).isNil());
    EXPECT_TRUE(NSAny(NSString()).isNil());
    EXPECT_TRUE(NSAny(NSURL()).isNil());
    EXPECT_TRUE(NSAny(NSDate()).isNil());
    EXPECT_TRUE(NSAny(NSValue()).isNil());
    EXPECT_TRUE(NSAny(std::shared_ptr<Sample>()).isNil());
}

TEST(NSAnyTest, AnEmptyStringAndAZeroAreNotNil)
{
    EXPECT_FALSE(NSAny(QStringLiteral("")).isNil());
    EXPECT_FALSE(NSAny(0).isNil());
    EXPECT_FALSE(NSAny(false).isNil());
}

TEST(NSAnyTest, AnswersOnlyForTheKindItHolds)
{
    const NSAny number = 5;
    ASSERT_TRUE(number.as<NSNumber>());
    EXPECT_EQ(number.as<NSNumber>()->integerValue(), 5);
    EXPECT_EQ(number.as<NSString>(), nullptr);
    EXPECT_EQ(number.asObject<Sample>(), nullptr);
    EXPECT_EQ(NSAny(QStringLiteral("5")).as<NSNumber>(), nullptr);

    const auto sample = make<Sample>();
    EXPECT_EQ(NSAny(sample).asObject<Sample>(), sample);
    EXPECT_EQ(NSAny(sample).asObject<NSObject>(), sample);
    EXPECT_EQ(NSAny(sample).asObject<OtherSample>(), nullptr);
}

TEST(NSAnyTest, IsEqualByKindAndValue)
{
    EXPECT_TRUE(NSAny(1).isEqual(1.0));
    EXPECT_TRUE(NSAny(QStringLiteral("a")).isEqual(QStringLiteral("a")));
    EXPECT_TRUE(NSAny(address).isEqual(address));
    EXPECT_TRUE(NSAny(noon).isEqual(noon));
    EXPECT_TRUE(NSAny(make<Sample>()).isEqual(make<Sample>()));
    EXPECT_FALSE(NSAny(make<OtherSample>()).isEqual(make<OtherSample>()));
    EXPECT_FALSE(NSAny(address).isEqual(address.toString()));
    EXPECT_FALSE(NSAny(1).isEqual(QStringLiteral("1")));
    EXPECT_FALSE(NSAny().isEqual(NSAny()));
}

TEST(NSAnyTest, DescribesWhatItHolds)
{
    EXPECT_EQ(NSAny().description(), QStringLiteral("(null)"));
    EXPECT_EQ(NSAny(2.5).description(), QStringLiteral("2.5"));
    EXPECT_EQ(NSAny(true).description(), QStringLiteral("1"));
    EXPECT_EQ(NSAny(QStringLiteral("text")).description(), QStringLiteral("text"));
    EXPECT_EQ(NSAny(address).description(), QStringLiteral("file:///a/b%20c.jpg"));
    EXPECT_EQ(NSAny(noon).description(), QStringLiteral("2024-05-17 12:00:00 +0000"));
    EXPECT_EQ(
        NSAny(NSValue(QStringLiteral("Pair"), { 1, -2.5 })).description(), QStringLiteral("Pair(1, -2.5)"));
    EXPECT_EQ(NSAny(make<Sample>()).description(), QStringLiteral("a sample"));
}
