// End to end, in real time: a player on a real sound server that is lost in the middle of a clip and comes
// back. What is recorded there tells, sample by sample, which frame of the clip was heard when.
#include "platform/media/AVAsset.h"
#include "platform/media/AVPlayer.h"
#include "tests/support/PrivateSoundServer.h"
#include "tests/support/ToneFile.h"

#include <gmock/gmock.h>

#include <random>

namespace {

constexpr int rate = PrivateSoundServer::sampleRate;

// Noise that never repeats, so that four samples in a row name their place in it.
class NoiseFile {
public:
    explicit NoiseFile(int frames)
        : m_samples(static_cast<std::size_t>(frames))
    {
        std::mt19937 random(7);
        for (Sample& sample : m_samples)
            sample = static_cast<Sample>(static_cast<int>(random() % 16001) - 8000);
        for (std::size_t frame = 0; frame + 4 <= m_samples.size(); ++frame)
            m_frames.emplace(keyAt(m_samples, frame), frame);
        writeWave(path(), frames, rate, 1, [this](int frame) { return m_samples[std::size_t(frame)]; });
    }

    NSURL url() const { return QUrl::fromLocalFile(path()); }

    // The last frame that is heard in the samples, in seconds of the clip; negative when none is.
    double lastHeardIn(const std::vector<Sample>& samples) const
    {
        for (std::size_t i = samples.size(); i-- > 4;) {
            const auto found = m_frames.find(keyAt(samples, i - 4));
            if (found != m_frames.end())
                return static_cast<double>(found->second) / rate;
        }
        return -1;
    }

private:
    static std::uint64_t keyAt(const std::vector<Sample>& samples, std::size_t frame)
    {
        std::uint64_t key = 0;
        std::memcpy(&key, &samples[frame], sizeof key);
        return key;
    }
    NSString path() const { return m_folder.filePath(QStringLiteral("noise.wav")); }

    const QTemporaryDir m_folder;
    std::vector<Sample> m_samples;
    std::unordered_map<std::uint64_t, std::size_t> m_frames;
};

class SoundReturnTest : public testing::Test {
protected:
    SoundReturnTest()
    {
        player->setActionAtItemEnd(AVPlayerActionAtItemEndNone);
        token = player->addPeriodicTimeObserverForInterval(
            CMTimeMake(1, 50), Executor::current().mainQueue(), [this](CMTime time) {
                EXPECT_GE(CMTimeGetSeconds(time), lastTick) << "the position ran backwards";
                lastTick = CMTimeGetSeconds(time);
            });
    }
    // The clip has been playing for a second.
    void SetUp() override
    {
        ASSERT_TRUE(server.start(loop));
        ASSERT_TRUE(server.record(loop));
        player->play();
        ASSERT_TRUE(loop.runUntil([&] { return position() > 1; }, 10));
        ASSERT_GT(noise.lastHeardIn(server.recorded()), 0.5) << "it did not sound before";
    }

    double position() const { return CMTimeGetSeconds(player->currentTime()); }
    void wait(double seconds)
    {
        const double end = loop.seconds() + seconds;
        loop.runUntil([&] { return loop.seconds() >= end; }, seconds + 1);
    }
    // From now on the device is there. The clip must sound on it within a second, where its position is.
    void expectItSoundsAgain(std::size_t recordedBefore)
    {
        const double back = loop.seconds();
        const auto lastHeard = [&] {
            const std::size_t count = server.recorded(recordedBefore).size();
            // The last tenth of a second tells, and is soon looked through.
            return noise.lastHeardIn(
                server.recorded(recordedBefore + count - std::min<std::size_t>(count, rate / 10)));
        };
        ASSERT_TRUE(loop.runUntil([&] { return lastHeard() >= 0; }, 10)) << "it stays silent";
        EXPECT_LE(loop.seconds() - back, 1);
        wait(0.5); // the position has stood for the device's delay, and goes on
        const double before = position();
        EXPECT_NEAR(lastHeard(), before, 0.2);
        wait(0.5);
        EXPECT_NEAR(lastHeard(), position(), 0.2);
        EXPECT_NEAR(position(), before + 0.5, 0.15);
    }

    const NoiseFile noise { 20 * rate };
    RealEventLoop loop;
    PrivateSoundServer server;
    std::shared_ptr<AVPlayer> player = AVPlayer::playerWithPlayerItem(
        AVPlayerItem::playerItemWithAsset(AVAsset::assetWithURL(noise.url())));
    std::shared_ptr<NSObject> token;
    double lastTick = 0;
};

TEST_F(SoundReturnTest, OnAServerThatWasRestarted)
{
    const double before = position();
    server.die();
    wait(2);
    EXPECT_NEAR(position(), before + 2, 0.3) << "silence keeps the time";
    ASSERT_TRUE(server.start(loop));
    ASSERT_TRUE(server.record(loop));
    expectItSoundsAgain(0);
}

TEST_F(SoundReturnTest, OnAServerThatWasFrozenForAMoment)
{
    server.freeze();
    wait(1.5);
    const std::size_t recorded = server.recorded().size();
    server.goOn();
    expectItSoundsAgain(recorded + rate / 4); // what was queued before is heard first
}

TEST_F(SoundReturnTest, OnAServerThatWasFrozenForLong)
{
    const double before = position();
    server.freeze();
    wait(6);
    EXPECT_GT(position(), before + 2) << "silence keeps the time once the device is given up";
    const std::size_t recorded = server.recorded().size();
    server.goOn();
    expectItSoundsAgain(recorded + rate / 4);
}

TEST_F(SoundReturnTest, OnADeviceThatWasTakenAwayForATime)
{
    const double before = position();
    ASSERT_TRUE(server.suspendSink());
    wait(2);
    EXPECT_NEAR(position(), before + 2, 0.3) << "silence keeps the time";
    const std::size_t recorded = server.recorded().size();
    ASSERT_TRUE(server.resumeSink());
    expectItSoundsAgain(recorded + rate / 4);
}

TEST_F(SoundReturnTest, AfterOnlyItsStreamWasEnded)
{
    const std::size_t recorded = server.recorded().size();
    ASSERT_TRUE(server.endStream());
    expectItSoundsAgain(recorded + rate / 4);
}

TEST_F(SoundReturnTest, OnAnotherDeviceAfterItsOwnWasRemoved)
{
    ASSERT_TRUE(server.addSink("other"));
    ASSERT_TRUE(server.record(loop, "other"));
    EXPECT_LT(noise.lastHeardIn(server.recorded()), 0) << "it is heard on its own device";
    ASSERT_TRUE(server.removeSink("t"));
    expectItSoundsAgain(0);
}

TEST_F(SoundReturnTest, OnADeviceThatComesBackAfterATime)
{
    const double before = position();
    ASSERT_TRUE(server.removeSink("t"));
    wait(1.5);
    EXPECT_NEAR(position(), before + 1.5, 0.4) << "silence keeps the time";
    ASSERT_TRUE(server.addSink("t"));
    ASSERT_TRUE(server.record(loop));
    expectItSoundsAgain(0);
}

} // namespace
