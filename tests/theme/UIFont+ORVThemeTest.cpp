#include "theme/UIFont+ORVTheme.h"

#include <gtest/gtest.h>

namespace {

TEST(ThemeFontTest, TheNavigationBarTitleIsCondensedAndBold)
{
    const auto font = orv_oruvaneNavigationBarTitleFont();
    ASSERT_TRUE(font);
    EXPECT_EQ(font->fontName(), QStringLiteral("AvenirNextCondensed-Bold"));
    EXPECT_EQ(font->pointSize(), 22);
    EXPECT_EQ(font->weight(), UIFontWeight::Bold);
}

TEST(ThemeFontTest, TheProfileNumbersSubtitleIsSmallAndRegular)
{
    const auto font = orv_oruvaneProfileNumbersSubtitleFont();
    ASSERT_TRUE(font);
    EXPECT_EQ(font->fontName(), QStringLiteral("AvenirNext-Regular"));
    EXPECT_EQ(font->pointSize(), 11);
    EXPECT_EQ(font->weight(), UIFontWeight::Regular);
}

TEST(ThemeFontTest, EachCallMakesANewFont)
{
    EXPECT_NE(orv_oruvaneNavigationBarTitleFont(), orv_oruvaneNavigationBarTitleFont());
}

} // namespace
