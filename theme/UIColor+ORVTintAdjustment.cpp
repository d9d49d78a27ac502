#include "platform/foundation/NSAssertionHandler.h"
#include "theme/UIColor+ORVTintAdjustment.h"

namespace {

// The share of each component in the luminance, and the dimmed opacity; all but the blue one are
// single-precision values.
constexpr double redWeight = 0.2126F;
constexpr double greenWeight = 0.7152F;
constexpr double blueWeight = 0.0722;
constexpr double dimmedOpacity = 0.8F;

constexpr int reportedLine = 38; // part of the failure's identity, wherever the check stands

std::optional<WhiteAlpha> luminanceOf(const UIColor& color)
{
    if (const auto rgb = color.getRed())
        return WhiteAlpha { rgb->red * redWeight + rgb->green * greenWeight + rgb->blue * blueWeight,
            rgb->alpha };
    return color.getWhite();
}

} // namespace

std::shared_ptr<UIColor> colorWithTintAdjustment(
    const std::shared_ptr<UIColor>& color, UIViewTintAdjustmentMode mode)
{
    if (!color || mode != UIViewTintAdjustmentMode::Dimmed)
        return color;
    const std::optional<WhiteAlpha> luminance = luminanceOf(*color);
    NSCAssertAtLine(luminance, "UIColor+ORVTintAdjustment", reportedLine,
        QStringLiteral("Color is not compatible with dimming."));
    if (!luminance)
        return color;
    return UIColor::colorWithWhite(luminance->white, luminance->alpha * dimmedOpacity);
}
