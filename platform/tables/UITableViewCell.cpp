#include "platform/tables/UITableViewCell.h"

#include "platform/graphics/UIColor.h"

namespace {

constexpr double backgroundFadeDuration = 0.25; // seconds

} // namespace

void UITableViewCell::init()
{
    UIView::init();
    setClipsToBounds(true);
    setBackgroundColor(UIColor::systemBackgroundColor());
    m_contentView = make<UIView>();
    addSubview(m_contentView);
}

void UITableViewCell::setSelectedBackgroundView(std::shared_ptr<UIView> view)
{
    if (m_selectedBackgroundView)
        m_selectedBackgroundView->removeFromSuperview();
    m_selectedBackgroundView = std::move(view);
    if (!m_selectedBackgroundView)
        return;
    insertSubview(m_selectedBackgroundView, 0);
    m_selectedBackgroundView->setUserInteractionEnabled(false);
    updateBackground(Animated::No);
    setNeedsLayout();
}

void UITableViewCell::setSelected(bool selected, Animated animated)
{
    if (std::exchange(m_selected, selected) != selected)
        updateBackground(animated);
}

void UITableViewCell::setHighlighted(bool highlighted, Animated animated)
{
    if (std::exchange(m_highlighted, highlighted) != highlighted)
        updateBackground(animated);
}

void UITableViewCell::layoutSubviews()
{
    UIView::layoutSubviews();
    const CGRect area(CGPoint(), bounds().size());
    m_contentView->setFrame(area);
    if (m_selectedBackgroundView)
        m_selectedBackgroundView->setFrame(area);
}

void UITableViewCell::updateBackground(Animated animated)
{
    if (!m_selectedBackgroundView)
        return;
    const double alpha = m_selected || m_highlighted ? 1 : 0;
    if (m_selectedBackgroundView->alpha() == alpha)
        return;
    const auto fade = [background = m_selectedBackgroundView, alpha] { background->setAlpha(alpha); };
    if (animated == Animated::Yes)
        animate(backgroundFadeDuration, 0,
            UIViewAnimationOptions::BeginFromCurrentState | UIViewAnimationOptions::AllowUserInteraction,
            fade);
    else
        performWithoutAnimation(fade);
}
