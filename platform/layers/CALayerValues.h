// What a layer shows: every property of it that can be animated, and what follows from them.
//
// A layer holds one of these as its model. What is on the screen at a moment is a copy of it that the
// running animations have worked on. The last group is used by shape layers only; it lives here so that
// one plain value is all there is to animate.
#pragma once

#include "platform/graphics/Geometry.h"
#include "platform/graphics/UIBezierPath.h"

#include <memory>

class UIColor;

struct CALayerValues {
    CGRect bounds; // the origin scrolls the sublayers
    CGPoint position; // of the anchor point, in the superlayer's coordinates
    CGPoint anchorPoint { 0.5, 0.5 }; // a fraction of the bounds
    CGAffineTransform transform; // about the anchor point
    double opacity = 1;
    double cornerRadius = 0;
    std::shared_ptr<UIColor> backgroundColor; // nil: none
    std::shared_ptr<UIColor> contentsTintColor; // nil: the contents' own colours

    CGPathRef path; // nil: none
    double strokeStart = 0;
    double strokeEnd = 1;
    double lineWidth = 1;
    std::shared_ptr<UIColor> strokeColor; // nil: no stroke
    std::shared_ptr<UIColor> fillColor; // nil: no fill

    // The smallest upright rectangle around the layer, in the superlayer's coordinates.
    CGRect frame() const;
    // From the layer's coordinates to the superlayer's.
    CGAffineTransform transformToSuperlayer() const;
};
