#include "tests/model/RecordsStorageFixture.h"

namespace {

// --- The user's location ---------------------------------------------------------------------------------

TEST_F(ORVRecordsStorageTest, ReadsTheUsersLocationAsOfNow)
{
    const auto location = store().fakeUserLocation();
    ASSERT_TRUE(location);
    EXPECT_EQ(location->coordinate(), (CLLocationCoordinate2D { -37.81785, 144.96755 }));
    EXPECT_EQ(location->altitude(), 24);
    EXPECT_EQ(location->horizontalAccuracy(), 10);
    EXPECT_EQ(location->verticalAccuracy(), 10);
    EXPECT_EQ(location->timestamp(), scheduler.currentDate());
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, AskingForTheLocationTwiceGivesTheIdenticalObjectWithTheSameTimestamp)
{
    const auto first = store().fakeUserLocation();
    const NSDate timestamp = first->timestamp();
    scheduler.advance(5);
    EXPECT_EQ(storage->fakeUserLocation(), first);
    EXPECT_EQ(storage->fakeUserLocation()->timestamp(), timestamp);
}

TEST_F(ORVRecordsStorageTest, AMissingLocationFailsAnAssertionAndLiesAtZero)
{
    TemporaryBundle empty;
    empty.makeMain();
    EXPECT_EQ(storage->fakeUserLocation()->coordinate(), CLLocationCoordinate2D {});
    expectFailures({ key("Can't load fake location dictionary.") });
}

TEST_F(ORVRecordsStorageTest, ALocationOfAnotherKindFailsTheSameAssertion)
{
    bundle.writeList(key("FakeUserLocation"), QVariantList { 1, 2 });
    EXPECT_EQ(store().fakeUserLocation()->altitude(), 0);
    bundle.writeFile(key("FakeUserLocation.plist"), "no property list");
    EXPECT_TRUE(make<ORVRecordsStorage>()->fakeUserLocation());
    const NSString message = key("Can't load fake location dictionary.");
    expectFailures({ message, message });
}

TEST_F(ORVRecordsStorageTest, AMissingOrStrangeValueOfTheLocationIsZero)
{
    bundle.writeList(key("FakeUserLocation"),
        QVariantMap { { key("latitude"), key("12.5") }, { key("altitude"), QVariantList {} } });
    const auto location = store().fakeUserLocation();
    EXPECT_EQ(location->coordinate(), (CLLocationCoordinate2D { 12.5, 0 }));
    EXPECT_EQ(location->altitude(), 0);
    EXPECT_EQ(location->horizontalAccuracy(), 0);
    expectFailures({});
}

// --- Authors ---------------------------------------------------------------------------------------------

TEST_F(ORVRecordsStorageTest, ReadsTheAuthorsInTheirOrder)
{
    const ORVRecordsStorage::Authors& authors = store().authors();
    ASSERT_EQ(authors.size(), 2U);
    EXPECT_EQ(authors[0]->authorID(), key("mara"));
    EXPECT_EQ(authors[0]->fullName(), key("Some Name"));
    EXPECT_EQ(authors[0]->bio(), key("Listens."));
    EXPECT_EQ(authors[0]->portraitFileURL(), bundle.urlOf(key("face.jpg")));
    EXPECT_EQ(authors[0]->smallPortraitFileURL(), bundle.urlOf(key("face-small.jpg")));
    EXPECT_EQ(authors[0]->recordsCount(), 12U);
    EXPECT_EQ(authors[0]->placesCount(), 3U);
    EXPECT_EQ(authors[0]->followersCount(), 4500U);
    EXPECT_EQ(authors[1]->authorID(), key("gus"));
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, KeepsTheAuthorsThatItHasRead)
{
    const auto first = store().authors().front();
    EXPECT_EQ(storage->authors().front(), first);
    EXPECT_NE(ORVRecordsStorage::fakeAuthors().front(), first) << "the loader makes new ones";
}

TEST_F(ORVRecordsStorageTest, AMissingPortraitFailsAnAssertionForEachSize)
{
    people({ person("mara", "nobody") });
    bundle.writeFile(key("half.jpg"));
    EXPECT_TRUE(store().authors()[0]->portraitFileURL().isEmpty());
    expectFailures(
        { key("Portrait image 'nobody' not found."), key("Small portrait image 'nobody' not found.") });
}

TEST_F(ORVRecordsStorageTest, AMissingSmallPortraitFailsAnAssertionOfItsOwn)
{
    people({ person("mara", "half") });
    bundle.writeFile(key("half.jpg"));
    EXPECT_FALSE(store().authors()[0]->portraitFileURL().isEmpty());
    expectFailures({ key("Small portrait image 'half' not found.") });
}

TEST_F(ORVRecordsStorageTest, NoPeopleListFailsAnAssertion)
{
    TemporaryBundle empty;
    empty.makeMain();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(storage->authors().empty());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        empty.urlOf(key("FakePeople.plist")).toLocalFile().toStdString() + ": there is no such file\n");
    expectFailures({ key("At least one author is required.") });
    EXPECT_TRUE(storage->authors().empty());
    EXPECT_EQ(assertions.failures().size(), 1U) << "read once, complained about once";
}

TEST_F(ORVRecordsStorageTest, WhyThePeopleListCannotBeReadIsToldBeforeTheAssertion)
{
    bundle.writeFile(key("FakePeople.plist"), "<plist>\n<array>\n<dict><key>id</key></dict></array></plist>");
    testing::internal::CaptureStderr();
    const NSAssertionHandler::Replacement handler(
        [](const NSAssertionFailure& failure) { std::fprintf(stderr, "%s\n", qPrintable(failure.message)); });
    store().authors();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        bundle.urlOf(key("FakePeople.plist")).toLocalFile().toStdString()
            + ":3: the key \"id\" has no value\nAt least one author is required.\n");
}

TEST_F(ORVRecordsStorageTest, AnEmptyPeopleListAndOneOfAnotherKindFailTheSameAssertion)
{
    people({});
    EXPECT_TRUE(store().authors().empty());
    bundle.writeList(key("FakePeople"), person("mara"));
    EXPECT_TRUE(make<ORVRecordsStorage>()->authors().empty());
    expectFailures({ key("At least one author is required."), key("At least one author is required.") });
}

TEST_F(ORVRecordsStorageTest, AnAuthorWithoutIdentityFailsTheAuthorsOwnAssertion)
{
    QVariantMap nameless = person("mara");
    nameless.remove(key("id"));
    people({ nameless });
    EXPECT_EQ(store().authors().size(), 1U);
    expectFailures({ key("Invalid parameter not satisfying: authorID != nil") });
    EXPECT_EQ(assertions.failures()[0].source, key("ORVAuthor"));
}

TEST_F(ORVRecordsStorageTest, AnIdentityThatIsNoStringIsNone)
{
    QVariantMap numbered = person("mara");
    numbered[key("id")] = 7;
    people({ numbered });
    EXPECT_TRUE(store().authors()[0]->authorID().isNull());
    expectFailures({ key("Invalid parameter not satisfying: authorID != nil") });
}

TEST_F(ORVRecordsStorageTest, WhatAnAuthorDoesNotSayIsNilOrZero)
{
    people({ QVariantMap { { key("id"), key("mara") }, { key("portrait_name"), key("face") } } });
    const auto author = store().authors()[0];
    EXPECT_TRUE(author->fullName().isNull());
    EXPECT_TRUE(author->bio().isNull());
    EXPECT_EQ(author->recordsCount(), 0U);
    EXPECT_EQ(author->placesCount(), 0U);
    EXPECT_EQ(author->followersCount(), 0U);
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, ValuesOfAnotherKindInAnAuthorAreNilOrZero)
{
    people({ QVariantMap { { key("id"), key("mara") }, { key("portrait_name"), key("face") },
        { key("full_name"), 1 }, { key("bio"), QVariantList {} }, { key("recordings_count"), key("many") },
        { key("places_count"), -5 }, { key("followers_count"), QVariantMap {} } } });
    const auto author = store().authors()[0];
    EXPECT_TRUE(author->fullName().isNull());
    EXPECT_TRUE(author->bio().isNull());
    EXPECT_EQ(author->recordsCount(), 0U);
    EXPECT_EQ(author->placesCount(), 0U);
    EXPECT_EQ(author->followersCount(), 0U);
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, AnAuthorWithoutAPortraitNameMissesBothPortraits)
{
    QVariantMap faceless = person("mara");
    faceless.remove(key("portrait_name"));
    people({ faceless });
    bundle.writeFile(key("-small.jpg")); // must not be taken for the small portrait of a nil name
    EXPECT_TRUE(store().authors()[0]->smallPortraitFileURL().isEmpty());
    expectFailures(
        { key("Portrait image '(null)' not found."), key("Small portrait image '(null)' not found.") });
}

TEST_F(ORVRecordsStorageTest, APersonThatIsNoDictionaryIsAnAuthorWithNothing)
{
    people({ key("mara"), person("gus") });
    ASSERT_EQ(store().authors().size(), 2U);
    EXPECT_EQ(storage->authors()[1]->authorID(), key("gus"));
    expectFailures({ key("Invalid parameter not satisfying: authorID != nil"),
        key("Portrait image '(null)' not found."), key("Small portrait image '(null)' not found.") });
}

// --- Records ---------------------------------------------------------------------------------------------

TEST_F(ORVRecordsStorageTest, ReadsTheRecordsInTheirOrder)
{
    const ORVRecordsStorage::Records& records = store().records();
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0]->coordinate(), (CLLocationCoordinate2D { 0, 3 }));
    EXPECT_EQ(records[0]->author(), storage->authors()[0]);
    EXPECT_EQ(records[0]->soundFileURL(), bundle.urlOf(key("tram.m4a")));
    EXPECT_EQ(records[0]->locationName(), key("Some Place"));
    EXPECT_EQ(records[1]->author(), storage->authors()[1]);
    EXPECT_EQ(records[2]->coordinate(), (CLLocationCoordinate2D { 0, 2 }));
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, GivesEveryRecordAFreshIdentityAtEveryLoading)
{
    const auto first = store().records();
    EXPECT_FALSE(first[0]->isEqual(first[1].get()));
    const auto again = ORVRecordsStorage::fakeRecordsWithAuthors(storage->authors());
    EXPECT_FALSE(first[0]->isEqual(again[0].get()));
    EXPECT_EQ(storage->records(), first) << "what is read is kept";
}

TEST_F(ORVRecordsStorageTest, SecondsAgoOf3600IsOneHourBeforeTheMomentOfLoading)
{
    scheduler.advance(100);
    EXPECT_EQ(store().records()[0]->timestamp().secsTo(scheduler.currentDate()), 3600);
    const NSDate timestamp = storage->records()[0]->timestamp();
    scheduler.advance(100);
    EXPECT_EQ(storage->records()[0]->timestamp(), timestamp);
}

TEST_F(ORVRecordsStorageTest, ARecordOfAnUnknownAuthorFailsAnAssertionAndHasNone)
{
    recordings({ recording(0, 1, "nobody"), recording(0, 2) });
    ASSERT_EQ(store().records().size(), 2U);
    EXPECT_FALSE(storage->records()[0]->author());
    EXPECT_TRUE(storage->records()[1]->author());
    expectFailures({ key("Author with ID 'nobody' not found.") });
    EXPECT_EQ(assertions.failures()[0].source, key("ORVRecordsStorage"));
}

TEST_F(ORVRecordsStorageTest, ARecordOfAMissingSoundFailsAnAssertionAndHasNone)
{
    QVariantMap silent = recording(0, 1);
    silent[key("sound_name")] = key("silence");
    recordings({ silent });
    EXPECT_TRUE(store().records()[0]->soundFileURL().isEmpty());
    EXPECT_EQ(storage->records()[0]->locationName(), key("Some Place")) << "the rest is read";
    expectFailures({ key("Sound file 'silence' not found.") });
}

TEST_F(ORVRecordsStorageTest, OfAuthorsWithTheSameIdentityTheFirstOneCounts)
{
    people({ person("gus"), person("mara"), person("mara") });
    const auto record = store().records()[0];
    EXPECT_EQ(record->author(), storage->authors()[1]);
}

TEST_F(ORVRecordsStorageTest, ARecordThatNamesNobodyIsNotGivenToAnAuthorWithoutIdentity)
{
    people({ QVariantMap { { key("portrait_name"), key("face") } } });
    QVariantMap record = recording(0, 1);
    record.remove(key("author_id"));
    recordings({ record });
    EXPECT_FALSE(store().records()[0]->author());
    expectFailures({ key("Invalid parameter not satisfying: authorID != nil"),
        key("Author with ID '(null)' not found.") });
}

TEST_F(ORVRecordsStorageTest, AMissingRecordsListIsNoError)
{
    TemporaryBundle other;
    other.writeFile(key("face.jpg"));
    other.writeFile(key("face-small.jpg"));
    other.writeList(key("FakePeople"), QVariantList { person("mara") });
    other.makeMain();
    EXPECT_TRUE(storage->records().empty());
    EXPECT_TRUE(storage->recordsAroundCoordinate({ 0, 0 }, 30).empty());
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, ARecordsListOfAnotherKindGivesNoRecords)
{
    bundle.writeList(key("FakeRecords"), recording(0, 1));
    EXPECT_TRUE(store().records().empty());
    bundle.writeFile(key("FakeRecords.plist"), "<plist><array>");
    EXPECT_TRUE(make<ORVRecordsStorage>()->records().empty());
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, ValuesOfAnotherKindInARecordAreNilOrZero)
{
    recordings({ QVariantMap { { key("author_id"), key("mara") }, { key("sound_name"), key("tram") },
        { key("seconds_ago"), QVariantList {} }, { key("latitude"), key("north") },
        { key("longitude"), true }, { key("location_name"), 5 } } });
    const auto record = store().records()[0];
    EXPECT_EQ(record->timestamp(), scheduler.currentDate());
    EXPECT_EQ(record->coordinate(), (CLLocationCoordinate2D { 0, 1 })); // a truth value counts as 0 or 1
    EXPECT_TRUE(record->locationName().isNull());
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, ARecordThatIsNoDictionaryIsARecordOfNothing)
{
    recordings({ 5 });
    EXPECT_EQ(store().records().size(), 1U);
    expectFailures({ key("Author with ID '(null)' not found."), key("Sound file '(null)' not found.") });
}

TEST_F(ORVRecordsStorageTest, AnAgeThatNoCalendarHoldsLeavesNoTimestamp)
{
    QVariantMap ancient = recording(0, 1);
    ancient[key("seconds_ago")] = 1e300;
    recordings({ ancient });
    EXPECT_TRUE(store().records()[0]->timestamp().isNull());
}

} // namespace
