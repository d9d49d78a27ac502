#include "platform/foundation/NSNotificationCenter.h"

#include <algorithm>

NSNotification::NSNotification(NSString name, std::shared_ptr<NSObject> object)
    : m_name(std::move(name))
    , m_object(std::move(object))
{
}

NSNotificationCenter& NSNotificationCenter::defaultCenter()
{
    static NSNotificationCenter center;
    return center;
}

void NSNotificationCenter::addObserver(const Action& action, const NSString& name)
{
    m_registrations.push_back({ action, name, m_nextSerial++ });
}

void NSNotificationCenter::removeObserver(const Action& action, const NSString& name)
{
    const auto found = std::find_if(m_registrations.begin(), m_registrations.end(),
        [&](const Registration& held) { return held.action == action && held.name == name; });
    if (found != m_registrations.end())
        m_registrations.erase(found);
}

void NSNotificationCenter::removeObserver(const NSObject& observer)
{
    std::erase_if(m_registrations, [&](const Registration& held) { return held.action.isTarget(observer); });
}

void NSNotificationCenter::post(const NSString& name, const std::shared_ptr<NSObject>& object)
{
    std::erase_if(m_registrations, [](const Registration& held) { return !held.action.hasTarget(); });
    const auto notification = make<NSNotification>(name, object);
    const auto told = m_registrations;
    for (const Registration& held : told) {
        const bool stillThere = std::any_of(m_registrations.begin(), m_registrations.end(),
            [&](const Registration& current) { return current.serial == held.serial; });
        if (held.name == name && stillThere)
            held.action.perform(notification.get());
    }
}
