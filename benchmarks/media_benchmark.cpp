// From a tap to the first sample: opening a clip, starting to play it, seeking in it.
//
// Beside each way of ours stands the plain form: the decoder called in line, with nothing around it.
// Real threads, a real event loop; the sound device is one that only notes when it is first given samples.
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/Scheduler.h"
#include "platform/foundation/ThreadPool.h"
#include "platform/media/AVAsset.h"
#include "platform/media/AVPlayer.h"
#include "platform/media/AudioSink.h"
#include "platform/media/SoundDecoder.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <condition_variable>

namespace {

class Clock final : public Scheduler {
public:
    NSDate currentDate() const override { return QDateTime::currentDateTimeUtc(); }
    void runDue() { runDueTimers(); }

protected:
    double clockNow() const override
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }
    void wakeAt(double) override { }
    void wakeForFrame() override { }
};

// A main thread that sleeps until work comes, as one in an application does.
class MainThread {
public:
    MainThread()
    {
        Scheduler::setCurrent(&m_clock);
        Executor::setCurrent(&m_executor);
    }

    template <typename Condition> void runUntil(Condition condition)
    {
        while (!condition()) {
            {
                std::unique_lock lock(m_mutex);
                m_wake.wait_for(lock, std::chrono::milliseconds(1), [&] { return m_isAwake; });
                m_isAwake = false;
            }
            m_queue.drain();
            m_clock.runDue();
        }
    }

private:
    void wake()
    {
        const std::lock_guard lock(m_mutex);
        m_isAwake = true;
        m_wake.notify_one();
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_isAwake = false;
    Clock m_clock;
    MainQueue m_queue { [this] { wake(); } };
    ThreadPool m_threads;
    Executor m_executor { m_queue, m_threads };
};

class PromptSink final : public AudioSink {
public:
    explicit PromptSink(SampleSource& source)
    {
        Sample samples[256];
        m_framesTaken = static_cast<std::int64_t>(source.read(samples, std::size(samples)));
    }
    std::int64_t framesHeard() const override { return m_framesTaken; }

private:
    std::int64_t m_framesTaken;
};

NSURL clip()
{
    return QUrl::fromLocalFile(QStringLiteral(ORUVANE_SOURCE_DIR "/resources/sounds/bicycle_bell.m4a"));
}

std::shared_ptr<AVPlayer> makePlayer()
{
    return AVPlayer::playerWithPlayerItem(AVPlayerItem::playerItemWithAsset(AVAsset::assetWithURL(clip())));
}

bool isReady(const AVPlayer& player)
{
    return player.currentItem()->status() == AVPlayerItemStatusReadyToPlay;
}

AudioSink::Maker promptDevice()
{
    return [](SoundFormat, const std::shared_ptr<SampleSource>& source, const AudioSink::LossHandler&) {
        return std::make_unique<PromptSink>(*source);
    };
}

void askWhetherPlayable(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(AVAsset::assetWithURL(clip())->isPlayable());
}
BENCHMARK(askWhetherPlayable)->Unit(benchmark::kMicrosecond);

void openAndDecodeInLine(benchmark::State& state)
{
    for (auto _ : state) {
        const auto decoder = SoundDecoder::open(clip());
        std::vector<Sample> samples;
        while (decoder->decodeNext(samples)) { }
        benchmark::DoNotOptimize(samples.data());
    }
}
BENCHMARK(openAndDecodeInLine)->Unit(benchmark::kMillisecond);

void fromAssetToReady(benchmark::State& state)
{
    const AudioSink::Replacement device(promptDevice());
    MainThread mainThread;
    for (auto _ : state) {
        const auto player = makePlayer();
        mainThread.runUntil([&] { return isReady(*player); });
    }
}
BENCHMARK(fromAssetToReady)->Unit(benchmark::kMillisecond)->UseRealTime();

void fromPlayToFirstSample(benchmark::State& state)
{
    const AudioSink::Replacement device(promptDevice());
    MainThread mainThread;
    const auto player = makePlayer();
    mainThread.runUntil([&] { return isReady(*player); });
    for (auto _ : state) {
        player->play();
        state.PauseTiming();
        player->pause();
        player->seekToTime(kCMTimeZero);
        bool hasLanded = false;
        player->seekToTime(kCMTimeZero, [&](bool) { hasLanded = true; });
        mainThread.runUntil([&] { return hasLanded; });
        state.ResumeTiming();
    }
}
BENCHMARK(fromPlayToFirstSample)->Unit(benchmark::kMicrosecond)->Iterations(2000);

void seekToItsCompletion(benchmark::State& state)
{
    const AudioSink::Replacement device(promptDevice());
    MainThread mainThread;
    const auto player = makePlayer();
    mainThread.runUntil([&] { return isReady(*player); });
    std::int64_t target = 0;
    for (auto _ : state) {
        target = (target + 12345) % 100'000;
        bool hasLanded = false;
        player->seekToTime(CMTimeMake(target, 44100), [&](bool) { hasLanded = true; });
        mainThread.runUntil([&] { return hasLanded; });
        if (player->currentTime().value != target)
            state.SkipWithError("not at the target");
    }
}
BENCHMARK(seekToItsCompletion)->Unit(benchmark::kMicrosecond)->UseRealTime();

// On the machine's own sound server: from play() to the moment that it asks for the first samples. The
// first line is the first sound of the process, the library and the connection included.
void fromPlayToFirstSampleOnTheServer(benchmark::State& state)
{
    MainThread mainThread;
    for (auto _ : state) {
        struct Source final : SampleSource {
            std::size_t read(Sample* into, std::size_t frames) override
            {
                std::fill_n(into, frames, Sample { 0 });
                isAsked = true;
                isAsked.notify_one();
                return frames;
            }
            std::atomic<bool> isAsked = false;
        };
        const auto source = std::make_shared<Source>();
        const auto sink = AudioSink::startOnDevice({ 44100, 1 }, source, [source] {
            source->isAsked = true;
            source->isAsked.notify_one();
        });
        if (!sink) {
            state.SkipWithError("no sound server is running");
            break;
        }
        source->isAsked.wait(false);
    }
}
BENCHMARK(fromPlayToFirstSampleOnTheServer)
    ->Name("firstPlayOnTheServer")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
BENCHMARK(fromPlayToFirstSampleOnTheServer)
    ->Name("laterPlaysOnTheServer")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(200)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
