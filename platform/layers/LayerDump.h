// Layer trees and frames as text, for tests and for reading while debugging.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class CALayer;
struct FrameList;

namespace LayerDump {

// One line a layer, indented by depth: name or class, frame, and what differs from the defaults.
NSString layerTree(const CALayer&);
// One line an item, indented by depth. Layers are numbered in the order of the list, so that equal frames
// print equally whatever their layers' identities.
NSString frame(const FrameList&);

} // namespace LayerDump
