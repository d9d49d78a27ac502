// Makes a property list's tree from its bytes.
#pragma once

#include "platform/foundation/NSPropertyList.h"

class PropertyListReader {
public:
    // nil for what is no property list, too large, or nested too deep.
    static NSPropertyList read(const NSData&);
};
