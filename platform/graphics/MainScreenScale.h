// How many device pixels a point of the main screen has: what pictures and bitmap contexts go by.
//
// The screen sets it when it is made and when it changes; until then it is 1. Any thread may read it.
#pragma once

#include "platform/graphics/Geometry.h"

#include <atomic>

class MainScreenScale {
public:
    static CGFloat get() { return s_scale; }
    // A scale that is no positive number is not taken.
    static void set(CGFloat scale);

private:
    static std::atomic<CGFloat> s_scale;
};
