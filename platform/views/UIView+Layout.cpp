// The part of UIView that takes part in constraint layout: the passes, and the view as an item.

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layout/LayoutIsland.h"
#include "platform/layout/UILayoutGuide.h"
#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/UIWindow.h"

namespace {

// Updates that have not come to rest after so many rounds never will.
constexpr int maximumUpdateRounds = 100;

UIEdgeInsets widestOf(const UIEdgeInsets& first, const UIEdgeInsets& second)
{
    return { std::max(first.top, second.top), std::max(first.left, second.left),
        std::max(first.bottom, second.bottom), std::max(first.right, second.right) };
}

// Views with guides for their insets, which change wherever one of their superviews goes.
std::vector<std::weak_ptr<UIView>>& viewsWithInsetGuides()
{
    static std::vector<std::weak_ptr<UIView>> views;
    return views;
}

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
    const auto keepAlive = shared_from_this();
    for (int round = 0; round < maximumUpdateRounds && hasPendingConstraintUpdate(); ++round)
        updateConstraintsOnce();
}

void UIView::updateConstraintsOnce()
{
    const auto keepAlive = shared_from_this();
    if (std::exchange(m_subviewsNeedUpdateConstraints, false)) {
        const auto subviews = m_subviews; // an update may change the tree
        for (const auto& view : subviews)
            if (view->hasPendingConstraintUpdate() && view->m_superview == this)
                view->updateConstraintsOnce();
    }
    if (!std::exchange(m_needsUpdateConstraints, false))
        return;
    if (m_owner) {
        const auto owner = m_owner->shared_from_this();
        m_owner->updateViewConstraints();
    } else
        updateConstraints();
}

void UIView::updateConstraints() { }

// --- The layout pass ---------------------------------------------------------------------------------

void UIView::setNeedsLayout() { m_layer->setNeedsLayout(); }

void UIView::layoutIfNeeded()
{
    const auto keepAlive = shared_from_this();
    updateConstraintsIfNeeded();
    LayoutIsland::solvePending(); // marks those for layout whose subviews move
    m_layer->layoutIfNeeded();
}

void UIView::layerWillLayoutTree(CALayer&)
{
    updateConstraintsIfNeeded();
    const auto watched = viewsWithInsetGuides();
    for (const auto& view : watched)
        if (const auto living = view.lock())
            living->refreshInsetGuides();
    LayoutIsland::solvePending();
}

void UIView::layoutSublayersOfLayer(CALayer&)
{
    const auto keepAlive = shared_from_this();
    const auto owner = m_owner ? m_owner->shared_from_this() : nullptr;
    if (m_owner)
        m_owner->viewWillLayoutSubviews();
    updateConstraintsIfNeeded();
    refreshInsetGuides();
    placeSubviews();
    layoutSubviews();
    if (m_owner)
        m_owner->viewDidLayoutSubviews();
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

// How far the superview's insets reach into this view; negative where they end before it.
UIEdgeInsets UIView::insetsFromSuperview(const UIEdgeInsets& outer) const
{
    const CGRect around = m_superview->bounds();
    const CGRect own = frame();
    return { outer.top - (own.top() - around.top()), outer.left - (own.left() - around.left()),
        outer.bottom - (around.bottom() - own.bottom()), outer.right - (around.right() - own.right()) };
}

UIEdgeInsets UIView::safeAreaInsets() const
{
    if (!m_window)
        return {};
    if (m_window == this)
        return UIScreen::mainScreen()->safeAreaInsets();
    return widestOf(insetsFromSuperview(m_superview->safeAreaInsets()), {});
}

UIEdgeInsets UIView::layoutMargins() const
{
    UIEdgeInsets margins = m_layoutMargins;
    if (m_preservesSuperviewLayoutMargins && m_superview)
        margins = widestOf(margins, insetsFromSuperview(m_superview->layoutMargins()));
    const UIEdgeInsets safe = safeAreaInsets();
    return { margins.top + safe.top, margins.left + safe.left, margins.bottom + safe.bottom,
        margins.right + safe.right };
}

void UIView::setLayoutMargins(const UIEdgeInsets& margins)
{
    const bool finite = std::isfinite(margins.top) && std::isfinite(margins.left)
        && std::isfinite(margins.bottom) && std::isfinite(margins.right);
    NSParameterAssert(finite, "UIView", "isfinite(margins)");
    if (!finite || m_layoutMargins == margins)
        return;
    m_layoutMargins = margins;
    refreshInsetGuides();
    layoutMarginsDidChange();
}

void UIView::setPreservesSuperviewLayoutMargins(bool preserves)
{
    m_preservesSuperviewLayoutMargins = preserves;
    refreshInsetGuides();
}

UILayoutGuide& UIView::safeAreaLayoutGuide()
{
    if (!m_safeAreaGuide) {
        m_safeAreaGuide = make<UILayoutGuide>(safeAreaInsets());
        m_safeAreaGuide->setIdentifier(QStringLiteral("safeAreaLayoutGuide"));
        addLayoutGuide(m_safeAreaGuide);
        watchInsets();
    }
    return *m_safeAreaGuide;
}

UILayoutGuide& UIView::layoutMarginsGuide()
{
    if (!m_layoutMarginsGuide) {
        m_layoutMarginsGuide = make<UILayoutGuide>(layoutMargins());
        m_layoutMarginsGuide->setIdentifier(QStringLiteral("layoutMarginsGuide"));
        addLayoutGuide(m_layoutMarginsGuide);
        watchInsets();
    }
    return *m_layoutMarginsGuide;
}

void UIView::watchInsets()
{
    auto& views = viewsWithInsetGuides();
    std::erase_if(views, [this](const auto& view) { return view.expired() || view.lock().get() == this; });
    views.push_back(weakSelf(this));
}

void UIView::refreshInsetGuides()
{
    if (m_safeAreaGuide)
        m_safeAreaGuide->setInsets(safeAreaInsets());
    if (m_layoutMarginsGuide)
        m_layoutMarginsGuide->setInsets(layoutMargins());
}
