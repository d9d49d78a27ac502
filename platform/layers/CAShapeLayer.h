// A layer that draws a path, filled and stroked.
//
// The stroke runs from strokeStart to strokeEnd, fractions of the path's length; values outside 0..1 are
// kept and drawn as the nearer end. All but the cap can be animated; a change of the path has no action of
// its own. The path is not tied to the bounds.
#pragma once

#include "platform/graphics/UIBezierPath.h"
#include "platform/layers/CALayer.h"

enum class CALineCap { Butt, Round, Square };
inline constexpr CALineCap kCALineCapButt = CALineCap::Butt;
inline constexpr CALineCap kCALineCapRound = CALineCap::Round;
inline constexpr CALineCap kCALineCapSquare = CALineCap::Square;

class CAShapeLayer : public CALayer {
public:
    static std::shared_ptr<CAShapeLayer> layer();

    // In the layer's coordinates; nil draws nothing. What is built onto a UIBezierPath later changes nothing.
    const CGPathRef& path() const { return modelValues().path; }
    void setPath(const CGPathRef& path);
    void setPath(const std::shared_ptr<UIBezierPath>& path);

    const std::shared_ptr<UIColor>& strokeColor() const { return modelValues().strokeColor; }
    void setStrokeColor(const std::shared_ptr<UIColor>&); // nil, the default: no stroke
    const std::shared_ptr<UIColor>& fillColor() const { return modelValues().fillColor; }
    void setFillColor(const std::shared_ptr<UIColor>&); // nil: no fill; black by default
    double lineWidth() const { return modelValues().lineWidth; }
    void setLineWidth(double);
    double strokeStart() const { return modelValues().strokeStart; }
    void setStrokeStart(double);
    double strokeEnd() const { return modelValues().strokeEnd; }
    void setStrokeEnd(double);
    CALineCap lineCap() const { return m_lineCap; }
    void setLineCap(CALineCap);

    FrameContent frameContent(const CALayerValues& shown) const override;

    CAShapeLayer();

private:
    CALineCap m_lineCap = kCALineCapButt;
};
