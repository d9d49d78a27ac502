// Reads a table of localised strings: lines of "key" = "text"; with comments between them.
//
// The text is UTF-8, with or without a byte order mark. Reading stops at the first error and keeps
// the entries before it.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QHash>

#include <optional>

struct StringsTable {
    struct Error {
        int line = 0; // the first line is 1
        NSString message;
    };

    QHash<NSString, NSString> entries; // of equal keys the last one counts
    std::optional<Error> error;

    static StringsTable parse(const NSData& text);
};
