#include "platform/media/AudioOutput.h"

#include "platform/media/DecodedSound.h"
#include "tests/platform/media/MediaTest.h"

namespace {

constexpr int rate = 8000;

class AudioOutputTest : public MediaTest {
protected:
    std::shared_ptr<Sound> sound = std::make_shared<DecodedSound>(
        SoundFormat { rate, 2 }, std::vector<Sample>(static_cast<std::size_t>(10 * rate * 2), Sample { 7 }));
    // Of a channel whose sample at a frame is a number that the frame can be read from.
    std::shared_ptr<Sound> ramp = [] {
        std::vector<Sample> samples;
        for (int frame = 0; frame < 30 * 1000; ++frame)
            samples.push_back(static_cast<Sample>(frame));
        return std::make_shared<DecodedSound>(SoundFormat { 1000, 1 }, samples);
    }();
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
    advance(2.95);
    EXPECT_FALSE(device.runs().front()->isOver()) << "it may be waking up";
    EXPECT_EQ(output.position(), rate);
    device.setAvailable(false);
    advance(0.1);
    EXPECT_TRUE(device.runs().front()->isOver());
    const std::int64_t position = output.position();
    advance(1);
    EXPECT_EQ(output.position(), position + rate);
}

TEST_F(AudioOutputTest, ADeviceThatNeverStartsIsGivenUpToo)
{
    device.setLatency(1e9);
    output.start(sound, 0);
    advance(4);
    EXPECT_TRUE(device.runs().front()->isOver());
    EXPECT_GT(output.position(), 0);
}

TEST_F(AudioOutputTest, WhereThereIsNoDeviceOneIsLookedForFourTimesASecond)
{
    device.setAvailable(false);
    output.start(sound, 0);
    EXPECT_EQ(device.openings(), 1);
    advance(9.9);
    EXPECT_EQ(device.openings(), 1 + 39);
    output.stop();
    advance(10);
    EXPECT_EQ(device.openings(), 1 + 39) << "nothing is to be heard any more";
}

TEST_F(AudioOutputTest, AtTheEndOfTheSoundNoDeviceIsLookedFor)
{
    device.setAvailable(false);
    output.start(sound, 9 * rate);
    advance(1.1);
    const int openings = device.openings();
    advance(5);
    EXPECT_EQ(device.openings(), openings);
}

TEST_F(AudioOutputTest, ADeviceThatComesBackSoundsFromWhereTheTimeIsThen)
{
    output.start(ramp, 0);
    advance(1);
    device.setAvailable(false);
    device.lastRun().lose();
    settle();
    advance(2.1);
    EXPECT_EQ(output.position(), 3100);
    device.setAvailable(true);
    advance(0.3);
    EXPECT_EQ(output.position(), 3400);
    ASSERT_EQ(device.runs().size(), 2u);
    EXPECT_EQ(device.lastRun().samples().at(0), 3250) << "of the moment when it was there";
    advance(1);
    EXPECT_EQ(output.position(), 4400);
    EXPECT_EQ(device.runs().size(), 2u);
}

TEST_F(AudioOutputTest, ADeviceThatAnswersLateSoundsFromWhereTheTimeIsThen)
{
    device.setAvailable(false);
    output.start(ramp, 0);
    device.setAvailable(true);
    device.setAnswers(false);
    advance(5);
    ASSERT_EQ(device.runs().size(), 1u) << "the one that was asked is waited for";
    EXPECT_FALSE(device.lastRun().isPlaying());
    EXPECT_EQ(output.position(), 5000);
    device.lastRun().answer();
    settle();
    advance(0.5);
    EXPECT_EQ(device.lastRun().samples().at(0), 5000);
    EXPECT_EQ(output.position(), 5500);
}

TEST_F(AudioOutputTest, ThePositionStandsForTheDelayOfADeviceThatComesBack)
{
    output.start(ramp, 0);
    advance(1);
    device.setLatency(0.1);
    device.lastRun().lose();
    settle();
    std::int64_t last = output.position();
    for (int step = 0; step < 100; ++step) {
        advance(0.01);
        ASSERT_GE(output.position(), last) << "it ran backwards";
        last = output.position();
    }
    // It plays from 1.25 s on and is heard 0.1 s later; the time stood still for as long.
    EXPECT_EQ(device.lastRun().samples().at(0), 1250);
    EXPECT_EQ(last, 1900);
}

TEST_F(AudioOutputTest, ADeviceThatComesBackButLetsNoTimePassCannotStopTheTime)
{
    output.start(ramp, 0);
    advance(1);
    device.setLatency(1e9);
    device.lastRun().lose();
    settle();
    advance(10);
    EXPECT_EQ(output.position(), 11'000);
    EXPECT_LE(device.runs().size(), 5u) << "each is given its three seconds";
    device.setLatency(0);
    advance(4);
    EXPECT_EQ(output.position(), 15'000);
    EXPECT_TRUE(device.lastRun().isPlaying());
    EXPECT_GT(device.lastRun().framesHeard(), 0);
}

TEST_F(AudioOutputTest, ADeviceMayComeAndGoAnyNumberOfTimes)
{
    output.start(ramp, 0);
    for (int round = 1; round <= 10; ++round) {
        advance(0.5);
        device.lastRun().lose();
        settle();
        advance(0.5);
        EXPECT_EQ(output.position(), round * 1000);
    }
    EXPECT_EQ(device.runs().size(), 11u);
    output.stop();
    for (const auto& run : device.runs())
        EXPECT_TRUE(run->isOver());
}

} // namespace
