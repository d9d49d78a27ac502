// View trees as text, for tests and for reading while debugging.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class UIView;

namespace ViewDump {

// One line a view, indented by depth: class, frame, what differs from a plain view, and what it says of
// itself to a screen reader. Layers that belong to no subview follow their view's line. Of a hidden view only
// the line itself is told. Numbers are rounded to half points, so that a font's last fraction is no
// difference.
NSString tree(const UIView& view);

} // namespace ViewDump
