// The operators of enumerations whose values are bits: an enumeration joins by specialising isBitMask.
#pragma once

#include <type_traits>

template <typename Mask> inline constexpr bool isBitMask = false;

template <typename Mask>
requires isBitMask<Mask>
constexpr Mask operator|(Mask first, Mask second)
{
    using Bits = std::underlying_type_t<Mask>;
    return static_cast<Mask>(static_cast<Bits>(first) | static_cast<Bits>(second));
}

template <typename Mask>
requires isBitMask<Mask>
constexpr Mask operator&(Mask first, Mask second)
{
    using Bits = std::underlying_type_t<Mask>;
    return static_cast<Mask>(static_cast<Bits>(first) & static_cast<Bits>(second));
}

template <typename Mask>
requires isBitMask<Mask>
constexpr Mask operator~(Mask mask)
{
    return static_cast<Mask>(~static_cast<std::underlying_type_t<Mask>>(mask));
}

// Whether every one of the bits is set.
template <typename Mask>
requires isBitMask<Mask>
constexpr bool hasBits(Mask mask, Mask bits) { return (mask & bits) == bits; }
