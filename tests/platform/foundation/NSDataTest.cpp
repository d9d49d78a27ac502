#include "platform/foundation/NSData.h"

#include "tests/platform/foundation/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

NSData contentsOf(const NSString& path) { return dataWithContentsOfURL(NSURL::fromLocalFile(path)); }

} // namespace

TEST(NSDataTest, ReadsAWholeFile)
{
    const TemporaryFolder folder;
    const NSData bytes("\0\1\2 any bytes", 13);
    EXPECT_EQ(contentsOf(folder.write(QStringLiteral("a file.bin"), bytes)), bytes);
}

TEST(NSDataTest, AnEmptyFileIsEmptyDataAndNotNil)
{
    const TemporaryFolder folder;
    const NSData data = contentsOf(folder.write(QStringLiteral("empty")));
    EXPECT_TRUE(data.isEmpty());
    EXPECT_FALSE(data.isNull());
}

TEST(NSDataTest, WhatIsNoReadableFileIsNil)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(contentsOf(folder.pathOf(QStringLiteral("missing"))).isNull());
    EXPECT_TRUE(contentsOf(folder.path()).isNull());
    EXPECT_TRUE(dataWithContentsOfURL(NSURL()).isNull());
    EXPECT_TRUE(dataWithContentsOfURL(NSURL(QStringLiteral("https://example.org/a"))).isNull());
    EXPECT_TRUE(contentsOf(QStringLiteral("/dev/zero")).isNull());
}

TEST(NSDataTest, AFileBeyondTheCapIsToldOfAndNotRead)
{
    const TemporaryFolder folder;
    const NSString path = folder.write(QStringLiteral("sparse"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(qint64 { 3 } << 30));
    testing::internal::CaptureStderr();
    EXPECT_TRUE(contentsOf(path).isNull());
    EXPECT_TRUE(contentsOf(path).isNull());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        path.toStdString() + ": 3221225472 bytes are more than the 67108864 that are read\n");
}

TEST(NSDataTest, TheCapIsWhatTheCallerSays)
{
    const TemporaryFolder folder;
    const NSURL url = NSURL::fromLocalFile(folder.write(QStringLiteral("five"), "12345"));
    EXPECT_EQ(dataWithContentsOfURL(url, 5), "12345");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(dataWithContentsOfURL(url, 4).isNull());
    EXPECT_FALSE(testing::internal::GetCapturedStderr().empty());
}

TEST(NSDataTest, AFileThatHoldsMoreThanItsSizeSaysIsReadWhole)
{
    const NSString path = QStringLiteral("/proc/self/maps"); // of size 0
    EXPECT_GT(contentsOf(path).size(), 1000);
    EXPECT_TRUE(contentsOf(path).endsWith('\n'));
    testing::internal::CaptureStderr();
    EXPECT_TRUE(dataWithContentsOfURL(NSURL::fromLocalFile(path), 1000).isNull());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "/proc/self/maps: 1001 bytes are more than the 1000 that are read\n");
}

TEST(NSDataTest, WhyAFileThatIsThereCannotBeReadIsTold)
{
    const NSString unreadable = QStringLiteral("/proc/self/mem"); // nothing lies at its beginning
    testing::internal::CaptureStderr();
    EXPECT_TRUE(contentsOf(unreadable).isNull());
    EXPECT_TRUE(contentsOf(QStringLiteral("/no such file")).isNull());
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::MatchesRegex("/proc/self/mem: .+\n"));
}
