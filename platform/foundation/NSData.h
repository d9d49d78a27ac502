// Whole files in memory.
#pragma once

#include "platform/foundation/FoundationTypes.h"

// A file's bytes, or why there are none.
struct FileContents {
    NSData data; // nil where the file cannot be read, else at least empty
    NSString problem;
    bool isMissing = false; // there is no such file

    // Nothing that an application brings with it is larger; a file beyond this is damaged or no such thing.
    static constexpr qint64 largestSize = 64 * 1024 * 1024;

    // A file that is larger than that is not read at all.
    static FileContents read(const NSString& path, qint64 mostBytes = largestSize);
};

// dataWithContentsOfURL: — nil when the address names no readable file; an empty file gives empty data. Why a
// file that is there cannot be read is told on standard error.
NSData dataWithContentsOfURL(const NSURL&, qint64 mostBytes = FileContents::largestSize);
