#include "model/ORVRecordsStorage.h"

#include "platform/foundation/RandomSource.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/ManualExecutor.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/TemporaryBundle.h"

#include <gtest/gtest.h>

#include <deque>
#include <limits>

namespace {

using Messages = std::vector<NSString>;

NSString key(const char* name) { return QString::fromLatin1(name); }

QVariantMap person(const char* identity, const char* portrait = "face")
{
    return { { key("id"), key(identity) }, { key("full_name"), key("Some Name") },
        { key("bio"), key("Listens.") }, { key("portrait_name"), key(portrait) },
        { key("recordings_count"), 12 }, { key("places_count"), 3 }, { key("followers_count"), 4500 } };
}

QVariantMap recording(double latitude, double longitude, const char* author = "mara")
{
    return { { key("author_id"), key(author) }, { key("sound_name"), key("tram") },
        { key("seconds_ago"), 3600.0 }, { key("latitude"), latitude }, { key("longitude"), longitude },
        { key("location_name"), key("Some Place") } };
}

class ORVRecordsStorageTest : public testing::Test {
protected:
    ORVRecordsStorageTest()
    {
        for (const char* name : { "face.jpg", "face-small.jpg", "tram.m4a" })
            bundle.writeFile(key(name));
        bundle.writeList(key("FakeUserLocation"),
            QVariantMap { { key("latitude"), -37.81785 }, { key("longitude"), 144.96755 },
                { key("altitude"), 24.0 }, { key("accuracy"), 10.0 } });
        bundle.writeList(key("FakePeople"), QVariantList { person("mara"), person("gus") });
        bundle.writeList(
            key("FakeRecords"), QVariantList { recording(0, 3), recording(0, 1, "gus"), recording(0, 2) });
    }

    ORVRecordsStorage& store()
    {
        bundle.makeMain();
        return *storage;
    }
    void people(const QVariantList& list) { bundle.writeList(key("FakePeople"), list); }
    void recordings(const QVariantList& list) { bundle.writeList(key("FakeRecords"), list); }

    void expectFailures(const Messages& messages) const
    {
        EXPECT_EQ(assertions.messages(), messages);
        for (const NSAssertionFailure& failure : assertions.failures())
            EXPECT_TRUE(failure.source == key("ORVRecordsStorage") || failure.source == key("ORVAuthor"));
    }

    ManualScheduler scheduler;
    ManualExecutor executor;
    AssertionRecorder assertions;
    TemporaryBundle bundle;
    std::shared_ptr<ORVRecordsStorage> storage = make<ORVRecordsStorage>();
};

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
    EXPECT_TRUE(storage->authors().empty());
    expectFailures({ key("At least one author is required.") });
    EXPECT_TRUE(storage->authors().empty());
    EXPECT_EQ(assertions.failures().size(), 1U) << "read once, complained about once";
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

// --- Nearest records -------------------------------------------------------------------------------------

TEST_F(ORVRecordsStorageTest, AnswersTheNearestRecordsNearestFirst)
{
    const auto all = store().records();
    EXPECT_EQ(storage->recordsAroundCoordinate({ 0, 0 }, 2), (ORVRecordsStorage::Records { all[1], all[2] }));
    EXPECT_EQ(storage->recordsAroundCoordinate({ 0, 9 }, 2), (ORVRecordsStorage::Records { all[0], all[2] }));
}

TEST_F(ORVRecordsStorageTest, ALimitLargerThanTheNumberOfRecordsAnswersAllNearestFirst)
{
    const auto all = store().records();
    const ORVRecordsStorage::Records sorted { all[1], all[2], all[0] };
    EXPECT_EQ(storage->recordsAroundCoordinate({ 0, 0 }, 100), sorted);
    EXPECT_EQ(storage->recordsAroundCoordinate({ 0, 0 }, std::numeric_limits<std::size_t>::max()), sorted);
}

TEST_F(ORVRecordsStorageTest, ALimitOfZeroAnswersNone)
{
    EXPECT_TRUE(store().recordsAroundCoordinate({ 0, 0 }, 0).empty());
}

TEST_F(ORVRecordsStorageTest, AQueryCentredOnARecordAnswersThatRecordFirst)
{
    for (const auto& record : store().records())
        EXPECT_EQ(storage->recordsAroundCoordinate(record->coordinate(), 3).front(), record);
}

TEST_F(ORVRecordsStorageTest, LoadsWithTheFirstQuery)
{
    EXPECT_EQ(store().recordsAroundCoordinate({ 0, 0 }, 30).size(), 3U);
}

// --- Background queries ----------------------------------------------------------------------------------

TEST_F(ORVRecordsStorageTest, ABackgroundQueryWorksOnTheGlobalQueueAndAnswersOnTheMainOneAfterTheCall)
{
    const auto all = store().records();
    std::vector<ORVRecordsStorage::Records> answers;
    storage->queryRecordsAroundCoordinate(
        { 0, 0 }, 2, [&](const auto& records) { answers.push_back(records); });
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(executor.global().size(), 1U);
    EXPECT_EQ(executor.main().size(), 0U);
    executor.global().runAll();
    EXPECT_TRUE(answers.empty());
    executor.main().runAll();
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0], (ORVRecordsStorage::Records { all[1], all[2] }));
    executor.runAll();
    EXPECT_EQ(answers.size(), 1U) << "each query answers once";
}

TEST_F(ORVRecordsStorageTest, AQueryWithoutCompletionFailsAnAssertionAndDoesNothing)
{
    store().queryRecordsAroundCoordinate({ 0, 0 }, 2, nullptr);
    expectFailures({ key("Invalid parameter not satisfying: completion != NULL") });
    EXPECT_EQ(assertions.failures()[0].source, key("ORVRecordsStorage"));
    EXPECT_EQ(executor.global().size(), 0U);
}

TEST_F(ORVRecordsStorageTest, AQueryKeepsTheStoreUntilItHasAnswered)
{
    store();
    const std::weak_ptr<ORVRecordsStorage> watched = storage;
    std::size_t found = 0;
    storage->queryRecordsAroundCoordinate({ 0, 0 }, 30, [&](const auto& records) { found = records.size(); });
    storage = nullptr;
    EXPECT_FALSE(watched.expired());
    executor.runAll();
    EXPECT_EQ(found, 3U);
    EXPECT_TRUE(watched.expired());
}

TEST_F(ORVRecordsStorageTest, WhatACompletionOwnsEndsOnTheMainQueue)
{
    store();
    auto owned = std::make_shared<int>();
    const std::weak_ptr<int> watched = owned;
    storage->queryRecordsAroundCoordinate({ 0, 0 }, 30, [owned = std::move(owned)](const auto&) {});
    storage = nullptr;
    executor.global().runAll();
    EXPECT_FALSE(watched.expired()) << "the worker must not be the last to let go";
    executor.main().runAll();
    EXPECT_TRUE(watched.expired());
}

TEST_F(ORVRecordsStorageTest, SeveralQueriesMayBeUnderWayAndAnswerInTheOrderInWhichTheyFinish)
{
    store().records();
    std::vector<std::size_t> sizes;
    for (const std::size_t limit : { 1U, 2U, 3U })
        storage->queryRecordsAroundCoordinate(
            { 0, 0 }, limit, [&](const auto& records) { sizes.push_back(records.size()); });
    EXPECT_EQ(executor.global().size(), 3U);
    executor.runAll();
    EXPECT_EQ(sizes, (std::vector<std::size_t> { 1, 2, 3 }));
}

TEST_F(ORVRecordsStorageTest, ACompletionMayAskAgain)
{
    store();
    int answers = 0;
    storage->queryRecordsAroundCoordinate({ 0, 0 }, 1, [&](const auto&) {
        ++answers;
        storage->queryRecordsAroundCoordinate({ 0, 0 }, 1, [&](const auto&) { ++answers; });
    });
    executor.runAll();
    EXPECT_EQ(answers, 2);
}

// --- Generated records -----------------------------------------------------------------------------------

class ScriptedRandom final : public RandomSource {
public:
    std::uint32_t value() override
    {
        if (script.empty())
            return 0;
        const std::uint32_t next = script.front();
        script.pop_front();
        return next;
    }
    std::deque<std::uint32_t> script;
};

TEST_F(ORVRecordsStorageTest, GeneratedRecordsLieWithinTheBoxAreRecentAndHaveNoSound)
{
    const CLLocationCoordinate2D centre { -37.8, 144.9 };
    const auto records = ORVRecordsStorage::randomRecordsAroundCoordinate(centre, 2'000, store().authors());
    ASSERT_EQ(records.size(), 2'000U);
    double widest = 0;
    double oldest = 0;
    for (const auto& record : records) {
        const double latitude = std::abs(record->coordinate().latitude - centre.latitude);
        const double longitude = std::abs(record->coordinate().longitude - centre.longitude);
        const double age = static_cast<double>(record->timestamp().msecsTo(scheduler.currentDate())) / 1000;
        EXPECT_LE(latitude, 0.02 + 1e-12);
        EXPECT_LE(longitude, 0.02 + 1e-12);
        EXPECT_GE(age, 0);
        EXPECT_LE(age, 72 * 3600);
        EXPECT_TRUE(record->soundFileURL().isEmpty());
        EXPECT_TRUE(record->author());
        widest = std::max({ widest, std::hypot(latitude, longitude) });
        oldest = std::max(oldest, age);
    }
    EXPECT_GT(widest, 0.021) << "a box, not a circle";
    EXPECT_GT(oldest, 70 * 3600);
    expectFailures({});
}

TEST_F(ORVRecordsStorageTest, GeneratedRecordsUseEveryAuthorAndTheNinePlaceNames)
{
    std::map<NSString, int> names;
    std::map<NSString, int> authors;
    for (const auto& record :
        ORVRecordsStorage::randomRecordsAroundCoordinate({ 0, 0 }, 900, store().authors())) {
        ++names[record->locationName()];
        ++authors[record->author()->authorID()];
    }
    std::vector<NSString> found;
    for (const auto& [name, count] : names) {
        found.push_back(name);
        EXPECT_GT(count, 50) << name.toStdString();
    }
    EXPECT_EQ(found,
        (std::vector<NSString> { key("Etihad Stadium"), key("Exhibition Centre"), key("Flagstaff Gardens"),
            key("Flinders Street Station"), key("Rod Laver Arena"), key("Royal Botanic Gardens"),
            key("Royal Exhibition Building"), key("Treasury Gardens"), key("Yarra Park") }));
    EXPECT_GT(authors[key("mara")], 350);
    EXPECT_GT(authors[key("gus")], 350);
}

TEST_F(ORVRecordsStorageTest, DrawsLatitudeLongitudeAuthorPlaceNameAndTimeInThatOrder)
{
    const auto authors = store().authors();
    // Draws that the identity takes come first; find out how many there are.
    ScriptedRandom random;
    const RandomSource::Replacement replacement(random);
    random.script.assign(64, 0);
    make<ORVRecord>();
    const std::size_t identityDraws = 64 - random.script.size();

    random.script.assign(identityDraws, 1);
    for (const std::uint32_t draw : { 0x80000000U, 0xC0000000U, 1U, 4U, 0x40000000U })
        random.script.push_back(draw);
    const auto records = ORVRecordsStorage::randomRecordsAroundCoordinate({ 10, 20 }, 1, authors);
    EXPECT_TRUE(random.script.empty());
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0]->coordinate(), (CLLocationCoordinate2D { 10, 20.01 }));
    EXPECT_EQ(records[0]->timestamp(), scheduler.currentDate().addSecs(-64'800));
    EXPECT_TRUE(records[0]->author() == authors[0] || records[0]->author() == authors[1]);
    EXPECT_FALSE(records[0]->locationName().isNull());
}

TEST_F(ORVRecordsStorageTest, GeneratesNoneForACountOfZeroAndRecordsOfNobodyWithoutAuthors)
{
    EXPECT_TRUE(ORVRecordsStorage::randomRecordsAroundCoordinate({ 0, 0 }, 0, {}).empty());
    const auto records = ORVRecordsStorage::randomRecordsAroundCoordinate({ 0, 0 }, 1, {});
    ASSERT_EQ(records.size(), 1U);
    EXPECT_FALSE(records[0]->author());
}

} // namespace
