// What addresses answer about their parts.
#pragma once

#include "platform/foundation/FoundationTypes.h"

// absoluteString — nil for a nil address.
NSString absoluteString(const NSURL&);
// lastPathComponent — the file's name.
NSString lastPathComponent(const NSURL&);
// pathExtension — what follows the last point of the file's name, without the point; empty without one.
NSString pathExtension(const NSURL&);
// The file's name without its extension.
NSString lastPathComponentWithoutExtension(const NSURL&);
// The same folder with another file's name in it.
NSURL urlByReplacingLastPathComponent(const NSURL&, const NSString& name);
