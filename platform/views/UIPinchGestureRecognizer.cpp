#include "platform/views/UIPinchGestureRecognizer.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

namespace {

// In points. Two fingers are not nearer to each other than this, and no scale is divided by less.
constexpr double smallestDistance = 1;

bool isUsableScale(double scale) { return std::isfinite(scale) && scale > 0; }

} // namespace

void UIPinchGestureRecognizer::setScale(double scale)
{
    NSParameterAssert(isUsableScale(scale), "UIPinchGestureRecognizer", "scale is finite and > 0");
    if (!isUsableScale(scale))
        return;
    m_scale = scale;
    m_samples.clear();
}

double UIPinchGestureRecognizer::distance() const
{
    const QLineF between(touches()[0]->locationInView(nullptr), touches()[1]->locationInView(nullptr));
    return std::max(between.length(), smallestDistance);
}

void UIPinchGestureRecognizer::follow(double distance)
{
    const double scale = m_scale * distance / m_distance;
    if (isUsableScale(scale))
        m_scale = scale;
    m_distance = distance;
}

void UIPinchGestureRecognizer::touchesBegan(const UITouches& began, UIEvent&)
{
    if (numberOfTouches() > 2)
        return ignoreTouch(*began.front());
    if (numberOfTouches() < 2)
        return;
    m_distance = distance();
    m_samples.clear();
    m_samples.add(began.front()->timestamp(), m_scale);
}

void UIPinchGestureRecognizer::touchesMoved(const UITouches& moved, UIEvent&)
{
    if (numberOfTouches() < 2)
        return;
    const double now = distance();
    const bool begins = state() == UIGestureRecognizerState::Possible;
    if (begins) {
        const double opened = now - m_distance;
        if (std::abs(opened) <= InteractionConstants::pinchMinimumMovement)
            return;
        m_scale = 1;
        m_distance = std::max(
            m_distance + std::copysign(InteractionConstants::pinchMinimumMovement, opened), smallestDistance);
    }
    follow(now);
    m_samples.add(moved.front()->timestamp(), m_scale);
    setState(begins ? UIGestureRecognizerState::Began : UIGestureRecognizerState::Changed);
}

void UIPinchGestureRecognizer::touchesEnded(const UITouches& ended, UIEvent&)
{
    m_samples.add(ended.front()->timestamp(), m_scale);
    if (numberOfTouches() > 1)
        return;
    setState(state() == UIGestureRecognizerState::Possible ? UIGestureRecognizerState::Failed
                                                           : UIGestureRecognizerState::Ended);
}

void UIPinchGestureRecognizer::reset()
{
    m_scale = 1;
    m_distance = 0;
    m_samples.clear();
}
