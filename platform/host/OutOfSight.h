// Whether anything of an item's own drawing, or of the picture of its subtree, can be seen on the screen.
#pragma once

#include "platform/host/FrameDifference.h"

namespace OutOfSight {

// What may be drawn of an item.
enum class Drawing : std::uint8_t { OfItem, OfSubtree };

// Answers true for what the clips around the item leave nothing of, and for what one opaque thing covers that
// is drawn after it. The difference has compared the list last.
bool isHidden(const FrameList& list, const FrameDifference& difference, int index, Drawing drawing);

} // namespace OutOfSight
