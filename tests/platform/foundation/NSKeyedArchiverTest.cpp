#include "platform/foundation/NSKeyedArchiver.h"

#include "tests/support/AssertionRecorder.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>

#include <gmock/gmock.h>

#include <limits>
#include <random>

using testing::ElementsAre;

namespace {

const NSString nameKey = QStringLiteral("name");
const NSString addressKey = QStringLiteral("address");
const NSString dateKey = QStringLiteral("date");
const NSString placeKey = QStringLiteral("place");
const NSString countKey = QStringLiteral("count");
const NSString childKey = QStringLiteral("child");

} // namespace

class CodedSample : public NSObject, public NSCoding {
public:
    CodedSample() = default;
    explicit CodedSample(const NSCoder& coder)
        : name(coder.decodeObjectOfClass<NSString>(nameKey))
        , address(coder.decodeObjectOfClass<NSURL>(addressKey))
        , date(coder.decodeObjectOfClass<NSDate>(dateKey))
        , place(coder.decodeObjectOfClass<NSValue>(placeKey))
        , count(coder.decodeIntegerForKey(countKey))
        , child(coder.decodeObjectOfClass<CodedSample>(childKey))
    {
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        coder.encodeObject(name, nameKey);
        coder.encodeObject(address, addressKey);
        coder.encodeObject(date, dateKey);
        coder.encodeObject(place, placeKey);
        coder.encodeInteger(count, countKey);
        coder.encodeObject(child, childKey);
    }

    NSString name;
    NSURL address;
    NSDate date;
    NSValue place;
    std::int64_t count = 0;
    std::shared_ptr<CodedSample> child;
};

class CodedSubSample : public CodedSample {
public:
    using CodedSample::CodedSample;
};

class UnregisteredSubSample : public CodedSample {
public:
    using CodedSample::CodedSample;
};

class OtherCodedSample : public NSObject, public NSCoding {
public:
    OtherCodedSample() = default;
    explicit OtherCodedSample(const NSCoder&) { }
    void encodeWithCoder(NSCoder&) const override { }
};

class UncodedSample : public NSObject { };

namespace {

const NSCoder::Registration registeredSubSample { NSCoder::recipeOf<CodedSubSample>() };

std::shared_ptr<CodedSample> fullSample()
{
    auto sample = make<CodedSample>();
    sample->name = QStringLiteral("Größe 大");
    sample->address = NSURL::fromLocalFile(QStringLiteral("/a b/100%41.m4a"));
    sample->date = NSDate(QDate(2024, 5, 17), QTime(12, 30, 15, 250), Qt::UTC);
    sample->place = NSValue(QStringLiteral("Coordinate"), { -37.817541, 144.967373 });
    sample->count = 1240000;
    return sample;
}

std::shared_ptr<CodedSample> thereAndBack(const std::shared_ptr<CodedSample>& sample)
{
    return NSKeyedUnarchiver::unarchivedObjectOfClass<CodedSample>(
        NSKeyedArchiver::archivedDataWithRootObject(sample));
}

void expectSame(const CodedSample& first, const CodedSample& second)
{
    EXPECT_EQ(first.name, second.name);
    EXPECT_EQ(first.address, second.address);
    EXPECT_EQ(first.date, second.date);
    EXPECT_EQ(first.place, second.place);
    EXPECT_EQ(first.count, second.count);
}

// Data that holds one object of the sample's class with the given keys.
NSData archiveWith(const QCborMap& values, const char* className = "CodedSample")
{
    const QCborMap root { { QStringLiteral("root"),
        QCborArray { QStringLiteral("object"), QLatin1String(className), values } } };
    return root.toCborValue().toCbor();
}

std::shared_ptr<CodedSample> unarchived(const NSData& data)
{
    return NSKeyedUnarchiver::unarchivedObjectOfClass<CodedSample>(data);
}

} // namespace

TEST(NSKeyedArchiverTest, GivesBackEveryKindOfValue)
{
    const auto sample = fullSample();
    const auto copy = thereAndBack(sample);
    ASSERT_TRUE(copy);
    EXPECT_NE(copy, sample);
    expectSame(*copy, *sample);
    EXPECT_EQ(copy->child, nullptr);
}

TEST(NSKeyedArchiverTest, GivesBackObjectsWithinObjects)
{
    const auto sample = fullSample();
    sample->child = fullSample();
    sample->child->name = QStringLiteral("inner");
    const auto copy = thereAndBack(sample);
    ASSERT_TRUE(copy && copy->child);
    expectSame(*copy->child, *sample->child);
}

TEST(NSKeyedArchiverTest, NilAndEmptyStayApart)
{
    const auto sample = make<CodedSample>();
    EXPECT_TRUE(thereAndBack(sample)->name.isNull());
    sample->name = QStringLiteral("");
    EXPECT_FALSE(thereAndBack(sample)->name.isNull());
    EXPECT_TRUE(thereAndBack(sample)->name.isEmpty());
}

TEST(NSKeyedArchiverTest, IntegersKeepTheirBits)
{
    const auto sample = make<CodedSample>();
    for (const std::int64_t count : { std::numeric_limits<std::int64_t>::min(), std::int64_t { -1 },
             std::int64_t { 0 }, std::numeric_limits<std::int64_t>::max() }) {
        sample->count = count;
        EXPECT_EQ(thereAndBack(sample)->count, count);
    }
    const std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    sample->count = static_cast<std::int64_t>(largest);
    EXPECT_EQ(static_cast<std::uint64_t>(thereAndBack(sample)->count), largest);
}

TEST(NSKeyedArchiverTest, ADateInAnyZoneIsTheSameMoment)
{
    const auto sample = make<CodedSample>();
    sample->date = NSDate(QDate(2024, 5, 17), QTime(12, 0), Qt::OffsetFromUTC, 36000);
    EXPECT_EQ(thereAndBack(sample)->date, sample->date);
}

TEST(NSKeyedArchiverTest, AMissingKeyIsNilOrZero)
{
    const auto sample = unarchived(archiveWith({}));
    ASSERT_TRUE(sample);
    EXPECT_TRUE(sample->name.isNull());
    EXPECT_TRUE(sample->address.isEmpty());
    EXPECT_TRUE(sample->date.isNull());
    EXPECT_TRUE(sample->place.isNull());
    EXPECT_EQ(sample->count, 0);
    EXPECT_EQ(sample->child, nullptr);
}

TEST(NSKeyedArchiverTest, AValueOfAnotherKindIsNilAtEveryKey)
{
    const QCborArray url { QStringLiteral("url"), QStringLiteral("file:///a") };
    const QCborArray brokenURL { QStringLiteral("url"), 5 };
    const QCborArray brokenDate { QStringLiteral("date"), QStringLiteral("today") };
    const QCborArray brokenValue { QStringLiteral("value"), QStringLiteral("Coordinate"), 1.5,
        QStringLiteral("x") };
    const QCborArray namelessValue { QStringLiteral("value"), 1.5 };
    const QCborArray brokenObject { QStringLiteral("object"), QStringLiteral("CodedSample"), 5 };
    const std::vector<QCborValue> wrongs { QCborValue(), 5, 1e300, true, QByteArray("bytes"), QCborMap {},
        QCborArray {}, url, brokenURL, brokenDate, brokenValue, namelessValue, brokenObject };
    for (const QCborValue& wrong : wrongs) {
        const auto sample = unarchived(archiveWith({ { nameKey, wrong }, { dateKey, wrong },
            { placeKey, wrong }, { childKey, wrong }, { addressKey, wrong == url ? QCborValue(5) : wrong },
            { countKey, wrong.isInteger() ? QCborValue(QStringLiteral("5")) : wrong } }));
        ASSERT_TRUE(sample);
        EXPECT_TRUE(sample->name.isNull());
        EXPECT_TRUE(sample->address.isEmpty());
        EXPECT_TRUE(sample->date.isNull());
        EXPECT_TRUE(sample->place.isNull());
        EXPECT_EQ(sample->count, 0);
        EXPECT_EQ(sample->child, nullptr);
    }
}

TEST(NSKeyedArchiverTest, AnObjectOfAnotherClassIsNil)
{
    const NSData other = NSKeyedArchiver::archivedDataWithRootObject(make<OtherCodedSample>());
    EXPECT_EQ(unarchived(other), nullptr);
    EXPECT_TRUE(NSKeyedUnarchiver::unarchivedObjectOfClass<OtherCodedSample>(other));
    EXPECT_EQ(unarchived(archiveWith({}, "NoSuchClass")), nullptr);
    EXPECT_EQ(unarchived(archiveWith({}, "")), nullptr);
}

TEST(NSKeyedArchiverTest, ARegisteredSubclassComesBackAsItself)
{
    const auto copy = thereAndBack(make<CodedSubSample>());
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->isMemberOfClass<CodedSubSample>());
    EXPECT_EQ(thereAndBack(make<UnregisteredSubSample>()), nullptr);
}

TEST(NSKeyedArchiverTest, ABaseClassIsNoSubclass)
{
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(make<CodedSample>());
    EXPECT_EQ(NSKeyedUnarchiver::unarchivedObjectOfClass<CodedSubSample>(data), nullptr);
}

TEST(NSKeyedArchiverTest, ValuesMayBeTheRoot)
{
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(QStringLiteral("text"));
    EXPECT_EQ(NSKeyedUnarchiver::unarchivedObjectOfClass<NSString>(data), QStringLiteral("text"));
    EXPECT_TRUE(NSKeyedUnarchiver::unarchivedObjectOfClass<NSURL>(data).isEmpty());
    EXPECT_TRUE(NSKeyedArchiver::archivedDataWithRootObject(nullptr).isNull());
}

TEST(NSKeyedArchiverTest, WhatCannotBeCodedIsAProgrammingError)
{
    AssertionRecorder recorder;
    const NSString message = QStringLiteral("Invalid parameter not satisfying: object can be coded");
    NSKeyedArchiver::archivedDataWithRootObject(make<UncodedSample>());
    NSKeyedArchiver::archivedDataWithRootObject(NSNumber(5));
    EXPECT_THAT(recorder.messages(), ElementsAre(message, message));
}

TEST(NSKeyedArchiverTest, ACircleIsAProgrammingErrorAndEnds)
{
    AssertionRecorder recorder;
    const auto sample = make<CodedSample>();
    sample->child = sample;
    EXPECT_FALSE(NSKeyedArchiver::archivedDataWithRootObject(sample).isEmpty());
    EXPECT_EQ(recorder.failures().size(), 1u);
    sample->child = nullptr;
}

TEST(NSKeyedArchiverTest, ObjectsNestedBeyondReasonAreCutOff)
{
    QCborMap values;
    for (int depth = 0; depth < 300; ++depth)
        values = { { childKey,
            QCborArray { QStringLiteral("object"), QStringLiteral("CodedSample"), values } } };
    const auto sample = unarchived(archiveWith(values));
    int depth = 0;
    for (const CodedSample* inner = sample.get(); inner; inner = inner->child.get())
        ++depth;
    EXPECT_EQ(depth, 64);
}

TEST(NSKeyedArchiverTest, DataCutAnywhereIsNil)
{
    const auto sample = fullSample();
    sample->child = fullSample();
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(sample);
    for (qsizetype length = 0; length < data.size(); ++length)
        EXPECT_EQ(unarchived(data.first(length)), nullptr) << length;
    EXPECT_EQ(unarchived(data + '\0'), nullptr);
    EXPECT_TRUE(unarchived(data));
}

TEST(NSKeyedArchiverTest, DamagedDataIsSurvived)
{
    const auto sample = fullSample();
    sample->child = fullSample();
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(sample);
    for (qsizetype position = 0; position < data.size(); ++position)
        for (int byte = 0; byte < 256; byte += 5) {
            NSData damaged = data;
            damaged[position] = static_cast<char>(byte);
            unarchived(damaged); // nil or not: that it comes back is the test
        }
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        NSData noise(static_cast<qsizetype>(random() % 64), '\0');
        for (char& byte : noise)
            byte = static_cast<char>(random());
        EXPECT_EQ(unarchived(noise), nullptr);
    }
    EXPECT_EQ(unarchived(NSData(100000, '\x81')), nullptr); // an array in an array in an array…
}
