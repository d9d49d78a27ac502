// Reads the binary form of property lists, with the property list library.
//
// The library descends by recursion, copies an object each time the list refers to it, and ends the process
// at a key with a zero character. A few crafted bytes could so exhaust the stack or the memory or stop the
// application; such lists are found first, by a scan without recursion.
#pragma once

#include "platform/foundation/NSPropertyList.h"

class BinaryPropertyList {
public:
    static bool isBinary(const NSData& data) { return data.startsWith("bplist"); }
    // nil for what is no binary list, is nested deeper, or grows beyond reason when its references are
    // followed.
    static NSPropertyList read(const NSData&, int maximumDepth);
};
