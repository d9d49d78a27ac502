#include "platform/media/AudioOutput.h"

#include "platform/media/DecodedSound.h"
#include "tests/platform/media/MediaTest.h"

namespace {

constexpr int rate = 8000;

class AudioOutputTest : public MediaTest {
protected:
    std::shared_ptr<Sound> sound = std::make_shared<DecodedSound>(
        SoundFormat { rate, 2 }, std::vector<Sample>(static_cast<std::size_t>(10 * rate * 2), Sample { 7 }));
    AudioOutput output;
};

TEST_F(AudioOutputTest, ASecondStartReplacesTheFirst)
{
    output.start(sound, 0);
    advance(1);
    output.start(sound, 100);
    EXPECT_TRUE(device.runs().front()->isOver());
    EXPECT_EQ(output.position(), 100);
}

TEST_F(AudioOutputTest, EndsAtTheSoundsLengthWhateverTheTime)
{
    output.start(sound, 9 * rate);
    advance(60);
    EXPECT_EQ(output.position(), 10 * rate);
    EXPECT_EQ(device.lastRun().samples().size(), static_cast<std::size_t>(2 * rate));
}

TEST_F(AudioOutputTest, KeepsThePositionAfterStop)
{
    output.start(sound, 0);
    advance(0.5);
    output.stop();
    output.stop();
    advance(1);
    EXPECT_FALSE(output.isRunning());
    EXPECT_EQ(output.position(), rate / 2);
}

TEST_F(AudioOutputTest, ALossToldAfterTheRunWasStoppedChangesNothing)
{
    output.start(sound, 0);
    const auto lost = device.runs().back();
    lost->lose();
    output.stop();
    settle();
    EXPECT_FALSE(output.isRunning());
    output.start(sound, 0);
    lost->lose();
    settle();
    EXPECT_FALSE(device.lastRun().isOver()) << "the new run was taken for the lost one";
}

TEST_F(AudioOutputTest, ALossToldTwiceIsTakenOnce)
{
    output.start(sound, 0);
    advance(1);
    device.lastRun().lose();
    device.lastRun().lose();
    settle();
    advance(1);
    EXPECT_EQ(output.position(), 2 * rate);
}

TEST_F(AudioOutputTest, ALossToldAfterTheOutputIsGoneIsHarmless)
{
    auto brief = std::make_unique<AudioOutput>();
    brief->start(sound, 0);
    device.lastRun().lose();
    brief.reset();
    settle();
    EXPECT_TRUE(device.lastRun().isOver());
}

TEST_F(AudioOutputTest, ADeviceThatLetsNoTimePassIsGivenUpAfterThreeSeconds)
{
    output.start(sound, 0);
    advance(1);
    device.lastRun().standStill();
    advance(2);
    EXPECT_FALSE(device.lastRun().isOver()) << "it may be waking up";
    EXPECT_EQ(output.position(), rate);
    advance(2);
    EXPECT_TRUE(device.lastRun().isOver());
    const std::int64_t position = output.position();
    advance(1);
    EXPECT_EQ(output.position(), position + rate);
}

TEST_F(AudioOutputTest, ADeviceThatNeverStartsIsGivenUpToo)
{
    device.setLatency(1e9);
    output.start(sound, 0);
    advance(4);
    EXPECT_TRUE(device.lastRun().isOver());
    EXPECT_GT(output.position(), 0);
}

} // namespace
