// The part of UIButton that says how large it is and where its parts lie.

#include "platform/controls/UIButton.h"

void UIButton::contentDidChange()
{
    m_laidOutSize = {};
    setNeedsLayout();
    invalidateIntrinsicContentSize();
}

// The label and the image view may be changed by themselves.
void UIButton::tellOfChangesMadeElsewhere()
{
    const CGSize size = intrinsicContentSize();
    const CGSize before = std::exchange(m_laidOutSize, size);
    if (before.isValid() && before != size)
        invalidateIntrinsicContentSize();
}

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
    if (m_type == UIButtonType::DetailDisclosure)
        updateImage(); // the screen may have another density now
    tellOfChangesMadeElsewhere();
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
        return bounds().height();
    return places().title.top() + m_titleLabel->font()->ascender();
}

// The title stands in the middle of what the content's insets leave.
LayoutBaseline UIButton::baselineOfTitle(const LayoutBaseline& inLabel) const
{
    return { inLabel.fraction, inLabel.offset + (m_contentEdgeInsets.top - m_contentEdgeInsets.bottom) / 2 };
}

LayoutBaseline UIButton::firstBaselinePlace() const
{
    return m_titleLabel ? baselineOfTitle(m_titleLabel->firstBaselinePlace())
                        : UIControl::firstBaselinePlace();
}

LayoutBaseline UIButton::lastBaselinePlace() const
{
    return m_titleLabel ? baselineOfTitle(m_titleLabel->lastBaselinePlace()) : UIControl::lastBaselinePlace();
}
