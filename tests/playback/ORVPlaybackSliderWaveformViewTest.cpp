#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using Mode = ORVPlaybackSliderWaveformViewMode;

// A track view of its own, 100 points wide, and a picture of 300 points in three stripes: all of it is there
// in the left one, nothing in the middle, half of it in the right one.
class ORVPlaybackSliderWaveformViewTest : public PlaybackSliderFixture {
protected:
    void makeTrack(Mode mode)
    {
        slider->removeFromSuperview();
        track = make<ORVPlaybackSliderWaveformView>();
        track->setMode(mode);
        track->setTintColor(red);
        track->setWaveformImage(stripes());
        window->addSubview(track);
        place({ 50, 50, 100, 44 });
    }
    void place(const CGRect& rect)
    {
        track->setFrame(rect);
        runFrames();
    }
    static std::shared_ptr<UIImage> stripes()
    {
        QImage pixels = plainPixels({ 600, 88 }, Qt::transparent);
        for (int y = 0; y < pixels.height(); ++y)
            for (int x = 0; x < pixels.width(); ++x)
                if (x < 200 || x >= 400)
                    pixels.setPixelColor(x, y, QColor(0, 0, 255, x < 200 ? 255 : 128));
        return UIImage::imageWithQImage(pixels, 2);
    }
    // How red the screen is at these places, on the window's black.
    void expectRed(std::initializer_list<double> places, int expected) const
    {
        const QImage screen = FramePainter(frame).paintScreen();
        for (const double x : places) {
            const QColor color = screen.pixelColor(qRound(x * 2), 140);
            EXPECT_NEAR(color.red(), expected, expected == 128 ? 2 : 0) << x;
            EXPECT_EQ(color.blue(), 0) << "the tint alone is seen";
        }
    }

    std::shared_ptr<ORVPlaybackSliderWaveformView> track = make<ORVPlaybackSliderWaveformView>();
};

TEST_F(ORVPlaybackSliderWaveformViewTest, BeginsClearAndCutsOffWhatLiesOutside)
{
    EXPECT_TRUE(track->backgroundColor()->isEqual(UIColor::clearColor().get()));
    EXPECT_FALSE(track->isOpaque());
    EXPECT_TRUE(track->clipsToBounds());
    EXPECT_EQ(track->mode(), ORVPlaybackSliderWaveformViewModeStretch);
    EXPECT_EQ(track->subviews().size(), 1U);
    EXPECT_EQ(track->subviews().front(), track->imageView());
    EXPECT_FALSE(track->waveformImage());
    EXPECT_TRUE(track->requiresConstraintBasedLayout());
}

TEST_F(ORVPlaybackSliderWaveformViewTest, ThePictureIsKeptAsATemplate)
{
    makeTrack(ORVPlaybackSliderWaveformViewModeStretch);
    const auto picture = stripes()->imageWithRenderingMode(UIImageRenderingMode::AlwaysOriginal);
    track->setWaveformImage(picture);
    ASSERT_TRUE(track->waveformImage());
    EXPECT_NE(track->waveformImage(), picture);
    EXPECT_EQ(track->waveformImage(), track->imageView()->image());
    EXPECT_EQ(track->waveformImage()->renderingMode(), UIImageRenderingMode::AlwaysTemplate);
    EXPECT_EQ(track->waveformImage()->qImage().cacheKey(), picture->qImage().cacheKey());
    track->setWaveformImage(nullptr);
    EXPECT_FALSE(track->waveformImage());
    EXPECT_FALSE(track->imageView()->image());
}

TEST_F(ORVPlaybackSliderWaveformViewTest, StretchedThePictureFillsTheView)
{
    for (const Mode mode : { Mode::Stretch, static_cast<Mode>(7) }) {
        makeTrack(mode);
        EXPECT_EQ(track->imageView()->frame(), CGRect(0, 0, 100, 44));
        expectRed({ 60 }, 255);
        expectRed({ 100 }, 0);
        expectRed({ 140 }, 128);
        place({ 50, 50, 200, 30 });
        EXPECT_EQ(track->imageView()->frame(), CGRect(0, 0, 200, 30));
        track->removeFromSuperview();
    }
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AlignedLeftANarrowViewShowsThePicturesLeftPart)
{
    makeTrack(Mode::AlignLeft);
    EXPECT_EQ(track->imageView()->frame(), CGRect(0, 0, 300, 44));
    expectRed({ 50.5, 100, 149 }, 255);
    expectRed({ 49, 150.5, 260, 340 }, 0);
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AlignedRightANarrowViewShowsThePicturesRightPart)
{
    makeTrack(Mode::AlignRight);
    EXPECT_EQ(track->imageView()->frame(), CGRect(-200, 0, 300, 44));
    expectRed({ 50.5, 100, 149 }, 128);
    expectRed({ 20, 49, 150.5 }, 0);
    for (const double wide : { 0.0, 10.0, 300.0, 320.0 }) {
        place({ 0, 50, wide, 44 });
        EXPECT_EQ(track->imageView()->frame(), CGRect(wide - 300, 0, 300, 44)) << "it keeps its width";
    }
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AModeSetAfterTheFirstPassTakesThePlaceAwayForGood)
{
    makeTrack(Mode::AlignLeft);
    EXPECT_FALSE(track->constraints().empty());
    track->setMode(Mode::AlignRight);
    EXPECT_EQ(track->mode(), Mode::AlignRight);
    EXPECT_TRUE(track->constraints().empty());
    EXPECT_TRUE(track->needsUpdateConstraints());
    runFrames();
    EXPECT_TRUE(track->constraints().empty());
    place({ 50, 50, 80, 44 });
    EXPECT_EQ(track->imageView()->frame().topLeft(), CGPoint(0, 0)) << "it stays where it was";
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AnotherSizeAsksForLayout)
{
    makeTrack(Mode::AlignLeft);
    EXPECT_FALSE(scheduler.isFrameRequested());
    track->setBounds({ 0, 0, 120, 44 });
    EXPECT_TRUE(scheduler.isFrameRequested());
    runFrames();
    track->setBounds({ 0, 0, 120, 44 });
    EXPECT_TRUE(scheduler.isFrameRequested()) << "so does the same one";
}

} // namespace
