// The part of UIView that keeps the tree: adding, moving and removing subviews, and entering windows.

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/DepartedView.h"
#include "platform/views/MoveUnderWay.h"
#include "platform/views/UIAppearance.h"
#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/UIWindow.h"
#include "platform/views/ViewInsets.h"

// A change of the tree goes this way: all are told of what will happen; everything is changed, and nobody is
// told of it yet; all are told of what has happened. Whoever is told may change the tree again. That change
// is carried through at once, whole, and the one before it ends there if the view is not where it was; of the
// views that both concern, each is told once.

namespace {

unsigned treeChanges = 0; // counted

} // namespace

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
    if (m_window && m_window->isGoing())
        return;

    const KeepAlive keepAlive(*this);
    const KeepAlive windowAlive(m_window);
    const MoveUnderWay move;
    if (!view->tellWillMove(this, m_window))
        return; // one of those who were told has put it elsewhere
    if (view->containsView(*this))
        return view->tellDidMoveToWindow(
            Untold::MovesAndIntentions); // or has put this view into it, and it stays where it is
    UIWindow* const windowBefore = view->m_window;
    const bool changesWindow = windowBefore != m_window;
    const auto departed = view->departingTo(m_window);
    view->leaveSuperview();
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
    view->tellDidMove(windowBefore);
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
    const KeepAlive keepAlive(*this);
    const MoveUnderWay move;
    if (!tellWillMove(nullptr, nullptr))
        return; // one of those who were told has done it, or put it elsewhere
    UIWindow* const windowBefore = m_window;
    const auto departed = departingTo(nullptr);
    leaveSuperview();
    if (windowBefore)
        m_layer->removeEndingAnimationsOfSubtree();
    tellDidMove(windowBefore);
}

// Where the view stands now, where somebody will be told of a finger on it after it has gone.
std::unique_ptr<DepartedView> UIView::departingTo(const UIWindow* window)
{
    const bool followsTouches = m_window && m_window != window && m_window->touches().isFollowingTouches();
    return followsTouches ? std::make_unique<DepartedView>(*this) : nullptr;
}

// Out of the tree; nobody is told.
void UIView::leaveSuperview()
{
    ++m_moves;
    ++treeChanges;
    if (!m_superview)
        return;
    dropOutsideConstraints(); // while the views around it are still there
    UIView* const superview = std::exchange(m_superview, nullptr);
    std::erase_if(superview->m_subviews, [this](const auto& subview) { return subview.get() == this; });
    layoutRoleDidChange();
    m_layer->removeFromSuperlayer();
    superview->setNeedsLayout();
}

// Tells of a move before it. Answers whether the view is still where it was.
bool UIView::tellWillMove(UIView* superview, UIWindow* window)
{
    const unsigned moves = m_moves;
    if (m_windowTold != m_window)
        tellDidMoveToWindow(
            Untold::Moves); // of the move before, whose messages have not come to this view yet
    if (window != m_window && m_moves == moves)
        tellAllWillMoveToWindow(window);
    if (m_moves == moves)
        willMoveToSuperview(superview);
    if (window != m_window && m_window && m_moves == moves)
        endEditing(true);
    if (m_superview && m_moves == moves) {
        const KeepAlive superviewAlive(*m_superview);
        m_superview->willRemoveSubview(*this);
    }
    return m_moves == moves;
}

// Tells of a move when all of it has been done, so that those who are told find a tree that is whole and may
// change it. A message that a further move has overtaken is not sent: of the further move all have been told.
void UIView::tellDidMove(UIWindow* windowBefore)
{
    const unsigned moves = ++m_moves;
    const KeepAlive windowBeforeAlive(windowBefore);
    const KeepAlive superviewAlive(m_superview);
    UIWindow* const window = m_superview ? m_superview->m_window : nullptr;
    if (window != windowBefore) {
        setWindow(window);
        if (windowBefore) {
            windowBefore->forgetFirstResponderIn(*this);
            windowBefore->touches().cancelTouchesIn(*this);
        }
    } else {
        touchabilityDidChange(); // it may have come into a view that is hidden
    }
    const bool isUntold = window != windowBefore || m_windowToCome || !MoveUnderWay::isTheOnlyOne();
    if (m_moves == moves && isUntold)
        tellDidMoveToWindow(Untold::MovesAndIntentions);
    if (m_moves == moves)
        didMoveToSuperview();
    if (m_moves == moves && m_superview)
        m_superview->didAddSubview(*this);
    const auto reach
        = MoveUnderWay::isTheOnlyOne() ? ViewTint::Reach::WhereItChanged : ViewTint::Reach::Everybody;
    if (m_superview && window != windowBefore) // nobody has seen it in another colour
        performWithoutAnimation([&] { m_tint.tellChanges(reach); });
    else
        m_tint.tellChanges(reach);
    if (m_moves == moves)
        ViewInsets::refreshInside(*this);
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
    if (window && m_owner)
        m_layer->setNeedsLayout(); // a controller takes the first layout in the window for the appearance
    for (const auto& view : m_subviews)
        view->setWindow(window);
}

// Again where somebody who was told has changed the tree: a view may have come in where all had been told.
void UIView::tellAllWillMoveToWindow(UIWindow* window)
{
    const unsigned moves = m_moves;
    unsigned changes = 0;
    do {
        changes = treeChanges;
        tellWillMoveToWindow(window, *this, moves);
    } while (changes != treeChanges && m_moves == moves && m_window != window);
}

// Superviews before subviews, each that is still in the root, as long as the root is where it was: views
// around it may have gone to the same window.
void UIView::tellWillMoveToWindow(UIWindow* window, const UIView& root, unsigned rootMoves)
{
    const KeepAlive keepAlive(*this);
    const auto isOver
        = [&] { return root.m_moves != rootMoves || root.m_window == window || !root.containsView(*this); };
    if (!m_windowToCome || *m_windowToCome != window) {
        m_windowToCome = window;
        UIViewOwner::tell(m_owner, &UIViewOwner::viewWillMoveToWindow, window);
        if (isOver())
            return;
        willMoveToWindow(window);
    }
    const auto subviews = m_subviews;
    for (const auto& view : subviews) {
        if (isOver())
            return;
        if (view->m_superview == this)
            view->tellWillMoveToWindow(window, root, rootMoves);
    }
}

// Tells those of the subtree, superviews before subviews, who have not been told in which window they are
// now; if wanted also those who have been told that they will move and stand where they stood. What comes
// into the subtree meanwhile, or leaves it, is told by that move.
void UIView::tellDidMoveToWindow(Untold untold)
{
    const KeepAlive keepAlive(*this);
    if (m_windowTold != m_window || (m_windowToCome && untold == Untold::MovesAndIntentions)) {
        UIWindow* const window = m_window;
        m_windowTold = window;
        m_windowToCome.reset();
        if (window)
            performWithoutAnimation([this] { UIAppearance::applyTo(*this); });
        didMoveToWindow();
        if (m_window == window)
            UIViewOwner::tell(m_owner, &UIViewOwner::viewDidMoveToWindow);
    }
    const auto subviews = m_subviews;
    for (const auto& view : subviews)
        if (view->m_superview == this)
            view->tellDidMoveToWindow(untold);
}

void UIView::tellSubtree(void (UIView::*message)())
{
    const KeepAlive keepAlive(*this);
    (this->*message)();
    const auto subviews = m_subviews;
    for (const auto& view : subviews)
        if (view->m_superview == this)
            view->tellSubtree(message);
}
