// End to end, in real time: a real clip through the real player to a real sound server, recorded there.
#include "platform/media/AVAsset.h"
#include "platform/media/AVPlayer.h"
#include "platform/media/SoundLoader.h"
#include "tests/support/RealEventLoop.h"
#include "tests/support/ToneFile.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <numeric>

namespace {

NSURL clip()
{
    return QUrl::fromLocalFile(QStringLiteral(ORUVANE_SOURCE_DIR "/resources/sounds/bicycle_bell.m4a"));
}

// A sound server of the test's own: a sink that nobody hears, and a recorder at its monitor.
class PrivateSoundServer {
public:
    PrivateSoundServer()
    {
        m_environment.insert(QStringLiteral("HOME"), m_folder.path());
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
        m_environment.insert(QStringLiteral("PULSE_SERVER"), address());
        qputenv("PULSE_SERVER", address().toUtf8());
        qputenv("PULSE_COOKIE", m_folder.filePath(QStringLiteral("cookie")).toUtf8());
        m_server.setProcessEnvironment(m_environment);
        m_recorder.setProcessEnvironment(m_environment);
    }
    ~PrivateSoundServer()
    {
        kill(m_recorder);
        kill(m_server);
    }

    bool start(RealEventLoop& loop)
    {
        QFile::remove(socket()); // one that was killed leaves it
        m_server.setStandardErrorFile(QProcess::nullDevice());
        m_server.start(QStringLiteral("pulseaudio"),
            { QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
                QStringLiteral("-L"),
                QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=") + socket(),
                QStringLiteral("-L"),
                QStringLiteral("module-null-sink sink_name=t norewinds=1 rate=44100 channels=1") });
        return m_server.waitForStarted() && loop.runUntil([&] { return QFile::exists(socket()); }, 10);
    }
    // Returns once samples flow.
    bool record(RealEventLoop& loop)
    {
        m_recorder.start(QStringLiteral("parec"),
            { QStringLiteral("-d"), QStringLiteral("t.monitor"), QStringLiteral("--raw"),
                QStringLiteral("--format=s16le"), QStringLiteral("--rate=44100"),
                QStringLiteral("--channels=1"), QStringLiteral("--latency-msec=20") });
        return loop.runUntil([&] { return m_recorder.bytesAvailable() > 0; }, 10);
    }
    std::vector<Sample> recorded()
    {
        const QByteArray bytes = m_recorder.readAllStandardOutput();
        std::vector<Sample> samples(static_cast<std::size_t>(bytes.size()) / sizeof(Sample));
        std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(Sample));
        return samples;
    }
    void die() { kill(m_server); }
    // Answers nobody any more, without hanging up.
    void freeze() { ::kill(static_cast<pid_t>(m_server.processId()), SIGSTOP); }

private:
    NSString socket() const { return m_folder.filePath(QStringLiteral("native")); }
    NSString address() const { return QStringLiteral("unix:") + socket(); }
    static void kill(QProcess& process)
    {
        process.kill();
        process.waitForFinished();
    }

    const QTemporaryDir m_folder;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QProcess m_server;
    QProcess m_recorder;
};

class RealSoundTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* program : { "pulseaudio", "parec" })
            ASSERT_FALSE(QStandardPaths::findExecutable(QString::fromUtf8(program)).isEmpty())
                << program << " is not installed: nothing can be proved to sound without it";
        ASSERT_TRUE(server.start(loop)) << "the sound server did not start";
    }
    void play(const NSURL& url)
    {
        player
            = AVPlayer::playerWithPlayerItem(AVPlayerItem::playerItemWithAsset(AVAsset::assetWithURL(url)));
        player->setActionAtItemEnd(AVPlayerActionAtItemEndNone);
        ASSERT_TRUE(loop.runUntil([&] { return item().status() != AVPlayerItemStatusUnknown; }, 5));
        ASSERT_EQ(item().status(), AVPlayerItemStatusReadyToPlay);
        token = player->addPeriodicTimeObserverForInterval(
            CMTimeMake(1, 10), Executor::current().mainQueue(), [this](CMTime time) {
                ticks.push_back({ loop.seconds(), CMTimeGetSeconds(time) });
            });
        startTime = loop.seconds();
        player->play();
    }
    AVPlayerItem& item() const { return *player->currentItem(); }
    double duration() const { return CMTimeGetSeconds(item().duration()); }
    bool hasEnded() const { return player->currentTime() >= item().duration(); }
    bool waitForEnd()
    {
        return loop.runUntil([&] { return hasEnded() && ticks.back().heard >= duration(); }, 20);
    }

    struct Tick {
        double clock;
        double heard;
    };
    const ToneFile tone { 3 * 44100 };
    RealEventLoop loop;
    PrivateSoundServer server;
    std::shared_ptr<AVPlayer> player;
    std::shared_ptr<NSObject> token;
    std::vector<Tick> ticks;
    double startTime = 0;
};

std::size_t firstSound(const std::vector<Sample>& samples)
{
    const auto isLoud = [](Sample sample) { return std::abs(sample) > 100; };
    return static_cast<std::size_t>(std::find_if(samples.begin(), samples.end(), isLoud) - samples.begin());
}

double level(const Sample* samples, std::size_t count)
{
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += static_cast<double>(samples[i]) * samples[i];
    return std::sqrt(sum / static_cast<double>(count));
}

double correlation(const Sample* first, const Sample* second, std::size_t count)
{
    double product = 0;
    for (std::size_t i = 0; i < count; ++i)
        product += static_cast<double>(first[i]) * second[i];
    return product / (static_cast<double>(count) * level(first, count) * level(second, count));
}

TEST_F(RealSoundTest, WhatIsPlayedIsWhatIsHeard)
{
    ASSERT_TRUE(server.record(loop)) << "the monitor cannot be recorded";
    play(clip());
    ASSERT_TRUE(waitForEnd());
    const double settled = loop.seconds() + 1;
    loop.runUntil([&] { return loop.seconds() > settled; }, 2);

    const auto recorded = server.recorded();
    const auto sound = SoundLoader::load(clip(), false);
    std::vector<Sample> played(static_cast<std::size_t>(sound->frameCount()));
    sound->read(0, played.data(), played.size());
    const std::size_t begin = firstSound(played);
    const std::size_t heardBegin = firstSound(recorded);
    const std::size_t count = played.size() - begin;
    ASSERT_LE(heardBegin + count, recorded.size()) << "not all of it was heard";
    EXPECT_NEAR(level(&recorded[heardBegin], count) / level(&played[begin], count), 1, 0.05);
    EXPECT_GE(correlation(&recorded[heardBegin], &played[begin], count), 0.99);
}

TEST_F(RealSoundTest, ThePositionFollowsRealTimeTenTimesASecondToTheEnd)
{
    play(tone.url());
    ASSERT_TRUE(waitForEnd());
    const double elapsed = loop.seconds() - startTime;
    EXPECT_GE(elapsed, duration() - 0.02);
    EXPECT_LE(elapsed, duration() + 0.5);
    EXPECT_EQ(ticks.back().heard, duration());
    EXPECT_NEAR(static_cast<double>(ticks.size()), duration() * 10, 3);
    const double lag = ticks.at(5).clock - startTime - ticks.at(5).heard;
    for (std::size_t i = 5; i + 1 < ticks.size(); ++i) {
        EXPECT_GE(ticks[i].heard, ticks[i - 1].heard);
        EXPECT_NEAR(ticks[i].clock - startTime - ticks[i].heard, lag, 0.06) << "tick " << i;
    }
}

TEST_F(RealSoundTest, WhenTheSoundServerDiesPlayingGoesOnToTheEnd)
{
    play(tone.url());
    ASSERT_TRUE(loop.runUntil([&] { return CMTimeGetSeconds(player->currentTime()) > 1; }, 5));
    server.die();
    const double before = CMTimeGetSeconds(player->currentTime());
    ASSERT_TRUE(waitForEnd());
    EXPECT_GE(before, 1);
    EXPECT_NEAR(loop.seconds() - startTime, duration(), 0.5);
    for (std::size_t i = 1; i < ticks.size(); ++i)
        EXPECT_GE(ticks[i].heard, ticks[i - 1].heard);
}

TEST_F(RealSoundTest, ASoundServerThatComesBackIsUsedAtTheNextPlay)
{
    server.die();
    play(tone.url());
    ASSERT_TRUE(loop.runUntil([&] { return CMTimeGetSeconds(player->currentTime()) > 0.3; }, 5));
    player->pause();
    ASSERT_TRUE(server.start(loop));
    ASSERT_TRUE(server.record(loop));
    player->play();
    ASSERT_TRUE(waitForEnd());
    const auto recorded = server.recorded();
    EXPECT_LT(firstSound(recorded), recorded.size()) << "nothing was heard";
}

TEST_F(RealSoundTest, ASoundServerThatFreezesIsGivenUp)
{
    play(tone.url());
    ASSERT_TRUE(loop.runUntil([&] { return CMTimeGetSeconds(player->currentTime()) > 0.5; }, 5));
    server.freeze();
    EXPECT_TRUE(waitForEnd());
}

} // namespace
