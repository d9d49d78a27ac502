// The characters of an XML document, decoded from its bytes.
//
// The encoding is found as the XML recommendation says (Appendix F): by the byte order mark, by the zeros
// around the first character, else by the declaration, else it is UTF-8. EncodedText reads it.
#pragma once

#include "platform/foundation/FoundationTypes.h"

struct XMLText {
    NSString text; // without a byte order mark
    int problemLine = 0;
    NSString problem; // empty where the text is good

    static XMLText decode(const NSData&);
};
