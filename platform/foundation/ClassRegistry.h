// Classes by name, and the work that a class does when it is loaded.
//
// Registration objects are namespace-level constants next to the class they register. Libraries that
// hold one are linked whole (see oruvane_link_whole), so that a static link cannot drop it.
#pragma once

#include "platform/foundation/NSObject.h"

#include <functional>

class ClassRegistry {
public:
    using Maker = std::function<std::shared_ptr<NSObject>()>;

    // A new object of the class with that name, or nil for an unknown one.
    static std::shared_ptr<NSObject> makeObject(const NSString& className);

    // +load — runs every hook that has not run yet, in the order of registration. The application's entry
    // calls it on the main thread before the first view exists.
    static void runLoadHooks();

    // Makes the class known by its name.
    struct Class {
        Class(const char* name, const Maker& maker);
    };
    // Remembers work for runLoadHooks(); one for each class and one for each category.
    struct LoadHook {
        explicit LoadHook(std::function<void()> work);
    };
};

#define REGISTER_CLASS(Name)                                                                                 \
    static const auto registered##Name = ClassRegistry::Class(#Name, [] { return make<Name>(); })
