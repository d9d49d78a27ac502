#include "platform/graphics/UIFont.h"

#include "platform/graphics/TextAttributes.h"
#include "platform/graphics/TextLayout.h"

#include <QFontMetricsF>

#include <gtest/gtest.h>

#include <limits>

namespace {

CGFloat widthOf(const NSString& text, const std::shared_ptr<UIFont>& font)
{
    return TextLayout(text, { font }).size().width();
}

TEST(UIFontTest, IsNilForAnUnknownName)
{
    EXPECT_EQ(UIFont::fontWithName(QStringLiteral("NoSuchFont-Bold"), 12), nullptr);
    EXPECT_EQ(UIFont::fontWithName(NSString(), 12), nullptr);
}

TEST(UIFontTest, IsNilForASizeThatIsNone)
{
    for (const double size : { 0.0, -1.0, 1e9, std::numeric_limits<double>::infinity(),
             std::numeric_limits<double>::quiet_NaN() }) {
        EXPECT_EQ(UIFont::systemFontOfSize(size), nullptr) << size;
        EXPECT_EQ(UIFont::fontWithName(QStringLiteral("AvenirNext-Regular"), size), nullptr) << size;
    }
}

TEST(UIFontTest, KnowsTheNamedFaces)
{
    const auto title = UIFont::fontWithName(QStringLiteral("AvenirNextCondensed-Bold"), 22);
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->fontName(), QStringLiteral("AvenirNextCondensed-Bold"));
    EXPECT_EQ(title->pointSize(), 22);
    EXPECT_EQ(title->weight(), UIFontWeight::Bold);
    EXPECT_EQ(title->familyName(), QStringLiteral("Roboto Condensed"));
    const auto regular = UIFont::fontWithName(QStringLiteral("AvenirNext-Regular"), 11);
    ASSERT_NE(regular, nullptr);
    EXPECT_EQ(regular->weight(), UIFontWeight::Regular);
    EXPECT_EQ(regular->familyName(), QStringLiteral("Lato"));
}

TEST(UIFontTest, LetsTheSystemFontStandInForAMissingFamily)
{
    const UIFont::Face missing { QStringLiteral("No Such Family"), UIFontWeight::Bold, 78 };
    const auto standIn = make<UIFont>(QStringLiteral("NoSuchFamily-Bold"), missing, 22);
    const auto system = UIFont::boldSystemFontOfSize(22);
    EXPECT_EQ(standIn->familyName(), system->familyName());
    const NSString text = QStringLiteral("Nearest recordings");
    EXPECT_NEAR(widthOf(text, standIn), 0.78 * widthOf(text, system), 0.02 * widthOf(text, system));
    EXPECT_NEAR(standIn->capHeight(), system->capHeight(), 0.1);
}

TEST(UIFontTest, MeasuresFromTheBaseline)
{
    const auto font = UIFont::systemFontOfSize(17);
    EXPECT_EQ(font->familyName(), QStringLiteral("Inter"));
    EXPECT_GT(font->ascender(), font->capHeight());
    EXPECT_GT(font->capHeight(), font->xHeight());
    EXPECT_GT(font->xHeight(), 0);
    EXPECT_LT(font->descender(), 0);
    EXPECT_GE(font->lineHeight(), font->ascender() - font->descender());
    EXPECT_LT(font->lineHeight(), 1.5 * font->pointSize());
}

TEST(UIFontTest, HasRoomForTheMarksAboveCapitals)
{
    for (const char* name : { "AvenirNext-Regular", "AvenirNextCondensed-Bold" }) {
        const auto font = UIFont::fontWithName(QLatin1String(name), 40);
        const QFontMetricsF metrics(font->qFont());
        for (const QChar letter : QStringLiteral("ÅÉÑŠ"))
            EXPECT_GE(font->ascender(), -metrics.boundingRect(letter).top() - 0.5) << name;
        EXPECT_GE(-font->descender(), metrics.boundingRect(QLatin1Char('g')).bottom() - 0.5) << name;
    }
}

TEST(UIFontTest, ScalesEvenlyWithItsSize)
{
    const NSString text = QStringLiteral("Collins Street");
    const auto ten = UIFont::systemFontOfSize(10);
    for (const double size : { 10.5, 13.25, 20.0, 0.4 }) {
        const auto font = UIFont::systemFontOfSize(size);
        EXPECT_NEAR(font->capHeight(), ten->capHeight() * size / 10, 0.05 * size / 10) << size;
        EXPECT_NEAR(widthOf(text, font), widthOf(text, ten) * size / 10, 0.02 * widthOf(text, font)) << size;
    }
}

TEST(UIFontTest, GrowsWiderWithItsWeight)
{
    const NSString text = QStringLiteral("Mara Vellinga");
    const CGFloat regular = widthOf(text, UIFont::systemFontOfSize(17));
    const CGFloat semibold = widthOf(text, UIFont::systemFontOfSize(17, UIFontWeight::Semibold));
    const CGFloat bold = widthOf(text, UIFont::boldSystemFontOfSize(17));
    EXPECT_LT(regular, semibold);
    EXPECT_LT(semibold, bold);
}

TEST(UIFontTest, EqualsAFontOfTheSameNameAndSize)
{
    const auto font = UIFont::systemFontOfSize(17);
    EXPECT_TRUE(font->isEqual(UIFont::systemFontOfSize(17).get()));
    EXPECT_EQ(font->hash(), UIFont::systemFontOfSize(17)->hash());
    EXPECT_FALSE(font->isEqual(UIFont::systemFontOfSize(18).get()));
    EXPECT_FALSE(font->isEqual(UIFont::boldSystemFontOfSize(17).get()));
    EXPECT_TRUE(UIFont::systemFontOfSize(20)->fontWithSize(17)->isEqual(font.get()));
    EXPECT_FALSE(font->isEqual(nullptr));
}

TEST(UIFontTest, IsFoundAmongTextAttributes)
{
    const auto font = UIFont::systemFontOfSize(17);
    const auto color = UIColor::whiteColor();
    const NSTextAttributes attributes { { NSFontAttributeName, font },
        { NSForegroundColorAttributeName, color } };
    EXPECT_EQ(fontOfAttributes(attributes), font);
    EXPECT_EQ(foregroundColorOfAttributes(attributes), color);
    EXPECT_EQ(fontOfAttributes({}), nullptr);
    EXPECT_EQ(foregroundColorOfAttributes({ { NSForegroundColorAttributeName, font } }), nullptr);
}

} // namespace
