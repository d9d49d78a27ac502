// From a tap to the first sample: opening a clip, starting to play it, seeking in it.
//
// Beside each way of ours stands the plain form: the decoder called in line, with nothing around it.
// Real threads, a real event loop; the sound device is one that only notes when it is first given samples.
#include "benchmarks/Timings.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/Scheduler.h"
#include "platform/foundation/ThreadPool.h"
#include "platform/media/AVAsset.h"
#include "platform/media/AVPlayer.h"
#include "platform/media/AudioSink.h"
#include "platform/media/SoundDecoder.h"

#include <condition_variable>
#include <cstdlib>

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
    void play(std::shared_ptr<SampleSource> source) override
    {
        Sample samples[256];
        m_framesTaken = static_cast<std::int64_t>(source->read(samples, std::size(samples)));
    }
    std::int64_t framesHeard() const override { return m_framesTaken; }

private:
    std::int64_t m_framesTaken = 0;
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
    return [](SoundFormat, const AudioSink::Handlers&) { return std::make_unique<PromptSink>(); };
}

Timings openAndDecodeInLine()
{
    Timings times;
    for (int i = 0; i < 200; ++i)
        times.measure([] {
            const auto decoder = SoundDecoder::open(clip());
            std::vector<Sample> samples;
            while (decoder->decodeNext(samples)) { }
        });
    return times;
}

Timings askWhetherPlayable()
{
    Timings times;
    for (int i = 0; i < 200; ++i)
        times.measure([] { return AVAsset::assetWithURL(clip())->isPlayable(); });
    return times;
}

Timings fromAssetToReady(MainThread& mainThread)
{
    Timings times;
    for (int i = 0; i < 200; ++i)
        times.measure([&] {
            const auto player = makePlayer();
            mainThread.runUntil([&] { return isReady(*player); });
        });
    return times;
}

// Answers once the seek is over.
void seek(MainThread& mainThread, AVPlayer& player, CMTime target)
{
    bool hasLanded = false;
    player.seekToTime(target, [&](bool) { hasLanded = true; });
    mainThread.runUntil([&] { return hasLanded; });
}

Timings fromPlayToFirstSample(MainThread& mainThread, AVPlayer& player)
{
    Timings times;
    for (int i = 0; i < 200; ++i) {
        times.measure([&] { player.play(); });
        player.pause();
        seek(mainThread, player, kCMTimeZero);
    }
    return times;
}

// Ends the benchmark where a seek does not end at its target.
Timings seekToItsCompletion(MainThread& mainThread, AVPlayer& player)
{
    Timings times;
    std::int64_t target = 0;
    for (int i = 0; i < 1000; ++i) {
        target = (target + 12345) % 100'000;
        times.measure([&] { seek(mainThread, player, CMTimeMake(target, 44100)); });
        if (player.currentTime().value != target) {
            std::puts("A SEEK MISSED ITS TARGET");
            std::exit(EXIT_FAILURE);
        }
    }
    return times;
}

// Silence that notes when it is first asked for.
class NotedSilence final : public SampleSource {
public:
    std::size_t read(Sample* into, std::size_t frames) override
    {
        std::fill_n(into, frames, Sample { 0 });
        noteAsked();
        return frames;
    }

    void noteAsked()
    {
        m_isAsked = true;
        m_isAsked.notify_one();
    }

    void waitUntilAsked() const { m_isAsked.wait(false); }

private:
    std::atomic<bool> m_isAsked = false;
};

// On the machine's own sound server: from the start of a sink to the moment that it asks for the first
// samples. None where there is no server.
Timings fromStartToFirstSampleOnTheServer(int repetitions)
{
    Timings times;
    for (int i = 0; i < repetitions; ++i) {
        const auto source = std::make_shared<NotedSilence>();
        const auto start = Timings::Clock::now();
        const auto sink = AudioSink::openOnDevice(
            { 44100, 1 }, { .ready = [] {}, .lost = [source] { source->noteAsked(); } });
        if (!sink)
            break;
        sink->play(source);
        source->waitUntilAsked();
        times.add(Timings::secondsSince(start));
    }
    return times;
}

} // namespace

int main()
{
    Timings::printHeading();
    MainThread mainThread;
    // The first one loads the libraries and connects.
    fromStartToFirstSampleOnTheServer(1).print("first sample, first on the server");
    fromStartToFirstSampleOnTheServer(50).print("first sample, later on the server");

    const AudioSink::Replacement device(promptDevice());
    askWhetherPlayable().print("ask whether playable");
    const Timings plain = openAndDecodeInLine();
    plain.print("open and decode in line");
    const Timings ready = fromAssetToReady(mainThread);
    ready.print("from asset to ready");
    const auto player = makePlayer();
    mainThread.runUntil([&] { return isReady(*player); });
    fromPlayToFirstSample(mainThread, *player).print("from play to first sample");
    seekToItsCompletion(mainThread, *player).print("seek to its completion");
    std::printf(
        "from asset to ready takes %.2f times the decoding in line\n", ready.median() / plain.median());
    return 0;
}
