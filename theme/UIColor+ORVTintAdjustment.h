// How a colour looks while the interface is dimmed.
#pragma once

#include "platform/graphics/UIColor.h"
#include "platform/views/UIViewTypes.h"

// colorWithTintAdjustment: — the colour itself, unless the mode is dimmed: then the grey of the same
// luminance at 80 % of the opacity. A colour without components cannot be dimmed: a programming error,
// after which it stays as it is.
std::shared_ptr<UIColor> colorWithTintAdjustment(
    const std::shared_ptr<UIColor>& color, UIViewTintAdjustmentMode mode);
