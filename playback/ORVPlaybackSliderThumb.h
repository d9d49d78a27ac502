// The handle of an ORVPlaybackSlider: half transparent, and opaque while a finger is on it.
//
// It is at least as wide as its picture and as high as the slider makes it.
#pragma once

#include "platform/controls/UIControl.h"
#include "platform/controls/UIImageView.h"

class ORVPlaybackSliderThumb final : public UIControl {
public:
    using UIControl::UIControl;

    // In the middle of the thumb.
    const std::shared_ptr<UIImageView>& imageView() const { return m_imageView; }

    // A highlight that no finger asks for is passed over. It comes at once and fades away.
    void setHighlighted(bool highlighted) override;
    bool requiresConstraintBasedLayout() const override { return true; }

protected:
    void init() override;

private:
    void setupSubviews();
    void updateState(Animated animated); // updateStateAnimated:

    std::shared_ptr<UIImageView> m_imageView;
};
