// The numbers that constraints find: those of an item's frame.
#pragma once

#include <cstddef>

// For an item that follows its container, the distances of its four edges, in the order of UIEdgeInsets'
// left, top, right and bottom.
enum class LayoutQuantity { Left, Top, Width, Height };
inline constexpr std::size_t layoutQuantityCount = 4;
