// Dates made from intervals, and how a date describes itself.
#pragma once

#include "platform/foundation/FoundationTypes.h"

// dateWithTimeIntervalSinceNow: — seconds from the scheduler's date, negative ones in the past.
// What no calendar holds (or is no number) gives nil.
NSDate dateWithTimeIntervalSinceNow(NSTimeInterval seconds);
// dateByAddingTimeInterval: — likewise.
NSDate dateByAddingTimeInterval(const NSDate&, NSTimeInterval seconds);
// description — "2024-05-17 12:00:00 +0000"; "(null)" for nil.
NSString description(const NSDate&);
