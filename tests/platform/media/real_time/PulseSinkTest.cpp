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
    ASSERT_TRUE(loop.runUntil([&] { return source->framesTaken() > 0; }, 5));
    double most = 0; // of seconds
    for (int i = 0; i < 100; ++i) {
        const double end = loop.seconds() + 0.02;
        loop.runUntil([&] { return loop.seconds() >= end; }, 1);
        const std::int64_t heard = sink->framesHeard();
        most = std::max(most, static_cast<double>(source->framesTaken() - heard) / rate);
    }
    EXPECT_GT(most, 0.095) << "a thread that waits for a busy core needs the room";
    EXPECT_LT(most, 0.105) << "a finger would be followed too late";
}

} // namespace
