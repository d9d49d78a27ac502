#include "theme/UIColor+ORVTheme.h"

#include <gtest/gtest.h>

namespace {

// 55/255 and 93/255 as single-precision numbers.
const RedGreenBlueAlpha mainColor { 1.0, 0.21568627655506134, 0.364705890417099, 1.0 };

TEST(ThemeColorTest, TheMainColourHasTheSinglePrecisionComponentsOfFF375D)
{
    EXPECT_EQ(orv_oruvaneMainColor()->getRed(), mainColor);
}

TEST(ThemeColorTest, TheNavigationBarHasTheMainColourAndWhiteItems)
{
    EXPECT_EQ(orv_oruvaneNavigationBarColor()->getRed(), mainColor);
    EXPECT_EQ(orv_oruvaneNavigationBarItemsColor()->getWhite(), (WhiteAlpha { 1, 1 }));
}

TEST(ThemeColorTest, TheTopSeparatorIsDarkerThanTheMainColourWithTheSameHueAndSaturation)
{
    const auto main = orv_oruvaneMainColor()->getHue();
    const auto top = orv_oruvaneSplitSeparatorTopColor()->getHue();
    ASSERT_TRUE(main && top);
    EXPECT_EQ(top->hue, main->hue);
    EXPECT_EQ(top->saturation, main->saturation);
    EXPECT_EQ(top->brightness, main->brightness * 0.6499999761581421);
    EXPECT_EQ(top->brightness, 0.6499999761581421); // the main colour is as bright as can be
    EXPECT_EQ(top->alpha, main->alpha);
}

TEST(ThemeColorTest, SystemColoursAreThePlatformsOwn)
{
    EXPECT_TRUE(orv_oruvaneSplitSeparatorMainColor()->isEqual(UIColor::systemFillColor().get()));
    EXPECT_TRUE(orv_oruvaneSelectedCellBackgroundColor()->isEqual(UIColor::systemGray6Color().get()));
    EXPECT_TRUE(orv_oruvaneProfileNumbersSubtitleColor()->isEqual(UIColor::labelColor().get()));
}

TEST(ThemeColorTest, TheSliderTrackIsASinglePrecisionGrey)
{
    EXPECT_EQ(orv_oruvanePlaybackSliderTrackColor()->getWhite(), (WhiteAlpha { 0.23999999463558197, 1 }));
}

TEST(ThemeColorTest, TheRecordingButtonHasTheMainColoursValues)
{
    EXPECT_EQ(orv_oruvaneRecordingButtonColor()->getRed(), mainColor);
}

TEST(ThemeColorTest, EachCallMakesANewColour)
{
    EXPECT_NE(orv_oruvaneMainColor(), orv_oruvaneMainColor());
    EXPECT_NE(orv_oruvaneRecordingButtonColor(), orv_oruvaneRecordingButtonColor());
    EXPECT_NE(orv_oruvanePlaybackSliderTrackColor(), orv_oruvanePlaybackSliderTrackColor());
    EXPECT_NE(orv_oruvaneSplitSeparatorTopColor(), orv_oruvaneSplitSeparatorTopColor());
}

} // namespace
