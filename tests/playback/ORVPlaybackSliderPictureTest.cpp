#include "tests/playback/PlaybackSliderFixture.h"
#include "tests/support/TemporaryBundle.h"

#include <thread>

namespace {

// The picture that a slider of some size shows.
class ORVPlaybackSliderPictureTest : public PlaybackSliderFixture {
protected:
    static std::shared_ptr<UIImage> resource()
    {
        return UIImage::imageNamed(QStringLiteral("mock_playback_waveform"));
    }
    static std::shared_ptr<UIImage> fitted(const CGSize& size, CGFloat scale)
    {
        return ORVPlaybackSlider::waveformImageForAsset(nullptr, size, scale);
    }
    static void expectPixels(const std::shared_ptr<UIImage>& picture, const QSize& pixels, CGFloat scale)
    {
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->qImage().size(), pixels);
        EXPECT_EQ(picture->scale(), scale);
    }
};

TEST_F(ORVPlaybackSliderPictureTest, AtExactlyItsSizeAndScaleTheResourceItselfIsThePicture)
{
    const auto held = resource();
    expectPixels(held, { 780, 88 }, 2);
    EXPECT_EQ(fitted({ 390, 44 }, 2), held);
    EXPECT_EQ(fitted({ 390, 44 }, 2 + 1e-07), held);
    EXPECT_NE(fitted({ 390, 44 }, 2 + 1.3e-07), held);
}

TEST_F(ORVPlaybackSliderPictureTest, AtAnotherSizeOrScaleThePictureIsDrawnAnew)
{
    for (const CGSize& size : { CGSize(390, 44.0000001), CGSize(350, 44), CGSize(390, 60) })
        EXPECT_NE(fitted(size, 2), resource());
    expectPixels(fitted({ 350, 44 }, 2), { 700, 88 }, 2);
    expectPixels(fitted({ 390, 44 }, 3), { 1170, 132 }, 3);
    expectPixels(fitted({ 100, 44 }, 0), { 200, 88 }, 2); // no scale is that of the main screen
}

TEST_F(ORVPlaybackSliderPictureTest, ThePictureIsStretchedInBothDirections)
{
    const QImage original = resource()->qImage();
    const QImage stretched = fitted({ 780, 88 }, 2)->qImage();
    ASSERT_EQ(stretched.size(), original.size() * 2);
    const auto alphaAt = [&](int x, int y) { return original.pixelColor(x, y).alpha(); };
    int compared = 0;
    int different = 0;
    for (int y = 1; y < original.height() - 1; ++y)
        for (int x = 1; x < original.width() - 1; ++x) {
            const int alpha = alphaAt(x, y);
            const bool isEdge = alpha != alphaAt(x - 1, y) || alpha != alphaAt(x + 1, y)
                || alpha != alphaAt(x, y - 1) || alpha != alphaAt(x, y + 1);
            if (alpha == 0 || isEdge) // what is smoothed
                continue;
            ++compared;
            different += std::abs(stretched.pixelColor(2 * x, 2 * y).alpha() - alpha) > 8 ? 1 : 0;
        }
    EXPECT_GT(compared, 1000);
    EXPECT_EQ(different, 0);
}

TEST_F(ORVPlaybackSliderPictureTest, ASizeOrAScaleThatMakesNoPictureGivesNone)
{
    for (const CGSize& size : { CGSize(0, 0), CGSize(0, 44), CGSize(390, 0), CGSize(-390, 44),
             CGSize(notANumber, 44), CGSize(390, infinity), CGSize(1e300, 44) })
        EXPECT_FALSE(fitted(size, 2)) << size.width() << " " << size.height();
    for (const double scale : { notANumber, infinity, -2.0, 1e300 })
        EXPECT_FALSE(fitted({ 350, 44 }, scale)) << scale;
}

TEST_F(ORVPlaybackSliderPictureTest, WithoutTheResourceThePictureIsClear)
{
    TemporaryBundle empty;
    empty.makeMain();
    ASSERT_FALSE(resource());
    const auto picture = fitted({ 350, 44 }, 2);
    expectPixels(picture, { 700, 88 }, 2);
    const QImage pixels = picture->qImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(pixels, plainPixels(pixels.size(), Qt::transparent));
    EXPECT_FALSE(fitted({ 0, 0 }, 2));
}

TEST_F(ORVPlaybackSliderPictureTest, PicturesAreMadeOnSeveralThreadsAtOnce)
{
    const QImage expected = fitted({ 350, 44 }, 2)->qImage();
    std::vector<std::shared_ptr<UIImage>> pictures(4);
    std::vector<std::thread> threads;
    for (auto& made : pictures)
        threads.emplace_back([&made] { made = fitted({ 350, 44 }, 2); });
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& made : pictures) {
        ASSERT_TRUE(made);
        EXPECT_EQ(made->qImage(), expected);
    }
}

} // namespace
