// Broadcasts by name.
//
// Observers are held weakly and may come and go while a notification is being posted: one that is
// removed is not called again, one that is added is called from the next notification on. Main thread only.
#pragma once

#include "platform/foundation/Action.h"

#include <vector>

// The sender that a notification's action receives.
class NSNotification : public NSObject {
public:
    NSNotification(NSString name, std::shared_ptr<NSObject> object);

    const NSString& name() const { return m_name; }
    const std::shared_ptr<NSObject>& object() const { return m_object; }

private:
    NSString m_name;
    std::shared_ptr<NSObject> m_object;
};

class NSNotificationCenter {
public:
    static NSNotificationCenter& defaultCenter();

    // Calls the action for every notification of that name, whoever posts it.
    void addObserver(const Action& action, const NSString& name);
    // Removes exactly that registration; without one nothing happens.
    void removeObserver(const Action& action, const NSString& name);
    // Removes every registration of the object, as its destructor does.
    void removeObserver(const NSObject& observer);

    // How many registrations there are; what an observer left behind that is gone counts until the next post.
    std::size_t observerCount() const { return m_registrations.size(); }

    void post(const NSString& name, const std::shared_ptr<NSObject>& object = nullptr);

private:
    struct Registration {
        Action action;
        NSString name;
        unsigned serial;
    };
    std::vector<Registration> m_registrations;
    unsigned m_nextSerial = 0;
};
