#include "platform/media/LibavDecoder.h"

#include "platform/media/SoundLoader.h"
#include "tests/platform/media/RemuxedClip.h"
#include "tests/support/SourcePath.h"
#include "tests/support/ToneFile.h"

#include <QFile>

#include <gmock/gmock.h>

#include <random>

namespace {

NSURL clip(const char* name = "fountain.m4a")
{
    return QUrl::fromLocalFile(sourcePath("resources/sounds/") + QString::fromUtf8(name));
}

std::vector<Sample> decodeAll(SoundDecoder& decoder)
{
    std::vector<Sample> samples;
    while (decoder.decodeNext(samples)) { }
    return samples;
}

// How far the samples are from those of the whole at a frame; 1 is as far as silence is.
double difference(const std::vector<Sample>& samples, const std::vector<Sample>& whole, std::int64_t frame)
{
    double error = 0;
    double energy = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double there = whole[static_cast<std::size_t>(frame) + i];
        error += (samples[i] - there) * (samples[i] - there);
        energy += there * there;
    }
    return std::sqrt(error / energy);
}

TEST(LibavDecoderTest, GivesAFilesSamplesUnchanged)
{
    const ToneFile tone(5000, 22050, 2);
    const auto decoder = SoundDecoder::open(tone.url());
    ASSERT_NE(decoder, nullptr);
    EXPECT_EQ(decoder->format(), (SoundFormat { 22050, 2 }));
    EXPECT_EQ(decoder->frameCount(), 5000);
    const auto samples = decodeAll(*decoder);
    ASSERT_EQ(samples.size(), 10000u);
    for (std::size_t frame = 0; frame < 5000; ++frame)
        ASSERT_EQ(samples[2 * frame], tone.sampleAt(static_cast<std::int64_t>(frame)));
}

TEST(LibavDecoderTest, MixesManyChannelsDownToTwo)
{
    const ToneFile tone(1000, 44100, 6);
    const auto decoder = SoundDecoder::open(tone.url());
    ASSERT_NE(decoder, nullptr);
    EXPECT_EQ(decoder->format().channels, 2);
    EXPECT_EQ(decodeAll(*decoder).size(), 2000u);
}

TEST(LibavDecoderTest, EntersAFileAtExactlyTheFrame)
{
    const ToneFile tone(100'000);
    const auto decoder = SoundDecoder::open(tone.url());
    ASSERT_NE(decoder, nullptr);
    for (const std::int64_t frame : { 77'777, 1, 99'999, 0, 50'000 }) {
        ASSERT_TRUE(decoder->seekToFrame(frame));
        const auto samples = decodeAll(*decoder);
        ASSERT_EQ(static_cast<std::int64_t>(samples.size()), 100'000 - frame);
        ASSERT_EQ(samples.front(), tone.sampleAt(frame));
        ASSERT_EQ(samples.back(), tone.sampleAt(99'999));
    }
}

TEST(LibavDecoderTest, EntersACompressedFileWhereItsWholeDecodingIs)
{
    // A tonal sound: in a noisy one the codec draws noise of its own, and other noise after a jump.
    const auto decoder = SoundDecoder::open(clip("hall_organ.m4a"));
    ASSERT_NE(decoder, nullptr);
    const auto whole = decodeAll(*decoder);
    for (const std::int64_t frame : { 100'000, 12'345, 1, 500, 200'000 }) {
        ASSERT_TRUE(decoder->seekToFrame(frame));
        std::vector<Sample> samples;
        while (samples.size() < 30'000 && decoder->decodeNext(samples)) { }
        // The codec draws other noise after a jump, so the samples are alike, not equal. They are alike where
        // they should be, and less so one sample to either side.
        const double error = difference(samples, whole, frame);
        EXPECT_LT(error, 0.02) << "from frame " << frame;
        EXPECT_LT(3 * error, difference(samples, whole, frame + 1)) << "from frame " << frame;
        EXPECT_LT(3 * error, difference(samples, whole, frame - 1)) << "from frame " << frame;
    }
}

TEST(LibavDecoderTest, ABareStreamIsAsLongAsItsPackets)
{
    const RemuxedClip bare(clip("hall_organ.m4a").toLocalFile(), RemuxedClip::Form::BareStream);
    const auto decoder = SoundDecoder::open(bare.url());
    ASSERT_NE(decoder, nullptr);
    EXPECT_EQ(decoder->frameCount(), 1024 * bare.packets());
    EXPECT_EQ(static_cast<std::int64_t>(decodeAll(*decoder).size()), decoder->frameCount());
}

TEST(LibavDecoderTest, ASoundThatBeginsLateInItsFileIsEnteredWhereItsWholeDecodingIs)
{
    const RemuxedClip late(clip("hall_organ.m4a").toLocalFile(), RemuxedClip::Form::LateStart);
    const auto decoder = SoundDecoder::open(late.url());
    ASSERT_NE(decoder, nullptr);
    const auto whole = decodeAll(*decoder);
    for (const std::int64_t frame : { 100'000, 30'000, 200'000 }) {
        ASSERT_TRUE(decoder->seekToFrame(frame));
        std::vector<Sample> samples;
        while (samples.size() < 30'000 && decoder->decodeNext(samples)) { }
        const double error = difference(samples, whole, frame);
        EXPECT_LT(error, 0.02) << "from frame " << frame;
        EXPECT_LT(3 * error, difference(samples, whole, frame + 1)) << "from frame " << frame;
        EXPECT_LT(3 * error, difference(samples, whole, frame - 1)) << "from frame " << frame;
    }
}

TEST(LibavDecoderTest, AFileThatNamesOtherFilesIsNotFollowed)
{
    const ToneFile tone(1000);
    const auto openText = [&](const QByteArray& text) {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("list.m4a"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return SoundDecoder::open(QUrl::fromLocalFile(path));
    };
    EXPECT_EQ(openText("#EXTM3U\n#EXTINF:1,\n" + tone.path().toUtf8() + "\n"), nullptr);
    EXPECT_EQ(openText("ffconcat version 1.0\nfile '" + tone.path().toUtf8() + "'\n"), nullptr);
}

// A real clip cut off at many lengths, and with bytes of it changed: whatever comes of it, it comes to an
// end, and what plays is no longer than what the loader may hold.
class DamagedFileTest : public testing::Test {
protected:
    static QByteArray clipBytes()
    {
        QFile file(clip().toLocalFile());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    // Frames in what is loaded from these bytes; 0 when nothing is.
    std::int64_t load(const QByteArray& content)
    {
        const QString path = folder.filePath(QStringLiteral("damaged.m4a"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        const auto sound = SoundLoader::load(QUrl::fromLocalFile(path), false);
        if (!sound)
            return 0;
        std::vector<Sample> samples(static_cast<std::size_t>(sound->format().channels) * 16);
        sound->read(
            0, samples.data(), std::min<std::size_t>(16, static_cast<std::size_t>(sound->frameCount())));
        return sound->frameCount();
    }

    QTemporaryDir folder;
    const QByteArray bytes = clipBytes();
};

TEST_F(DamagedFileTest, CutOffAnywhereItPlaysWhatIsThereOrNothing)
{
    const std::int64_t whole = load(bytes);
    ASSERT_GT(whole, 0);
    std::int64_t shorter = 0;
    for (int part = 0; part <= 60; ++part) {
        const std::int64_t frames = load(bytes.left(bytes.size() * part / 61));
        EXPECT_LE(frames, whole) << part;
        shorter += frames > 0 && frames < whole;
    }
    for (qsizetype length = 0; length < 300; length += 7)
        EXPECT_EQ(load(bytes.left(length)), 0);
    const bool tableOfContentsIsFirst = bytes.indexOf("moov") < bytes.indexOf("mdat");
    EXPECT_EQ(shorter > 0, tableOfContentsIsFirst);
}

TEST_F(DamagedFileTest, ChangedBytesNeverBringItDown)
{
    std::mt19937 random(20240517);
    const qsizetype tableOfContents = bytes.indexOf("moov");
    ASSERT_GT(tableOfContents, 0);
    const qsizetype tableEnd = std::min(tableOfContents + 4000, bytes.size());
    int playable = 0;
    for (int round = 0; round < 200; ++round) {
        QByteArray damaged = bytes;
        const bool inTheTable = round % 2 == 0;
        std::uniform_int_distribution<qsizetype> place(
            inTheTable ? tableOfContents : 0, (inTheTable ? tableEnd : bytes.size()) - 1);
        for (int change = 0; change <= round % 8; ++change)
            damaged[place(random)] = static_cast<char>(random());
        playable += load(damaged) > 0;
    }
    EXPECT_GT(playable, 0);
}

TEST_F(DamagedFileTest, TablesThatStateHugeCountsAreNotBelieved)
{
    // A table may hide what the encoder put around the sound, but not make up sound.
    const std::int64_t longest = load(bytes) + 2048;
    for (const char* table : { "stts", "stsz", "stsc", "stco", "elst", "mvhd", "mdhd", "tkhd" }) {
        const qsizetype at = bytes.indexOf(table);
        ASSERT_GE(at, 0) << table;
        for (const int offset : { 8, 12, 16, 20, 24 }) {
            QByteArray damaged = bytes;
            for (int i = 0; i < 4; ++i)
                damaged[at + offset + i] = static_cast<char>(i == 0 ? 0x7F : 0xFF);
            EXPECT_LE(load(damaged), longest) << table << " + " << offset;
        }
    }
}

} // namespace
