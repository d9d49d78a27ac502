// What the frame builder remembers of a layer from one frame to the next.
//
// The layer marks itself and all above it when it changes; the builder does the rest. A mark below one that
// stands already goes no further up, so marking costs little however often it is done.
#pragma once

#include "platform/layers/PixelGrid.h"

struct CAFrameRecord {
    bool isStale = true; // the layer or one below it has changed since it was built
    bool moves = false; // the layer or one below it has animations
    int offset = 0; // of the layer's item from its superlayer's
    int itemCount = 0; // of the subtree; 0: it is not in the list
    CGRect area {}; // that the subtree covers, in the superlayer's coordinates
    PixelGrid superGrid { 1 }; // in which it was placed
};
