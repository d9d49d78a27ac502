// The part of UIView that takes part in constraint layout: the passes, and the view as an item.

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/FiniteNumbers.h"
#include "platform/layout/LayoutIsland.h"
#include "platform/layout/UILayoutGuide.h"
#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/UIWindow.h"
#include "platform/views/ViewInsets.h"

namespace {

// An update that asks for another one each time ends after so many rounds.
constexpr int maximumUpdateRounds = 100;

} // namespace

void UIViewOwner::updateViewConstraints() { view()->updateConstraints(); }

// --- The update pass ---------------------------------------------------------------------------------

void UIView::setNeedsUpdateConstraints()
{
    m_needsUpdateConstraints = true;
    superviewsNeedUpdateConstraints();
    setNeedsLayout(); // updates come before a layout
}

void UIView::superviewsNeedUpdateConstraints()
{
    for (UIView* view = m_superview; view && !view->m_subviewsNeedUpdateConstraints; view = view->m_superview)
        view->m_subviewsNeedUpdateConstraints = true;
}

void UIView::updateConstraintsIfNeeded()
{
    if (!hasPendingConstraintUpdate())
        return;
    const KeepAlive keepAlive(*this);
    for (int round = 0; round < maximumUpdateRounds && hasPendingConstraintUpdate(); ++round)
        updateConstraintsOnce();
}

void UIView::updateConstraintsOnce()
{
    const KeepAlive keepAlive(*this);
    if (std::exchange(m_subviewsNeedUpdateConstraints, false)) {
        const auto subviews = m_subviews; // an update may change the tree
        for (const auto& view : subviews)
            if (view->hasPendingConstraintUpdate() && view->m_superview == this)
                view->updateConstraintsOnce();
    }
    if (!std::exchange(m_needsUpdateConstraints, false))
        return;
    if (!UIViewOwner::tell(m_owner, &UIViewOwner::updateViewConstraints))
        updateConstraints();
}

void UIView::updateConstraints() { }

// --- The layout pass ---------------------------------------------------------------------------------

void UIView::setNeedsLayout() { m_layer->setNeedsLayout(); }

void UIView::layoutIfNeeded()
{
    const KeepAlive keepAlive(*this);
    updateConstraintsIfNeeded();
    LayoutIsland::solvePending(); // marks those for layout whose subviews move
    m_layer->layoutIfNeeded();
}

void UIView::layerWillLayoutTree(CALayer&)
{
    updateConstraintsIfNeeded();
    ViewInsets::refreshAll(); // a layer may have been moved without its view
    LayoutIsland::solvePending();
}

// The layer keeps its delegate alive as long as it tells it.
void UIView::layoutSublayersOfLayer(CALayer&)
{
    UIViewOwner::tell(m_owner, &UIViewOwner::viewWillLayoutSubviews);
    updateConstraintsIfNeeded();
    refreshInsets();
    placeSubviews();
    layoutSubviews();
    UIViewOwner::tell(m_owner, &UIViewOwner::viewDidLayoutSubviews);
}

void UIView::placeSubviews()
{
    const LayoutIsland::Placing placing(*this);
    placeGuides();
    for (std::size_t index = 0; index < m_subviews.size(); ++index) {
        const auto view = m_subviews[index]; // a new frame may change the tree
        placeItem(*view);
    }
}

// --- The view as an item -----------------------------------------------------------------------------

CGRect UIView::layoutFrame() const
{
    const CGSize size = m_layer->bounds().size();
    const CGPoint anchor = m_layer->anchorPoint();
    const CGPoint position = m_layer->position();
    return { { position.x() - anchor.x() * size.width(), position.y() - anchor.y() * size.height() }, size };
}

void UIView::setLayoutFrame(const CGRect& frame)
{
    const CGPoint anchor = m_layer->anchorPoint();
    setBounds({ bounds().topLeft(), frame.size() });
    setCenter({ frame.x() + anchor.x() * frame.width(), frame.y() + anchor.y() * frame.height() });
}

void UIView::visitSubcontainers(const std::function<void(LayoutContainer&)>& visit) const
{
    for (const auto& view : m_subviews)
        visit(*view);
}

LayoutItem& UIView::layoutMarginsItem() { return layoutMarginsGuide(); }

// --- Insets ------------------------------------------------------------------------------------------

UIEdgeInsets UIView::safeAreaInsets() const { return ViewInsets::safeAreaOf(*this); }

UIEdgeInsets UIView::layoutMargins() const { return ViewInsets::marginsOf(*this, m_layoutMargins); }

void UIView::setLayoutMargins(const UIEdgeInsets& margins)
{
    NSParameterAssert(isFinite(margins), "UIView", "isfinite(margins)");
    if (!isFinite(margins) || m_layoutMargins == margins)
        return;
    m_layoutMargins = margins;
    refreshInsets();
    layoutMarginsDidChange();
}

void UIView::setPreservesSuperviewLayoutMargins(bool preserves)
{
    m_preservesSuperviewLayoutMargins = preserves;
    refreshInsets();
}

UILayoutGuide& UIView::safeAreaLayoutGuide() { return insets().safeAreaGuide(); }

UILayoutGuide& UIView::layoutMarginsGuide() { return insets().marginsGuide(); }

ViewInsets& UIView::insets()
{
    if (!m_insets)
        m_insets = std::make_unique<ViewInsets>(*this);
    return *m_insets;
}

void UIView::refreshInsets()
{
    if (m_insets)
        m_insets->refresh();
}
