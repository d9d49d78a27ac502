// In real time, on a real sound server: how much is on its way between the asking and the hearing.
#include "platform/media/PulseSink.h"

#include "tests/support/PrivateSoundServer.h"

#include <gmock/gmock.h>

#include <atomic>

namespace {

constexpr int rate = PrivateSoundServer::sampleRate;

class CountingSilence final : public SampleSource {
public:
    std::size_t read(Sample* into, std::size_t frames) override
    {
        std::fill_n(into, frames, Sample { 0 });
        m_framesTaken += static_cast<std::int64_t>(frames);
        return frames;
    }
    std::int64_t framesTaken() const { return m_framesTaken; }

private:
    std::atomic<std::int64_t> m_framesTaken = 0;
};

TEST(PulseSinkTest, ATenthOfASecondIsOnItsWay)
{
    RealEventLoop loop;
    PrivateSoundServer server;
    ASSERT_TRUE(server.start(loop));
    const auto source = std::make_shared<CountingSilence>();
    const auto sink = PulseSink::open({ rate, 1 }, { .ready = [] {}, .lost = [] {} });
    ASSERT_NE(sink, nullptr);
    sink->play(source);
    double most = 0; // of seconds
    const auto isSeen = [&] {
        // Asked in this order a thread that has to wait in between only sees less on its way.
        const std::int64_t taken = source->framesTaken();
        most = std::max(most, static_cast<double>(taken - sink->framesHeard()) / rate);
        return taken > 2 * rate && most > 0.095;
    };
    EXPECT_TRUE(loop.runUntil(isSeen, 25)) << "a thread that waits for a busy core needs the room: " << most;
    EXPECT_LT(most, 0.105) << "a finger would be followed too late";
}

} // namespace
