// The colour that stands for another while the interface is dimmed.
#pragma once

#include "platform/graphics/UIColor.h"

// The grey of the same luminance, by the weights of ITU-R BT.709, at 80 % of the opacity. Nil for a colour
// that has neither red, green and blue components nor a white one, such as a pattern: it cannot be dimmed.
std::shared_ptr<UIColor> dimmedColor(const UIColor& color);
