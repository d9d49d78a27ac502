#include "theme/UIColor+ORVTheme.h"

namespace {

// Components are the single-precision values of their fractions.
constexpr double green = 55.0F / 255.0F;
constexpr double blue = 93.0F / 255.0F;
constexpr double separatorBrightness = 0.65F;
constexpr double sliderTrackWhite = 0.24F;

} // namespace

std::shared_ptr<UIColor> orv_oruvaneMainColor() { return UIColor::colorWithRed(1, green, blue, 1); }

std::shared_ptr<UIColor> orv_oruvaneNavigationBarColor() { return orv_oruvaneMainColor(); }

std::shared_ptr<UIColor> orv_oruvaneNavigationBarItemsColor() { return UIColor::whiteColor(); }

std::shared_ptr<UIColor> orv_oruvaneSplitSeparatorMainColor() { return UIColor::systemFillColor(); }

std::shared_ptr<UIColor> orv_oruvaneSplitSeparatorTopColor()
{
    const HueSaturationBrightnessAlpha bar
        = orv_oruvaneNavigationBarColor()->getHue().value_or(HueSaturationBrightnessAlpha {});
    return UIColor::colorWithHue(bar.hue, bar.saturation, bar.brightness * separatorBrightness, bar.alpha);
}

std::shared_ptr<UIColor> orv_oruvaneSelectedCellBackgroundColor() { return UIColor::systemGray6Color(); }

std::shared_ptr<UIColor> orv_oruvaneProfileNumbersSubtitleColor() { return UIColor::labelColor(); }

std::shared_ptr<UIColor> orv_oruvanePlaybackSliderTrackColor()
{
    return UIColor::colorWithWhite(sliderTrackWhite, 1);
}

// The main colour's values, but a colour of its own: the button does not follow the theme.
std::shared_ptr<UIColor> orv_oruvaneRecordingButtonColor()
{
    return UIColor::colorWithRed(1, green, blue, 1);
}
