// Makes a property list's tree from its bytes, XML or binary.
#pragma once

#include "platform/foundation/NSPropertyList.h"

struct PropertyListReader {
    NSPropertyList list; // nil where there is a problem
    int problemLine = 0; // 0 where the data has no lines
    NSString problem;

    static PropertyListReader read(const NSData&);
};
