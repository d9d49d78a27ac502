#include "platform/controls/UIButton.h"

#include "platform/controls/DetailDisclosurePicture.h"
#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/FiniteNumbers.h"
#include "platform/graphics/MainScreenScale.h"
#include "platform/views/UITapGestureRecognizer.h"

namespace {

// How much of a system button is left to see while it is pressed, and while it is disabled.
constexpr double pressedAlpha = 0.2;
constexpr double disabledAlpha = 0.35;
// How much of a custom button's picture.
constexpr double paleImageAlpha = 0.5;

template <typename Values> auto valueForState(const Values& values, UIControlState state)
{
    auto found = values.find(state);
    if (found == values.end())
        found = values.find(UIControlState::Normal);
    return found == values.end() ? typename Values::mapped_type() : found->second;
}

bool isNil(const NSString& text) { return text.isNull(); }
template <typename Object> bool isNil(const std::shared_ptr<Object>& object) { return !object; }

template <typename Values>
void setValueForState(Values& values, typename Values::mapped_type value, UIControlState state)
{
    if (isNil(value))
        values.erase(state);
    else
        values[state] = std::move(value);
}

} // namespace

void UIButton::init()
{
    UIControl::init();
    updateImage(); // a detail disclosure has one from the start
}

// --- What is shown in which state --------------------------------------------------------------------

void UIButton::setImage(std::shared_ptr<UIImage> image, UIControlState state)
{
    appearanceNotes().noteSetting(&UIButton::setImage, state);
    setValueForState(m_images, std::move(image), state);
    updateImage();
}

std::shared_ptr<UIImage> UIButton::imageForState(UIControlState state) const
{
    return valueForState(m_images, state);
}

void UIButton::setBackgroundImage(std::shared_ptr<UIImage> image, UIControlState state)
{
    setValueForState(m_backgroundImages, std::move(image), state);
    updateBackground();
}

std::shared_ptr<UIImage> UIButton::backgroundImageForState(UIControlState state) const
{
    return valueForState(m_backgroundImages, state);
}

void UIButton::setTitle(const NSString& title, UIControlState state)
{
    setValueForState(m_titles, title, state);
    updateTitle();
}

NSString UIButton::titleForState(UIControlState state) const { return valueForState(m_titles, state); }

void UIButton::setTitleColor(std::shared_ptr<UIColor> color, UIControlState state)
{
    setValueForState(m_titleColors, std::move(color), state);
    updateTitle();
}

std::shared_ptr<UIColor> UIButton::titleColorForState(UIControlState state) const
{
    if (auto color = valueForState(m_titleColors, state))
        return color;
    return isSystem() ? tintColor() : UIColor::labelColor();
}

void UIButton::setContentEdgeInsets(const UIEdgeInsets& insets)
{
    NSParameterAssert(isFinite(insets), "UIButton", "insets are finite");
    if (!isFinite(insets))
        return;
    m_contentEdgeInsets = insets;
    contentDidChange();
}

void UIButton::setImageEdgeInsets(const UIEdgeInsets& insets)
{
    NSParameterAssert(isFinite(insets), "UIButton", "insets are finite");
    if (!isFinite(insets))
        return;
    m_imageEdgeInsets = insets;
    setNeedsLayout();
}

void UIButton::setAdjustsImageWhenHighlighted(bool adjusts)
{
    m_adjustsImageWhenHighlighted = adjusts;
    updateImage();
}

void UIButton::setAdjustsImageWhenDisabled(bool adjusts)
{
    m_adjustsImageWhenDisabled = adjusts;
    updateImage();
}

void UIButton::setEnabled(bool enabled)
{
    const KeepAlive keepAlive(*this); // a target that hears of the touch's end may drop the button
    UIControl::setEnabled(enabled);
    updateForState();
}

void UIButton::setHighlighted(bool highlighted)
{
    UIControl::setHighlighted(highlighted);
    updateForState();
}

void UIButton::setSelected(bool selected)
{
    UIControl::setSelected(selected);
    updateForState();
}

bool UIButton::gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer)
{
    const auto* tap = dynamic_cast<UITapGestureRecognizer*>(&recognizer);
    const bool fromOutside = recognizer.view() && !containsView(*recognizer.view());
    return !(isEnabled() && fromOutside && tap && tap->numberOfTapsRequired() == 1);
}

// --- Subviews ----------------------------------------------------------------------------------------

UIImageView& UIButton::ensureImageView()
{
    if (!m_imageView) {
        m_imageView = make<UIImageView>();
        m_imageView->setTreatsAutomaticAsTemplate(isSystem());
        insertSubview(m_imageView, m_backgroundView ? 1 : 0);
    }
    return *m_imageView;
}

std::shared_ptr<UIImageView> UIButton::imageView()
{
    ensureImageView();
    return m_imageView;
}

std::shared_ptr<UILabel> UIButton::titleLabel()
{
    if (!m_titleLabel) {
        m_titleLabel = make<UILabel>();
        m_titleLabel->setFont(UIFont::systemFontOfSize(UIFont::buttonFontSize));
        m_titleLabel->setTextAlignment(NSTextAlignment::Center);
        addSubview(m_titleLabel);
        contentDidChange(); // from now on there is a baseline
    }
    return m_titleLabel;
}

void UIButton::updateForState()
{
    updateImage();
    updateBackground();
    updateTitle();
}

double UIButton::systemAlpha() const
{
    if (!isSystem())
        return 1;
    if (!isEnabled())
        return disabledAlpha;
    return isHighlighted() ? pressedAlpha : 1;
}

double UIButton::imageAlpha() const
{
    if (isSystem())
        return systemAlpha();
    if (m_images.contains(state()))
        return 1;
    const bool pales
        = (isHighlighted() && adjustsImageWhenHighlighted()) || (!isEnabled() && adjustsImageWhenDisabled());
    return pales ? paleImageAlpha : 1;
}

std::shared_ptr<UIImage> UIButton::shownImage() const
{
    const auto image = valueForState(m_images, state());
    if (image || m_type != UIButtonType::DetailDisclosure)
        return image;
    return detailDisclosurePicture(MainScreenScale::get());
}

void UIButton::updateImage()
{
    const auto image = shownImage();
    if (!image && !m_imageView)
        return;
    const CGSize oldSize = imageSize();
    ensureImageView().setImage(image);
    m_imageView->setAlpha(imageAlpha());
    if (imageSize() != oldSize)
        contentDidChange();
}

void UIButton::updateBackground()
{
    if (m_backgroundImages.empty() && !m_backgroundView)
        return;
    if (!m_backgroundView) {
        m_backgroundView = make<UIImageView>();
        insertSubview(m_backgroundView, 0);
    }
    const auto background = valueForState(m_backgroundImages, state());
    if (background != m_backgroundView->image()) {
        m_backgroundView->setImage(background);
        contentDidChange();
    }
}

void UIButton::updateTitle()
{
    if (m_titles.empty() && !m_titleLabel)
        return;
    const NSString title = titleForState(state());
    if (titleLabel()->text() != title) {
        m_titleLabel->setText(title);
        contentDidChange();
    }
    m_titleLabel->setTextColor(titleColorForState(state()));
    m_titleLabel->setAlpha(systemAlpha());
}

void UIButton::tintColorDidChange()
{
    UIControl::tintColorDidChange();
    updateTitle();
}
