// The look of every navigation bar: opaque in the main colour, with a white condensed title and white items.

#include "platform/controls/UINavigationBar.h"
#include "platform/foundation/ClassRegistry.h"
#include "platform/views/UIAppearance.h"
#include "theme/UIColor+ORVTheme.h"
#include "theme/UIFont+ORVTheme.h"

namespace {

void setUpAppearance()
{
    const auto bars = UIAppearance::of<UINavigationBar>();
    bars.set(&UINavigationBar::setTintColor, orv_oruvaneNavigationBarItemsColor());

    const NSTextAttributes titleAttributes {
        { NSFontAttributeName, orv_oruvaneNavigationBarTitleFont() },
        { NSForegroundColorAttributeName, orv_oruvaneNavigationBarItemsColor() },
    };
    bars.set(&UINavigationBar::setTitleTextAttributes, titleAttributes);

    const auto appearance = make<UINavigationBarAppearance>();
    appearance->configureWithOpaqueBackground();
    appearance->setBackgroundColor(orv_oruvaneNavigationBarColor());
    appearance->setTitleTextAttributes(titleAttributes);
    bars.set(&UINavigationBar::setStandardAppearance, appearance);
    bars.set(&UINavigationBar::setScrollEdgeAppearance, appearance);
}

const ClassRegistry::LoadHook loadHook(setUpAppearance);

} // namespace
