#include "tests/support/AssertionRecorder.h"
#include "tests/support/Pictures.h"
#include "theme/UIColor+ORVTheme.h"
#include "theme/UIColor+ORVTintAdjustment.h"

#include <gtest/gtest.h>

namespace {

constexpr auto automatic = UIViewTintAdjustmentMode::Automatic;
constexpr auto normal = UIViewTintAdjustmentMode::Normal;
constexpr auto dimmed = UIViewTintAdjustmentMode::Dimmed;

std::shared_ptr<UIColor> patternColor()
{
    return UIColor::colorWithPatternImage(plainImage({ 2, 2 }, Qt::red));
}

TEST(TintAdjustmentTest, EveryModeButDimmedGivesTheVerySameColour)
{
    const auto color = orv_oruvaneMainColor();
    EXPECT_EQ(colorWithTintAdjustment(color, automatic), color);
    EXPECT_EQ(colorWithTintAdjustment(color, normal), color);
    EXPECT_EQ(colorWithTintAdjustment(color, static_cast<UIViewTintAdjustmentMode>(-1)), color);
    EXPECT_EQ(colorWithTintAdjustment(color, static_cast<UIViewTintAdjustmentMode>(3)), color);
}

TEST(TintAdjustmentTest, TheDimmedMainColourIsTheGreyOfItsLuminance)
{
    const auto grey = colorWithTintAdjustment(orv_oruvaneMainColor(), dimmed)->getWhite();
    ASSERT_TRUE(grey);
    EXPECT_EQ(grey->white,
        1.0 * 0.2125999927520752 + 0.21568627655506134 * 0.7152000069618225 + 0.364705890417099 * 0.0722);
    EXPECT_NEAR(grey->white, 0.39319, 5e-6);
    EXPECT_EQ(grey->alpha, 0.800000011920929);
}

TEST(TintAdjustmentTest, DimmedWhiteStaysWhiteAndLosesOpacity)
{
    EXPECT_EQ(colorWithTintAdjustment(UIColor::whiteColor(), dimmed)->getWhite(),
        (WhiteAlpha { 1.0, 0.800000011920929 }));
}

TEST(TintAdjustmentTest, DimmingTakesAShareOfTheOpacityThereIs)
{
    EXPECT_EQ(colorWithTintAdjustment(UIColor::colorWithWhite(0.25, 0.5), dimmed)->getWhite(),
        (WhiteAlpha { 0.25, 0.5 * 0.800000011920929 }));
    EXPECT_EQ(colorWithTintAdjustment(UIColor::colorWithRed(0, 0, 1, 0.5), dimmed)->getWhite(),
        (WhiteAlpha { 0.0722, 0.5 * 0.800000011920929 }));
}

TEST(TintAdjustmentTest, AColourOfAPatternImageCannotBeDimmed)
{
    AssertionRecorder assertions;
    const auto pattern = patternColor();
    EXPECT_EQ(colorWithTintAdjustment(pattern, dimmed), pattern); // what is left where assertions return
    ASSERT_EQ(assertions.failures().size(), 1U);
    EXPECT_EQ(assertions.failures()[0].message, QStringLiteral("Color is not compatible with dimming."));
    EXPECT_EQ(assertions.failures()[0].source, QStringLiteral("UIColor+ORVTintAdjustment"));
    EXPECT_EQ(assertions.failures()[0].line, 38);
}

TEST(TintAdjustmentTest, AColourOfAPatternImageIsFineUndimmed)
{
    AssertionRecorder assertions;
    const auto pattern = patternColor();
    EXPECT_EQ(colorWithTintAdjustment(pattern, normal), pattern);
    EXPECT_TRUE(assertions.failures().empty());
}

TEST(TintAdjustmentTest, NoColourStaysNone) { EXPECT_EQ(colorWithTintAdjustment(nullptr, dimmed), nullptr); }

} // namespace
