// An affine transform taken apart: scale and shear, then a rotation, then a translation.
//
// What "transform.scale.x" and its like read and write, and what is mixed on the way from one transform
// to another, so that a half turn passes through a quarter turn and not through nothing.
#pragma once

#include "platform/graphics/Geometry.h"

struct AffineParts {
    double scaleX = 1;
    double scaleY = 1; // negative for a mirror image
    double shear = 0; // how far the y axis leans, in units of the result
    double rotation = 0; // radians, clockwise on the screen
    double translationX = 0;
    double translationY = 0;

    static AffineParts of(const CGAffineTransform&);
    CGAffineTransform transform() const;

    // Turns by the shorter way.
    static AffineParts interpolate(const AffineParts& from, const AffineParts& to, double fraction);
};
