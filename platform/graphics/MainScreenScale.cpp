#include "platform/graphics/MainScreenScale.h"

#include <cmath>

std::atomic<CGFloat> MainScreenScale::s_scale { 1 };

void MainScreenScale::set(CGFloat scale)
{
    if (std::isfinite(scale) && scale > 0)
        s_scale = scale;
}
