// One object of any kind, or nil: what an untyped argument carries.
//
// A null string, an empty address, a null date and a null pointer are all nil.
#pragma once

#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/NSValue.h"

#include <variant>

class NSAny {
public:
    NSAny() = default;
    NSAny(std::nullptr_t) { }
    NSAny(const NSNumber& number)
        : m_value(number)
    {
    }
    template <typename Number>
    requires std::is_arithmetic_v<Number> NSAny(Number number)
        : m_value(NSNumber(number))
    {
    }
    NSAny(const NSDecimalNumber& number)
        : m_value(NSNumber(number))
    {
    }
    NSAny(const NSString&);
    NSAny(const NSURL&);
    NSAny(const NSDate&);
    NSAny(const NSValue&);
    template <std::derived_from<NSObject> Class>
    NSAny(const std::shared_ptr<Class>& object)
        : NSAny(std::shared_ptr<NSObject>(object), IsObject {})
    {
    }

    bool isNil() const { return std::holds_alternative<std::monostate>(m_value); }
    // The value when it is of that kind (NSNumber, NSString, NSURL, NSDate, NSValue), else null.
    template <typename Kind> const Kind* as() const { return std::get_if<Kind>(&m_value); }
    // The object when it is of that class, else nil.
    template <typename Class> std::shared_ptr<Class> asObject() const
    {
        const auto* object = std::get_if<std::shared_ptr<NSObject>>(&m_value);
        return object ? std::dynamic_pointer_cast<Class>(*object) : nullptr;
    }

    // isEqual: — values by value, objects as they see it; nil equals nothing.
    bool isEqual(const NSAny& other) const;
    // What "%@" shows; "(null)" for nil.
    NSString description() const;

private:
    struct IsObject { };
    NSAny(std::shared_ptr<NSObject>, IsObject);

    std::variant<std::monostate, NSNumber, NSString, NSURL, NSDate, NSValue, std::shared_ptr<NSObject>>
        m_value;
};
