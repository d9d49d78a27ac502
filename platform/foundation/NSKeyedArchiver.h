// Writes coded objects to data and reads them back.
//
// The data comes from outside when it is read: damaged or hostile data gives nil, never a crash.
#pragma once

#include "platform/foundation/NSCoding.h"

class NSKeyedArchiver {
public:
    // archivedDataWithRootObject: — nil for a nil root.
    static NSData archivedDataWithRootObject(const NSAny& root);
};

class NSKeyedUnarchiver {
public:
    // unarchivedObjectOfClass:fromData:
    template <typename Class> static auto unarchivedObjectOfClass(const NSData& data)
    {
        return coderFor(data)->decodeObjectOfClass<Class>(QStringLiteral("root"));
    }

private:
    static std::unique_ptr<const NSCoder> coderFor(const NSData&);
};
