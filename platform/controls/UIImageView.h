// Shows a picture, in its own colours or, as a template, in the view's tint.
//
// The picture is the layer's contents as it is: nothing is drawn again when the view moves, changes its
// tint or shares the picture with another view.
#pragma once

#include "platform/graphics/UIImage.h"
#include "platform/views/UIView.h"

class UIImageView : public UIView {
public:
    using UIView::UIView;
    // initWithImage: — takes the picture's size.
    explicit UIImageView(std::shared_ptr<UIImage> image);

    const std::shared_ptr<UIImage>& image() const { return m_image; }
    void setImage(std::shared_ptr<UIImage> image); // null shows nothing
    // Whether a picture of the automatic rendering mode counts as a template; off by default.
    void setTreatsAutomaticAsTemplate(bool treats);

    // The picture's size; none without one.
    CGSize intrinsicContentSize() const override;
    CGSize sizeThatFits(const CGSize& size) const override;
    void tintColorDidChange() override;

protected:
    void init() override;

private:
    bool isTemplate() const;
    void updateTint();

    std::shared_ptr<UIImage> m_image;
    bool m_treatsAutomaticAsTemplate = false;
};
