// Looks at the bytes of a property list before the library parses them.
//
// The library descends by recursion, copies an object each time a binary list refers to it, and ends the
// process at a key with a zero character. A few crafted bytes could so exhaust the stack or the memory or
// stop the application; such lists are found here, by loops.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class PropertyListGuard {
public:
    // Whether the list is nested at most so deep, stays of a reasonable size when its references are
    // followed, and for XML is well formed.
    static bool admits(const NSData&, int maximumDepth);
    static bool isBinary(const NSData& data) { return data.startsWith("bplist"); }

private:
    static bool admitsXML(const NSData&, int maximumDepth);
    static bool admitsBinary(const NSData&, int maximumDepth);
};
