// The part of CALayer that converts coordinates and times to and from those of the layers above.
#include "platform/layers/CALayer.h"

// --- Coordinates -----------------------------------------------------------------------------------------

CGAffineTransform CALayer::transformToRoot() const
{
    const CGAffineTransform own = m_values.transformToSuperlayer();
    return m_superlayer ? own * m_superlayer->transformToRoot() : own;
}

CGPoint CALayer::convertPointToLayer(const CGPoint& point, const CALayer* other) const
{
    if (other == this)
        return point;
    const CGPoint inRoot = transformToRoot().map(point);
    return other ? other->transformToRoot().inverted().map(inRoot) : inRoot;
}

CGPoint CALayer::convertPointFromLayer(const CGPoint& point, const CALayer* other) const
{
    if (other)
        return other->convertPointToLayer(point, this);
    return transformToRoot().inverted().map(point);
}

CGRect CALayer::convertRectToLayer(const CGRect& rect, const CALayer* other) const
{
    if (other == this)
        return rect;
    const CGRect inRoot = transformToRoot().mapRect(rect);
    return other ? other->transformToRoot().inverted().mapRect(inRoot) : inRoot;
}

CGRect CALayer::convertRectFromLayer(const CGRect& rect, const CALayer* other) const
{
    if (other)
        return other->convertRectToLayer(rect, this);
    return transformToRoot().inverted().mapRect(rect);
}

// --- Time ------------------------------------------------------------------------------------------------

CAMoment CALayer::momentAt(double mediaTime) const
{
    const CAMoment media { mediaTime, 1 };
    return m_timing.local(m_superlayer ? m_superlayer->momentAt(mediaTime) : media);
}

double CALayer::convertTimeToMedia(double localTime) const
{
    const double superTime = (localTime - m_timing.timeOffset) / m_timing.speed + m_timing.beginTime;
    return m_superlayer ? m_superlayer->convertTimeToMedia(superTime) : superTime;
}

void CALayer::setBeginTime(double time)
{
    m_timing.beginTime = time;
    timingDidChange();
}

void CALayer::setTimeOffset(double offset)
{
    m_timing.timeOffset = offset;
    timingDidChange();
}

void CALayer::setSpeed(double speed)
{
    m_timing.speed = speed;
    timingDidChange();
}

void CALayer::timingDidChange()
{
    setTree(m_tree, {}); // tells the animations of the whole subtree
    setNeedsFrame();
}
