#include "platform/layers/CAShapeLayer.h"

#include "platform/graphics/UIColor.h"

#include <algorithm>

namespace {

Qt::PenCapStyle penCap(CALineCap cap)
{
    switch (cap) {
    case kCALineCapRound:
        return Qt::RoundCap;
    case kCALineCapSquare:
        return Qt::SquareCap;
    case kCALineCapButt:
        break;
    }
    return Qt::FlatCap;
}

QColor visibleColor(const std::shared_ptr<UIColor>& color)
{
    const QColor resolved = color ? color->qColor() : QColor();
    return resolved.isValid() && resolved.alpha() > 0 ? resolved : QColor();
}

double fraction(double value) { return value > 0 ? std::min(value, 1.0) : 0; }

} // namespace

std::shared_ptr<CAShapeLayer> CAShapeLayer::layer() { return make<CAShapeLayer>(); }

CAShapeLayer::CAShapeLayer() { setFillColor(UIColor::blackColor()); }

void CAShapeLayer::setPath(const CGPathRef& path) { change(CAProperty::Path, &CALayerValues::path, path); }

void CAShapeLayer::setPath(const std::shared_ptr<UIBezierPath>& path)
{
    setPath(path ? path->cgPath() : CGPathRef());
}

void CAShapeLayer::setStrokeColor(const std::shared_ptr<UIColor>& color)
{
    change(CAProperty::StrokeColor, &CALayerValues::strokeColor, color);
}

void CAShapeLayer::setFillColor(const std::shared_ptr<UIColor>& color)
{
    change(CAProperty::FillColor, &CALayerValues::fillColor, color);
}

void CAShapeLayer::setLineWidth(double width)
{
    change(CAProperty::LineWidth, &CALayerValues::lineWidth, width);
}

void CAShapeLayer::setStrokeStart(double start)
{
    change(CAProperty::StrokeStart, &CALayerValues::strokeStart, start);
}

void CAShapeLayer::setStrokeEnd(double end) { change(CAProperty::StrokeEnd, &CALayerValues::strokeEnd, end); }

void CAShapeLayer::setLineCap(CALineCap cap)
{
    if (std::exchange(m_lineCap, cap) != cap)
        setNeedsFrame();
}

FrameContent CAShapeLayer::frameContent(const CALayerValues& shown) const
{
    if (!shown.path || shown.path->isEmpty())
        return CALayer::frameContent(shown);
    FrameShape shape;
    shape.path = shown.path;
    shape.fillColor = visibleColor(shown.fillColor);
    shape.strokeStart = fraction(shown.strokeStart);
    shape.strokeEnd = fraction(shown.strokeEnd);
    shape.lineWidth = shown.lineWidth;
    shape.lineCap = penCap(m_lineCap);
    if (shown.lineWidth > 0 && shape.strokeEnd > shape.strokeStart)
        shape.strokeColor = visibleColor(shown.strokeColor);
    if (!shape.fillColor.isValid() && !shape.strokeColor.isValid())
        return {};
    return shape;
}
