// The part of UIView that keeps the tree: adding, moving and removing subviews, and entering windows.

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/UIAppearance.h"
#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/UIWindow.h"

void UIView::addSubview(const std::shared_ptr<UIView>& view) { insert(view, m_subviews.size()); }

void UIView::insertSubview(const std::shared_ptr<UIView>& view, int index)
{
    insert(view, static_cast<std::size_t>(std::max(index, 0)));
}

void UIView::insertSubviewAbove(const std::shared_ptr<UIView>& view, const UIView& sibling)
{
    const std::size_t index = indexOfSubview(sibling);
    NSParameterAssert(index < m_subviews.size(), "UIView", "sibling is a subview");
    const bool moves = view && indexOfSubview(*view) < index;
    insert(view, moves ? index : index + 1);
}

void UIView::insertSubviewBelow(const std::shared_ptr<UIView>& view, const UIView& sibling)
{
    const std::size_t index = indexOfSubview(sibling);
    NSParameterAssert(index < m_subviews.size(), "UIView", "sibling is a subview");
    const bool moves = view && indexOfSubview(*view) < index;
    insert(view, moves ? index - 1 : index);
}

void UIView::bringSubviewToFront(UIView& view)
{
    const std::size_t index = indexOfSubview(view);
    if (index < m_subviews.size())
        moveSubview(m_subviews[index], m_subviews.size());
}

void UIView::sendSubviewToBack(UIView& view)
{
    const std::size_t index = indexOfSubview(view);
    if (index < m_subviews.size())
        moveSubview(m_subviews[index], 0);
}

void UIView::insert(const std::shared_ptr<UIView>& added, std::size_t index)
{
    if (!added)
        return;
    const std::shared_ptr<UIView> view = added; // the argument may be an entry of a list that changes
    const bool inside = view->containsView(*this);
    NSCAssert(!inside, "UIView", QStringLiteral("A view cannot be added to itself or to a view inside it."));
    if (inside)
        return;
    if (view->m_superview == this)
        return moveSubview(view, index);

    const auto keepAlive = shared_from_this();
    const InheritedTint tintBefore = view->inheritedTint();
    const bool changesWindow = view->m_window != m_window;
    if (changesWindow)
        view->tellWillMoveToWindow(m_window);
    view->willMoveToSuperview(this);
    if (changesWindow)
        view->leaveWindow();
    if (view->m_superview)
        view->m_superview->takeOut(*view);
    if (changesWindow)
        view->m_layer->removeEndingAnimationsOfSubtree();

    index = std::min(index, m_subviews.size());
    const std::size_t sublayerIndex = layerIndex(*view, index);
    m_subviews.insert(m_subviews.begin() + static_cast<std::ptrdiff_t>(index), view);
    view->m_superview = this;
    m_layer->insertSublayer(view->m_layer, sublayerIndex);
    view->layoutRoleDidChange();
    if (view->hasPendingConstraintUpdate())
        view->superviewsNeedUpdateConstraints();
    setNeedsLayout();
    if (changesWindow) {
        view->setWindow(m_window);
        view->tellDidMoveToWindow(m_window);
    }
    view->didMoveToSuperview();
    didAddSubview(*view);
    if (changesWindow) // nobody has seen it in another colour
        performWithoutAnimation([&] { view->tellTintChangeSince(tintBefore); });
    else
        view->tellTintChangeSince(tintBefore);
}

void UIView::moveSubview(const std::shared_ptr<UIView>& moved, std::size_t index)
{
    const std::shared_ptr<UIView> view = moved;
    std::erase(m_subviews, view);
    index = std::min(index, m_subviews.size());
    const std::size_t sublayerIndex = layerIndex(*view, index);
    m_subviews.insert(m_subviews.begin() + static_cast<std::ptrdiff_t>(index), view);
    m_layer->insertSublayer(view->m_layer, sublayerIndex);
}

std::size_t UIView::indexOfSubview(const UIView& view) const
{
    const auto found = std::find_if(
        m_subviews.begin(), m_subviews.end(), [&](const auto& subview) { return subview.get() == &view; });
    return static_cast<std::size_t>(found - m_subviews.begin());
}

// Where the layer of a view goes that is about to stand at the index: right below the layer of the view
// that stands there now. Layers that belong to no subview keep their places.
std::size_t UIView::layerIndex(const UIView& view, std::size_t index) const
{
    const auto& sublayers = m_layer->sublayers();
    const CALayer* above = index < m_subviews.size() ? m_subviews[index]->m_layer.get() : nullptr;
    std::size_t place = 0;
    for (const auto& sublayer : sublayers) {
        if (sublayer.get() == above)
            break;
        if (sublayer != view.m_layer)
            ++place;
    }
    return place;
}

void UIView::removeFromSuperview()
{
    if (!m_superview)
        return;
    const auto keepAlive = strongSelf(this);
    const InheritedTint tintBefore = inheritedTint();
    UIWindow* const windowBefore = m_window;
    if (windowBefore)
        tellWillMoveToWindow(nullptr);
    willMoveToSuperview(nullptr);
    leaveWindow();
    if (!m_superview)
        return; // one of those who were told has done it

    m_superview->takeOut(*this);
    if (windowBefore) {
        m_layer->removeEndingAnimationsOfSubtree();
        setWindow(nullptr);
        tellDidMoveToWindow(nullptr);
    }
    didMoveToSuperview();
    tellTintChangeSince(tintBefore);
}

void UIView::takeOut(UIView& view)
{
    const auto keepAlive = weak_from_this().lock();
    willRemoveSubview(view);
    view.dropOutsideConstraints();
    std::erase_if(m_subviews, [&](const auto& subview) { return subview.get() == &view; });
    view.m_superview = nullptr;
    view.layoutRoleDidChange();
    view.m_layer->removeFromSuperlayer();
    setNeedsLayout();
}

bool UIView::containsView(const UIView& view) const
{
    for (const UIView* ancestor = &view; ancestor; ancestor = ancestor->m_superview)
        if (ancestor == this)
            return true;
    return false;
}

UIView* UIView::viewWithTag(long tag)
{
    if (m_tag == tag)
        return this;
    for (const auto& view : m_subviews)
        if (UIView* const found = view->viewWithTag(tag))
            return found;
    return nullptr;
}

// --- Windows -----------------------------------------------------------------------------------------

void UIView::setWindow(UIWindow* window)
{
    m_window = window;
    if (window)
        m_layer->setContentsScale(UIScreen::mainScreen()->scale());
    for (const auto& view : m_subviews)
        view->setWindow(window);
}

void UIView::tellWillMoveToWindow(UIWindow* window)
{
    const auto keepAlive = shared_from_this();
    const auto owner = m_owner ? m_owner->shared_from_this() : nullptr;
    if (m_owner)
        m_owner->viewWillMoveToWindow(window);
    willMoveToWindow(window);
    const auto subviews = m_subviews;
    for (const auto& view : subviews)
        if (view->m_superview == this)
            view->tellWillMoveToWindow(window);
}

void UIView::tellDidMoveToWindow(UIWindow* window)
{
    const auto keepAlive = shared_from_this();
    const auto owner = m_owner ? m_owner->shared_from_this() : nullptr;
    if (window)
        performWithoutAnimation([this] { UIAppearance::applyTo(*this); });
    didMoveToWindow();
    if (m_owner && m_window == window)
        m_owner->viewDidMoveToWindow();
    const auto subviews = m_subviews;
    for (const auto& view : subviews) {
        if (m_window != window)
            return; // moved on meanwhile, and the subtree has been told of that
        if (view->m_superview == this)
            view->tellDidMoveToWindow(window);
    }
}

void UIView::leaveWindow()
{
    if (!m_window)
        return;
    endEditing(true);
    if (m_window)
        m_window->touches().viewWillLeaveWindow(*this);
}

void UIView::tellSubtree(void (UIView::*message)())
{
    const auto keepAlive = shared_from_this();
    (this->*message)();
    const auto subviews = m_subviews;
    for (const auto& view : subviews)
        if (view->m_superview == this)
            view->tellSubtree(message);
}
