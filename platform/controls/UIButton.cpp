#include "platform/controls/UIButton.h"

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

// --- What is shown in which state --------------------------------------------------------------------

void UIButton::setImage(std::shared_ptr<UIImage> image, UIControlState state)
{
    appearanceNotes().noteSetting(&UIButton::setImage, state);
    setValueForState(m_images, std::move(image), state);
    updateImage();
    contentDidChange();
}

std::shared_ptr<UIImage> UIButton::imageForState(UIControlState state) const
{
    return valueForState(m_images, state);
}

void UIButton::setBackgroundImage(std::shared_ptr<UIImage> image, UIControlState state)
{
    setValueForState(m_backgroundImages, std::move(image), state);
    updateBackground();
    contentDidChange();
}

std::shared_ptr<UIImage> UIButton::backgroundImageForState(UIControlState state) const
{
    return valueForState(m_backgroundImages, state);
}

void UIButton::setTitle(const NSString& title, UIControlState state)
{
    setValueForState(m_titles, title, state);
    updateTitle();
    contentDidChange();
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
    return m_type == UIButtonType::System ? tintColor() : UIColor::labelColor();
}

void UIButton::setContentEdgeInsets(const UIEdgeInsets& insets)
{
    m_contentEdgeInsets = insets;
    contentDidChange();
}

void UIButton::setImageEdgeInsets(const UIEdgeInsets& insets)
{
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
        m_imageView->setTreatsAutomaticAsTemplate(m_type == UIButtonType::System);
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
    if (m_type != UIButtonType::System)
        return 1;
    if (!isEnabled())
        return disabledAlpha;
    return isHighlighted() ? pressedAlpha : 1;
}

double UIButton::imageAlpha() const
{
    if (m_type == UIButtonType::System)
        return systemAlpha();
    if (m_images.contains(state()))
        return 1;
    const bool pales
        = (isHighlighted() && adjustsImageWhenHighlighted()) || (!isEnabled() && adjustsImageWhenDisabled());
    return pales ? paleImageAlpha : 1;
}

void UIButton::updateImage()
{
    if (m_images.empty() && !m_imageView)
        return;
    ensureImageView().setImage(valueForState(m_images, state()));
    m_imageView->setAlpha(imageAlpha());
}

void UIButton::updateBackground()
{
    if (m_backgroundImages.empty() && !m_backgroundView)
        return;
    if (!m_backgroundView) {
        m_backgroundView = make<UIImageView>();
        insertSubview(m_backgroundView, 0);
    }
    m_backgroundView->setImage(valueForState(m_backgroundImages, state()));
}

void UIButton::updateTitle()
{
    if (m_titles.empty() && !m_titleLabel)
        return;
    titleLabel()->setText(titleForState(state()));
    m_titleLabel->setTextColor(titleColorForState(state()));
    m_titleLabel->setAlpha(systemAlpha());
}

void UIButton::contentDidChange()
{
    setNeedsLayout();
    invalidateIntrinsicContentSize();
}

void UIButton::tintColorDidChange()
{
    UIControl::tintColorDidChange();
    updateTitle();
}

// --- Layout ------------------------------------------------------------------------------------------

CGSize UIButton::imageSize() const
{
    const bool shows = m_imageView && m_imageView->image();
    return shows ? m_imageView->image()->size() : CGSize(0, 0);
}

CGSize UIButton::titleSize() const
{
    return m_titleLabel ? m_titleLabel->intrinsicContentSize() : CGSize(0, 0);
}

CGSize UIButton::intrinsicContentSize() const
{
    const CGSize image = imageSize();
    const CGSize title = titleSize();
    const CGSize content(image.width() + title.width() + m_contentEdgeInsets.left + m_contentEdgeInsets.right,
        std::max(image.height(), title.height()) + m_contentEdgeInsets.top + m_contentEdgeInsets.bottom);
    const auto background = backgroundImageForState(state());
    return background ? content.expandedTo(background->size()) : content;
}

CGSize UIButton::sizeThatFits(const CGSize&) const { return intrinsicContentSize(); }

// Picture and title side by side in the middle of the content; a title that does not fit is cut short.
UIButton::Places UIButton::places() const
{
    const CGRect content = UIEdgeInsetsInsetRect(bounds(), m_contentEdgeInsets);
    const CGSize image = imageSize();
    const CGSize title = titleSize();
    const CGFloat titleWidth = std::min(title.width(), std::max(content.width() - image.width(), 0.0));
    const CGFloat left = content.center().x() - (image.width() + titleWidth) / 2;
    const CGRect imagePlace(left, content.center().y() - image.height() / 2, image.width(), image.height());
    CGRect shifted(CGPoint(), image);
    shifted.moveCenter(UIEdgeInsetsInsetRect(imagePlace, m_imageEdgeInsets).center());
    return { shifted,
        { left + image.width(), content.center().y() - title.height() / 2, titleWidth, title.height() } };
}

void UIButton::layoutSubviews()
{
    UIControl::layoutSubviews();
    const Places at = places();
    if (m_backgroundView)
        m_backgroundView->setFrame(bounds());
    if (m_imageView)
        m_imageView->setFrame(at.image);
    if (m_titleLabel)
        m_titleLabel->setFrame(at.title);
}

CGFloat UIButton::firstBaseline() const
{
    if (!m_titleLabel)
        return UIControl::firstBaseline();
    return places().title.top() + m_titleLabel->font()->ascender();
}
