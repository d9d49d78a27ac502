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
    static bool isClear(const QImage& picture)
    {
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y).alpha() != 0)
                    return false;
        return true;
    }
};

TEST_F(ORVPlaybackSliderPictureTest, AtExactlyItsSizeAndScaleTheResourceItselfIsThePicture)
{
    const auto held = resource();
    ASSERT_TRUE(held);
    EXPECT_EQ(held->size().width(), 390);
    EXPECT_EQ(held->size().height(), 44);
    EXPECT_EQ(held->scale(), 2);
    EXPECT_EQ(fitted({ 390, 44 }, 2), held);
    EXPECT_EQ(fitted({ 390, 44 }, 2 + 1e-07), held);
    EXPECT_NE(fitted({ 390, 44 }, 2 + 1.3e-07), held);
}

TEST_F(ORVPlaybackSliderPictureTest, AtAnotherSizeOrScaleThePictureIsDrawnAnew)
{
    const auto held = resource();
    for (const CGSize& size : { CGSize(390, 44.0000001), CGSize(350, 44), CGSize(390, 60) })
        EXPECT_NE(fitted(size, 2), held);
    const auto narrow = fitted({ 350, 44 }, 2);
    ASSERT_TRUE(narrow);
    EXPECT_EQ(narrow->qImage().size(), QSize(700, 88));
    EXPECT_EQ(narrow->scale(), 2);
    const auto dense = fitted({ 390, 44 }, 3);
    ASSERT_TRUE(dense);
    EXPECT_EQ(dense->qImage().size(), QSize(1170, 132));
    EXPECT_EQ(dense->scale(), 3);
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

TEST_F(ORVPlaybackSliderPictureTest, AScaleOfNothingIsThatOfTheMainScreen)
{
    const auto picture = fitted({ 100, 44 }, 0);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->scale(), 2);
    EXPECT_EQ(picture->qImage().size(), QSize(200, 88));
}

TEST_F(ORVPlaybackSliderPictureTest, ASizeThatMakesNoPictureGivesNone)
{
    for (const CGSize& size : { CGSize(0, 0), CGSize(0, 44), CGSize(390, 0), CGSize(-390, 44),
             CGSize(notANumber, 44), CGSize(390, infinity), CGSize(1e300, 44) })
        EXPECT_FALSE(fitted(size, 2)) << size.width() << " " << size.height();
}

TEST_F(ORVPlaybackSliderPictureTest, AScaleThatIsNoNumberGivesNoPicture)
{
    for (const double scale : { notANumber, infinity, -2.0, 1e300 })
        EXPECT_FALSE(fitted({ 350, 44 }, scale)) << scale;
}

TEST_F(ORVPlaybackSliderPictureTest, WithoutTheResourceThePictureIsClear)
{
    TemporaryBundle empty;
    empty.makeMain();
    ASSERT_FALSE(resource());
    const auto picture = fitted({ 350, 44 }, 2);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->qImage().size(), QSize(700, 88));
    EXPECT_TRUE(isClear(picture->qImage()));
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
