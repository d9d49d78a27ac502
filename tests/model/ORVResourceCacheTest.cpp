#include "model/ORVResourceCache.h"

#include "platform/graphics/MainScreenScale.h"
#include "platform/graphics/UIImage.h"
#include "platform/media/AVAsset.h"
#include "tests/support/SourcePath.h"
#include "tests/support/TemporaryBundle.h"

#include <QBuffer>
#include <QFile>

#include <gtest/gtest.h>

namespace {

NSData jpegOfWidth(int pixels)
{
    QImage image(pixels, pixels, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QBuffer data;
    data.open(QIODevice::WriteOnly);
    image.save(&data, "JPG");
    return data.data();
}

class ORVResourceCacheTest : public testing::Test {
protected:
    ~ORVResourceCacheTest() override { MainScreenScale::set(1); }

    // F.jpg, F@2x.jpg and F@3x.jpg, each as many pixels wide as its density says.
    void writeDensities(std::initializer_list<int> densities)
    {
        for (const int density : densities) {
            const NSString mark = density == 1 ? NSString() : QStringLiteral("@%1x").arg(density);
            files.writeFile(QStringLiteral("F%1.jpg").arg(mark), jpegOfWidth(16 * density));
        }
    }
    NSURL baseURL() const { return files.urlOf(QStringLiteral("F.jpg")); }
    static NSURL clipURL() { return QUrl::fromLocalFile(sourcePath("resources/sounds/tram_bell.m4a")); }

    TemporaryBundle files;
    std::shared_ptr<ORVResourceCache> cache = make<ORVResourceCache>();
};

TEST_F(ORVResourceCacheTest, IsOneForTheProcess)
{
    EXPECT_TRUE(ORVResourceCache::sharedInstance());
    EXPECT_EQ(ORVResourceCache::sharedInstance(), ORVResourceCache::sharedInstance());
}

TEST_F(ORVResourceCacheTest, KeysResourcesByTheirWholeAddress)
{
    const NSURL url(QStringLiteral("file:///p/mara.jpg"));
    EXPECT_EQ(ORVResourceCache::cacheKeyFromURL(url), QStringLiteral("file:///p/mara.jpg"));
}

TEST_F(ORVResourceCacheTest, GivesNilForANilAddress)
{
    EXPECT_FALSE(cache->imageFromURL(NSURL()));
    EXPECT_FALSE(cache->imageLoadedFromBaseURL(NSURL()));
    EXPECT_FALSE(cache->soundAssetFromURL(NSURL()));
}

TEST_F(ORVResourceCacheTest, LoadsTheDensityOfTheScreen)
{
    writeDensities({ 1, 2, 3 });
    for (const int density : { 1, 2, 3 }) {
        MainScreenScale::set(density);
        const auto image = cache->imageLoadedFromBaseURL(baseURL());
        ASSERT_TRUE(image);
        EXPECT_EQ(image->scale(), density);
        EXPECT_EQ(image->qImage().width(), 16 * density);
        EXPECT_EQ(image->size().width(), 16);
    }
}

TEST_F(ORVResourceCacheTest, OnADensity2ScreenFallsBackToThePlainFileWithScale1)
{
    writeDensities({ 1 });
    MainScreenScale::set(2);
    const auto image = cache->imageFromURL(baseURL());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->scale(), 1);
}

TEST_F(ORVResourceCacheTest, TriesEachLowerDensityInTurn)
{
    writeDensities({ 1, 2 });
    MainScreenScale::set(4);
    EXPECT_EQ(cache->imageLoadedFromBaseURL(baseURL())->scale(), 2);
}

TEST_F(ORVResourceCacheTest, SkipsADensityWhoseFileIsNoImage)
{
    writeDensities({ 1 });
    files.writeFile(QStringLiteral("F@2x.jpg"), "no picture");
    MainScreenScale::set(2);
    EXPECT_EQ(cache->imageLoadedFromBaseURL(baseURL())->scale(), 1);
}

TEST_F(ORVResourceCacheTest, NeverLoadsAHigherDensityThanTheScreens)
{
    writeDensities({ 2, 3 });
    EXPECT_FALSE(cache->imageLoadedFromBaseURL(baseURL()));
}

TEST_F(ORVResourceCacheTest, RoundsTheScreensScaleHalvesUp)
{
    writeDensities({ 1, 2, 3 });
    for (const auto& [scale, density] : { std::pair { 1.49, 1 }, { 1.5, 2 }, { 2.5, 3 }, { 0.5, 1 } }) {
        MainScreenScale::set(scale);
        EXPECT_EQ(cache->imageLoadedFromBaseURL(baseURL())->scale(), density) << scale;
    }
}

TEST_F(ORVResourceCacheTest, GivesNilOnAScreenOfLessThanHalfDensity)
{
    writeDensities({ 1, 2, 3 });
    MainScreenScale::set(0.49);
    EXPECT_FALSE(cache->imageLoadedFromBaseURL(baseURL()));
}

TEST_F(ORVResourceCacheTest, FindsDensitiesOfNamesThatAreNotPlain)
{
    MainScreenScale::set(2);
    for (const auto& [base, dense] :
        { std::pair { "portrait", "portrait@2x" }, { "a b%20.c.jpg", "a b%20.c@2x.jpg" } }) {
        files.writeFile(QString::fromLatin1(dense), jpegOfWidth(32));
        const auto image = cache->imageLoadedFromBaseURL(files.urlOf(QString::fromLatin1(base)));
        ASSERT_TRUE(image) << base;
        EXPECT_EQ(image->scale(), 2);
    }
}

TEST_F(ORVResourceCacheTest, ASecondRequestGivesTheIdenticalImage)
{
    writeDensities({ 1 });
    const auto image = cache->imageFromURL(baseURL());
    ASSERT_TRUE(image);
    EXPECT_EQ(cache->imageFromURL(baseURL()), image);
    EXPECT_NE(cache->imageLoadedFromBaseURL(baseURL()), image) << "past the cache it is another one";
}

TEST_F(ORVResourceCacheTest, AFileThatIsNoImageGivesNilAndIsReadAgainNextTime)
{
    files.writeFile(QStringLiteral("F.jpg"), "no picture");
    EXPECT_FALSE(cache->imageFromURL(baseURL()));
    writeDensities({ 1 });
    EXPECT_TRUE(cache->imageFromURL(baseURL()));
}

TEST_F(ORVResourceCacheTest, AMissingFileGivesNilAndIsLookedForAgainNextTime)
{
    EXPECT_FALSE(cache->imageFromURL(baseURL()));
    writeDensities({ 1 });
    EXPECT_TRUE(cache->imageFromURL(baseURL()));
}

TEST_F(ORVResourceCacheTest, TwoRequestsForASoundGiveTwoAssets)
{
    const auto first = cache->soundAssetFromURL(clipURL());
    const auto second = cache->soundAssetFromURL(clipURL());
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->url(), clipURL());
    EXPECT_EQ(second->url(), clipURL());
}

TEST_F(ORVResourceCacheTest, ASoundThatIsMissingOrUnplayableGivesNilAndIsLookedForAgainNextTime)
{
    const NSURL url = files.urlOf(QStringLiteral("S.m4a"));
    EXPECT_FALSE(cache->soundAssetFromURL(url));
    files.writeFile(QStringLiteral("S.m4a"), "no sound");
    EXPECT_FALSE(cache->soundAssetFromURL(url));
    QFile clip(clipURL().toLocalFile());
    ASSERT_TRUE(clip.open(QIODevice::ReadOnly));
    files.writeFile(QStringLiteral("S.m4a"), clip.readAll());
    EXPECT_TRUE(cache->soundAssetFromURL(url));
}

TEST_F(ORVResourceCacheTest, ImagesAndSoundsOfTheSameAddressDoNotDisturbEachOther)
{
    EXPECT_TRUE(cache->soundAssetFromURL(clipURL()));
    EXPECT_FALSE(cache->imageFromURL(clipURL()));
    writeDensities({ 1 });
    EXPECT_TRUE(cache->imageFromURL(baseURL()));
    EXPECT_FALSE(cache->soundAssetFromURL(baseURL())) << "a picture is no sound";
    EXPECT_TRUE(cache->imageFromURL(baseURL()));
}

TEST_F(ORVResourceCacheTest, HandsOutAssetsTenThousandTimes)
{
    for (int i = 0; i < 10'000; ++i)
        ASSERT_TRUE(cache->soundAssetFromURL(clipURL()));
}

} // namespace
