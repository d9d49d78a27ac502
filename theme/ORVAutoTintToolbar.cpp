#include "theme/ORVAutoTintToolbar.h"

void ORVAutoTintToolbar::tintColorDidChange()
{
    UIToolbar::tintColorDidChange();
    setBarTintColor(superview() ? superview()->tintColor() : nullptr);
}
