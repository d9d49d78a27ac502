// The small types that constraints are made of.
#pragma once

#include "platform/foundation/BitMask.h"

// An edge, a size, a middle or a baseline of an item.
enum class NSLayoutAttribute {
    NotAnAttribute = 0,
    Left = 1,
    Right = 2,
    Top = 3,
    Bottom = 4,
    Leading = 5,
    Trailing = 6,
    Width = 7,
    Height = 8,
    CenterX = 9,
    CenterY = 10,
    LastBaseline = 11,
    FirstBaseline = 12,
    LeftMargin = 13,
    RightMargin = 14,
    TopMargin = 15,
    BottomMargin = 16,
    LeadingMargin = 17,
    TrailingMargin = 18,
    CenterXWithinMargins = 19,
    CenterYWithinMargins = 20
};

enum class NSLayoutRelation { LessThanOrEqual = -1, Equal = 0, GreaterThanOrEqual = 1 };

enum class UILayoutConstraintAxis { Horizontal = 0, Vertical = 1 };

// How much a constraint weighs, above 0 and up to 1000, which is required. A higher one wins over any number
// of lower ones.
using UILayoutPriority = double;
inline constexpr UILayoutPriority UILayoutPriorityRequired = 1000;
inline constexpr UILayoutPriority UILayoutPriorityDefaultHigh = 750; // a content's resistance to compression
inline constexpr UILayoutPriority UILayoutPriorityDefaultLow = 250; // a content's hugging
inline constexpr UILayoutPriority UILayoutPriorityFittingSizeLevel = 50;

// How the views of one visual format stand to one another across its direction, and which way it runs.
enum class NSLayoutFormatOptions : unsigned {
    None = 0,
    AlignAllLeft = 1 << 1,
    AlignAllRight = 1 << 2,
    AlignAllTop = 1 << 3,
    AlignAllBottom = 1 << 4,
    AlignAllLeading = 1 << 5,
    AlignAllTrailing = 1 << 6,
    AlignAllCenterX = 1 << 9,
    AlignAllCenterY = 1 << 10,
    AlignAllLastBaseline = 1 << 11,
    AlignAllFirstBaseline = 1 << 12,
    DirectionLeadingToTrailing = 0,
    DirectionLeftToRight = 1 << 16,
    DirectionRightToLeft = 2 << 16
};
template <> inline constexpr bool isBitMask<NSLayoutFormatOptions> = true;

// Where a line of text stands in an item: a fraction of its height from the top, plus points.
struct LayoutBaseline {
    double fraction = 0;
    double offset = 0;

    bool operator==(const LayoutBaseline&) const = default;
};
