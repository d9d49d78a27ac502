#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/DimmedColor.h"
#include "theme/UIColor+ORVTintAdjustment.h"

namespace {

constexpr int reportedLine = 38; // part of the failure's identity, wherever the check stands

} // namespace

std::shared_ptr<UIColor> colorWithTintAdjustment(
    const std::shared_ptr<UIColor>& color, UIViewTintAdjustmentMode mode)
{
    if (!color || mode != UIViewTintAdjustmentMode::Dimmed)
        return color;
    const auto dimmed = dimmedColor(*color);
    NSCAssertAtLine(dimmed, "UIColor+ORVTintAdjustment", reportedLine,
        QStringLiteral("Color is not compatible with dimming."));
    return dimmed ? dimmed : color;
}
