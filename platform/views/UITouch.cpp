#include "platform/views/UITouch.h"

#include "platform/views/DepartedView.h"
#include "platform/views/UIGestureRecognizer.h"
#include "platform/views/UIView.h"

UITouch::UITouch(Key, const std::shared_ptr<UIView>& view, const CGPoint& location, double timestamp)
    : m_view(view)
    , m_location(location)
    , m_previousLocation(location)
    , m_timestamp(timestamp)
{
}

CGPoint UITouch::locationInView(const UIView* view) const
{
    return DepartedView::pointFromWindow(m_location, view);
}

CGPoint UITouch::previousLocationInView(const UIView* view) const
{
    return DepartedView::pointFromWindow(m_previousLocation, view);
}

UIGestureRecognizers UITouch::gestureRecognizers() const
{
    UIGestureRecognizers alive;
    for (const auto& held : m_recognizers)
        if (auto recognizer = held.lock())
            alive.push_back(std::move(recognizer));
    return alive;
}

void UITouch::change(Key, UITouchPhase phase, const CGPoint& location, double timestamp)
{
    m_phase = phase;
    m_previousLocation = std::exchange(m_location, location);
    m_timestamp = timestamp;
}

void UITouch::setGestureRecognizers(Key, const UIGestureRecognizers& recognizers)
{
    m_recognizers.assign(recognizers.begin(), recognizers.end());
}
