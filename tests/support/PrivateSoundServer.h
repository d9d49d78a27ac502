// A sound server of a test's own, in real time: sinks that nobody hears, and a recorder at the monitor of
// one.
//
// While it lives the process's sound goes to it. Its sinks take 16-bit samples of one channel at 44.1 kHz and
// pass on exactly what they are given.
#pragma once

#include "platform/media/SoundFormat.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/RealEventLoop.h"

#include <QTemporaryDir>

class PrivateSoundServer {
public:
    static constexpr int sampleRate = 44100;

    PrivateSoundServer();

    // With one sink, "t". False, with the reason among the test's failures, when it does not come up.
    bool start(RealEventLoop&);
    void die() { m_server.kill(); }
    // Answers nobody any more, without hanging up, until it goes on.
    void freeze() { m_server.freeze(); }
    void goOn() { m_server.goOn(); }

    bool addSink(const std::string& name);
    bool removeSink(const std::string& name);
    // The sink of the start takes no samples until it is resumed, as a device that another program has.
    bool suspendSink();
    bool resumeSink();
    // Ends the stream that the server's only client plays on, as a user may in a mixer.
    bool endStream();

    // Records anew what a sink passes on; returns once samples flow.
    bool record(RealEventLoop&, const std::string& sink = "t");
    // From some sample on; all of them grow while they are asked for.
    std::vector<Sample> recorded(std::size_t begin = 0) const;

private:
    std::string path(const char* name) const;
    std::string socket() const { return path("native"); }
    bool control(std::vector<std::string> arguments) const; // by the server's own tool

    const QTemporaryDir m_folder;
    ChildProcess::Environment m_environment;
    ChildProcess m_server;
    ChildProcess m_recorder;
    std::map<std::string, std::string> m_modules; // by the names of the sinks
};
