// The pictures are drawn with the fonts of scripts/packages; with stand-ins for them every text would differ.
#include "platform/graphics/UIFont.h"

#include <gtest/gtest.h>

namespace {

TEST(GalleryFontsTest, TheFontsOfThePicturesAreInstalled)
{
    EXPECT_EQ(UIFont::systemFontOfSize(17)->familyName(), QStringLiteral("Inter"));
    EXPECT_EQ(
        UIFont::fontWithName(QStringLiteral("AvenirNext-Regular"), 17)->familyName(), QStringLiteral("Lato"));
    EXPECT_EQ(UIFont::fontWithName(QStringLiteral("AvenirNextCondensed-Bold"), 22)->familyName(),
        QStringLiteral("Roboto Condensed"));
}

} // namespace
