// The characters of an XML document, decoded from its bytes.
//
// The encoding is found as the XML recommendation says (Appendix F): by the byte order mark, by the zeros
// around the first character, else by the declaration, else it is UTF-8. Every encoding that ICU knows is
// read. What is not in the encoding that it names is refused, so that nothing is ever read wrong.
#pragma once

#include "platform/foundation/FoundationTypes.h"

struct XMLText {
    NSString text; // without a byte order mark
    int problemLine = 0;
    NSString problem; // empty where the text is good

    static XMLText decode(const NSData&);
};
