#include "tests/support/PrivateSoundServer.h"

#include <QFile>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace {

// No sample is taken back once it is due, and the server's clock alone says when it is.
std::string sinkNamed(const std::string& name)
{
    return "sink_name=" + name
        + " norewinds=1 channels=1 rate=" + std::to_string(PrivateSoundServer::sampleRate);
}

std::vector<char> contents(const std::string& path, std::size_t begin = 0)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly) || !file.seek(static_cast<qint64>(begin)))
        return {};
    const QByteArray bytes = file.readAll();
    return { bytes.begin(), bytes.end() };
}

} // namespace

PrivateSoundServer::PrivateSoundServer()
    : m_environment { { "HOME", path("") }, { "XDG_RUNTIME_DIR", path("") }, { "LC_ALL", "C.UTF-8" } }
{
    qputenv("PULSE_SERVER", ("unix:" + socket()).c_str());
    qputenv("PULSE_COOKIE", path("cookie").c_str());
}

std::string PrivateSoundServer::path(const char* name) const
{
    return m_folder.filePath(QString::fromUtf8(name)).toStdString();
}

bool PrivateSoundServer::start(RealEventLoop& loop)
{
    for (const char* program : { "pulseaudio", "parec", "pactl", "pacmd" })
        EXPECT_FALSE(QStandardPaths::findExecutable(QString::fromUtf8(program)).isEmpty())
            << program << " is not installed: nothing can be proved to sound without it";
    QFile::remove(QString::fromStdString(socket())); // one that was killed leaves it
    const bool isUp
        = m_server.start({ "pulseaudio", "-n", "--daemonize=no",
                             "--exit-idle-time=30", // should a crashed test leave it behind
                             "-L", "module-null-sink " + sinkNamed("t"), "-L", "module-cli-protocol-unix",
                             "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + socket() },
              m_environment, path("server.log"))
        && loop.runUntil([&] { return QFile::exists(QString::fromStdString(socket())); }, 10);
    EXPECT_TRUE(isUp) << "the sound server did not start";
    return isUp;
}

bool PrivateSoundServer::control(std::vector<std::string> arguments) const
{
    ChildProcess tool;
    const bool succeeds = tool.start(arguments, m_environment, path("answer")) && tool.succeeds();
    EXPECT_TRUE(succeeds) << arguments.at(1);
    return succeeds;
}

bool PrivateSoundServer::addSink(const std::string& name)
{
    if (!control({ "pactl", "load-module", "module-null-sink", sinkNamed(name) }))
        return false;
    const std::vector<char> number = contents(path("answer"));
    m_modules[name] = std::string(number.begin(), std::find(number.begin(), number.end(), '\n'));
    return true;
}

bool PrivateSoundServer::removeSink(const std::string& name)
{
    const auto added = m_modules.find(name);
    // The sink of the start is the server's first module.
    return control({ "pactl", "unload-module", added == m_modules.end() ? "0" : added->second });
}

bool PrivateSoundServer::suspendSink() { return control({ "pactl", "suspend-sink", "t", "1" }); }

bool PrivateSoundServer::resumeSink() { return control({ "pactl", "suspend-sink", "t", "0" }); }

bool PrivateSoundServer::endStream()
{
    if (!control({ "pactl", "list", "short", "sink-inputs" }))
        return false;
    const std::vector<char> line = contents(path("answer"));
    return control(
        { "pacmd", "kill-sink-input", std::string(line.begin(), std::find(line.begin(), line.end(), '\t')) });
}

bool PrivateSoundServer::record(RealEventLoop& loop, const std::string& sink)
{
    QFile::remove(QString::fromStdString(path("recording")));
    // With a limit, so that a crashed test leaves nobody behind to keep the server in use.
    const bool flows
        = m_recorder.start({ "timeout", "60", "parec", "-d", sink + ".monitor", "--raw", "--format=s16le",
                               "--rate=" + std::to_string(sampleRate), "--channels=1", "--latency-msec=20" },
              m_environment, path("recording"))
        && loop.runUntil([&] { return !recorded().empty(); }, 10);
    EXPECT_TRUE(flows) << "the monitor cannot be recorded";
    return flows;
}

std::vector<Sample> PrivateSoundServer::recorded(std::size_t begin) const
{
    const std::vector<char> bytes = contents(path("recording"), begin * sizeof(Sample));
    std::vector<Sample> samples(bytes.size() / sizeof(Sample));
    if (!samples.empty())
        std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(Sample));
    return samples;
}
