#include "platform/host/FramePainter.h"
#include "tests/playback/PlaybackSliderFixture.h"

namespace {

using Mode = ORVPlaybackSliderWaveformViewMode;

// A track view of its own, 100 points wide, and a picture of 300 points in three stripes: all of it is there
// in the left one, nothing in the middle, half of it in the right one.
class ORVPlaybackSliderWaveformViewTest : public PlaybackSliderFixture {
protected:
    std::shared_ptr<ORVPlaybackSliderWaveformView> makeTrack(Mode mode)
    {
        slider->removeFromSuperview();
        auto track = make<ORVPlaybackSliderWaveformView>();
        track->setMode(mode);
        track->setFrame({ 50, 50, 100, 44 });
        track->setTintColor(UIColor::colorWithRed(1, 0, 0, 1));
        track->setWaveformImage(stripes());
        window->addSubview(track);
        runFrames();
        return track;
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
    // How red the screen is at a place, on the window's black.
    int redAt(double x, double y) const
    {
        const QColor color = FramePainter(frame).paintScreen().pixelColor(qRound(x * 2), qRound(y * 2));
        EXPECT_EQ(color.blue(), 0) << "the tint alone is seen";
        return color.red();
    }
};

TEST_F(ORVPlaybackSliderWaveformViewTest, BeginsClearAndCutsOffWhatLiesOutside)
{
    const auto track = make<ORVPlaybackSliderWaveformView>();
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
    const auto track = makeTrack(ORVPlaybackSliderWaveformViewModeStretch);
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
        const auto track = makeTrack(mode);
        EXPECT_EQ(track->imageView()->frame(), CGRect(0, 0, 100, 44));
        EXPECT_EQ(redAt(60, 70), 255);
        EXPECT_EQ(redAt(100, 70), 0);
        EXPECT_NEAR(redAt(140, 70), 128, 2);
        track->setFrame({ 50, 50, 200, 30 });
        runFrames();
        EXPECT_EQ(track->imageView()->frame(), CGRect(0, 0, 200, 30));
        track->removeFromSuperview();
    }
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AlignedLeftANarrowViewShowsThePicturesLeftPart)
{
    const auto track = makeTrack(Mode::AlignLeft);
    EXPECT_EQ(track->imageView()->frame(), CGRect(0, 0, 300, 44));
    for (const double x : { 50.5, 100.0, 149.0 })
        EXPECT_EQ(redAt(x, 70), 255) << x;
    for (const double x : { 49.0, 150.5, 260.0, 340.0 })
        EXPECT_EQ(redAt(x, 70), 0) << x;
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AlignedRightANarrowViewShowsThePicturesRightPart)
{
    const auto track = makeTrack(Mode::AlignRight);
    EXPECT_EQ(track->imageView()->frame(), CGRect(-200, 0, 300, 44));
    for (const double x : { 50.5, 100.0, 149.0 })
        EXPECT_NEAR(redAt(x, 70), 128, 2) << x;
    for (const double x : { 20.0, 49.0, 150.5 })
        EXPECT_EQ(redAt(x, 70), 0) << x;
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AlignedThePictureKeepsItsWidthWhenTheViewHasAnother)
{
    const auto track = makeTrack(Mode::AlignRight);
    for (const double wide : { 0.0, 10.0, 300.0, 320.0 }) {
        track->setFrame({ 0, 50, wide, 44 });
        runFrames();
        EXPECT_EQ(track->imageView()->frame(), CGRect(wide - 300, 0, 300, 44));
    }
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AModeSetAfterTheFirstPassTakesThePlaceAwayForGood)
{
    const auto track = makeTrack(Mode::AlignLeft);
    EXPECT_FALSE(track->constraints().empty());
    track->setMode(Mode::AlignRight);
    EXPECT_EQ(track->mode(), Mode::AlignRight);
    EXPECT_TRUE(track->constraints().empty());
    EXPECT_TRUE(track->needsUpdateConstraints());
    runFrames();
    EXPECT_TRUE(track->constraints().empty());
    track->setFrame({ 50, 50, 80, 44 });
    runFrames();
    EXPECT_EQ(track->imageView()->frame().topLeft(), CGPoint(0, 0)) << "it stays where it was";
}

TEST_F(ORVPlaybackSliderWaveformViewTest, AnotherSizeAsksForLayout)
{
    const auto track = makeTrack(Mode::AlignLeft);
    EXPECT_FALSE(scheduler.isFrameRequested());
    track->setBounds({ 0, 0, 120, 44 });
    EXPECT_TRUE(scheduler.isFrameRequested());
    runFrames();
    track->setBounds({ 0, 0, 120, 44 });
    EXPECT_TRUE(scheduler.isFrameRequested()) << "so does the same one";
}

TEST_F(ORVPlaybackSliderWaveformViewTest, TheSlidersHalvesHaveTheInheritedTintAndTheirOwn)
{
    window->setTintColor(UIColor::colorWithRed(0, 1, 0, 1));
    slider->setMaximumWaveformTintColor(UIColor::colorWithRed(0, 0, 1, 1));
    slider->setThumbHidden(true);
    showPicture();
    setPosition(0.4);
    const QImage screen = FramePainter(frame).paintScreen();
    const auto colorAt = [&](double x) {
        const CGPoint point = place(x) * 2;
        return screen.pixelColor(qRound(point.x()), qRound(point.y()));
    };
    const double split = 0.4 * width;
    for (const double x : { 0.0, 1.0, 70.0, split - 1 })
        EXPECT_EQ(colorAt(x), QColor(0, 255, 0)) << x;
    for (const double x : { split, split + 1, 300.0, width - 1 })
        EXPECT_EQ(colorAt(x), QColor(0, 0, 255)) << x;
    EXPECT_EQ(colorAt(-1), QColor(Qt::black));
    EXPECT_EQ(colorAt(width), QColor(Qt::black));
}

} // namespace
