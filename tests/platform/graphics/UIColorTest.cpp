#include "platform/graphics/UIColor.h"

#include "tests/platform/graphics/Drawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// Leaves the light appearance in force.
class UIColorTest : public testing::Test {
protected:
    ~UIColorTest() override { CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light); }
};

TEST_F(UIColorTest, KeepsComponentsExactlyAsGiven)
{
    const auto color = UIColor::colorWithRed(1, 0.21568627655506134, 0.364705890417099, 0.800000011920929);
    EXPECT_EQ(color->getRed(),
        (RedGreenBlueAlpha { 1, 0.21568627655506134, 0.364705890417099, 0.800000011920929 }));
    const auto grey = UIColor::colorWithWhite(0.23999999463558197, 1);
    EXPECT_EQ(grey->getWhite(), (WhiteAlpha { 0.23999999463558197, 1 }));
    const auto beyond = UIColor::colorWithRed(-0.5, 2, 0, 1);
    EXPECT_EQ(beyond->getRed(), (RedGreenBlueAlpha { -0.5, 2, 0, 1 }));
}

TEST_F(UIColorTest, NamesItsPlainColours)
{
    EXPECT_EQ(UIColor::clearColor()->getWhite(), (WhiteAlpha { 0, 0 }));
    EXPECT_EQ(UIColor::blackColor()->getWhite(), (WhiteAlpha { 0, 1 }));
    EXPECT_EQ(UIColor::whiteColor()->getWhite(), (WhiteAlpha { 1, 1 }));
    EXPECT_EQ(UIColor::grayColor()->getWhite(), (WhiteAlpha { 0.5, 1 }));
}

TEST_F(UIColorTest, ReadsAGreyAsWhiteAndNotAsRed)
{
    const auto white = UIColor::whiteColor();
    EXPECT_FALSE(white->getRed().has_value());
    EXPECT_TRUE(white->getWhite().has_value());
    EXPECT_EQ(white->getHue(), (HueSaturationBrightnessAlpha { 0, 0, 1, 1 }));
}

TEST_F(UIColorTest, ReadsEqualComponentsAsWhiteToo)
{
    EXPECT_EQ(UIColor::colorWithRed(0.3, 0.3, 0.3, 0.5)->getWhite(), (WhiteAlpha { 0.3, 0.5 }));
    EXPECT_FALSE(UIColor::colorWithRed(0.3, 0.3, 0.4, 0.5)->getWhite().has_value());
}

TEST_F(UIColorTest, ConvertsBetweenHueAndRed)
{
    struct Pair {
        HueSaturationBrightnessAlpha hue;
        RedGreenBlueAlpha red;
    };
    const Pair pairs[] = {
        { { 0, 1, 1, 1 }, { 1, 0, 0, 1 } },
        { { 1.0 / 6, 1, 1, 1 }, { 1, 1, 0, 1 } },
        { { 1.0 / 3, 1, 1, 1 }, { 0, 1, 0, 1 } },
        { { 0.5, 1, 0.5, 1 }, { 0, 0.5, 0.5, 1 } },
        { { 2.0 / 3, 0.5, 1, 0.25 }, { 0.5, 0.5, 1, 0.25 } },
        { { 5.0 / 6, 1, 1, 1 }, { 1, 0, 1, 1 } },
    };
    for (const auto& [hue, red] : pairs) {
        const auto asRed
            = UIColor::colorWithHue(hue.hue, hue.saturation, hue.brightness, hue.alpha)->getRed().value();
        EXPECT_NEAR(asRed.red, red.red, 1e-12);
        EXPECT_NEAR(asRed.green, red.green, 1e-12);
        EXPECT_NEAR(asRed.blue, red.blue, 1e-12);
        EXPECT_EQ(asRed.alpha, red.alpha);
        const auto asHue = UIColor::colorWithRed(red.red, red.green, red.blue, red.alpha)->getHue().value();
        EXPECT_NEAR(asHue.hue, hue.hue, 1e-12);
        EXPECT_NEAR(asHue.saturation, hue.saturation, 1e-12);
        EXPECT_NEAR(asHue.brightness, hue.brightness, 1e-12);
        EXPECT_EQ(asHue.alpha, hue.alpha);
    }
}

TEST_F(UIColorTest, TakesHuesThatWindRoundTheCircle)
{
    const auto once = UIColor::colorWithHue(0.25, 1, 1, 1)->qColor();
    EXPECT_EQ(UIColor::colorWithHue(1.25, 1, 1, 1)->qColor(), once);
    EXPECT_EQ(UIColor::colorWithHue(-0.75, 1, 1, 1)->qColor(), once);
    EXPECT_EQ(UIColor::colorWithHue(1, 1, 1, 1)->qColor(), UIColor::colorWithHue(0, 1, 1, 1)->qColor());
}

TEST_F(UIColorTest, DarkensByItsBrightnessAlone)
{
    const auto main = UIColor::colorWithRed(1, 55.0 / 255, 93.0 / 255, 1);
    const auto hue = main->getHue().value();
    const auto darker = UIColor::colorWithHue(hue.hue, hue.saturation, hue.brightness * 0.65, hue.alpha);
    const auto red = darker->getRed().value();
    EXPECT_NEAR(red.red, 0.65, 1e-12);
    EXPECT_NEAR(red.green, 0.65 * 55 / 255, 1e-12);
    EXPECT_NEAR(red.blue, 0.65 * 93 / 255, 1e-12);
}

TEST_F(UIColorTest, AnswersNothingForAPatternImage)
{
    const auto image = plainImage({ 2, 2 }, Qt::red);
    const auto pattern = UIColor::colorWithPatternImage(image);
    EXPECT_FALSE(pattern->getRed().has_value());
    EXPECT_FALSE(pattern->getWhite().has_value());
    EXPECT_FALSE(pattern->getHue().has_value());
    EXPECT_FALSE(pattern->qColor().isValid());
    EXPECT_EQ(pattern->patternImage(), image);
}

TEST_F(UIColorTest, IsClearForAMissingPatternImage)
{
    EXPECT_TRUE(UIColor::colorWithPatternImage(nullptr)->isEqual(UIColor::clearColor().get()));
}

TEST_F(UIColorTest, FollowsTheAppearanceInForce)
{
    const auto color
        = UIColor::colorWithLight(UIColor::colorWithWhite(0.9, 1), UIColor::colorWithRed(0.1, 0.2, 0.3, 1));
    EXPECT_TRUE(color->isDynamic());
    EXPECT_EQ(color->getWhite(), (WhiteAlpha { 0.9, 1 }));
    EXPECT_FALSE(color->getRed().has_value());
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    EXPECT_EQ(color->getRed(), (RedGreenBlueAlpha { 0.1, 0.2, 0.3, 1 }));
    EXPECT_EQ(color->qColor(UIUserInterfaceStyle::Light), UIColor::colorWithWhite(0.9, 1)->qColor());
}

TEST_F(UIColorTest, ResolvesToAColourThatNoLongerFollows)
{
    const auto dark = UIColor::colorWithWhite(0.2, 1);
    const auto nested = UIColor::colorWithLight(
        UIColor::whiteColor(), UIColor::colorWithLight(UIColor::blackColor(), dark));
    EXPECT_EQ(nested->resolvedColor(UIUserInterfaceStyle::Dark), dark);
    EXPECT_EQ(dark->resolvedColor(UIUserInterfaceStyle::Light), dark);
}

TEST_F(UIColorTest, KeepsSystemTextsReadableInBothAppearances)
{
    for (const auto style : { UIUserInterfaceStyle::Light, UIUserInterfaceStyle::Dark }) {
        const float background = UIColor::systemBackgroundColor()->qColor(style).lightnessF();
        const QColor primary = UIColor::labelColor()->qColor(style);
        const QColor secondary = UIColor::secondaryLabelColor()->qColor(style);
        EXPECT_GT(std::abs(primary.lightnessF() - background), 0.9F);
        EXPECT_GT(std::abs(secondary.lightnessF() - background) * secondary.alphaF(), 0.5F);
        const float selected = UIColor::systemGray6Color()->qColor(style).lightnessF();
        EXPECT_GT(std::abs(selected - background), 0.03F);
        EXPECT_LT(UIColor::systemFillColor()->qColor(style).alphaF(), 0.5F);
    }
    EXPECT_NE(UIColor::systemGray6Color()->qColor(UIUserInterfaceStyle::Light),
        UIColor::systemGray6Color()->qColor(UIUserInterfaceStyle::Dark));
}

TEST_F(UIColorTest, EqualsAColourOfTheSameFormAndComponents)
{
    const auto color = UIColor::colorWithRed(0.1, 0.2, 0.3, 1);
    const auto same = UIColor::colorWithRed(0.1, 0.2, 0.3, 1);
    EXPECT_TRUE(color->isEqual(same.get()));
    EXPECT_EQ(color->hash(), same->hash());
    EXPECT_FALSE(color->isEqual(UIColor::colorWithRed(0.1, 0.2, 0.3, 0.9).get()));
    EXPECT_FALSE(color->isEqual(UIColor::colorWithHue(0.1, 0.2, 0.3, 1).get()));
    EXPECT_FALSE(color->isEqual(nullptr));
    EXPECT_TRUE(UIColor::labelColor()->isEqual(UIColor::labelColor().get()));
    EXPECT_EQ(UIColor::labelColor()->hash(), UIColor::labelColor()->hash());
    EXPECT_FALSE(UIColor::labelColor()->isEqual(UIColor::systemBackgroundColor().get()));
}

TEST_F(UIColorTest, TakesAnotherOpacityInEveryForm)
{
    EXPECT_EQ(UIColor::whiteColor()->colorWithAlphaComponent(0.4)->getWhite(), (WhiteAlpha { 1, 0.4 }));
    const auto dynamic = UIColor::labelColor()->colorWithAlphaComponent(0.4);
    EXPECT_EQ(dynamic->getWhite(), (WhiteAlpha { 0, 0.4 }));
    CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Dark);
    EXPECT_EQ(dynamic->getWhite(), (WhiteAlpha { 1, 0.4 }));
    const auto pattern = UIColor::colorWithPatternImage(plainImage({ 1, 1 }, Qt::red));
    EXPECT_EQ(pattern->colorWithAlphaComponent(0.4), pattern);
}

TEST_F(UIColorTest, ClampsOnlyWhatItDraws)
{
    EXPECT_EQ(UIColor::colorWithRed(-1, 2, 0.5, 1)->qColor(), QColor::fromRgbF(0, 1, 0.5, 1));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(UIColor::colorWithWhite(nan, 1)->qColor(), QColor::fromRgbF(0, 0, 0, 1));
}

TEST_F(UIColorTest, RepeatsAPatternAtItsScale)
{
    QImage checks(2, 1, QImage::Format_ARGB32_Premultiplied);
    checks.setPixelColor(0, 0, Qt::red);
    checks.setPixelColor(1, 0, Qt::blue);
    const auto pattern = UIColor::colorWithPatternImage(UIImage::imageWithQImage(checks, 2));
    const QImage pixels = drawn({ 3, 1 }, 2, [&](CGContext& context) {
        context.fillRect({ 0, 0, 3, 1 }, *pattern);
    });
    for (int x = 0; x < 6; ++x)
        EXPECT_EQ(pixels.pixelColor(x, 0), QColor(x % 2 == 0 ? Qt::red : Qt::blue)) << x;
}

} // namespace
