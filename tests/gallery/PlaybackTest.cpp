#include "platform/graphics/UIImage.h"
#include "playback/ORVPlaybackButton.h"
#include "playback/ORVPlaybackSlider.h"
#include "tests/gallery/Gallery.h"
#include "tests/gallery/RendererWindow.h"
#include "tests/support/PictureComparison.h"
#include "theme/UIColor+ORVTheme.h"

namespace {

class PlaybackGallery : public Gallery {
protected:
    PlaybackGallery()
    {
        showsNoText();
        window->setTintColor(orv_oruvaneMainColor());
        UIAppearance::of<ORVPlaybackButton>()
            .set(&ORVPlaybackButton::setImage, picture("ov_icon_play"), UIControlState::Normal)
            .set(&ORVPlaybackButton::setImage, picture("ov_icon_pause"), UIControlState::Application);
        UIAppearance::of<ORVPlaybackSlider>()
            .set(&ORVPlaybackSlider::setThumbImage,
                picture("ov_progress_grabhandle")
                    ->imageWithRenderingMode(UIImageRenderingMode::AlwaysTemplate))
            .set(&ORVPlaybackSlider::setMaximumWaveformTintColor, orv_oruvanePlaybackSliderTrackColor());
    }

    std::shared_ptr<ORVPlaybackButton> addButton(const char* caption, double x, double y)
    {
        addCaption(caption, x, y);
        return add(make<ORVPlaybackButton>(), { x, y + 16, 44, 44 });
    }
    // Answers the first of them.
    std::shared_ptr<ORVPlaybackButton> addButtons()
    {
        const auto idle = addButton("idle", 12, 8);
        addButton("playing", 76, 8)->setPlaying(true, Animated::No);
        addButton("pressed", 140, 8)->setHighlighted(true);
        addButton("disabled", 204, 8)->setEnabled(false);
        const auto pressed = addButton("both", 268, 8);
        pressed->setPlaying(true, Animated::No);
        pressed->setHighlighted(true);
        const auto dimmed = addButton("dimmed", 332, 8);
        dimmed->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
        dimmed->progressView()->setProgress(0.4, Animated::No);

        const auto third = addButton("a third", 12, 80);
        third->setPlaying(true, Animated::No);
        third->progressView()->setProgress(1.0 / 3, Animated::No);
        addButton("whole", 76, 80)->progressView()->setProgress(1, Animated::No);
        const auto loading = addButton("loading", 140, 80);
        loading->progressView()->setIndeterminate(true);
        showsTurned(loading->frame());
        const auto inset = addButton("insets 6", 204, 80);
        inset->setContentEdgeInsets({ 6, 6, 6, 6 });
        inset->progressView()->setProgress(0.25, Animated::No);
        const auto switching = addButton("switching", 268, 80);
        runFrames();
        switching->setPlaying(true, Animated::Yes);
        scheduler.advance(0.075); // half way to nothing
        return idle;
    }

    std::shared_ptr<ORVCircularProgressView> addRing(
        const char* caption, double x, double y, double side = 44)
    {
        addCaption(caption, x, y);
        return add(make<ORVCircularProgressView>(), { x, y + 16, side, side });
    }
    std::shared_ptr<ORVPlaybackSlider> addSlider(const char* caption, double position, double y)
    {
        addCaption(caption, margin, y);
        const auto slider = add(make<ORVPlaybackSlider>(), { 0, y + 14, width, 44 });
        slider->finishRenderingWaveformWithImage(picture("mock_playback_waveform"), nullptr);
        slider->setCurrentPosition(position);
        return slider;
    }

    static constexpr double buttonsHeight = 150;
};

TEST_P(PlaybackGallery, Buttons)
{
    addButtons();
    expectPicture("playback-buttons", buttonsHeight);
}

TEST_P(PlaybackGallery, OneIconThatHasLostItsTintOrItsPlaceIsNoticed)
{
    const auto idle = addButtons();
    idle->imageView()->setTintColor(UIColor::labelColor());
    expectOtherPicture("playback-buttons", buttonsHeight);
    idle->imageView()->setTintColor(nullptr);
    idle->setImageEdgeInsets({ 0, 3, 0, 0 });
    expectOtherPicture("playback-buttons", buttonsHeight);
    idle->setImageEdgeInsets({});
    idle->progressView()->setTrackTintColor(UIColor::clearColor());
    expectOtherPicture("playback-buttons", buttonsHeight);
}

TEST_P(PlaybackGallery, Rings)
{
    const double values[] = { 0, 0.1, 0.5, 0.9, 1, 1.5 };
    for (int index = 0; index < int(std::size(values)); ++index) {
        const double x = margin + index * 62;
        addRing(std::to_string(values[index]).substr(0, 3).c_str(), x, 8)
            ->setProgress(values[index], Animated::No);
        const auto back = addRing("backwards", x, 76);
        back->setDirection(ORVCircularProgressDirectionCounterclockwise);
        back->setProgress(values[index], Animated::No);
    }
    const double widths[] = { 1, 2, 4, 10 };
    for (int index = 0; index < int(std::size(widths)); ++index) {
        const auto ring
            = addRing(("width " + std::to_string(int(widths[index]))).c_str(), margin + index * 62, 144);
        ring->setTrackWidth(widths[index]);
        ring->setProgress(0.7, Animated::No);
    }
    const auto coloured = addRing("colours", margin + 4 * 62, 144);
    coloured->setTintColor(UIColor::colorWithRed(0.1, 0.6, 0.3, 1));
    coloured->setTrackTintColor(UIColor::colorWithRed(1, 0.9, 0.4, 1));
    coloured->setProgress(0.6, Animated::No);
    addRing("small", margin + 5 * 62, 144, 20)->setProgress(0.6, Animated::No);
    expectPicture("rings", 216);
}

TEST_P(PlaybackGallery, Sliders)
{
    addSlider("at the start", 0, 8);
    addSlider("a quarter", 0.25, 72);
    const auto pressed = addSlider("pressed", 0.5, 136);
    addSlider("at the end", 1, 200);
    addSlider("without a thumb", 0.6, 264)->setThumbHidden(true);
    addSlider("dimmed", 0.6, 328)->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    addSlider("without a waveform", 0.3, 392)->finishRenderingWaveformWithImage(nullptr, nullptr);
    runFrames();
    touch.down(pressed->thumbView()->convertPointToView({ 10, 10 }, nullptr));
    EXPECT_TRUE(pressed->thumbView()->isHighlighted());
    expectPicture("sliders", 456);
    touch.up();
}

TEST_P(PlaybackGallery, TheHalvesOfAWaveformMakeOneWhateverTheWidth)
{
    for (const double each : { 333.34, 200.17, 99.9, 250.5 }) {
        const auto slider = add(make<ORVPlaybackSlider>(), { 10.2, 20, each, 44 });
        slider->setMaximumWaveformTintColor(slider->tintColor()); // no difference but a drift can be seen
        slider->setThumbHidden(true);
        slider->finishRenderingWaveformWithImage(
            ORVPlaybackSlider::waveformImageForAsset(nullptr, { each, 44 }, GetParam().scale), nullptr);
        const auto shownAt = [&](double position) {
            slider->setCurrentPosition(position);
            runFrames();
            return RendererWindow::shared().show(frame);
        };
        const QImage whole = shownAt(1);
        for (const double position : { 0.0, 0.123, 0.5, 0.777 })
            EXPECT_TRUE(picturesMatch(shownAt(position), whole, { .channel = 0 })) << each << ' ' << position;
        slider->removeFromSuperview();
    }
}

GALLERY_LOOKS(PlaybackGallery);

} // namespace
