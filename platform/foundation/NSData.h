// Whole files in memory.
#pragma once

#include "platform/foundation/FoundationTypes.h"

// dataWithContentsOfURL: — nil when the address names no readable file; an empty file gives empty data.
NSData dataWithContentsOfURL(const NSURL&);
