// Where the items of a frame list draw, in device pixels.
//
// The host works in device pixels of the layers' own coordinate systems: lengths are multiplied by the
// list's scale once, so that what lies on whole pixels is moved by whole numbers and nothing is stretched.
#pragma once

#include "platform/layers/FrameList.h"

namespace FrameGeometry {

CGRect deviceRect(const CGRect& points, double scale);
// The item's transform between coordinate systems that are both counted in device pixels.
CGAffineTransform deviceTransform(const FrameItem&, double scale);
// No rotation, no scaling.
bool isTranslation(const CGAffineTransform&);
// A translation, to the nearest whole pixels; one back again leads to where it began.
CGAffineTransform onWholePixels(const CGAffineTransform& translation);
// The rectangle with each edge on the nearest whole pixel; one that has whole pixels keeps its size.
CGRect onWholePixels(const CGRect&);
// The corner radius that the layer's size leaves room for, in points.
double effectiveCornerRadius(const FrameItem&);

bool drawsBackground(const FrameItem&);
bool drawsContent(const FrameItem&);
// Whether anything is drawn that the item's own rounded corners cut.
bool clipsRoundedly(const FrameItem&);
// Whether the layer's own drawing is more than an upright rectangle and an upright picture.
bool needsPainter(const FrameItem&);

// What the shape's stroke may cover of a path, or a part of it, that lies in the rectangle: from points to
// device pixels.
CGRect strokedRect(const FrameShape&, const CGRect& ofPath, double scale);
// What the item alone covers, its clip included.
CGRect ownExtent(const FrameItem&, double scale);
// What the item and all below it cover, in the item's coordinates.
CGRect subtreeExtent(const FrameList&, int index);
// Whether something opaque in the subtree covers the rectangle, given in the item's coordinates.
bool isCovered(const FrameList&, int index, const CGRect& rect);
// The smallest rectangle of whole pixels around; a rounding error does not cost a row of pixels.
QRect wholePixels(const CGRect&);

// Calls the function with the index of each sublayer of the item.
template <typename Visit> void forEachChild(const FrameList& list, int index, Visit visit)
{
    const int end = list.items[std::size_t(index)].subtreeEnd;
    for (int child = index + 1; child < end; child = list.items[std::size_t(child)].subtreeEnd)
        visit(child);
}

} // namespace FrameGeometry
