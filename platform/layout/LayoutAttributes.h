// What the attributes of constraints are: which axis they lie on and what they can be compared with.
#pragma once

#include "platform/layout/LayoutTypes.h"

#include <cmath>

// A place is a line across its axis; a size is a length along it.
enum class LayoutKind { None, Place, Size };

struct LayoutAttributeTraits {
    LayoutKind kind = LayoutKind::None;
    UILayoutConstraintAxis axis = UILayoutConstraintAxis::Horizontal;
    // Left and right are fixed on the screen, leading and trailing follow the writing: they do not mix.
    bool followsWriting = false;
    bool isFixedSide = false;
    const char* name = "?";
};

// An unknown attribute has no kind.
LayoutAttributeTraits traitsOf(NSLayoutAttribute attribute);
// Whether a constraint may compare the two; NotAnAttribute stands for a mere number.
bool areComparable(NSLayoutAttribute first, NSLayoutAttribute second);

// Whether a constraint can be made with the number; not so with NaN. No screen is larger than the limit, and
// numbers beyond it would only lose the digits of the others.
inline bool isReasonable(double number) { return std::abs(number) <= 1e7; }
