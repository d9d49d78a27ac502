// Keyed secure coding: objects that write themselves under keys and are made again from them.
//
// A class takes part by deriving from NSCoding and having a constructor that takes the coder
// (initWithCoder:), which decodes in the order it likes. Decoding names the class that it expects; a
// missing key, a value of another class and damaged data all give nil or 0.
// Objects are coded as a tree: one that occurs twice is two when it is read back.
#pragma once

#include "platform/foundation/NSAny.h"

class NSCoder;

// NSSecureCoding
class NSCoding {
public:
    static bool supportsSecureCoding() { return true; }
    virtual void encodeWithCoder(NSCoder&) const = 0;

protected:
    ~NSCoding() = default; // objects end as NSObject
};

// An object class that can be made from a coder.
template <typename Class>
concept CodedClass = std::derived_from<Class, NSObject> && std::derived_from<Class,
    NSCoding> && std::constructible_from<Class, const NSCoder&>;

class NSCoder {
public:
    virtual ~NSCoder();

    // encodeObject:forKey: — nil leaves the key out. An object that is no NSCoding, or one nested in
    // itself, is a programming error and is left out too.
    virtual void encodeObject(const NSAny& object, const NSString& key) = 0;
    // encodeInteger:forKey: — unsigned values keep their bits.
    virtual void encodeInteger(std::int64_t value, const NSString& key) = 0;
    virtual std::int64_t decodeIntegerForKey(const NSString& key) const = 0;

    // decodeObjectOfClass:forKey: — values come as values (nil is their null state)…
    template <typename Value>
    requires(!std::derived_from<Value, NSObject>) Value decodeObjectOfClass(const NSString& key)
    const
    {
        const NSAny decoded = decodeValue(key);
        const Value* value = decoded.as<Value>();
        return value ? *value : Value {};
    }
    // …and objects shared. The stored object's class must be the expected one or a registered subclass of it.
    template <CodedClass Class> std::shared_ptr<Class> decodeObjectOfClass(const NSString& key) const
    {
        return std::dynamic_pointer_cast<Class>(decodeObject(key, recipeOf<Class>()));
    }

    // How an object of a class that stored data may name is made.
    struct Recipe {
        using Maker = std::shared_ptr<NSObject> (*)(const NSCoder&);
        NSString name;
        Maker maker;
    };
    template <CodedClass Coded> static Recipe recipeOf()
    {
        return { NSObject::nameOfClass(typeid(Coded)),
            [](const NSCoder& coder) -> std::shared_ptr<NSObject> { return make<Coded>(coder); } };
    }
    // Makes a subclass known to decoders that expect its base class.
    struct Registration {
        explicit Registration(const Recipe&);
    };

protected:
    virtual NSAny decodeValue(const NSString& key) const = 0;
    virtual std::shared_ptr<NSObject> decodeObject(const NSString& key, const Recipe& expected) const = 0;
    // The maker for a stored class name: the expected class's own or a registered one; null for others.
    static Recipe::Maker makerFor(const NSString& className, const Recipe& expected);
};
