// Computes a frame from a layer tree.
//
// Hidden and fully transparent subtrees are left out; so are subtrees that lie wholly outside their
// superlayer when that one clips, those that a transform leaves no area or that have a number in their
// geometry that is not finite, and layers in which nothing is drawn. A subtree half in sight keeps all its
// items, so that while it is scrolled they stay equal.
// A layer of zero size draws nothing itself, but its sublayers are drawn unless it clips them. The root's
// item is always the first.
//
// A builder keeps its last list and goes only where layers have changed or move: what a frame costs follows
// what changes in it, not what is on the screen. The layers' records are one builder's: a layer is in one
// tree at a time, and forgets its record when it comes into another place.
#pragma once

#include "platform/graphics/UIUserInterfaceStyle.h"
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
    // Computes all of it, and remembers nothing. The root lies in a screen of that size, in points, with
    // scale device pixels in a point.
    static CAFrame buildFrame(const CALayer& root, double mediaTime, const CGSize& size, double scale);

    // Brings the last frame up to date. The same root each time.
    void update(const CALayer& root, double mediaTime, const CGSize& size, double scale);
    const CAFrame& frame() const { return m_frame; }

private:
    CAFrame m_frame;
    UIUserInterfaceStyle m_style = UIUserInterfaceStyle::Light; // that the colours were resolved for
};
