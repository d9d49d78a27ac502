// The bar that shows how far the sound of a record has been played, and lets a finger choose a place in it.
//
// Two halves of one waveform meet at the middle of a thumb, which can be dragged; a tap on the bar sends the
// thumb there. A position is a fraction of the bar from 0 to 1 and can be observed as "currentPosition". It
// holds at once and is seen after the next layout. The waveform is drawn on request and off the main thread;
// everything else is for the main thread only.
#pragma once

#include "platform/media/AVAsset.h"
#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "playback/ORVPlaybackSliderDelegate.h"
#include "playback/ORVPlaybackSliderThumb.h"
#include "playback/ORVPlaybackSliderWaveformView.h"

class ORVPlaybackSlider final : public UIView {
public:
    using UIView::UIView;
    using Completion = std::function<void()>;

    void setDelegate(std::weak_ptr<ORVPlaybackSliderDelegate> delegate) { m_delegate = std::move(delegate); }
    std::shared_ptr<ORVPlaybackSliderDelegate> delegate() const { return m_delegate.lock(); }

    double currentPosition() const { return m_currentPosition; }
    // A position outside of 0 to 1 becomes the nearer end, one that is no number becomes 1. Observers are
    // told twice, by hand and by the setter's own announcement.
    void setCurrentPosition(double position);
    // Animated, the thumb glides there in a tenth of a second.
    void setCurrentPosition(double position, Animated animated);
    // setCurrentPosition:animationDuration:animationCurve: — finite seconds; 0 or less are no motion.
    void setCurrentPosition(double position, double duration, UIViewAnimationCurve curve);

    // Without a thumb the bar takes neither drags nor taps.
    bool isThumbHidden() const { return m_thumbView->isHidden(); } // thumbHidden
    void setThumbHidden(bool hidden);
    bool isDraggingThumb() const { return m_draggingThumb; }
    void setDraggingThumb(bool dragging) { m_draggingThumb = dragging; }

    // Right of the thumb; left of it the bar has its inherited tint. Null inherits here too.
    const std::shared_ptr<UIColor>& maximumWaveformTintColor() const { return m_maximumWaveformTintColor; }
    void setMaximumWaveformTintColor(std::shared_ptr<UIColor> color);
    const std::shared_ptr<UIImage>& thumbImage() const { return m_thumbImage; }
    void setThumbImage(std::shared_ptr<UIImage> image);

    // --- The waveform --------------------------------------------------------------------------------

    // The sound whose waveform is shown. Another one needs another rendering.
    const std::shared_ptr<AVAsset>& asset() const { return m_asset; }
    void setAsset(const std::shared_ptr<AVAsset>& asset);
    // Whether the bar renders by itself as soon as it needs to and is in a window; off by default.
    bool shouldAutomaticallyRenderWaveform() const { return m_shouldAutomaticallyRenderWaveform; }
    void setShouldAutomaticallyRenderWaveform(bool should) { m_shouldAutomaticallyRenderWaveform = should; }
    bool isRenderingWaveform() const { return m_renderingWaveform; }
    void setRenderingWaveform(bool rendering) { m_renderingWaveform = rendering; }

    void setNeedsRenderWaveform();
    // Renders for the size of this moment, every time it is asked once the need was stated; the completion
    // follows when the picture is shown, and never when the bar is gone by then. Without a need or without
    // an asset the completion is all there is, at once.
    void renderWafeformIfNecessaryWithCompletion(Completion completion);
    // Shows the picture, null for none, and ends the rendering.
    void finishRenderingWaveformWithImage(
        const std::shared_ptr<UIImage>& image, const Completion& completion);
    // The picture for a bar of that size; null where the size makes none. Safe on any thread.
    static std::shared_ptr<UIImage> waveformImageForAsset(
        const std::shared_ptr<AVAsset>& asset, const CGSize& size, CGFloat scale);

    // --- Parts ---------------------------------------------------------------------------------------

    const std::shared_ptr<ORVPlaybackSliderWaveformView>& minimumTrackView() const
    {
        return m_minimumTrackView;
    }
    const std::shared_ptr<ORVPlaybackSliderWaveformView>& maximumTrackView() const
    {
        return m_maximumTrackView;
    }
    const std::shared_ptr<ORVPlaybackSliderThumb>& thumbView() const { return m_thumbView; }
    const std::shared_ptr<UITapGestureRecognizer>& trackTapRecognizer() const { return m_trackTapRecognizer; }
    const std::shared_ptr<UIPanGestureRecognizer>& thumbPanRecognizer() const { return m_thumbPanRecognizer; }
    // Null until the next constraint update after a change of the position.
    const std::shared_ptr<NSLayoutConstraint>& thumbCenterConstraint() const
    {
        return m_thumbCenterConstraint;
    }
    void setThumbCenterConstraint(std::shared_ptr<NSLayoutConstraint> constraint)
    {
        m_thumbCenterConstraint = std::move(constraint);
    }

    // --- Touches -------------------------------------------------------------------------------------

    void trackTapped(UITapGestureRecognizer&);
    void thumbPanned(UIPanGestureRecognizer&);
    // A drag, in the bar's coordinates. The thumb moves as the finger does and does not jump to it.
    void beginThumbDraggingWithLocation(const CGPoint& location);
    void updateThumbDraggingWithLocation(const CGPoint& location);
    void endThumbDraggingWithLocation(const CGPoint& location);
    // The position of a place in the bar's coordinates, which may lie outside of 0 to 1.
    double trackPositionFromTouchLocation(const CGPoint& location) const;

    void didMoveToWindow() override;
    void updateConstraints() override;
    bool requiresConstraintBasedLayout() const override { return true; }

protected:
    void init() override;

private:
    void setupDefaults();
    void setupSubviews();
    std::shared_ptr<ORVPlaybackSliderWaveformView> addTrackView(ORVPlaybackSliderWaveformViewMode mode);
    void setupRecognizers();
    NSLayoutConstraint::List makeStaticConstraints();
    std::shared_ptr<NSLayoutConstraint> makeThumbCenterConstraint();
    double offsetFromThumbCenter(const CGPoint& location) const;

    std::weak_ptr<ORVPlaybackSliderDelegate> m_delegate;
    std::shared_ptr<AVAsset> m_asset;
    std::shared_ptr<UIColor> m_maximumWaveformTintColor;
    std::shared_ptr<UIImage> m_thumbImage;
    std::shared_ptr<ORVPlaybackSliderWaveformView> m_minimumTrackView;
    std::shared_ptr<ORVPlaybackSliderWaveformView> m_maximumTrackView;
    std::shared_ptr<ORVPlaybackSliderThumb> m_thumbView;
    std::shared_ptr<UITapGestureRecognizer> m_trackTapRecognizer;
    std::shared_ptr<UIPanGestureRecognizer> m_thumbPanRecognizer;
    std::optional<const NSLayoutConstraint::List> m_staticConstraints; // made once
    std::shared_ptr<NSLayoutConstraint> m_thumbCenterConstraint;
    double m_currentPosition = 0;
    double m_panningOffset = 0; // from the finger to the thumb's centre when the drag began
    bool m_draggingThumb = false;
    bool m_shouldAutomaticallyRenderWaveform = false;
    bool m_needsRenderWaveform = false;
    bool m_renderingWaveform = false;
};
