// A playback slider in a window, with somebody who listens to it and short ways to what it shows.
#pragma once

#include "platform/foundation/NSBundle.h"
#include "platform/graphics/UIColor.h"
#include "platform/host/FramePainter.h"
#include "platform/layout/NSLayoutConstraint.h"
#include "playback/ORVPlaybackSlider.h"
#include "tests/playback/ChangeLog.h"
#include "tests/playback/Course.h"
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

    void setPosition(double position)
    {
        slider->setCurrentPosition(position);
        runFrames();
    }
    void resize(double newWidth, double newHeight = height)
    {
        slider->setFrame({ 20, 200, newWidth, newHeight });
        runFrames();
    }
    // Another slider in the place of this one, with the same delegate.
    void makeAnew()
    {
        drop();
        slider = addView<ORVPlaybackSlider>({ 20, 200, width, height });
        slider->setDelegate(log);
        runFrames();
    }
    void drop()
    {
        if (slider)
            std::exchange(slider, nullptr)->removeFromSuperview();
    }

    // --- Fingers: each answers what the delegate has heard of it ----------------------------------------

    Lines heard() { return log ? log->takeLines() : Lines(); }
    // A place on the bar, in the window.
    CGPoint place(double x) const { return slider->convertPointToView({ x, height / 2 }, nullptr); }
    Lines tap(double x)
    {
        touch.tap(place(x));
        return heard();
    }
    // Begins a drag ten points right of the thumb's centre; from here on every move of the finger counts.
    Lines takeThumb()
    {
        finger = place(thumbCenter() + 10);
        touch.down(finger);
        touch.wait(0.05);
        finger += CGPoint(dragBeginning, 0);
        touch.moveTo(finger);
        return heard();
    }
    // That far from where the drag has begun.
    Lines moveThumb(double distance)
    {
        touch.moveTo(finger + CGPoint(distance, 0));
        return heard();
    }
    Lines letGo()
    {
        touch.up();
        return heard();
    }
    // A whole drag.
    Lines dragThumb(double distance)
    {
        Lines all = takeThumb();
        for (const Lines& lines : { moveThumb(distance), letGo() })
            all.insert(all.end(), lines.begin(), lines.end());
        return all;
    }
    // Does something whenever the delegate hears a message.
    void fromInside(const std::string& message, const std::function<void()>& action)
    {
        log->whenHeard = [message, action](const std::string& heardMessage) {
            if (heardMessage == message)
                action();
        };
    }

    // --- The picture -------------------------------------------------------------------------------------

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

    // --- What is to be seen at this moment ---------------------------------------------------------------

    double thumbCenter() const { return slider->thumbView()->frame().center().x(); }
    // The view's place in its superview.
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
    double shownPosition() const { return shownThumbCenter() / width; }
    QColor shownColor(double x) const
    {
        const CGPoint point = place(x) * screenGeometry.scale;
        return FramePainter(frame).paintScreen().pixelColor(qRound(point.x()), qRound(point.y()));
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

    CGPoint finger; // where the drag has begun
    const NSBundle::MainReplacement mainBundle { make<NSBundle>(sourcePath("resources")) };
    ManualExecutor executor;
    AssertionRecorder assertions;
    int conflicts = 0; // between constraints
    const NSLayoutConstraint::ConflictReplacement conflictCounter { [this](auto&) { ++conflicts; } };
    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    std::shared_ptr<SliderLog> log = std::make_shared<SliderLog>();
    std::shared_ptr<ORVPlaybackSlider> slider = addView<ORVPlaybackSlider>({ 20, 200, width, height });
};
