// The characters of a text file, decoded from its bytes.
//
// Every encoding that ICU knows is read. What is not in the encoding that it should be in is refused, with
// the name of the encoding, so that nothing is ever read wrong.
#pragma once

#include "platform/foundation/FoundationTypes.h"

struct EncodedText {
    NSString text; // without a byte order mark; up to the problem where there is one
    int problemLine = 0;
    NSString problem; // empty where the text is good

    // In the form of Unicode that the bytes themselves show, else in UTF-8.
    static EncodedText decode(const NSData&);
    // In that encoding, from after the mark.
    static EncodedText decode(const NSData&, const QByteArray& encoding, qsizetype markSize = 0);

    // The form that a byte order mark shows, or the zeros around a first character that is an ASCII one.
    struct Form {
        const char* encoding; // null where the bytes show none
        qsizetype markSize = 0; // how many of the bytes are a byte order mark
    };
    static Form formOf(const NSData&);

    // One name for each encoding, whatever it is called; empty for one that is not known.
    static QByteArray standardName(const QByteArray& encoding);
};
