#include "platform/foundation/NumberRange.h"

#include <gtest/gtest.h>

#include <cstdint>

TEST(NumberRangeTest, TheEndsOf64BitsAreMetExactly)
{
    EXPECT_TRUE(isInRange<std::int64_t>(-0x1p63));
    EXPECT_FALSE(isInRange<std::int64_t>(std::nextafter(-0x1p63, -HUGE_VAL)));
    EXPECT_FALSE(isInRange<std::int64_t>(0x1p63));
    EXPECT_TRUE(isInRange<std::int64_t>(std::nextafter(0x1p63, 0)));
    EXPECT_FALSE(isInRange<std::uint64_t>(0x1p64));
    EXPECT_TRUE(isInRange<std::uint64_t>(std::nextafter(0x1p64, 0)));
    EXPECT_FALSE(isInRange<std::uint64_t>(-1));
    EXPECT_FALSE(isInRange<int>(std::nan("")));
}

TEST(NumberRangeTest, WhatATypeCannotHoldIsItsNearestValue)
{
    using Limits = std::numeric_limits<std::int64_t>;
    EXPECT_EQ(nearestInteger<std::int64_t>(1e300), Limits::max());
    EXPECT_EQ(nearestInteger<std::int64_t>(-HUGE_VAL), Limits::min());
    EXPECT_EQ(nearestInteger<std::int64_t>(-2.9), -2);
    EXPECT_EQ(nearestInteger<std::uint64_t>(-0.9), 0u);
    EXPECT_EQ(nearestInteger<std::uint64_t>(HUGE_VAL), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(nearestInteger<int>(std::nan("")), 0);
    EXPECT_EQ(nearestInteger<signed char>(127.9), 127);
    EXPECT_EQ(nearestInteger<signed char>(128), 127);
}
