#include "platform/foundation/BinaryPropertyListScan.h"

#include "platform/foundation/NSPropertyList.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

NSData bigEndian(std::uint64_t number, int width)
{
    NSData bytes;
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

NSData counted(int kind, std::size_t count)
{
    if (count < 15)
        return NSData(1, static_cast<char>(kind << 4 | static_cast<int>(count)));
    return NSData(1, static_cast<char>(kind << 4 | 0xF)) + '\x12' + bigEndian(count, 4);
}

// An array of the objects with these numbers; references are four bytes wide throughout.
NSData array(const std::vector<std::uint64_t>& references)
{
    NSData bytes = counted(0xA, references.size());
    for (const std::uint64_t reference : references)
        bytes += bigEndian(reference, 4);
    return bytes;
}

NSData dictionary(const std::vector<std::uint64_t>& keys, const std::vector<std::uint64_t>& values)
{
    NSData bytes = counted(0xD, keys.size());
    for (const std::uint64_t key : keys)
        bytes += bigEndian(key, 4);
    for (const std::uint64_t value : values)
        bytes += bigEndian(value, 4);
    return bytes;
}

NSData text(const NSData& ascii) { return counted(0x5, static_cast<std::size_t>(ascii.size())) + ascii; }
NSData integer(std::uint64_t value) { return '\x13' + bigEndian(value, 8); }

NSData list(const std::vector<NSData>& objects, std::uint64_t top = 0)
{
    NSData bytes("bplist00");
    NSData offsets;
    for (const NSData& object : objects) {
        offsets += bigEndian(static_cast<std::uint64_t>(bytes.size()), 4);
        bytes += object;
    }
    const auto table = static_cast<std::uint64_t>(bytes.size());
    return bytes + offsets + NSData(6, '\0') + '\4' + '\4' + bigEndian(objects.size(), 8) + bigEndian(top, 8)
        + bigEndian(table, 8);
}

bool isWithin(const NSData& data, int depth = 256, std::uint64_t size = 1 << 20)
{
    return BinaryPropertyListScan(data).isWithin(depth, size);
}

// Every array holds the next one so many times.
NSData nested(std::uint64_t depth, std::size_t times)
{
    std::vector<NSData> objects;
    for (std::uint64_t index = 0; index + 1 < depth; ++index)
        objects.push_back(array(std::vector(times, index + 1)));
    objects.push_back(array({}));
    return list(objects);
}

const std::vector<NSData> sampleObjects { dictionary({ 1, 2 }, { 3, 4 }), text("name"), text("counts"),
    text("a text that is longer than fifteen"), array({ 5, 6 }), integer(348),
    integer(~std::uint64_t { 0 }) };

} // namespace

TEST(BinaryPropertyListScanTest, AListIsReadAsItsXMLFormWouldBe)
{
    const NSPropertyList read = NSPropertyList::propertyListWithData(list(sampleObjects));
    ASSERT_TRUE(read.isDictionary());
    EXPECT_EQ(
        read[QStringLiteral("name")].stringValue(), QStringLiteral("a text that is longer than fifteen"));
    EXPECT_EQ(read[QStringLiteral("counts")][0].unsignedIntegerValue(), 348u);
    EXPECT_EQ(read[QStringLiteral("counts")][1].integerValue(), -1);
}

TEST(BinaryPropertyListScanTest, ASharedObjectIsNoCircle)
{
    EXPECT_TRUE(isWithin(list({ array({ 1, 1, 1 }), text("shared") })));
    EXPECT_EQ(NSPropertyList::propertyListWithData(list({ array({ 1, 1, 1 }), text("shared") })).count(), 3u);
}

TEST(BinaryPropertyListScanTest, CirclesAreRefused)
{
    for (const NSData& circle : { list({ array({ 0 }) }), list({ array({ 1 }), array({ 0 }) }),
             list({ dictionary({ 1 }, { 0 }), text("self") }) }) {
        EXPECT_FALSE(isWithin(circle));
        EXPECT_TRUE(NSPropertyList::propertyListWithData(circle).isNil());
    }
}

TEST(BinaryPropertyListScanTest, DepthIsBounded)
{
    EXPECT_TRUE(isWithin(nested(256, 1)));
    EXPECT_FALSE(isWithin(nested(257, 1)));
    EXPECT_TRUE(NSPropertyList::propertyListWithData(nested(256, 1)).isArray());
    EXPECT_TRUE(NSPropertyList::propertyListWithData(nested(10000, 1)).isNil());
    EXPECT_TRUE(NSPropertyList::propertyListWithData(nested(1000000, 1)).isNil());
}

TEST(BinaryPropertyListScanTest, DepthReachedThroughASharedObjectIsBounded)
{
    // The second item leads to the shared object on a longer way than the first.
    const NSData data = list({ array({ 2, 1 }), array({ 2 }), array({ 3 }), array({}) });
    EXPECT_TRUE(isWithin(data, 4));
    EXPECT_FALSE(isWithin(data, 3));
}

TEST(BinaryPropertyListScanTest, AFewBytesThatStandForMillionsOfObjectsAreRefused)
{
    const NSData bomb = nested(40, 2);
    EXPECT_LT(bomb.size(), 1000);
    EXPECT_FALSE(isWithin(bomb));
    EXPECT_TRUE(NSPropertyList::propertyListWithData(bomb).isNil());
    EXPECT_TRUE(NSPropertyList::propertyListWithData(nested(200, 3)).isNil());
}

TEST(BinaryPropertyListScanTest, ALargeTextThatIsReferredToOftenIsRefused)
{
    const NSData large = text(NSData(100000, 'x'));
    EXPECT_TRUE(isWithin(list({ array({ 1 }), large })));
    EXPECT_FALSE(isWithin(list({ array(std::vector<std::uint64_t>(100, 1)), large })));
}

TEST(BinaryPropertyListScanTest, KeysThatTheLibraryCannotTakeAreRefused)
{
    const NSData wide = counted(0x6, 2) + NSData("\0a\0b", 4);
    const NSData wideWithZero = counted(0x6, 2) + NSData("\0a\0\0", 4);
    EXPECT_TRUE(isWithin(list({ dictionary({ 1 }, { 1 }), wide })));
    for (const NSData& key : { text(NSData("a\0b", 3)), wideWithZero, integer(1), array({}) }) {
        const NSData data = list({ dictionary({ 1 }, { 2 }), key, text("value") });
        EXPECT_FALSE(isWithin(data));
        EXPECT_TRUE(NSPropertyList::propertyListWithData(data).isNil());
    }
    EXPECT_TRUE(isWithin(list({ dictionary({ 1 }, { 2 }), text("key"), text(NSData("a\0b", 3)) })));
}

TEST(BinaryPropertyListScanTest, NumbersThatLeadOutOfTheDataAreRefused)
{
    const std::uint64_t far = ~std::uint64_t { 0 };
    EXPECT_FALSE(isWithin(list({ array({ 7 }) }))); // no such object
    EXPECT_FALSE(isWithin(list({ array({}) }, 1))); // no such top object
    EXPECT_FALSE(isWithin(list({ array({}) }, far)));
    NSData table = list({ array({}) });
    table.replace(table.size() - 8, 8, bigEndian(far - 2, 8));
    EXPECT_FALSE(isWithin(table));
    NSData count = list({ array({}) });
    count.replace(count.size() - 24, 8, bigEndian(far, 8));
    EXPECT_FALSE(isWithin(count));
    EXPECT_FALSE(isWithin(list({ NSData("\xAF\x13") + bigEndian(far, 8) }))); // an array of 2^64 - 1 items
    EXPECT_FALSE(isWithin(list({ NSData("\xAF\x14") + bigEndian(1, 8) }))); // a count of 16 bytes
    EXPECT_FALSE(isWithin(list({ NSData("\xAF\x51") }))); // a count that is a text
}

TEST(BinaryPropertyListScanTest, ListsCutAnywhereAreSurvived)
{
    const NSData data = list(sampleObjects);
    for (qsizetype length = 0; length < data.size(); ++length) {
        const NSPropertyList read = NSPropertyList::propertyListWithData(data.first(length));
        EXPECT_TRUE(read.isNil()) << length;
    }
}

TEST(BinaryPropertyListScanTest, AnyByteAnywhereIsSurvived)
{
    const NSData data = list(sampleObjects);
    for (qsizetype position = 0; position < data.size(); ++position)
        for (int byte = 0; byte < 256; ++byte) {
            NSData damaged = data;
            damaged[position] = static_cast<char>(byte);
            NSPropertyList::propertyListWithData(damaged); // nil or not: that it comes back is the test
        }
}

TEST(BinaryPropertyListScanTest, NoiseIsSurvived)
{
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        NSData noise("bplist00");
        for (auto index = random() % 40; index > 0; --index)
            noise += static_cast<char>(random());
        noise += NSData(6, '\0') + '\1' + '\1' + bigEndian(random() % 8, 8) + bigEndian(random() % 4, 8)
            + bigEndian(8 + random() % 40, 8);
        NSPropertyList::propertyListWithData(noise);
    }
}
