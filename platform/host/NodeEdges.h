// Where the edges of what scene-graph nodes draw may lie.
//
// The software renderer takes the outermost pixels of what is opaque for covered, and does not draw again
// what lies below a soft edge there. So all that is upright is drawn on whole pixels for it, also what is on
// its way; that is cheaper, too.
#pragma once

#include "platform/host/FrameGeometry.h"

enum class NodeEdges : std::uint8_t { Anywhere, OnWholePixels };

// A translation between coordinates in device pixels.
inline CGAffineTransform placed(const CGAffineTransform& transform, NodeEdges edges)
{
    return edges == NodeEdges::OnWholePixels ? FrameGeometry::onWholePixels(transform) : transform;
}

inline CGRect placed(const CGRect& deviceRect, NodeEdges edges)
{
    return edges == NodeEdges::OnWholePixels ? FrameGeometry::onWholePixels(deviceRect) : deviceRect;
}
