#include "platform/graphics/MainScreenScale.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(MainScreenScaleTest, KeepsItsValueWhenGivenNone)
{
    EXPECT_EQ(MainScreenScale::get(), 1);
    MainScreenScale::set(2.5);
    for (const double none :
        { 0.0, -2.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN() })
        MainScreenScale::set(none);
    EXPECT_EQ(MainScreenScale::get(), 2.5);
    MainScreenScale::set(1);
}

} // namespace
