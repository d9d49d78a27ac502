// The part of UIView that touches and editing meet: hit testing, recognisers, the responder chain.

#include "platform/views/UIGestureRecognizer.h"
#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/UIWindow.h"

bool UIView::takesTouches() const
{
    return m_userInteractionEnabled && m_interactionBlocks == 0 && !isHidden() && alpha() >= 0.01;
}

UIView* UIView::hitTest(const CGPoint& point)
{
    if (!takesTouches() || !pointInside(point))
        return nullptr;
    for (auto view = m_subviews.rbegin(); view != m_subviews.rend(); ++view)
        if (UIView* const hit = (*view)->hitTest((*view)->convertPointFromView(point, this)))
            return hit;
    return this;
}

bool UIView::pointInside(const CGPoint& point) const
{
    // The far edges belong to the neighbours.
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
    const auto kept = recognizer.shared_from_this();
    recognizer.abandon({});
    if (recognizer.view() != this)
        return; // its last action has done it
    recognizer.setView({}, nullptr);
    std::erase_if(m_recognizers, [&](const auto& held) { return held.get() == &recognizer; });
}

UIResponder* UIView::nextResponder() const
{
    if (m_owner)
        return m_owner;
    return m_superview;
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
