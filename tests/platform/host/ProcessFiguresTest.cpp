#include "platform/host/ProcessFigures.h"

#include <gtest/gtest.h>

namespace {

TEST(ProcessFiguresTest, TellsHowLongTheProcessHasRun)
{
    const double age = ProcessFigures::age();
    EXPECT_GT(age, 0);
    EXPECT_LT(age, 600) << "no test runs that long";
    EXPECT_GE(ProcessFigures::age(), age);
}

TEST(ProcessFiguresTest, TellsTheLargestMemorySoFar)
{
    const auto before = ProcessFigures::peakMemory();
    EXPECT_GT(before, 1 << 20);
    {
        std::vector<char> large(64 << 20, 1);
        EXPECT_EQ(std::count(large.begin(), large.end(), 1), 64 << 20);
    }
    EXPECT_GT(ProcessFigures::peakMemory(), 64 << 20);
    EXPECT_GE(ProcessFigures::peakMemory(), before) << "it is the peak, not what is used now";
}

} // namespace
