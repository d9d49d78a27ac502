// The part of UIView for touches and editing: hit testing, recognisers, the responder chain.

#include "platform/foundation/Messages.h"
#include "platform/views/DepartedView.h"
#include "platform/views/FarEdges.h"
#include "platform/views/UIGestureRecognizer.h"
#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/UIWindow.h"

namespace {

// What is fainter than this is not seen, and so not touched.
constexpr double faintestTouchableAlpha = 0.01;

} // namespace

void UIView::setUserInteractionEnabled(bool enabled)
{
    m_userInteractionEnabled = enabled;
    touchabilityDidChange();
}

bool UIView::letsItselfBeTouched() const
{
    return m_userInteractionEnabled && !isHidden() && alpha() >= faintestTouchableAlpha;
}

bool UIView::isTouchable() const
{
    const UIView* view = this;
    while (view && view->letsItselfBeTouched())
        view = view->m_superview;
    return !view;
}

void UIView::touchabilityDidChange()
{
    if (m_window && m_window->touches().isFollowingTouches() && !isTouchable())
        m_window->touches().cancelTouchesIn(*this);
}

UIView* UIView::hitTest(const CGPoint& point)
{
    // A disabled control is hit: it takes nothing, and nothing goes through it either.
    if (!UIView::letsItselfBeTouched() || m_interactionBlocks > 0 || !pointInside(point))
        return nullptr;
    for (auto view = m_subviews.rbegin(); view != m_subviews.rend(); ++view)
        if (UIView* const hit = (*view)->hitTest((*view)->convertPointFromView(point, this)))
            return hit;
    // A far edge belongs to the neighbour; where there is none, to the view itself.
    for (auto view = m_subviews.rbegin(); view != m_subviews.rend(); ++view) {
        const CGPoint place = (*view)->convertPointFromView(point, this);
        const CGPoint inside = pulledOffFarEdges((*view)->bounds(), place);
        const bool liesOnOne = inside.x() < place.x() || inside.y() < place.y();
        if (UIView* const hit = liesOnOne ? (*view)->hitTest(inside) : nullptr)
            return hit;
    }
    return this;
}

bool UIView::pointInside(const CGPoint& point) const
{
    // The far edges belong to the neighbours; hitTest() knows whether there are any.
    const CGRect rect = bounds();
    return point.x() >= rect.left() && point.x() < rect.right() && point.y() >= rect.top()
        && point.y() < rect.bottom();
}

void UIView::addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer)
{
    if (!recognizer || recognizer->view() == this)
        return;
    const auto kept = recognizer;
    if (kept->view())
        kept->view()->removeGestureRecognizer(*kept);
    m_recognizers.push_back(kept);
    kept->setView({}, this);
}

void UIView::removeGestureRecognizer(UIGestureRecognizer& recognizer)
{
    if (recognizer.view() != this)
        return;
    const KeepAlive keepAlive(recognizer);
    recognizer.withdraw({});
    if (recognizer.view() != this)
        return; // its last action has done it
    recognizer.setView({}, nullptr);
    std::erase_if(m_recognizers, [&](const auto& held) { return held.get() == &recognizer; });
}

UIResponder* UIView::nextResponder() const
{
    if (m_owner)
        return m_owner;
    return DepartedView::superviewOf(*this);
}

bool UIView::endEditing(bool force)
{
    const auto responder = m_window ? m_window->firstResponder() : nullptr;
    const auto* view = dynamic_cast<const UIView*>(responder.get());
    if (!view || !containsView(*view))
        return true;
    if (responder->resignFirstResponder())
        return true;
    if (force && m_window)
        m_window->setFirstResponder(nullptr);
    return force;
}
