#include "platform/foundation/NSObject.h"

#include "platform/foundation/KeyValueObservers.h"
#include "platform/foundation/LiveObjects.h"
#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"

#include <cxxabi.h>

#include <cstdlib>

NSObject::NSObject() { LiveObjects::added(*this); }
NSObject::~NSObject() { LiveObjects::removed(*this); }

NSString NSObject::nameOfClass(const std::type_info& type)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return NSString::fromUtf8(status == 0 ? name.get() : type.name());
}

NSString NSObject::className() const { return nameOfClass(typeid(*this)); }

std::size_t NSObject::hash() const { return std::hash<const void*> {}(this); }

NSString NSObject::description() const
{
    return QStringLiteral("<%1: 0x%2>").arg(className()).arg(reinterpret_cast<quintptr>(this), 0, 16);
}

void NSObject::addObserver(NSObject& observer, const NSString& keyPath, const void* context)
{
    NSParameterAssert(!observer.weak_from_this().expired(), "NSObject", "observer is shared");
    if (!m_observers)
        m_observers = std::make_unique<KeyValueObservers>();
    m_observers->add({ observer.weak_from_this(), &observer, keyPath, context });
}

void NSObject::removeObserver(const NSObject& observer, const NSString& keyPath, const void* context)
{
    const bool removed = m_observers && m_observers->remove(observer, keyPath, context);
    NSCAssert(removed, "NSObject",
        QStringLiteral("Cannot remove an observer of \"%1\" because it is not registered.").arg(keyPath));
}

void NSObject::observeValueForKeyPath(const NSString& keyPath, NSObject&, const void*)
{
    NSCAssert(
        false, "NSObject", QStringLiteral("A change of \"%1\" was received but not handled.").arg(keyPath));
}

void NSObject::willChangeValueForKey(const NSString&)
{
    // No observer asks for the value from before, so there is nothing to keep.
}

void NSObject::didChangeValueForKey(const NSString& key)
{
    if (!m_observers)
        return;
    const KeepAlive keepAlive(*this);
    m_observers->notify(*this, key);
}

NSObject::AutomaticChange::AutomaticChange(NSObject& object, const NSString& key)
    : m_keepAlive(object.weak_from_this().lock())
    , m_object(object)
    , m_key(key)
    , m_notifies(object.automaticallyNotifiesObserversForKey(key))
{
    if (m_notifies)
        m_object.willChangeValueForKey(m_key);
}

NSObject::AutomaticChange::~AutomaticChange()
{
    if (m_notifies)
        m_object.didChangeValueForKey(m_key);
}

bool isEqual(const NSObject* first, const NSObject* second)
{
    return first ? first->isEqual(second) : second == nullptr;
}
