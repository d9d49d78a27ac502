// Turns values into text for people. The base of all formatters.
#pragma once

#include "platform/foundation/NSAny.h"

class NSFormatter : public NSObject {
public:
    // The text, or nil for an object that this formatter does not take.
    virtual NSString stringForObjectValue(const NSAny& object) const = 0;
};
