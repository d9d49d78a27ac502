// Computes a frame from a layer tree, in one pass.
//
// Hidden and fully transparent subtrees are left out; so are subtrees that lie wholly outside their
// superlayer when that one clips, those that a transform leaves no area or that have a number in their
// geometry that is not finite, and layers in which nothing is drawn. A subtree half in sight keeps all its
// items, so that while it is scrolled they stay equal.
// A layer of zero size draws nothing itself, but its sublayers are drawn unless it clips them. The root's
// item is always the first.
#pragma once

#include "platform/layers/FrameList.h"

#include <limits>

class CALayer;

struct CAFrame {
    FrameList list;
    // When, on the media clock, the next frame differs by an animation that can be seen: the frame's own
    // time while one is running, later when one has yet to begin, infinity when none will.
    double nextAnimationTime = std::numeric_limits<double>::infinity();
};

class FrameBuilder {
public:
    // The root lies in a screen of that size, in points, with scale device pixels in a point.
    static CAFrame buildFrame(const CALayer& root, double mediaTime, const CGSize& size, double scale,
        std::size_t expectedItems = 0);
};
