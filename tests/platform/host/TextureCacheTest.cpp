#include "platform/host/TextureCache.h"

#include "tests/platform/host/SceneStage.h"
#include "tests/support/Pictures.h"

#include <QSGTexture>

#include <gtest/gtest.h>

namespace {

QImage picture(const QColor& color) { return plainPixels({ 4, 4 }, color); }

class TextureCacheTest : public testing::Test {
protected:
    SceneStage stage { { 8, 8 } }; // a window whose scene graph is alive
    TextureCache cache { stage.window() };
};

TEST_F(TextureCacheTest, UploadsAPictureOnceWhileItIsInUse)
{
    const FrameImage image { picture(Qt::red), {}, {} };
    const SharedTexture first = cache.texture(image);
    EXPECT_EQ(cache.texture(image), first);
    EXPECT_EQ(cache.uploadCount(), 1);
}

TEST_F(TextureCacheTest, HasATextureForEachTintOfAPicture)
{
    const QImage image = picture(Qt::red);
    const SharedTexture plain = cache.texture({ image, {}, {} });
    const SharedTexture blue = cache.texture({ image, {}, Qt::blue });
    const SharedTexture black = cache.texture({ image, {}, QColor(0, 0, 0, 0) });
    EXPECT_NE(plain, blue);
    EXPECT_NE(plain, black);
    EXPECT_EQ(cache.texture({ image, {}, Qt::blue }), blue);
    EXPECT_EQ(cache.uploadCount(), 3);
}

TEST_F(TextureCacheTest, TellsWhichPixelsOfAPictureAreVisible)
{
    QImage image(20, 10, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    EXPECT_TRUE(cache.picture({ image, {}, {} }).visiblePixels.isEmpty());
    image.setPixelColor(7, 3, QColor(0, 0, 0, 1));
    EXPECT_EQ(cache.picture({ image, {}, {} }).visiblePixels, QRect(7, 3, 1, 1));
    image.setPixelColor(2, 8, Qt::red);
    image.setPixelColor(19, 5, Qt::red);
    const TextureCache::Picture first = cache.picture({ image, {}, {} });
    EXPECT_EQ(first.visiblePixels, QRect(2, 3, 18, 6));
    EXPECT_EQ(cache.picture({ image, {}, {} }).visiblePixels, QRect(2, 3, 18, 6)) << "remembered";
    EXPECT_EQ(cache.picture({ picture(Qt::red), {}, {} }).visiblePixels, QRect(0, 0, 4, 4));
}

TEST_F(TextureCacheTest, DropsATextureThatNobodyHolds)
{
    const FrameImage image { picture(Qt::red), {}, {} };
    std::weak_ptr<QSGTexture> texture = cache.texture(image);
    EXPECT_TRUE(texture.expired());
    cache.texture(image);
    EXPECT_EQ(cache.uploadCount(), 2);
}

TEST_F(TextureCacheTest, CountsTheTexturesThatLive)
{
    EXPECT_EQ(cache.textureCount(), 0);
    SharedTexture shared = cache.texture({ picture(Qt::red), {}, {} });
    const SharedTexture again = shared;
    SharedTexture unshared = cache.makeTexture(picture(Qt::blue));
    EXPECT_EQ(cache.textureCount(), 2);
    shared = nullptr;
    EXPECT_EQ(cache.textureCount(), 2) << "somebody still holds it";
    unshared = nullptr;
    EXPECT_EQ(cache.textureCount(), 1);
}

TEST_F(TextureCacheTest, ATextureMayOutliveItsCache)
{
    auto other = std::make_unique<TextureCache>(stage.window());
    SharedTexture texture = other->makeTexture(picture(Qt::red));
    other = nullptr;
    texture = nullptr;
}

TEST_F(TextureCacheTest, RemembersNoMoreThanWhatIsInUseAfterTenThousandPictures)
{
    const SharedTexture kept = cache.texture({ picture(Qt::red), {}, {} });
    for (int i = 0; i < 10000; ++i)
        cache.texture({ picture(Qt::blue), {}, {} });
    EXPECT_LE(cache.size(), 2u);
}

} // namespace
