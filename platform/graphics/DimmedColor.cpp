#include "platform/graphics/DimmedColor.h"

namespace {

// All but the weight of blue are single-precision values.
constexpr double redWeight = 0.2126F;
constexpr double greenWeight = 0.7152F;
constexpr double blueWeight = 0.0722;
constexpr double dimmedOpacity = 0.8F;

std::optional<WhiteAlpha> luminanceOf(const UIColor& color)
{
    if (const auto rgb = color.getRed())
        return WhiteAlpha { rgb->red * redWeight + rgb->green * greenWeight + rgb->blue * blueWeight,
            rgb->alpha };
    return color.getWhite();
}

} // namespace

std::shared_ptr<UIColor> dimmedColor(const UIColor& color)
{
    const auto luminance = luminanceOf(color);
    return luminance ? UIColor::colorWithWhite(luminance->white, luminance->alpha * dimmedOpacity) : nullptr;
}
