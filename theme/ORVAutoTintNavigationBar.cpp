#include "theme/ORVAutoTintNavigationBar.h"

void ORVAutoTintNavigationBar::tintColorDidChange()
{
    UINavigationBar::tintColorDidChange();
    setBarTintColor(superview() ? superview()->tintColor() : nullptr);
}
