// What a superview's new size does to a view's frame.
#pragma once

#include "platform/graphics/Geometry.h"
#include "platform/views/UIViewTypes.h"

// The difference is shared out among the flexible parts in proportion to their lengths; equally where they
// have none. Without a flexible part the frame keeps its place at the top left.
CGRect autoresizedFrame(const CGRect& frame, UIViewAutoresizing mask, const CGSize& oldSuperviewSize,
    const CGSize& newSuperviewSize);
