// Reads a table of localised strings: lines of "key" = "text"; with comments between them.
//
// The text is UTF-8, or in the form of Unicode that its bytes show (EncodedText). Reading stops at the first
// error and keeps the entries before it.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <QHash>

#include <optional>

struct StringsTable {
    struct Error {
        int line = 0; // the first line is 1
        NSString message;
    };

    // A hundred times what a large application needs; no larger file is read.
    static constexpr qint64 largestFile = 4 * 1024 * 1024;

    QHash<NSString, NSString> entries; // of equal keys the last one counts
    std::optional<Error> error;

    static StringsTable parse(const NSData& text);
};
