#include "platform/foundation/NSURL.h"

#include <gmock/gmock.h>

namespace {

NSURL file(const char* path) { return NSURL::fromLocalFile(NSString::fromUtf8(path)); }

} // namespace

TEST(NSURLTest, TheAbsoluteStringIsThePercentEncodedForm)
{
    EXPECT_EQ(absoluteString(file("/tmp/a b.jpg")), QStringLiteral("file:///tmp/a%20b.jpg"));
    EXPECT_EQ(absoluteString(file("/tmp/%41.jpg")), QStringLiteral("file:///tmp/%2541.jpg"));
    EXPECT_TRUE(absoluteString(NSURL()).isNull());
}

TEST(NSURLTest, TakesTheFilesNameApart)
{
    const NSURL url = file("/some.folder/portrait_mara-small.jpg");
    EXPECT_EQ(lastPathComponent(url), QStringLiteral("portrait_mara-small.jpg"));
    EXPECT_EQ(pathExtension(url), QStringLiteral("jpg"));
    EXPECT_EQ(lastPathComponentWithoutExtension(url), QStringLiteral("portrait_mara-small"));
    EXPECT_EQ(pathExtension(file("/some.folder/name")), QString());
    EXPECT_EQ(lastPathComponentWithoutExtension(file("/a/archive.tar.gz")), QStringLiteral("archive.tar"));
    EXPECT_EQ(lastPathComponent(NSURL()), QString());
}

TEST(NSURLTest, ReplacesTheLastComponent)
{
    EXPECT_EQ(urlByReplacingLastPathComponent(file("/a b/F.jpg"), QStringLiteral("F@2x.jpg")),
        file("/a b/F@2x.jpg"));
    EXPECT_EQ(urlByReplacingLastPathComponent(file("/a/F.jpg"), QStringLiteral("50% #1?.jpg")),
        file("/a/50% #1?.jpg"));
}

TEST(NSURLTest, AFileWithAPercentSignKeepsItsName)
{
    const NSURL url = urlByReplacingLastPathComponent(file("/100%41/F.jpg"), QStringLiteral("%42.jpg"));
    EXPECT_EQ(url.toLocalFile(), QStringLiteral("/100%41/%42.jpg"));
}
