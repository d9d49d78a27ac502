// Text on its way to ICU and back. For the sources of formatters only.
#pragma once

#include "platform/foundation/FoundationTypes.h"

#include <unicode/unistr.h>

inline icu::UnicodeString toICU(const NSString& text)
{
    return { reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size()) };
}

inline NSString fromICU(const icu::UnicodeString& text)
{
    return NSString::fromUtf16(text.getBuffer(), text.length());
}
