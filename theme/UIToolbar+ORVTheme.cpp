// The look of every toolbar: white items.

#include "platform/controls/UIToolbar.h"
#include "platform/foundation/ClassRegistry.h"
#include "platform/views/UIAppearance.h"
#include "theme/UIColor+ORVTheme.h"

namespace {

const ClassRegistry::LoadHook loadHook([] {
    UIAppearance::of<UIToolbar>().set(&UIToolbar::setTintColor, orv_oruvaneNavigationBarItemsColor());
});

} // namespace
