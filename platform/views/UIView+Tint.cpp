// The part of UIView that hands the tint down the tree.

#include "platform/foundation/Messages.h"
#include "platform/graphics/DimmedColor.h"
#include "platform/layers/CAModelChanges.h"
#include "platform/views/TintMotion.h"
#include "platform/views/UIView.h"

std::shared_ptr<UIColor> UIView::undimmedTintColor() const
{
    for (const UIView* view = this; view; view = view->m_superview)
        if (view->m_tintColor)
            return view->m_tintColor;
    return UIColor::systemBlueColor();
}

std::shared_ptr<UIColor> UIView::tintColor() const
{
    const auto color = undimmedTintColor();
    if (tintAdjustmentMode() != UIViewTintAdjustmentMode::Dimmed)
        return color;
    const auto dimmed = dimmedColor(*color);
    return dimmed ? dimmed : color;
}

UIViewTintAdjustmentMode UIView::tintAdjustmentMode() const
{
    for (const UIView* view = this; view; view = view->m_superview)
        if (view->m_tintAdjustmentMode != UIViewTintAdjustmentMode::Automatic)
            return view->m_tintAdjustmentMode;
    return UIViewTintAdjustmentMode::Normal;
}

void UIView::setTintColor(std::shared_ptr<UIColor> color)
{
    m_appearanceNotes.noteSetting(&UIView::setTintColor);
    const auto before = undimmedTintColor();
    const auto ownBefore = std::exchange(m_tintColor, std::move(color));
    if (CAModelChanges* const changes = CAModelChanges::recording())
        changes->note([weakView = weakSelf(this), ownBefore, now = m_tintColor] {
            const auto view = weakView.lock();
            if (view && view->m_tintColor == now)
                view->setTintColor(ownBefore);
        });
    if (!undimmedTintColor()->isEqual(before.get()))
        tellTintChange({ .color = true });
}

void UIView::setTintAdjustmentMode(UIViewTintAdjustmentMode mode)
{
    const auto before = tintAdjustmentMode();
    const auto ownBefore = std::exchange(m_tintAdjustmentMode, mode);
    if (CAModelChanges* const changes = CAModelChanges::recording())
        changes->note([weakView = weakSelf(this), ownBefore, mode] {
            const auto view = weakView.lock();
            if (view && view->m_tintAdjustmentMode == mode)
                view->setTintAdjustmentMode(ownBefore);
        });
    if (tintAdjustmentMode() != before)
        tellTintChange({ .mode = true });
}

UIView::InheritedTint UIView::inheritedTint() const
{
    if (m_superview)
        return { m_superview->undimmedTintColor(), m_superview->tintAdjustmentMode() };
    return { UIColor::systemBlueColor(), UIViewTintAdjustmentMode::Normal };
}

void UIView::tellTintChangeSince(const InheritedTint& before)
{
    const InheritedTint now = inheritedTint();
    tellInheritedTintChange(
        { .color = !now.color->isEqual(before.color.get()), .mode = now.mode != before.mode });
}

void UIView::tellInheritedTintChange(TintChange inherited)
{
    const KeepAlive keepAlive(*this);
    const TintChange own {
        .color = inherited.color && !m_tintColor,
        .mode = inherited.mode && m_tintAdjustmentMode == UIViewTintAdjustmentMode::Automatic,
    };
    if (own.color || own.mode)
        tellTintChange(own);
    else if (followsInheritedTint() && (inherited.color || inherited.mode))
        tellOwnTintChange(); // the tint itself stays, so the subviews have nothing to be told
}

void UIView::tellOwnTintChange()
{
    const TintMotion motion;
    tintColorDidChange();
}

void UIView::tellTintChange(TintChange own)
{
    const KeepAlive keepAlive(*this);
    tellOwnTintChange();
    const auto subviews = m_subviews;
    for (const auto& view : subviews)
        if (view->m_superview == this)
            view->tellInheritedTintChange(own);
}
