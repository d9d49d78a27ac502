#include "platform/controls/UIToolbar.h"

#include "platform/controls/UIBarButtonItemLayout.h"

namespace {

constexpr double translucentAlpha = 0.92;

} // namespace

void UIToolbar::init()
{
    UIView::init();
    m_background = make<UIView>();
    m_background->setUserInteractionEnabled(false);
    addSubview(m_background);
    growToStandardHeight();
    updateBackground();
}

void UIToolbar::growToStandardHeight()
{
    if (!(bounds().height() > 0))
        setFrame({ frame().topLeft(), CGSize(bounds().width(), standardHeight) });
}

void UIToolbar::setItems(UIBarButtonItems items)
{
    m_items = std::move(items);
    UIBarButtonItemLayout::show(*this, m_shownItems, m_items);
}

void UIToolbar::setTranslucent(bool translucent)
{
    m_translucent = translucent;
    updateBackground();
}

void UIToolbar::setBarTintColor(std::shared_ptr<UIColor> color)
{
    appearanceNotes().noteSetting(&UIToolbar::setBarTintColor);
    m_barTintColor = std::move(color);
    updateBackground();
}

void UIToolbar::updateBackground()
{
    const auto color = m_barTintColor ? m_barTintColor : UIColor::systemBackgroundColor();
    m_background->setBackgroundColor(
        m_translucent ? color->colorWithAlphaComponent(translucentAlpha) : color);
}

void UIToolbar::layoutSubviews()
{
    UIView::layoutSubviews();
    growToStandardHeight();
    m_background->setFrame(bounds());
    constexpr double margin = UIBarButtonItemLayout::sideMargin;
    UIBarButtonItemLayout::place(m_shownItems, bounds().adjusted(margin, 0, -margin, 0));
}
