#include "platform/media/AVAsset.h"

#include "tests/support/SourcePath.h"
#include "tests/support/ToneFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

class AVAssetTest : public testing::Test {
protected:
    // A file of those bytes; its address.
    NSURL fileWith(const QByteArray& bytes)
    {
        const QString path = folder.filePath(QStringLiteral("sound.m4a"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return QUrl::fromLocalFile(path);
    }
    static QByteArray clipBytes()
    {
        QFile file(sourcePath("resources/sounds/fountain.m4a"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    bool isPlayable(const QByteArray& bytes) { return AVAsset::assetWithURL(fileWith(bytes))->isPlayable(); }

    QTemporaryDir folder;
};

TEST_F(AVAssetTest, EveryCallYieldsANewObject)
{
    const NSURL url = fileWith({});
    EXPECT_NE(AVAsset::assetWithURL(url), AVAsset::assetWithURL(url));
    EXPECT_EQ(AVAsset::assetWithURL(url)->url(), url);
}

TEST_F(AVAssetTest, ANullAddressGivesNoAsset) { EXPECT_EQ(AVAsset::assetWithURL(NSURL()), nullptr); }

TEST_F(AVAssetTest, SoundFilesArePlayable)
{
    EXPECT_TRUE(isPlayable(clipBytes()));
    EXPECT_TRUE(AVAsset::assetWithURL(ToneFile(100).url())->url().isLocalFile());
    const ToneFile tone(100);
    EXPECT_TRUE(AVAsset::assetWithURL(tone.url())->isPlayable());
}

TEST_F(AVAssetTest, TheAnswerStaysOnceItWasGiven)
{
    const auto asset = AVAsset::assetWithURL(fileWith(clipBytes()));
    EXPECT_TRUE(asset->isPlayable());
    fileWith("gone");
    EXPECT_TRUE(asset->isPlayable());
}

TEST_F(AVAssetTest, WhatIsNoSoundFileIsNotPlayable)
{
    EXPECT_FALSE(AVAsset::assetWithURL(QUrl::fromLocalFile(folder.filePath("missing.m4a")))->isPlayable());
    EXPECT_FALSE(AVAsset::assetWithURL(QUrl::fromLocalFile(folder.path()))->isPlayable());
    EXPECT_FALSE(AVAsset::assetWithURL(QUrl(QStringLiteral("https://example.org/a.m4a")))->isPlayable());
    EXPECT_FALSE(isPlayable(""));
    EXPECT_FALSE(isPlayable("A text under the name of a sound."));
    EXPECT_FALSE(isPlayable("\xFF\xD8\xFF\xE0 a picture"));
}

TEST_F(AVAssetTest, ADeviceFileIsNotOpened)
{
    EXPECT_FALSE(AVAsset::assetWithURL(QUrl::fromLocalFile(QStringLiteral("/dev/zero")))->isPlayable());
}

TEST_F(AVAssetTest, AFileCutOffInItsTableOfContentsIsNotPlayable)
{
    const QByteArray bytes = clipBytes();
    const qsizetype tableOfContents = bytes.indexOf("moov");
    ASSERT_GT(tableOfContents, 0);
    EXPECT_FALSE(isPlayable(bytes.left(tableOfContents + 40)));
    EXPECT_FALSE(isPlayable(bytes.left(10)));
}

TEST_F(AVAssetTest, AFileWithoutASoundTrackIsNotPlayable)
{
    EXPECT_FALSE(isPlayable(clipBytes().replace("soun", "vide")));
}

TEST_F(AVAssetTest, BoxesThatLieAboutTheirSizeAreNotFollowed)
{
    const QByteArray begin = QByteArray::fromHex("0000000866747970"); // an empty "ftyp"
    EXPECT_FALSE(isPlayable(begin + QByteArray::fromHex("fffffff06d6f6f76"))); // larger than the file
    EXPECT_FALSE(
        isPlayable(begin + QByteArray::fromHex("000000016d6f6f76ffffffffffffffff"))); // 64 bits of it
    EXPECT_FALSE(isPlayable(begin + QByteArray::fromHex("000000046d6f6f76"))); // smaller than itself
    EXPECT_FALSE(isPlayable(begin + QByteArray::fromHex("0000000866726565").repeated(100000))); // endless
}

} // namespace
