#include "platform/media/SlidingSound.h"

#include "platform/foundation/ThreadPool.h"
#include "platform/media/SoundLoader.h"
#include "tests/support/CountingDecoder.h"
#include "tests/support/ManualExecutor.h"

#include <gmock/gmock.h>

#include <semaphore>
#include <thread>

namespace {

constexpr std::int64_t rate = CountingDecoder::sampleRate;

class SlidingSoundTest : public testing::Test {
protected:
    std::shared_ptr<SlidingSound> soundOf(std::int64_t statedFrames, std::int64_t heldFrames)
    {
        return std::make_shared<SlidingSound>(
            std::make_unique<CountingDecoder>(statedFrames, heldFrames, log), std::vector<Sample> {});
    }
    static std::vector<Sample> read(SlidingSound& sound, std::int64_t frame, std::size_t frames)
    {
        std::vector<Sample> samples(frames, Sample { -1 });
        sound.read(frame, samples.data(), frames);
        return samples;
    }
    static std::vector<Sample> expected(std::int64_t frame, std::size_t frames)
    {
        std::vector<Sample> samples;
        for (std::size_t i = 0; i < frames; ++i)
            samples.push_back(CountingDecoder::sampleAt(frame + static_cast<std::int64_t>(i)));
        return samples;
    }

    std::shared_ptr<CountingDecoder::Log> log = std::make_shared<CountingDecoder::Log>();
    ManualExecutor executor;
    const std::shared_ptr<SlidingSound> sound = soundOf(200 * rate, 200 * rate);
};

TEST_F(SlidingSoundTest, ItsFirstSecondIsThereAtOnce) { EXPECT_EQ(read(*sound, 0, rate), expected(0, rate)); }

TEST_F(SlidingSoundTest, ReadingThroughGivesEverySampleWithoutASeek)
{
    for (std::int64_t frame = 0; frame < 200 * rate; frame += 1000) {
        ASSERT_EQ(read(*sound, frame, 1000), expected(frame, 1000)) << frame;
        executor.runAll();
    }
    EXPECT_TRUE(log->seeks.empty());
    EXPECT_EQ(log->framesDecoded, 200 * rate);
}

TEST_F(SlidingSoundTest, HoldsNoMoreThanItsWindow)
{
    const auto most
        = static_cast<std::size_t>((SlidingSound::secondsAhead + SlidingSound::secondsBehind) * rate);
    for (std::int64_t frame = 0; frame < 200 * rate; frame += rate / 2) {
        read(*sound, frame, 100);
        executor.runAll();
        ASSERT_LE(sound->heldSamples(), most);
    }
}

TEST_F(SlidingSoundTest, WhatWasHeardAMomentAgoIsStillThere)
{
    for (std::int64_t frame = 0; frame < 60 * rate; frame += rate) {
        read(*sound, frame, rate);
        executor.runAll();
    }
    EXPECT_EQ(read(*sound, 56 * rate, 100), expected(56 * rate, 100));
    EXPECT_TRUE(log->seeks.empty());
}

TEST_F(SlidingSoundTest, TenSecondsAheadAndFiveBehindAreHeldAndNoMore)
{
    for (std::int64_t frame = 0; frame <= 60 * rate; frame += rate) {
        read(*sound, frame, 10);
        executor.runAll();
    }
    // Decoding is not run again: what is read now is what is held now. The pieces are seconds.
    EXPECT_EQ(sound->heldSamples(), static_cast<std::size_t>(15 * rate));
    EXPECT_EQ(read(*sound, 70 * rate - 10, 10), expected(70 * rate - 10, 10));
    EXPECT_EQ(read(*sound, 55 * rate, 10), expected(55 * rate, 10));
    EXPECT_THAT(read(*sound, 70 * rate, 10), testing::Each(Sample { 0 }));
    EXPECT_THAT(read(*sound, 55 * rate - 10, 10), testing::Each(Sample { 0 }));
}

TEST_F(SlidingSoundTest, APreparedFrameIsReadExactly)
{
    const std::int64_t target = 123 * rate + 4567;
    bool isReady = false;
    sound->prepare(target, [&] { isReady = true; });
    EXPECT_FALSE(isReady);
    executor.runAll();
    EXPECT_TRUE(isReady);
    EXPECT_EQ(read(*sound, target, rate), expected(target, rate));
}

TEST_F(SlidingSoundTest, PreparingWhatIsThereCallsBackAtOnce)
{
    bool isReady = false;
    sound->prepare(10, [&] { isReady = true; });
    EXPECT_TRUE(isReady);
}

TEST_F(SlidingSoundTest, PreparingTheVeryEndIsPreparingItsLastSecond)
{
    bool isReady = false;
    sound->prepare(200 * rate, [&] { isReady = true; });
    executor.runAll();
    EXPECT_TRUE(isReady);
    EXPECT_EQ(read(*sound, 200 * rate - 10, 10), expected(200 * rate - 10, 10));
}

TEST_F(SlidingSoundTest, APreparationOvertakenByAnotherIsCalledBackToo)
{
    int called = 0;
    sound->prepare(50 * rate, [&] { ++called; });
    sound->prepare(150 * rate, [&] { ++called; });
    executor.runAll();
    EXPECT_EQ(called, 2);
    EXPECT_EQ(read(*sound, 150 * rate, 100), expected(150 * rate, 100));
}

TEST_F(SlidingSoundTest, WhatIsNotDecodedInTimeIsSilence)
{
    EXPECT_THAT(read(*sound, 100 * rate, 50), testing::Each(Sample { 0 }));
}

TEST_F(SlidingSoundTest, WhatTheFileDoesNotHoldIsSilence)
{
    const auto damaged = soundOf(100 * rate, 3 * rate / 2);
    read(*damaged, 0, 1);
    executor.runAll();
    EXPECT_EQ(read(*damaged, rate, rate / 2), expected(rate, rate / 2));
    EXPECT_THAT(read(*damaged, 3 * rate / 2, rate), testing::Each(Sample { 0 }));
    EXPECT_EQ(damaged->frameCount(), 100 * rate);
}

TEST_F(SlidingSoundTest, ALengthOutOfAllReasonIsBorne)
{
    const auto lying = soundOf(std::numeric_limits<std::int64_t>::max(), rate);
    bool isReady = false;
    lying->prepare(std::numeric_limits<std::int64_t>::max() - 1, [&] { isReady = true; });
    executor.runAll();
    EXPECT_TRUE(isReady);
}

TEST_F(SlidingSoundTest, TheLoaderHoldsShortSoundsWholeAndSlidesAlongLongOnes)
{
    std::int64_t frames = 60 * rate; // a minute
    const SoundDecoder::Replacement decoder(
        [&](const NSURL&) { return std::make_unique<CountingDecoder>(frames, frames, log); });
    const std::atomic<bool> cancelled = false;
    const auto whole = SoundLoader::load({}, cancelled);
    EXPECT_EQ(std::dynamic_pointer_cast<SlidingSound>(whole), nullptr);
    EXPECT_EQ(whole->frameCount(), frames);
    ++frames;
    const auto sliding = std::dynamic_pointer_cast<SlidingSound>(SoundLoader::load({}, cancelled));
    ASSERT_NE(sliding, nullptr);
    EXPECT_EQ(read(*sliding, 0, rate), expected(0, rate));
    EXPECT_TRUE(log->seeks.empty());
}

TEST_F(SlidingSoundTest, TheLoaderBelievesAHeaderOnlyAsFarAsThereIsSound)
{
    std::int64_t stated = 0;
    std::int64_t held = 0;
    const SoundDecoder::Replacement decoder(
        [&](const NSURL&) { return std::make_unique<CountingDecoder>(stated, held, log); });
    const auto load = [&](std::int64_t statedFrames, std::int64_t heldFrames) {
        stated = statedFrames;
        held = heldFrames;
        return SoundLoader::load({}, false);
    };
    EXPECT_EQ(load(5000, 3000)->frameCount(), 3000);
    EXPECT_EQ(load(3000, 5000)->frameCount(), 3000);
    EXPECT_EQ(load(5000, 0), nullptr);
    EXPECT_EQ(load(0, 5000), nullptr);
    EXPECT_EQ(load(-1, 5000), nullptr);
    EXPECT_EQ(load(std::numeric_limits<std::int64_t>::max(), 0), nullptr);
}

TEST_F(SlidingSoundTest, ACancelledLoadingGivesNothing)
{
    bool isOpened = false;
    const SoundDecoder::Replacement decoder([&](const NSURL&) {
        isOpened = true;
        return std::make_unique<CountingDecoder>(5000, 5000, log);
    });
    EXPECT_EQ(SoundLoader::load({}, true), nullptr);
    EXPECT_FALSE(isOpened);
}

// A device's thread reads while the main thread jumps about and workers decode: run under the thread
// sanitizer, and everywhere a check that prepared samples are the right ones.
TEST(SlidingSoundThreadsTest, IsReadPreparedAndDecodedAtTheSameTime)
{
    ManualQueue main;
    ThreadPool threads(3);
    Executor executor(main, threads);
    Executor::setCurrent(&executor);
    const auto log = std::make_shared<CountingDecoder::Log>();
    const auto sound = std::make_shared<SlidingSound>(
        std::make_unique<CountingDecoder>(300 * rate, 300 * rate, log), std::vector<Sample> {});
    std::atomic<bool> isOver = false;
    std::atomic<std::int64_t> frame = 0;
    std::thread reader([&] {
        std::vector<Sample> samples(441);
        while (!isOver) {
            sound->read(frame, samples.data(), samples.size());
            frame = (frame + 441) % (299 * rate);
        }
    });
    for (int jump = 0; jump < 200; ++jump) {
        const std::int64_t target = (jump * 7919L * rate / 100) % (299 * rate);
        std::binary_semaphore ready(0);
        frame = target;
        sound->prepare(target, [&] { ready.release(); });
        ready.acquire();
    }
    isOver = true;
    reader.join();
    std::binary_semaphore ready(0);
    sound->prepare(42 * rate, [&] { ready.release(); });
    ready.acquire();
    std::vector<Sample> samples(100);
    sound->read(42 * rate, samples.data(), samples.size());
    EXPECT_EQ(samples.front(), CountingDecoder::sampleAt(42 * rate));
    EXPECT_EQ(samples.back(), CountingDecoder::sampleAt(42 * rate + 99));
}

} // namespace
