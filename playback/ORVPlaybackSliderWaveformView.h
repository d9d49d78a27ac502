// One side of an ORVPlaybackSlider: a waveform picture in the view's tint, and nothing outside its bounds.
//
// Two of these that share one picture, aligned to their outer edges, show it as one waveform in two tints.
#pragma once

#include "platform/controls/UIImageView.h"
#include "platform/layout/NSLayoutConstraint.h"

#include <optional>

// Where the picture lies. Any other value stretches.
enum class ORVPlaybackSliderWaveformViewMode : unsigned long {
    Stretch = 0, // as wide as the view
    AlignLeft = 1, // as wide as it is
    AlignRight = 2
};
inline constexpr auto ORVPlaybackSliderWaveformViewModeStretch = ORVPlaybackSliderWaveformViewMode::Stretch;
inline constexpr auto ORVPlaybackSliderWaveformViewModeAlignLeft
    = ORVPlaybackSliderWaveformViewMode::AlignLeft;
inline constexpr auto ORVPlaybackSliderWaveformViewModeAlignRight
    = ORVPlaybackSliderWaveformViewMode::AlignRight;

class ORVPlaybackSliderWaveformView final : public UIView {
public:
    using UIView::UIView;

    const std::shared_ptr<UIImageView>& imageView() const { return m_imageView; }
    // Kept as a template, whatever it was: reading answers the template.
    const std::shared_ptr<UIImage>& waveformImage() const { return m_imageView->image(); }
    void setWaveformImage(const std::shared_ptr<UIImage>& image); // null shows nothing

    // To be set before the first layout: set later, it removes the picture's constraints and makes no others.
    ORVPlaybackSliderWaveformViewMode mode() const { return m_mode; }
    void setMode(ORVPlaybackSliderWaveformViewMode mode);

    void setBounds(const CGRect& bounds) override;
    void updateConstraints() override;
    bool requiresConstraintBasedLayout() const override { return true; }

protected:
    void init() override;

private:
    void setupSubviews();
    NSLayoutConstraint::List makeConstraints();

    std::shared_ptr<UIImageView> m_imageView;
    ORVPlaybackSliderWaveformViewMode m_mode = ORVPlaybackSliderWaveformViewModeStretch;
    std::optional<const NSLayoutConstraint::List> m_internalConstraints; // made once
};
