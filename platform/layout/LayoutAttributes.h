// What the attributes of constraints are: which axis they lie on and what they can be compared with.
#pragma once

#include "platform/layout/LayoutTypes.h"

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
