#include "platform/media/SoundFileProbe.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gmock/gmock.h>

namespace {

// A box of an MPEG-4 file.
QByteArray box(const char* type, const QByteArray& content = {})
{
    QByteArray size(4, '\0');
    qToBigEndian(static_cast<quint32>(8 + content.size()), size.data());
    return size + type + content;
}

// What a handler box says before it names its kind: version, flags, and a word that is reserved.
const QByteArray handlerStart(8, '\0');

class SoundFileProbeTest : public testing::Test {
protected:
    NSURL urlOf(const QByteArray& bytes)
    {
        const QString path = folder.filePath(QStringLiteral("sound.m4a"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return QUrl::fromLocalFile(path);
    }
    bool namesSound(const QByteArray& bytes) { return SoundFileProbe::namesSound(urlOf(bytes)); }
    // A file with this in its only track's media box, after that many empty boxes.
    static QByteArray fileWith(const QByteArray& media, int emptyBoxes = 0)
    {
        return box("ftyp") + box("free").repeated(emptyBoxes) + box("moov", box("trak", box("mdia", media)));
    }

    QTemporaryDir folder;
};

TEST_F(SoundFileProbeTest, ATrackWhoseHandlerIsSoundNamesOne)
{
    EXPECT_TRUE(namesSound(fileWith(box("hdlr", handlerStart + "soun"))));
    EXPECT_TRUE(namesSound(fileWith(box("mdhd", "anything") + box("hdlr", handlerStart + "soun and more"))));
    EXPECT_FALSE(namesSound(fileWith(box("hdlr", handlerStart + "vide"))));
    EXPECT_FALSE(namesSound(fileWith(box("soun"))));
}

TEST_F(SoundFileProbeTest, AHandlerTooShortForItsKindIsNotReadOn)
{
    // What follows would complete the word.
    for (int length = 0; length < 4; ++length) {
        const QByteArray kind = "soun";
        EXPECT_FALSE(
            namesSound(fileWith(box("hdlr", handlerStart + kind.first(length)) + kind.sliced(length))))
            << length;
    }
    EXPECT_FALSE(namesSound(fileWith(box("hdlr") + handlerStart + "soun")));
}

TEST_F(SoundFileProbeTest, AThousandBoxesAreLookedAtAndNoMore)
{
    const QByteArray handler = box("hdlr", handlerStart + "soun");
    const int others = 5; // ftyp, moov, trak, mdia, hdlr
    EXPECT_TRUE(namesSound(fileWith(handler, 1000 - others)));
    EXPECT_FALSE(namesSound(fileWith(handler, 1000 - others + 1)));
}

TEST_F(SoundFileProbeTest, AFileBeyondTheCapIsToldOfOnceAndNotLookedInto)
{
    const NSURL url = urlOf(fileWith(box("hdlr", handlerStart + "soun")));
    ASSERT_TRUE(SoundFileProbe::namesSound(url));
    QFile file(url.toLocalFile());
    ASSERT_TRUE(file.resize(qint64 { 1 } << 30));
    EXPECT_TRUE(SoundFileProbe::namesSound(url));
    ASSERT_TRUE(file.resize(qint64 { 3 } << 30)); // sparse: it takes no room
    testing::internal::CaptureStderr();
    EXPECT_FALSE(SoundFileProbe::namesSound(url));
    EXPECT_FALSE(SoundFileProbe::namesSound(url));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        url.toLocalFile().toStdString() + ": 3221225472 bytes are more than the 1073741824 of a sound\n");
}

} // namespace
