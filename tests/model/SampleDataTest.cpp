// What the application shows when it starts: the bundle's own lists, portraits and sounds.
#include "model/ORVRecordsStorage.h"
#include "model/ORVResourceCache.h"
#include "platform/foundation/NSBundle.h"
#include "platform/graphics/MainScreenScale.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/AVAsset.h"
#include "platform/media/SoundDecoder.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/SourcePath.h"

#include <QDir>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numeric>
#include <set>

namespace {

class SampleDataTest : public testing::Test {
protected:
    ~SampleDataTest() override
    {
        MainScreenScale::set(1);
        EXPECT_EQ(assertions.messages(), std::vector<NSString> {});
    }

    static NSString resources() { return sourcePath("resources"); }

    ManualScheduler scheduler;
    AssertionRecorder assertions;
    NSBundle::MainReplacement replacement { make<NSBundle>(resources()) };
    const std::shared_ptr<ORVRecordsStorage> store = make<ORVRecordsStorage>();
};

TEST_F(SampleDataTest, TheUserStandsInTheMiddleOfTheCity)
{
    const auto corner = make<CLLocation>(-37.8178, 144.9673); // Flinders and Swanston Streets
    EXPECT_LT(store->fakeUserLocation()->distanceFromLocation(*corner), 100);
    EXPECT_GT(store->fakeUserLocation()->horizontalAccuracy(), 0);
}

TEST_F(SampleDataTest, HasTenAuthorsOfWhomOneSaysNothingAboutThemself)
{
    std::set<NSString> identities;
    int silent = 0;
    for (const auto& author : store->authors()) {
        identities.insert(author->authorID());
        silent += author->bio().isNull() ? 1 : 0;
        EXPECT_FALSE(author->fullName().isEmpty());
        EXPECT_GT(author->recordsCount(), 0U);
        EXPECT_GT(author->placesCount(), 0U);
    }
    EXPECT_EQ(store->authors().size(), 10U);
    EXPECT_EQ(identities.size(), 10U);
    EXPECT_EQ(silent, 1);
}

TEST_F(SampleDataTest, EveryAuthorHasPortraitsInEveryDensity)
{
    const auto cache = make<ORVResourceCache>();
    for (const auto& author : store->authors())
        for (const int density : { 1, 2, 3 }) {
            MainScreenScale::set(density);
            const auto portrait = cache->imageLoadedFromBaseURL(author->portraitFileURL());
            const auto small = cache->imageLoadedFromBaseURL(author->smallPortraitFileURL());
            ASSERT_TRUE(portrait && small) << author->fullName().toStdString();
            EXPECT_EQ(portrait->scale(), density);
            EXPECT_EQ(small->scale(), density);
            EXPECT_EQ(portrait->size(), CGSize(160, 160));
            EXPECT_EQ(small->size(), CGSize(48, 48));
        }
}

TEST_F(SampleDataTest, HasSixtyRecordsOfEveryAuthorAndEveryClip)
{
    std::set<NSString> authors;
    std::set<NSURL> sounds;
    for (const auto& record : store->records()) {
        authors.insert(record->author()->authorID());
        sounds.insert(record->soundFileURL());
        EXPECT_FALSE(record->locationName().isEmpty());
        EXPECT_TRUE(ORVResourceCache::sharedInstance()->soundAssetFromURL(record->soundFileURL()));
    }
    EXPECT_EQ(store->records().size(), 60U);
    EXPECT_EQ(authors.size(), 10U);
    EXPECT_EQ(sounds.size(), 24U);
}

TEST_F(SampleDataTest, TheRecordsAreSpreadFromAroundTheCornerToAcrossTheCity)
{
    const CLLocationCoordinate2D user = store->fakeUserLocation()->coordinate();
    const auto nearest = store->recordsAroundCoordinate(user, 60);
    const auto distance
        = [&](std::size_t rank) { return geodesicDistance(user, nearest[rank]->coordinate()); };
    EXPECT_LT(distance(0), 50);
    EXPECT_GT(distance(29), 500) << "what the list shows is more than one place";
    EXPECT_LT(distance(29), 3'000);
    EXPECT_GT(distance(59), 3'000);
    EXPECT_LT(distance(59), 10'000);
    for (std::size_t rank = 1; rank < 60; ++rank)
        EXPECT_GT(distance(rank), distance(rank - 1)) << "no two are equally far";
}

TEST_F(SampleDataTest, TheRecordsAreMinutesHoursDaysWeeksAndMonthsOld)
{
    std::map<NSString, int> ages;
    for (const auto& record : store->records()) {
        const qint64 seconds = record->timestamp().secsTo(scheduler.currentDate());
        EXPECT_GE(seconds, 0);
        const char* unit = seconds < 3600 ? "minutes"
            : seconds < 86'400            ? "hours"
            : seconds < 7 * 86'400        ? "days"
            : seconds < 31 * 86'400       ? "weeks"
                                          : "months";
        ++ages[QString::fromLatin1(unit)];
    }
    EXPECT_EQ(ages.size(), 5U);
    for (const auto& [unit, count] : ages)
        EXPECT_GE(count, 3) << unit.toStdString();
}

// --- Clips -----------------------------------------------------------------------------------------------

struct Clip {
    std::string name;
    double duration = 0;
    std::vector<Sample> samples;

    double peak() const
    {
        int highest = 0;
        for (const Sample sample : samples)
            highest = std::max(highest, std::abs(static_cast<int>(sample)));
        return 20 * std::log10(highest / 32768.0);
    }
    double power(std::size_t count) const
    {
        return std::inner_product(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count),
            samples.begin(), 0.0, std::plus<>(),
            [](Sample first, Sample second) { return double { 1 } * first * second; });
    }
    double loudness() const
    {
        return 10 * std::log10(power(samples.size()) / static_cast<double>(samples.size()))
            - 20 * std::log10(32768.0);
    }
};

std::vector<Clip> decodeClips(const QDir& folder)
{
    std::vector<Clip> clips;
    for (const QString& name : folder.entryList({ QStringLiteral("*.m4a") })) {
        const auto decoder = SoundDecoder::open(QUrl::fromLocalFile(folder.filePath(name)));
        EXPECT_TRUE(decoder) << name.toStdString();
        if (!decoder)
            continue;
        Clip clip { name.toStdString(), 0, {} };
        while (decoder->decodeNext(clip.samples)) { }
        const auto frames = static_cast<double>(clip.samples.size()) / decoder->format().channels;
        clip.duration = frames / decoder->format().sampleRate;
        clips.push_back(std::move(clip));
    }
    return clips;
}

// 1 for the same wave at whatever level, about 0 for waves that have nothing to do with each other.
double likeness(const Clip& first, const Clip& second)
{
    const std::size_t count = std::min(first.samples.size(), second.samples.size());
    double product = 0;
    for (std::size_t i = 0; i < count; ++i)
        product += double { 1 } * first.samples[i] * second.samples[i];
    return std::abs(product) / std::sqrt(first.power(count) * second.power(count));
}

TEST_F(SampleDataTest, EveryClipIsAFewSecondsLongLoudEnoughAndNotClipped)
{
    const auto clips = decodeClips(QDir(resources() + QStringLiteral("/sounds")));
    EXPECT_EQ(clips.size(), 24U);
    for (const Clip& clip : clips) {
        EXPECT_GE(clip.duration, 3) << clip.name;
        EXPECT_LE(clip.duration, 12) << clip.name;
        EXPECT_LT(clip.peak(), -0.5) << clip.name;
        EXPECT_GT(clip.loudness(), -35) << clip.name;
    }
}

TEST_F(SampleDataTest, NoTwoClipsAreAlike)
{
    const auto clips = decodeClips(QDir(resources() + QStringLiteral("/sounds")));
    for (std::size_t i = 0; i < clips.size(); ++i)
        for (std::size_t j = i + 1; j < clips.size(); ++j)
            EXPECT_LT(likeness(clips[i], clips[j]), 0.3) << clips[i].name << " and " << clips[j].name;
}

} // namespace
