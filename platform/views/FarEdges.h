// The right and the bottom edge of a rectangle, which belong to its neighbours where there are any.
#pragma once

#include "platform/graphics/Geometry.h"

#include <cmath>

// A point that lies exactly on a far edge, put just inside; any other as it is.
inline CGPoint pulledOffFarEdges(const CGRect& rect, const CGPoint& point)
{
    const auto pulled = [](double place, double begin, double end) {
        return place == end && end > begin ? std::nextafter(end, begin) : place;
    };
    return { pulled(point.x(), rect.left(), rect.right()), pulled(point.y(), rect.top(), rect.bottom()) };
}
