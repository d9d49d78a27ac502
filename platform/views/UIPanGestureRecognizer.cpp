#include "platform/views/UIPanGestureRecognizer.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/FiniteNumbers.h"
#include "platform/views/DepartedView.h"
#include "platform/views/UIView.h"

namespace {

double lengthOf(const CGPoint& vector) { return std::hypot(vector.x(), vector.y()); }

// A view's transform turns and scales a difference of two places; where the view lies does not change it.
CGPoint vectorIntoView(const CGPoint& vector, const UIView* view)
{
    return DepartedView::pointFromWindow(vector, view) - DepartedView::pointFromWindow({}, view);
}

CGPoint vectorOutOfView(const CGPoint& vector, const UIView* view)
{
    return DepartedView::pointToWindow(vector, view) - DepartedView::pointToWindow({}, view);
}

} // namespace

CGPoint UIPanGestureRecognizer::translationInView(const UIView* view) const
{
    return vectorIntoView(m_moved - m_origin, view);
}

void UIPanGestureRecognizer::setTranslation(const CGPoint& translation, const UIView* view)
{
    NSParameterAssert(isFinite(translation), "UIPanGestureRecognizer", "translation is finite");
    if (!isFinite(translation))
        return;
    m_origin = m_moved - vectorOutOfView(translation, view);
    m_samples.keepLast();
}

CGPoint UIPanGestureRecognizer::velocityInView(const UIView* view) const
{
    return vectorIntoView(m_samples.velocity(), view);
}

void UIPanGestureRecognizer::setMinimumNumberOfTouches(int touches)
{
    NSParameterAssert(touches >= 1, "UIPanGestureRecognizer", "touches >= 1");
    m_minimumTouches = std::max(touches, 1);
}

void UIPanGestureRecognizer::setMaximumNumberOfTouches(int touches)
{
    NSParameterAssert(touches >= 1, "UIPanGestureRecognizer", "touches >= 1");
    m_maximumTouches = std::max(touches, 1);
}

// --- Touches -----------------------------------------------------------------------------------------

void UIPanGestureRecognizer::touchesBegan(const UITouches& began, UIEvent&)
{
    if (numberOfTouches() > m_maximumTouches) {
        if (state() == UIGestureRecognizerState::Possible)
            return setState(UIGestureRecognizerState::Failed);
        ignoreTouch(*began.front());
    }
    m_anchor = centroid();
    if (m_samples.isEmpty())
        m_samples.add(began.front()->timestamp(), m_moved);
}

void UIPanGestureRecognizer::touchesMoved(const UITouches& moved, UIEvent&)
{
    follow(moved.front()->timestamp());
    if (numberOfTouches() < m_minimumTouches)
        return;
    if (state() != UIGestureRecognizerState::Possible)
        return setState(UIGestureRecognizerState::Changed);
    const double distance = lengthOf(m_moved);
    if (distance <= InteractionConstants::panMinimumMovement)
        return;
    m_origin = m_moved * (InteractionConstants::panMinimumMovement / distance);
    setState(UIGestureRecognizerState::Began);
}

void UIPanGestureRecognizer::touchesEnded(const UITouches& ended, UIEvent&)
{
    follow(ended.front()->timestamp());
    if (numberOfTouches() > 1)
        m_anchor = centroidOnScreen();
    else
        setState(state() == UIGestureRecognizerState::Possible ? UIGestureRecognizerState::Failed
                                                               : UIGestureRecognizerState::Ended);
}

void UIPanGestureRecognizer::reset()
{
    m_moved = {};
    m_origin = {};
    m_samples.clear();
}

void UIPanGestureRecognizer::follow(double time)
{
    const CGPoint middle = centroid();
    if (numberOfTouches() >= m_minimumTouches)
        m_moved += middle - m_anchor;
    m_anchor = middle;
    m_samples.add(time, m_moved);
}
