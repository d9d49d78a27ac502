#include "platform/views/UIPanGestureRecognizer.h"

#include "platform/views/InteractionConstants.h"
#include "platform/views/UITouch.h"
#include "platform/views/UIView.h"

namespace {

double lengthOf(const CGPoint& vector) { return std::hypot(vector.x(), vector.y()); }

// Differences are not moved by where a view lies, only turned and scaled by how it does.
CGPoint vectorIntoView(const CGPoint& vector, const UIView* view)
{
    if (!view)
        return vector;
    return view->convertPointFromView(vector, nullptr) - view->convertPointFromView({}, nullptr);
}

CGPoint vectorOutOfView(const CGPoint& vector, const UIView* view)
{
    if (!view)
        return vector;
    return view->convertPointToView(vector, nullptr) - view->convertPointToView({}, nullptr);
}

} // namespace

CGPoint UIPanGestureRecognizer::translationInView(const UIView* view) const
{
    return vectorIntoView(m_moved - m_origin, view);
}

void UIPanGestureRecognizer::setTranslation(const CGPoint& translation, const UIView* view)
{
    m_origin = m_moved - vectorOutOfView(translation, view);
    if (m_samples.size() > 1)
        m_samples.erase(m_samples.begin(), m_samples.end() - 1);
}

CGPoint UIPanGestureRecognizer::velocityInView(const UIView* view) const
{
    if (m_samples.empty())
        return {};
    const Sample& first = m_samples.front();
    const Sample& last = m_samples.back();
    const double duration = last.time - first.time;
    if (!(duration > 0))
        return {};
    return vectorIntoView((last.position - first.position) / duration, view);
}

void UIPanGestureRecognizer::touchesBegan(const UITouches& began, UIEvent&)
{
    m_anchor = centroid();
    if (m_samples.empty())
        m_samples.push_back({ began.front()->timestamp(), m_moved });
}

void UIPanGestureRecognizer::touchesMoved(const UITouches& moved, UIEvent&)
{
    follow(moved.front()->timestamp());
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
    m_moved += middle - m_anchor;
    m_anchor = middle;
    std::erase_if(m_samples,
        [time](const Sample& sample) { return sample.time < time - InteractionConstants::velocityWindow; });
    m_samples.push_back({ time, m_moved });
}
