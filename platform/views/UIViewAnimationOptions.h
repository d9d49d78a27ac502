// How a view animation runs: its curve, and how it treats what is already going on.
#pragma once

#include "platform/foundation/BitMask.h"

enum class UIViewAnimationCurve : unsigned { EaseInOut = 0, EaseIn = 1, EaseOut = 2, Linear = 3 };

// The animation curve stands in bits 16 and up.
enum class UIViewAnimationOptions : unsigned {
    None = 0,
    AllowUserInteraction = 2, // else touches do not reach the views that are animated
    BeginFromCurrentState = 4 // kept, and of no effect: every animation starts from the shown value
};
template <> inline constexpr bool isBitMask<UIViewAnimationOptions> = true;

constexpr UIViewAnimationOptions optionsOfCurve(UIViewAnimationCurve curve)
{
    return static_cast<UIViewAnimationOptions>(static_cast<unsigned>(curve) << 16);
}

constexpr UIViewAnimationCurve curveOfOptions(UIViewAnimationOptions options)
{
    return static_cast<UIViewAnimationCurve>((static_cast<unsigned>(options) >> 16) & 0xF);
}
