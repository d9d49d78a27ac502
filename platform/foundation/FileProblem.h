// Tells on standard error why a file cannot be used: "path:line: cause".
//
// Whoever finds the consequence later (a list without entries, a picture that is missing) knows neither.
#pragma once

#include "platform/foundation/FoundationTypes.h"

class FileProblem {
public:
    static constexpr int noLine = 0;

    // Each problem is told once in the life of the process. Safe from any thread.
    static void tell(const NSString& path, int line, const NSString& cause);
};
