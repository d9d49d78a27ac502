// A record player on a clock, queues and a sound device that tests move by hand.
#pragma once

#include "playback/ORVRecordPlayer.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/FakeAudioDevice.h"
#include "tests/support/ManualExecutor.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/ToneFile.h"

#include <gtest/gtest.h>

#include <sstream>

using Lines = std::vector<std::string>;

inline constexpr int sampleRate = 8000;

// Writes down what it hears, and does what a test asks for while it hears it.
class LogDelegate final : public ORVRecordPlayerDelegate {
public:
    void recordPlayerDidBecomeReadyForPlayback(ORVRecordPlayer& player) override { log("ready", player); }
    void recordPlayerDidUpdatePlayingPosition(ORVRecordPlayer& player, double position) override
    {
        std::ostringstream line;
        line << "at " << position;
        log(line.str(), player);
    }
    void recordPlayerDidEndPlayback(ORVRecordPlayer& player) override { log("end", player); }

    Lines takeLines() { return std::exchange(lines, {}); }

    Lines lines;
    std::function<void(const std::string& line, ORVRecordPlayer&)> whenHeard = [](auto&, auto&) {};

private:
    void log(const std::string& line, ORVRecordPlayer& player)
    {
        lines.push_back(line);
        whenHeard(line, player);
    }
};

class ORVRecordPlayerTest : public testing::Test {
protected:
    ORVRecordPlayerTest()
    {
        scheduler.setAfterTurn([this] { executor.runAll(); });
    }
    ~ORVRecordPlayerTest() override { EXPECT_EQ(assertions.messages(), std::vector<NSString> {}); }

    static std::shared_ptr<ORVRecord> recordOf(const NSURL& url)
    {
        const auto record = make<ORVRecord>();
        record->setSoundFileURL(url);
        return record;
    }
    void makePlayer(const NSURL& url)
    {
        player = make<ORVRecordPlayer>(recordOf(url));
        player->setDelegate(delegate);
    }
    // A player of half a second of sound.
    void makePlayer() { makePlayer(sound.url()); }
    void makeReadyPlayer()
    {
        makePlayer();
        executor.runAll();
        heard();
    }
    // What the delegate hears meanwhile, or has heard since it was asked for last.
    Lines heardIn(double seconds)
    {
        scheduler.advance(seconds);
        return delegate->takeLines();
    }
    Lines heard() { return heardIn(0); }

    // What is heard of half a second of sound from its start.
    const Lines wholeSound { "at 0.1", "at 0.2", "at 0.3", "at 0.4", "end", "at 0" };

    ManualScheduler scheduler;
    ManualExecutor executor;
    AssertionRecorder assertions;
    FakeAudioDevice device;
    const ToneFile sound { sampleRate / 2, sampleRate };
    std::shared_ptr<LogDelegate> delegate = std::make_shared<LogDelegate>();
    std::shared_ptr<ORVRecordPlayer> player;
};
