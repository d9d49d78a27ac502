// Filling in formats.
//
// Understood are %@ (any object), %lu, %ld, %d and %u (whole numbers), %p (an address), %% and the
// numbered forms such as %2$@ that translations use to change the order. Each argument shows itself by what
// it is, not by what the format calls it, so a wrong format never reads past its arguments: one that is
// missing shows as "(null)". What is not understood stays as it is.
#pragma once

#include "platform/foundation/NSAny.h"

#include <initializer_list>

class NSFormatArgument {
public:
    template <typename Value>
    requires std::constructible_from<NSAny, const Value&> &&(!std::is_pointer_v<Value>)NSFormatArgument(
        const Value& value)
        : m_value(NSAny(value))
    {
    }
    NSFormatArgument(const char* text)
        : m_value(NSAny(NSString::fromUtf8(text)))
    {
    }
    // For %p.
    template <typename Object>
    requires(!std::same_as<std::remove_const_t<Object>, char>) NSFormatArgument(Object* pointer)
        : m_pointer(pointer)
        , m_isPointer(true)
    {
    }

    // The locale's whole numbers have its digits and grouping; a nil locale gives plain digits.
    NSString text(const NSString& locale) const;

private:
    NSAny m_value;
    const void* m_pointer = nullptr;
    bool m_isPointer = false;
};

// stringWithFormat:
NSString NSStringWithFormat(const NSString& format, std::initializer_list<NSFormatArgument> arguments);
// localizedStringWithFormat: — in the user's locale, or in another one for tests.
NSString NSLocalizedStringWithFormat(
    const NSString& format, std::initializer_list<NSFormatArgument> arguments);
NSString NSLocalizedStringWithFormat(
    const NSString& locale, const NSString& format, std::initializer_list<NSFormatArgument> arguments);
