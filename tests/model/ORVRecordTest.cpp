#include "model/ORVRecord.h"

#include "platform/foundation/NSKeyedArchiver.h"
#include "tests/support/AssertionRecorder.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

NSString address(const NSObject& object)
{
    return QStringLiteral("0x%1").arg(reinterpret_cast<quintptr>(&object), 0, 16);
}

std::shared_ptr<ORVRecord> filledRecord()
{
    const auto record = make<ORVRecord>(QStringLiteral("tram"));
    const auto author = make<ORVAuthor>(QStringLiteral("mara"));
    author->setFullName(QStringLiteral("Mara Lindqvist"));
    record->setAuthor(author);
    record->setTimestamp(NSDate::fromString(QStringLiteral("2024-05-17T12:00:00Z"), Qt::ISODate));
    record->setCoordinate({ -37.8183, 144.9671 });
    record->setLocationName(QStringLiteral("Flinders Street Station"));
    record->setSoundFileURL(NSURL(QStringLiteral("file:///s/tram.m4a")));
    return record;
}

TEST(ORVRecordTest, KeepsTheIdentityItIsMadeWith)
{
    EXPECT_EQ(make<ORVRecord>(QStringLiteral("tram"))->recordID(), QStringLiteral("tram"));
}

TEST(ORVRecordTest, PlainMakingGivesADifferentRandomIdentityEachTime)
{
    const auto first = make<ORVRecord>();
    const auto second = make<ORVRecord>();
    static const QRegularExpression form(QStringLiteral("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"));
    EXPECT_TRUE(form.match(first->recordID()).hasMatch()) << first->recordID().toStdString();
    EXPECT_NE(first->recordID(), second->recordID());
    EXPECT_FALSE(first->isEqual(second.get()));
}

TEST(ORVRecordTest, IsEqualByIdentityEvenWhenEverythingElseDiffers)
{
    EXPECT_TRUE(filledRecord()->isEqual(make<ORVRecord>(QStringLiteral("tram")).get()));
    EXPECT_FALSE(filledRecord()->isEqual(make<ORVRecord>(QStringLiteral("bell")).get()));
}

TEST(ORVRecordTest, IsEqualToASubclassOfTheSameIdentity)
{
    class SpecialRecord : public ORVRecord {
        using ORVRecord::ORVRecord;
    };
    const std::shared_ptr<ORVRecord> special = make<SpecialRecord>(QStringLiteral("tram"));
    EXPECT_TRUE(filledRecord()->isEqual(special.get()));
    EXPECT_TRUE(special->isEqual(filledRecord().get()));
}

TEST(ORVRecordTest, IsNeverEqualToAnAuthorOrToNothing)
{
    EXPECT_FALSE(filledRecord()->isEqual(make<ORVAuthor>(QStringLiteral("tram")).get()));
    EXPECT_FALSE(filledRecord()->isEqual(nullptr));
}

TEST(ORVRecordTest, IsNeverEqualToItsOwnIdentityString)
{
    EXPECT_FALSE(NSAny(filledRecord()).isEqual(NSAny(QStringLiteral("tram"))));
}

TEST(ORVRecordTest, ANilIdentityIsAcceptedAndEqualToNoRecordNotEvenItself)
{
    AssertionRecorder assertions;
    const auto record = make<ORVRecord>(NSString());
    EXPECT_TRUE(assertions.failures().empty());
    EXPECT_TRUE(record->recordID().isNull());
    EXPECT_FALSE(record->isEqual(record.get()));
    EXPECT_FALSE(record->isEqual(make<ORVRecord>(NSString()).get()));
    EXPECT_FALSE(make<ORVRecord>(QStringLiteral(""))->isEqual(record.get()));
}

TEST(ORVRecordTest, HasAHashOfItsOwnEvenWhenEqual)
{
    EXPECT_NE(filledRecord()->hash(), filledRecord()->hash());
}

TEST(ORVRecordTest, DescribesItselfByAuthorPlaceDateAndIdentity)
{
    const auto record = filledRecord();
    EXPECT_EQ(record->description(),
        QStringLiteral(
            "<ORVRecord: %1>: by <ORVAuthor: %2>: Mara Lindqvist (mara) at Flinders Street Station "
            "on 2024-05-17 12:00:00 +0000 (tram)")
            .arg(address(*record), address(*record->author())));
}

TEST(ORVRecordTest, DescribesWhatIsMissingAsNull)
{
    const auto record = make<ORVRecord>(QStringLiteral("tram"));
    EXPECT_EQ(record->description(),
        QStringLiteral("<ORVRecord: %1>: by (null) at (null) on (null) (tram)").arg(address(*record)));
}

TEST(ORVRecordTest, ComesBackWholeFromItsCoding)
{
    EXPECT_TRUE(ORVRecord::supportsSecureCoding());
    const auto record = filledRecord();
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(record);
    const auto back = NSKeyedUnarchiver::unarchivedObjectOfClass<ORVRecord>(data);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->isEqual(record.get()));
    EXPECT_EQ(back->coordinate(), record->coordinate());
    EXPECT_TRUE(isEqual(back->author().get(), record->author().get()));
    EXPECT_EQ(back->timestamp(), record->timestamp());
    EXPECT_EQ(back->locationName(), record->locationName());
    EXPECT_EQ(back->soundFileURL(), record->soundFileURL());
}

TEST(ORVRecordTest, DecodesMissingKeysAsNilAndZero)
{
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(make<ORVRecord>(NSString()));
    const auto back = NSKeyedUnarchiver::unarchivedObjectOfClass<ORVRecord>(data);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->recordID().isNull());
    EXPECT_FALSE(back->author());
    EXPECT_TRUE(back->timestamp().isNull());
    EXPECT_EQ(back->coordinate(), CLLocationCoordinate2D {});
    EXPECT_TRUE(back->soundFileURL().isEmpty());
}

TEST(ORVRecordTest, IsNotDecodedAsAnAuthor)
{
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(filledRecord());
    EXPECT_FALSE(NSKeyedUnarchiver::unarchivedObjectOfClass<ORVAuthor>(data));
}

} // namespace
