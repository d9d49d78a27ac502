#include "platform/views/Autoresizing.h"

#include <gtest/gtest.h>

namespace {

using enum UIViewAutoresizing;

struct Case {
    const char* name;
    UIViewAutoresizing mask;
    CGRect frame;
    CGSize newSize;
    CGRect expected;
};
void PrintTo(const Case& entry, std::ostream* out) { *out << entry.name; }

// All in a superview of 100 × 200.
class AutoresizingTest : public ::testing::TestWithParam<Case> { };

const Case cases[] = {
    { "NothingFlexibleStays", None, { 10, 20, 30, 40 }, { 200, 400 }, { 10, 20, 30, 40 } },
    { "WidthTakesAllOfTheDifference", FlexibleWidth, { 10, 20, 30, 40 }, { 150, 400 }, { 10, 20, 80, 40 } },
    { "HeightTakesAllOfTheDifference", FlexibleHeight, { 10, 20, 30, 40 }, { 100, 250 }, { 10, 20, 30, 90 } },
    { "BothSidesShrinkToo", FlexibleWidth | FlexibleHeight, { 0, 0, 100, 200 }, { 60, 90 },
        { 0, 0, 60, 90 } },
    { "LeftMarginKeepsTheRightEdge", FlexibleLeftMargin, { 10, 20, 30, 40 }, { 150, 200 },
        { 60, 20, 30, 40 } },
    { "EqualMarginsKeepTheMiddle", FlexibleLeftMargin | FlexibleRightMargin, { 35, 0, 30, 40 }, { 200, 200 },
        { 85, 0, 30, 40 } },
    { "SharesAreInProportion", FlexibleTopMargin | FlexibleBottomMargin, { 0, 40, 10, 40 }, { 100, 360 },
        { 0, 80, 10, 40 } },
    { "PartsWithoutLengthShareEqually", FlexibleLeftMargin | FlexibleRightMargin, { 0, 0, 100, 10 },
        { 140, 200 }, { 20, 0, 100, 10 } },
    { "AWidthNeverGoesBelowNothing", FlexibleWidth, { 90, 0, 10, 10 }, { 50, 200 }, { 90, 0, 0, 10 } },
};

TEST_P(AutoresizingTest, GivesTheExpectedFrame)
{
    const Case& given = GetParam();
    EXPECT_EQ(autoresizedFrame(given.frame, given.mask, { 100, 200 }, given.newSize), given.expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, AutoresizingTest, ::testing::ValuesIn(cases), [](const auto& entry) { return entry.param.name; });

} // namespace
