#include "platform/foundation/ClassRegistry.h"

#include <QHash>

#include <utility>
#include <vector>

namespace {

// Function-level statics: registration objects of other files may be built before this file's.
QHash<NSString, ClassRegistry::Maker>& makers()
{
    static QHash<NSString, ClassRegistry::Maker> registered;
    return registered;
}

std::vector<std::function<void()>>& waitingHooks()
{
    static std::vector<std::function<void()>> hooks;
    return hooks;
}

} // namespace

std::shared_ptr<NSObject> ClassRegistry::makeObject(const NSString& className)
{
    const Maker maker = makers().value(className);
    return maker ? maker() : nullptr;
}

void ClassRegistry::runLoadHooks()
{
    while (!waitingHooks().empty()) {
        const auto hooks = std::exchange(waitingHooks(), {});
        for (const auto& hook : hooks)
            hook();
    }
}

ClassRegistry::Class::Class(const char* name, const Maker& maker)
{
    makers().insert(NSString::fromLatin1(name), maker);
}

ClassRegistry::LoadHook::LoadHook(std::function<void()> work) { waitingHooks().push_back(std::move(work)); }
