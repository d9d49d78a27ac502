// A playback slider in a window, with somebody who listens to it and short ways to what it shows.
#pragma once

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/UIColor.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "playback/ORVPlaybackSlider.h"
#include "tests/playback/ChangeLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/ManualExecutor.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"
#include "tests/support/SourcePath.h"

#include <gmock/gmock.h>

#include <limits>
#include <sstream>

using Lines = std::vector<std::string>;

// Writes down what it hears, and does what a test asks for while it hears it.
class SliderLog final : public ORVPlaybackSliderDelegate {
public:
    void playbackSliderDidBeginDraggingThumb(ORVPlaybackSlider&) override { log("begin"); }
    void playbackSliderDidDragThumbToPosition(ORVPlaybackSlider&, double position) override
    {
        log("drag", position);
    }
    void playbackSliderDidEndDraggingThumbWithNewPosition(ORVPlaybackSlider&, double position) override
    {
        log("end", position);
    }
    void playbackSliderDidTapOnPosition(ORVPlaybackSlider&, double position) override
    {
        log("tap", position);
    }
    void playbackSliderDidBeginRenderingWaveform(ORVPlaybackSlider&) override { log("rendering"); }
    void playbackSliderDidEndRenderingWaveform(ORVPlaybackSlider&) override { log("rendered"); }

    Lines takeLines() { return std::exchange(lines, {}); }

    Lines lines;
    std::function<void(const std::string& message)> whenHeard = [](auto&) {};

private:
    void log(const std::string& message)
    {
        lines.push_back(message);
        whenHeard(message);
    }
    void log(const std::string& message, double position)
    {
        std::ostringstream line;
        line << message << ' ' << position;
        lines.push_back(line.str());
        whenHeard(message);
    }
};

class PlaybackSliderFixture : public SceneFixture {
protected:
    PlaybackSliderFixture()
    {
        slider->setDelegate(log);
        runFrames();
    }
    ~PlaybackSliderFixture() override
    {
        EXPECT_EQ(assertions.messages(), std::vector<NSString> {});
        EXPECT_EQ(conflicts, 0);
    }

    // A place on the bar, in the window.
    CGPoint place(double x) const { return slider->convertPointToView({ x, height / 2 }, nullptr); }
    double thumbCenter() const { return slider->thumbView()->frame().center().x(); }
    void setPosition(double position)
    {
        slider->setCurrentPosition(position);
        runFrames();
    }
    // Begins a drag ten points right of the thumb's centre; from here on every move of the finger counts.
    // Answers where on the bar the finger is now.
    double beginDragging()
    {
        const double start = thumbCenter() + 10;
        touch.down(place(start));
        touch.wait(0.05);
        touch.moveTo(place(start + dragBeginning));
        return start + dragBeginning;
    }
    static std::shared_ptr<AVAsset> makeAsset()
    {
        return AVAsset::assetWithURL(QUrl::fromLocalFile(QStringLiteral("/sounds/tram.m4a")));
    }
    // Shows a picture of the bar's size, in which nothing is clear.
    void showPicture()
    {
        const QSize pixels(qRound(width * 2), qRound(height * 2));
        slider->finishRenderingWaveformWithImage(plainImage(pixels, Qt::black, 2), nullptr);
        runFrames();
    }

    // What is to be seen of a view at this moment, in its superview.
    static CGRect shown(const UIView& view)
    {
        const CALayerValues values = view.layer()->presentationValues();
        const CGSize size = values.bounds.size();
        return { values.position - CGPoint(size.width(), size.height()) / 2, size };
    }
    double shownThumbCenter() const { return shown(*slider->thumbView()).center().x(); }
    double shownAlphaOfThumb() const
    {
        return slider->thumbView()->imageView()->layer()->presentationValues().opacity;
    }
    // Both halves of the waveform meet at the thumb's centre, and the picture in them stands still.
    void expectHalvesMeetAtTheThumb() const
    {
        constexpr double exact = 1e-9;
        const CGRect minimum = shown(*slider->minimumTrackView());
        const CGRect maximum = shown(*slider->maximumTrackView());
        EXPECT_NEAR(minimum.left(), 0, exact);
        EXPECT_NEAR(minimum.right(), shownThumbCenter(), exact);
        EXPECT_NEAR(maximum.left(), shownThumbCenter(), exact);
        EXPECT_NEAR(maximum.right(), width, exact);
        if (!slider->minimumTrackView()->waveformImage())
            return;
        EXPECT_NEAR(minimum.left() + shown(*slider->minimumTrackView()->imageView()).left(), 0, exact);
        EXPECT_NEAR(maximum.left() + shown(*slider->maximumTrackView()->imageView()).left(), 0, exact);
    }
    // The same in every frame of that many seconds from now.
    void watchHalvesFor(double seconds)
    {
        expectHalvesMeetAtTheThumb();
        for (double time = 0; time < seconds; time += scheduler.frameInterval()) {
            scheduler.advance(scheduler.frameInterval());
            expectHalvesMeetAtTheThumb();
        }
    }

    static constexpr double width = 350;
    static constexpr double height = 44;
    static constexpr double dragBeginning = 11; // a move that is too far for a tap
    static constexpr double infinity = std::numeric_limits<double>::infinity();
    static constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

    const NSBundle::MainReplacement mainBundle { make<NSBundle>(sourcePath("resources")) };
    ManualExecutor executor;
    AssertionRecorder assertions;
    int conflicts = 0; // between constraints
    const NSLayoutConstraint::ConflictReplacement conflictCounter { [this](auto&) { ++conflicts; } };
    std::shared_ptr<SliderLog> log = std::make_shared<SliderLog>();
    std::shared_ptr<ORVPlaybackSlider> slider = addView<ORVPlaybackSlider>({ 20, 200, width, height });
};
