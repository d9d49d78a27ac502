// How something goes on that moves: its values at some seconds from now.
#pragma once

#include "platform/layers/CAMediaTimingFunction.h"

#include <gtest/gtest.h>

#include <vector>

struct CoursePoint {
    double seconds; // from now
    double value;
};
using Course = std::vector<CoursePoint>;

// The last point is the end of the motion, which is met exactly.
template <typename ValueIn> void expectCourse(const ValueIn& valueIn, const Course& course)
{
    for (const CoursePoint& point : course)
        EXPECT_NEAR(valueIn(point.seconds), point.value, 1e-9) << "in " << point.seconds << " s";
    EXPECT_EQ(valueIn(course.back().seconds), course.back().value) << "at the end";
}

inline double easeOut(double time)
{
    return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut)->valueAt(time);
}
inline double easeInOut(double time)
{
    return CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut)->valueAt(time);
}
