// Tells on standard error why a file cannot be used: "path:line: cause".
//
// Where the consequence shows later (a list without entries, a missing picture), neither is known any more.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class FileProblem {
public:
    static constexpr int noLine = 0;

    // Each problem is told once in the life of the process. Safe from any thread.
    static void tell(const NSString& path, int line, const NSString& cause);
};
