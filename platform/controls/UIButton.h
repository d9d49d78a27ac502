// A control with a picture, a title and a background picture, each different in each state if need be.
//
// What is set for no particular state is that of the normal one. The image view and the title label are
// made when they are first needed, so that a subclass with its own makes no second one.
#pragma once

#include "platform/controls/UIControl.h"
#include "platform/controls/UIImageView.h"
#include "platform/controls/UILabel.h"

#include <map>

enum class UIButtonType {
    Custom = 0, // pictures in their own colours
    System = 1, // picture and title in the tint colour; pressed, they fade
    DetailDisclosure = 2 // a system button with a circled "i" for a picture, unless it is given another
};

class UIButton : public UIControl {
public:
    using UIControl::UIControl;
    // buttonWithType:
    explicit UIButton(UIButtonType type)
        : m_type(type)
    {
    }

    UIButtonType buttonType() const { return m_type; }

    // setImage:forState: and its kin; null takes it back.
    virtual void setImage(std::shared_ptr<UIImage> image, UIControlState state);
    virtual std::shared_ptr<UIImage> imageForState(UIControlState state) const;
    void setBackgroundImage(std::shared_ptr<UIImage> image, UIControlState state);
    std::shared_ptr<UIImage> backgroundImageForState(UIControlState state) const;
    void setTitle(const NSString& title, UIControlState state);
    NSString titleForState(UIControlState state) const;
    void setTitleColor(std::shared_ptr<UIColor> color, UIControlState state);
    std::shared_ptr<UIColor> titleColorForState(UIControlState state) const;

    virtual std::shared_ptr<UIImageView> imageView();
    std::shared_ptr<UILabel> titleLabel();

    // Space around picture and title; part of the button's size. Insets that are not finite are a programming
    // error and change nothing, here and below.
    const UIEdgeInsets& contentEdgeInsets() const { return m_contentEdgeInsets; }
    virtual void setContentEdgeInsets(const UIEdgeInsets& insets);
    // Moves the picture within its place; no part of the button's size.
    const UIEdgeInsets& imageEdgeInsets() const { return m_imageEdgeInsets; }
    virtual void setImageEdgeInsets(const UIEdgeInsets& insets);
    // Whether a pressed or disabled button without pictures of its own for that state pales its picture.
    virtual bool adjustsImageWhenHighlighted() const { return m_adjustsImageWhenHighlighted; }
    void setAdjustsImageWhenHighlighted(bool adjusts);
    virtual bool adjustsImageWhenDisabled() const { return m_adjustsImageWhenDisabled; }
    void setAdjustsImageWhenDisabled(bool adjusts);

    void setEnabled(bool enabled) override;
    void setHighlighted(bool highlighted) override;
    void setSelected(bool selected) override;

    CGSize intrinsicContentSize() const override;
    CGSize sizeThatFits(const CGSize& size) const override;
    // The title's, or the bottom edge without a title.
    CGFloat firstBaseline() const;
    LayoutBaseline firstBaselinePlace() const override;
    LayoutBaseline lastBaselinePlace() const override;
    void layoutSubviews() override;
    void tintColorDidChange() override;
    // A press is the button's own: no single tap of a view around it begins.
    bool gestureRecognizerShouldBegin(UIGestureRecognizer&) override;

protected:
    void init() override;

private:
    template <typename Value> using PerState = std::map<UIControlState, Value>;

    // Where picture and title stand.
    struct Places {
        CGRect image;
        CGRect title;
    };
    Places places() const;
    CGSize imageSize() const;
    CGSize titleSize() const;
    UIImageView& ensureImageView();
    bool isSystem() const { return m_type != UIButtonType::Custom; }
    std::shared_ptr<UIImage> shownImage() const;
    void updateForState();
    void updateImage();
    void updateBackground();
    void updateTitle();
    double systemAlpha() const;
    double imageAlpha() const;
    LayoutBaseline baselineOfTitle(const LayoutBaseline& inLabel) const;
    void contentDidChange();
    void tellOfChangesMadeElsewhere();

    UIButtonType m_type = UIButtonType::Custom;
    PerState<std::shared_ptr<UIImage>> m_images;
    PerState<std::shared_ptr<UIImage>> m_backgroundImages;
    PerState<NSString> m_titles;
    PerState<std::shared_ptr<UIColor>> m_titleColors;
    std::shared_ptr<UIImageView> m_imageView;
    std::shared_ptr<UIImageView> m_backgroundView;
    std::shared_ptr<UILabel> m_titleLabel;
    UIEdgeInsets m_contentEdgeInsets;
    UIEdgeInsets m_imageEdgeInsets;
    CGSize m_laidOutSize; // the intrinsic one in the last layout; invalid after a change since
    bool m_adjustsImageWhenHighlighted = true;
    bool m_adjustsImageWhenDisabled = true;
};
