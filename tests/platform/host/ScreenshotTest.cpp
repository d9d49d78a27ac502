#include "platform/host/Screenshot.h"

#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class ScreenshotTest : public testing::Test {
protected:
    ScreenshotTest() { picture.fill(Qt::red); }

    NSString path(const char* name) const { return folder.filePath(name); }

    const NSDate moment { QDate(2024, 5, 17), QTime(9, 8, 7) };
    QTemporaryDir folder;
    QImage picture { 8, 6, QImage::Format_RGB32 };
};

TEST_F(ScreenshotTest, SavesTheKindThatTheNameAsksFor)
{
    EXPECT_TRUE(Screenshot::save(picture, path("a.png")).isNull());
    EXPECT_TRUE(Screenshot::save(picture, path("b.bmp")).isNull());
    EXPECT_TRUE(Screenshot::save(picture, path("c")).isNull());
    EXPECT_EQ(QImageReader::imageFormat(path("a.png")), "png");
    EXPECT_EQ(QImageReader::imageFormat(path("b.bmp")), "bmp");
    EXPECT_EQ(QImageReader::imageFormat(path("c")), "png");
    EXPECT_EQ(QImage(path("a.png")).convertToFormat(QImage::Format_RGB32), picture);
}

TEST_F(ScreenshotTest, SaysWhyAPictureCannotBeSaved)
{
    const NSString problem = Screenshot::save(picture, path("no/such/folder/a.png"));
    EXPECT_TRUE(problem.startsWith("cannot save the picture to \"")) << problem.toStdString();
    EXPECT_TRUE(problem.contains("no/such/folder/a.png"));
    EXPECT_FALSE(Screenshot::save(picture, path("a.unknown")).isNull());
    EXPECT_FALSE(Screenshot::save({}, path("empty.png")).isNull());
}

TEST_F(ScreenshotTest, NamesAFileAfterItsMoment)
{
    const NSString file = Screenshot::newFile(folder.path(), moment);
    EXPECT_TRUE(file.endsWith(" 2024-05-17 09-08-07.png")) << file.toStdString();
}

TEST_F(ScreenshotTest, MakesTheFolderThatItNeeds)
{
    const NSString file = Screenshot::newFile(path("home/Pictures"), moment);
    EXPECT_TRUE(Screenshot::save(picture, file).isNull());
    EXPECT_TRUE(QImageReader(file).canRead());
}

TEST_F(ScreenshotTest, GivesPicturesOfOneSecondNamesOfTheirOwn)
{
    QStringList files;
    for (int count = 0; count < 12; ++count) {
        files += Screenshot::newFile(folder.path(), moment);
        EXPECT_TRUE(Screenshot::save(picture, files.last()).isNull());
    }
    EXPECT_EQ(files.removeDuplicates(), 0);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 12);
    EXPECT_TRUE(files[1].endsWith(" 2024-05-17 09-08-07 2.png")) << files[1].toStdString();
}

TEST_F(ScreenshotTest, SaysWhyTheFolderCannotBeMade)
{
    ASSERT_TRUE(Screenshot::save(picture, path("file.png")).isNull());
    const NSString file = Screenshot::newFile(path("file.png/Pictures"), moment);
    EXPECT_FALSE(Screenshot::save(picture, file).isNull());
}

} // namespace
