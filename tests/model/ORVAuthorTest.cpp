#include "model/ORVAuthor.h"

#include "model/ORVRecord.h"
#include "platform/foundation/NSKeyedArchiver.h"
#include "tests/support/AssertionRecorder.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ORVAuthorTest, KeepsTheIdentityItIsMadeWith)
{
    EXPECT_EQ(make<ORVAuthor>(QStringLiteral("mara"))->authorID(), QStringLiteral("mara"));
}

TEST(ORVAuthorTest, PlainMakingGivesADifferentRandomIdentityEachTime)
{
    const auto first = make<ORVAuthor>();
    const auto second = make<ORVAuthor>();
    static const QRegularExpression form(QStringLiteral("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"));
    EXPECT_TRUE(form.match(first->authorID()).hasMatch()) << first->authorID().toStdString();
    EXPECT_NE(first->authorID(), second->authorID());
}

TEST(ORVAuthorTest, ANilIdentityFailsAnAssertionAndLeavesAnAuthorThatIsLikeNone)
{
    AssertionRecorder assertions;
    const auto author = make<ORVAuthor>(NSString());
    ASSERT_EQ(assertions.failures().size(), 1U);
    EXPECT_EQ(assertions.failures()[0].message,
        QStringLiteral("Invalid parameter not satisfying: authorID != nil"));
    EXPECT_EQ(assertions.failures()[0].source, QStringLiteral("ORVAuthor"));
    EXPECT_GT(assertions.failures()[0].line, 0);
    EXPECT_TRUE(author->authorID().isNull());
    EXPECT_FALSE(author->isEqual(author.get()));
}

TEST(ORVAuthorTest, AnEmptyIdentityIsAnIdentity)
{
    AssertionRecorder assertions;
    const auto empty = make<ORVAuthor>(QStringLiteral(""));
    EXPECT_TRUE(assertions.failures().empty());
    EXPECT_TRUE(empty->isEqual(make<ORVAuthor>(QStringLiteral("")).get()));
    EXPECT_FALSE(empty->isEqual(make<ORVAuthor>(NSString()).get()));
}

TEST(ORVAuthorTest, IsEqualByIdentityAlone)
{
    const auto author = make<ORVAuthor>(QStringLiteral("mara"));
    const auto same = make<ORVAuthor>(QStringLiteral("mara"));
    same->setFullName(QStringLiteral("Somebody Else"));
    same->setRecordsCount(5);
    EXPECT_TRUE(author->isEqual(same.get()));
    EXPECT_FALSE(author->isEqual(make<ORVAuthor>(QStringLiteral("gus")).get()));
    EXPECT_FALSE(author->isEqual(make<ORVRecord>(QStringLiteral("mara")).get()));
    EXPECT_FALSE(author->isEqual(nullptr));
}

TEST(ORVAuthorTest, HasAHashOfItsOwnEvenWhenEqual)
{
    const auto author = make<ORVAuthor>(QStringLiteral("mara"));
    EXPECT_NE(author->hash(), make<ORVAuthor>(QStringLiteral("mara"))->hash());
}

TEST(ORVAuthorTest, DescribesItselfByNameAndIdentity)
{
    const auto author = make<ORVAuthor>(QStringLiteral("mara"));
    author->setFullName(QStringLiteral("Mara Lindqvist"));
    const NSString start
        = QStringLiteral("<ORVAuthor: 0x%1>").arg(reinterpret_cast<quintptr>(author.get()), 0, 16);
    EXPECT_EQ(author->description(), start + QStringLiteral(": Mara Lindqvist (mara)"));
    author->setFullName(NSString());
    EXPECT_EQ(author->description(), start + QStringLiteral(": (null) (mara)"));
}

TEST(ORVAuthorTest, ComesBackWholeFromItsCoding)
{
    EXPECT_TRUE(ORVAuthor::supportsSecureCoding());
    const auto author = make<ORVAuthor>(QStringLiteral("mara"));
    author->setFullName(QStringLiteral("Mara Lindqvist"));
    author->setPortraitFileURL(NSURL(QStringLiteral("file:///p/mara.jpg")));
    author->setSmallPortraitFileURL(NSURL(QStringLiteral("file:///p/mara-small.jpg")));
    author->setBio(QStringLiteral("Listens."));
    author->setRecordsCount(12);
    author->setPlacesCount(std::numeric_limits<std::uint64_t>::max());
    author->setFollowersCount(1'000'000'000'000);

    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(author);
    const auto back = NSKeyedUnarchiver::unarchivedObjectOfClass<ORVAuthor>(data);
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->isEqual(author.get()));
    EXPECT_EQ(back->fullName(), author->fullName());
    EXPECT_EQ(back->portraitFileURL(), author->portraitFileURL());
    EXPECT_EQ(back->smallPortraitFileURL(), author->smallPortraitFileURL());
    EXPECT_EQ(back->bio(), author->bio());
    EXPECT_EQ(back->recordsCount(), author->recordsCount());
    EXPECT_EQ(back->placesCount(), author->placesCount());
    EXPECT_EQ(back->followersCount(), author->followersCount());
}

TEST(ORVAuthorTest, DecodesMissingKeysAsNilAndZeroWithoutComplaint)
{
    AssertionRecorder assertions;
    const auto nobody = make<ORVAuthor>(NSString());
    const NSData data = NSKeyedArchiver::archivedDataWithRootObject(nobody);
    const auto back = NSKeyedUnarchiver::unarchivedObjectOfClass<ORVAuthor>(data);
    ASSERT_TRUE(back);
    EXPECT_EQ(assertions.failures().size(), 1U) << "only making one complains";
    EXPECT_TRUE(back->authorID().isNull());
    EXPECT_TRUE(back->fullName().isNull());
    EXPECT_TRUE(back->portraitFileURL().isEmpty());
    EXPECT_TRUE(back->bio().isNull());
    EXPECT_EQ(back->recordsCount(), 0U);
}

} // namespace
