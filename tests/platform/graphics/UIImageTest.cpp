#include "platform/graphics/UIImage.h"

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/MainScreenScale.h"
#include "tests/platform/graphics/Drawing.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SourcePath.h"

#include <QBuffer>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

namespace {

NSData fileOf(const QImage& image, const char* format)
{
    NSData data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return data;
}

QImage blank(int width, int height, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(width, height, format);
    image.fill(0);
    return image;
}

NSData portrait()
{
    QFile file(sourcePath("resources/portraits/portrait_mara-small@2x.jpg"));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

TEST(UIImageTest, MeasuresInPoints)
{
    const auto image = UIImage::imageWithData(fileOf(blank(90, 60), "png"), 3);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), CGSize(30, 20));
    EXPECT_EQ(image->scale(), 3);
    EXPECT_EQ(image->renderingMode(), UIImageRenderingMode::Automatic);
}

TEST(UIImageTest, DecodesIntoFormatsThatDrawFast)
{
    EXPECT_EQ(UIImage::imageWithData(portrait(), 2)->qImage().format(), QImage::Format_RGB32);
    const auto translucent = UIImage::imageWithData(fileOf(blank(4, 4, QImage::Format_ARGB32), "png"));
    EXPECT_EQ(translucent->qImage().format(), QImage::Format_ARGB32_Premultiplied);
    const auto grey = UIImage::imageWithData(fileOf(blank(4, 4, QImage::Format_Grayscale8), "jpg"));
    EXPECT_EQ(grey->qImage().format(), QImage::Format_RGB32);
}

TEST(UIImageTest, IsNilForDataThatIsNoPicture)
{
    EXPECT_EQ(UIImage::imageWithData({}), nullptr);
    EXPECT_EQ(UIImage::imageWithData("not a picture at all"), nullptr);
    EXPECT_EQ(UIImage::imageWithData("\x89PNG\r\n\x1A\n"), nullptr);
    EXPECT_EQ(UIImage::imageWithData("\xFF\xD8\xFF"), nullptr);
    EXPECT_EQ(UIImage::imageWithData(NSData(1000, '\xFF')), nullptr);
    EXPECT_EQ(UIImage::imageWithData("<svg width='10' height='10'/>"), nullptr);
}

TEST(UIImageTest, IsNilForAScaleThatIsNone)
{
    const NSData data = fileOf(blank(4, 4), "png");
    for (const double scale :
        { 0.0, -1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN() }) {
        EXPECT_EQ(UIImage::imageWithData(data, scale), nullptr) << scale;
        EXPECT_EQ(UIImage::imageWithQImage(blank(4, 4), scale), nullptr) << scale;
    }
    EXPECT_EQ(UIImage::imageWithQImage({}, 1), nullptr);
}

TEST(UIImageTest, IsNilForAPictureCutShortAnywhere)
{
    const NSData jpeg = portrait();
    ASSERT_NE(UIImage::imageWithData(jpeg), nullptr);
    for (qsizetype length = 0; length < jpeg.size(); length += 1 + jpeg.size() / 200)
        EXPECT_EQ(UIImage::imageWithData(jpeg.left(length)), nullptr) << length;
    QImage noise(64, 64, QImage::Format_ARGB32);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x)
            noise.setPixel(x, y, static_cast<QRgb>(qHashMulti(7, x, y)));
    }
    const NSData png = fileOf(noise, "png");
    ASSERT_NE(UIImage::imageWithData(png), nullptr);
    for (qsizetype length = 0; length < png.size() - 100; length += png.size() / 9)
        EXPECT_EQ(UIImage::imageWithData(png.left(length)), nullptr) << length;
}

TEST(UIImageTest, TakesAJPEGFileWithBytesAfterItsEnd)
{
    EXPECT_NE(UIImage::imageWithData(portrait() + NSData(100, '\0')), nullptr);
}

TEST(UIImageTest, SurvivesDamagedBytes)
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio.jpeg=false")); // it warns at each one
    const NSData whole = portrait();
    for (qsizetype position = 0; position < whole.size(); position += 1 + whole.size() / 300) {
        NSData damaged = whole;
        damaged[position] = static_cast<char>(~damaged[position]);
        const auto image = UIImage::imageWithData(damaged);
        EXPECT_TRUE(!image || image->size().width() > 0);
    }
    QLoggingCategory::setFilterRules({});
}

TEST(UIImageTest, RefusesAPictureTwentyThousandPixelsWide)
{
    EXPECT_EQ(UIImage::imageWithData(fileOf(blank(20'000, 1), "png")), nullptr);
    EXPECT_EQ(UIImage::imageWithData(fileOf(blank(20'000, 1), "jpg")), nullptr);
    EXPECT_EQ(UIImage::imageWithData(fileOf(blank(1, 20'000), "png")), nullptr);
    EXPECT_NE(UIImage::imageWithData(fileOf(blank(UIImage::maximumSide, 1), "png")), nullptr);
}

TEST(UIImageTest, RefusesMorePixelsThanItsLimit)
{
    // Files of a few kilobytes whose pixels would take 125 and 107 MiB; the decoder's own limit is 128.
    EXPECT_EQ(UIImage::imageWithData(fileOf(blank(8000, 4100, QImage::Format_Mono), "png")), nullptr);
    EXPECT_NE(UIImage::imageWithData(fileOf(blank(7000, 4000, QImage::Format_Mono), "png")), nullptr);
}

TEST(UIImageTest, SharesItsPixelsWithItsCopies)
{
    const auto image = plainImage({ 4, 4 }, Qt::red, 2);
    const auto asTemplate = image->imageWithRenderingMode(UIImageRenderingMode::AlwaysTemplate);
    EXPECT_NE(asTemplate, image);
    EXPECT_EQ(asTemplate->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    EXPECT_EQ(image->renderingMode(), UIImageRenderingMode::Automatic);
    EXPECT_EQ(asTemplate->qImage().cacheKey(), image->qImage().cacheKey());
    const auto copy = asTemplate->copy();
    EXPECT_NE(copy, asTemplate);
    EXPECT_EQ(copy->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    EXPECT_EQ(copy->scale(), 2);
}

TEST(UIImageTest, MakesNilOfNilInAnyRenderingMode)
{
    EXPECT_EQ(UIImage::imageWithRenderingMode(nullptr, UIImageRenderingMode::AlwaysTemplate), nullptr);
    const auto original = UIImage::imageWithRenderingMode(
        plainImage({ 1, 1 }, Qt::red), UIImageRenderingMode::AlwaysOriginal);
    EXPECT_EQ(original->renderingMode(), UIImageRenderingMode::AlwaysOriginal);
}

TEST(UIImageTest, TilesWithoutFixedBorders)
{
    const AssertionRecorder recorder;
    const auto image
        = plainImage({ 4, 4 }, Qt::red)->imageWithRenderingMode(UIImageRenderingMode::AlwaysTemplate);
    const auto tiled = image->resizableImage({}, UIImageResizingMode::Tile);
    EXPECT_EQ(tiled->resizingMode(), UIImageResizingMode::Tile);
    EXPECT_EQ(tiled->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    EXPECT_TRUE(recorder.failures().empty());
    static_cast<void>(image->resizableImage({ 1, 0, 0, 0 }, UIImageResizingMode::Tile));
    EXPECT_EQ(recorder.messages(),
        std::vector { QStringLiteral("Invalid parameter not satisfying: capInsets == UIEdgeInsetsZero") });
}

// Named images of a bundle made for the test; the main screen's scale is 1 again afterwards.
class NamedImageTest : public testing::Test {
protected:
    ~NamedImageTest() override { MainScreenScale::set(1); }

    void add(const char* name, const NSData& data)
    {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        file.open(QIODevice::WriteOnly);
        file.write(data);
    }
    void add(const char* name, int side) { add(name, fileOf(blank(side, side), "png")); }

    // What the name gives at that screen scale.
    static std::shared_ptr<UIImage> named(const char* name, CGFloat screenScale)
    {
        MainScreenScale::set(screenScale);
        return UIImage::imageNamed(QString::fromLatin1(name));
    }

    QTemporaryDir folder;
    NSBundle::MainReplacement bundle { make<NSBundle>(folder.path()) };
};

TEST_F(NamedImageTest, LoadsTheDensityOfTheScreen)
{
    add("icon.png", 10);
    add("icon@2x.png", 20);
    add("icon@3x.png", 30);
    for (const int density : { 1, 2, 3 }) {
        const auto image = named("icon", density);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->scale(), density);
        EXPECT_EQ(image->size(), CGSize(10, 10));
    }
    EXPECT_EQ(named("icon", 1.5)->scale(), 2);
    EXPECT_EQ(named("icon", 4)->scale(), 3);
}

TEST_F(NamedImageTest, LoadsTheNextLowerDensityThatExists)
{
    add("icon.png", 10);
    add("other.png", 10);
    add("other@2x.png", 20);
    EXPECT_EQ(named("icon", 3)->scale(), 1);
    EXPECT_EQ(named("other", 3)->scale(), 2);
}

TEST_F(NamedImageTest, LoadsAHigherDensityWhereNoOtherExists)
{
    add("icon@3x.png", 30);
    EXPECT_EQ(named("icon", 1)->size(), CGSize(10, 10));
}

TEST_F(NamedImageTest, PassesOverAFileThatIsNoPicture)
{
    add("icon@2x.png", "broken");
    add("icon.png", 10);
    EXPECT_EQ(named("icon", 2)->scale(), 1);
}

TEST_F(NamedImageTest, PassesOverAFileBeyondTheCapAndTellsOfItOnce)
{
    add("large.png", 10);
    const QString path = folder.filePath(QStringLiteral("large.png"));
    ASSERT_TRUE(QFile::resize(path, qint64 { 3 } << 30)); // sparse: it takes no room
    testing::internal::CaptureStderr();
    EXPECT_EQ(named("large", 1), nullptr);
    EXPECT_EQ(named("large", 1), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        path.toStdString() + ": 3221225472 bytes are more than the 67108864 that are read\n");
}

TEST_F(NamedImageTest, IsNilForAMissingName)
{
    EXPECT_EQ(named("missing", 2), nullptr);
    EXPECT_EQ(named("", 2), nullptr);
    EXPECT_EQ(named("../icon", 2), nullptr);
}

TEST_F(NamedImageTest, IsOneObjectForAsLongAsItIsHeld)
{
    add("icon.png", 10);
    auto first = named("icon", 1);
    EXPECT_EQ(named("icon", 1), first);
    const std::weak_ptr<UIImage> watched = first;
    first.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_NE(named("icon", 1), nullptr);
}

TEST(UIImageTest, TheRawValuesOfTheModesAreTheWrittenOnes)
{
    EXPECT_EQ(static_cast<int>(UIImageRenderingMode::Automatic), 0);
    EXPECT_EQ(static_cast<int>(UIImageRenderingMode::AlwaysOriginal), 1);
    EXPECT_EQ(static_cast<int>(UIImageRenderingMode::AlwaysTemplate), 2);
    EXPECT_EQ(static_cast<int>(UIImageResizingMode::Tile), 0);
}

} // namespace
