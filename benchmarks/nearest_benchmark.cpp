// How much faster the store answers "the nearest 30 of N" than the plain way does, and whether alike.
//
// The plain way is a full sort that measures two geodesics a comparison. Both ways answer the same
// queries in the same run; the last column of a row is what a change must not lower.
#include "benchmarks/Timings.h"
#include "model/ORVRecordsStorage.h"
#include "platform/foundation/Scheduler.h"

#include <cstdlib>
#include <random>

namespace {

constexpr std::size_t limit = 30;
constexpr CLLocationCoordinate2D city { -37.8183, 144.9671 };

// Generated records ask when "now" is, and nothing else.
class StoppedScheduler final : public Scheduler {
public:
    StoppedScheduler() { setCurrent(this); }
    ~StoppedScheduler() override { setCurrent(nullptr); }
    NSDate currentDate() const override { return NSDate::fromSecsSinceEpoch(1'700'000'000); }

protected:
    double clockNow() const override { return 0; }
    void wakeAt(double) override { }
    void wakeForFrame() override { }
};

class GeneratedStorage final : public ORVRecordsStorage {
public:
    explicit GeneratedStorage(std::size_t count)
        : m_count(count)
    {
    }

protected:
    Records loadRecords() override
    {
        return randomRecordsAroundCoordinate(city, m_count, { make<ORVAuthor>(QStringLiteral("somebody")) });
    }

private:
    const std::size_t m_count;
};

ORVRecordsStorage::Records plainAnswer(
    ORVRecordsStorage::Records records, const CLLocationCoordinate2D& centre)
{
    std::sort(records.begin(), records.end(), [&](const auto& first, const auto& second) {
        return geodesicDistance(centre, first->coordinate()) < geodesicDistance(centre, second->coordinate());
    });
    records.resize(std::min(limit, records.size()));
    return records;
}

// Rank by rank equally far, to the last bit.
bool areAlike(const ORVRecordsStorage::Records& first, const ORVRecordsStorage::Records& second,
    const CLLocationCoordinate2D& centre)
{
    return std::equal(
        first.begin(), first.end(), second.begin(), second.end(), [&](const auto& one, const auto& other) {
            return geodesicDistance(centre, one->coordinate())
                == geodesicDistance(centre, other->coordinate());
        });
}

std::vector<CLLocationCoordinate2D> centres(std::size_t count)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> offset(-0.02, 0.02);
    std::vector<CLLocationCoordinate2D> places(count);
    for (CLLocationCoordinate2D& place : places)
        place = { city.latitude + offset(random), city.longitude + offset(random) };
    return places;
}

struct Measurement {
    Timings times; // of a query
    std::vector<ORVRecordsStorage::Records> answers;
};

template <typename Query>
Measurement measure(const std::vector<CLLocationCoordinate2D>& places, int repetitions, Query query)
{
    Measurement result;
    for (const CLLocationCoordinate2D& place : places) {
        const auto start = Timings::Clock::now();
        for (int i = 1; i < repetitions; ++i)
            query(place);
        result.answers.push_back(query(place));
        result.times.add(Timings::secondsSince(start) / repetitions);
    }
    return result;
}

// Answers whether both ways agree and the store is fast enough.
bool compare(std::size_t count, std::size_t plainQueries, int repetitions, double demandedRatio)
{
    GeneratedStorage storage(count);
    const auto& records = storage.records();
    std::vector<CLLocationCoordinate2D> places;
    for (const auto& record : records)
        places.push_back(record->coordinate());
    const auto start = Timings::Clock::now();
    const NearestIndex index(std::move(places));
    const double preparation = Timings::secondsSince(start);

    const auto asked = centres(plainQueries);
    const auto plain = measure(asked, 1, [&](const auto& centre) { return plainAnswer(records, centre); });
    const auto prepared = measure(asked, repetitions,
        [&](const auto& centre) { return storage.recordsAroundCoordinate(centre, limit); });

    bool alike = true;
    for (std::size_t i = 0; i < asked.size(); ++i)
        alike = alike && areAlike(plain.answers[i], prepared.answers[i], asked[i]);
    const double ratio = plain.times.shortest() / prepared.times.shortest();
    std::printf("%10zu %14.2f %14.2f %14.1f %10.0f x  (at least %.0f x)  %s\n", count,
        plain.times.shortest() * 1e6, prepared.times.shortest() * 1e6, preparation * 1e6, ratio,
        demandedRatio, alike ? "same answers" : "DIFFERENT ANSWERS");
    return alike && ratio >= demandedRatio;
}

} // namespace

int main()
{
    const StoppedScheduler scheduler;
    std::printf("%10s %14s %14s %14s\n", "records", "plain, us", "store, us", "prepare, us");
    bool passed = compare(60, 50, 1'000, 10);
    passed = compare(10'000, 5, 100, 100) && passed;
    passed = compare(1'000'000, 1, 20, 1'000) && passed;
    return passed ? EXIT_SUCCESS : EXIT_FAILURE;
}
