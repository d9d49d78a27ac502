// The small types that a view's properties have.
#pragma once

#include "platform/foundation/BitMask.h"

// What changes along with the superview's size.
enum class UIViewAutoresizing : unsigned {
    None = 0,
    FlexibleLeftMargin = 1,
    FlexibleWidth = 2,
    FlexibleRightMargin = 4,
    FlexibleTopMargin = 8,
    FlexibleHeight = 16,
    FlexibleBottomMargin = 32
};
template <> inline constexpr bool isBitMask<UIViewAutoresizing> = true;

enum class UIViewTintAdjustmentMode { Automatic = 0, Normal = 1, Dimmed = 2 };

// How a picture fills its view. From the centre on it keeps its size and lies in that place.
enum class UIViewContentMode {
    ScaleToFill = 0,
    ScaleAspectFit = 1,
    ScaleAspectFill = 2,
    Center = 4,
    Top = 5,
    Bottom = 6,
    Left = 7,
    Right = 8,
    TopLeft = 9,
    TopRight = 10,
    BottomLeft = 11,
    BottomRight = 12
};
