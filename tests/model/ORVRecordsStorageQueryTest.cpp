#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RandomSource.h"
#include "platform/foundation/ThreadPool.h"
#include "tests/model/RecordsStorageFixture.h"

#include <cmath>
#include <deque>
#include <limits>
#include <map>
#include <semaphore>

namespace {

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

TEST_F(ORVRecordsStorageTest, QueriesRunOnWorkerThreadsAndAnswerOnTheMainOne)
{
    store().records();
    std::counting_semaphore<> submitted(0);
    MainQueue mainQueue([&] { submitted.release(); });
    ThreadPool workers(4);
    Executor threaded(mainQueue, workers);
    Executor::setCurrent(&threaded);

    const ORVRecordsStorage::Records expected = storage->recordsAroundCoordinate({ 0, 0 }, 2);
    constexpr int queries = 200;
    int answers = 0;
    for (int i = 0; i < queries; ++i)
        storage->queryRecordsAroundCoordinate({ 0, 0 }, 2, [&](const auto& records) {
            EXPECT_TRUE(mainQueue.isMainThread());
            EXPECT_EQ(records, expected);
            ++answers;
        });
    EXPECT_EQ(answers, 0);
    while (answers < queries) {
        submitted.acquire();
        mainQueue.drain();
    }
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
