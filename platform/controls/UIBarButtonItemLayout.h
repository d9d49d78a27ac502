// What navigation bars and toolbars have in common: items that stand side by side.
#pragma once

#include "platform/controls/UIBarButtonItem.h"

namespace UIBarButtonItemLayout {

inline constexpr double sideMargin = 6; // to the bar's ends; a button's picture stands well inside its width
inline constexpr double spacing = 8;

// Brings the views of the wanted items into the bar and takes away those of the shown ones that are not
// wanted any more. Nulls among the wanted ones are passed over.
void show(UIView& bar, UIBarButtonItems& shown, const UIBarButtonItems& wanted);

// What the items and the spaces between them would like to have.
double preferredWidth(const UIBarButtonItems& items);

// Places the items from the left end on. Too little room is taken from the custom views, in proportion to
// their widths; too much goes to those of flexible width, in equal parts.
void place(const UIBarButtonItems& items, const CGRect& area);

} // namespace UIBarButtonItemLayout
