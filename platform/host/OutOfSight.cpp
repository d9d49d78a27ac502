#include "platform/host/OutOfSight.h"

#include "platform/host/FrameGeometry.h"

using FrameGeometry::deviceRect;
using FrameGeometry::deviceTransform;

namespace {

// Whether a sublayer of the parent, from the first on, covers the area, in the parent's coordinates.
bool isCovered(const FrameList& list, int parent, int first, const CGRect& area)
{
    const int end = list.items[std::size_t(parent)].subtreeEnd;
    for (int later = first; later < end; later = list.items[std::size_t(later)].subtreeEnd) {
        const FrameItem& item = list.items[std::size_t(later)];
        const CGAffineTransform transform = deviceTransform(item, list.scale);
        if (item.opacity < 1 || !FrameGeometry::isTranslation(transform))
            continue;
        const CGRect inItem = area.translated(-transform.dx(), -transform.dy());
        // What lies beside the layer is not looked for in it: nearly nothing reaches out of its superlayer.
        if (deviceRect(item.bounds, list.scale).intersects(inItem)
            && FrameGeometry::isCovered(list, later, inItem))
            return true;
    }
    return false;
}

} // namespace

bool OutOfSight::isHidden(
    const FrameList& list, const FrameDifference& difference, int index, Drawing drawing)
{
    CGRect area = drawing == Drawing::OfItem
        ? FrameGeometry::ownExtent(list.items[std::size_t(index)], list.scale)
        : FrameGeometry::subtreeExtent(list, index);
    if (drawing == Drawing::OfItem && isCovered(list, index, index + 1, area))
        return true;
    int below = index;
    for (int parent = difference.parentIndex(below); parent != FrameDifference::None;
         parent = difference.parentIndex(below)) {
        area = deviceTransform(list.items[std::size_t(below)], list.scale).mapRect(area);
        const FrameItem& around = list.items[std::size_t(parent)];
        if (around.clipsToBounds)
            area = area.intersected(deviceRect(around.bounds, list.scale));
        if (area.isEmpty() || isCovered(list, parent, list.items[std::size_t(below)].subtreeEnd, area))
            return true;
        below = parent;
    }
    return false;
}
