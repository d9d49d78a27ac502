#include "platform/graphics/MainScreenScale.h"

#include <cmath>

std::atomic<CGFloat> MainScreenScale::s_scale { 1 };

void MainScreenScale::set(CGFloat scale)
{
    if (std::isfinite(scale) && scale > 0)
        s_scale = scale;
}

CGFloat MainScreenScale::roundToPixel(CGFloat position) { return std::round(position * s_scale) / s_scale; }
