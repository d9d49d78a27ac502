// Writes down the values that an object has whenever a change of a key is announced.
#pragma once

#include "platform/foundation/NSObject.h"

#include <functional>
#include <vector>

template <typename Value> class ChangeLog final : public NSObject {
public:
    // Observes until it goes; the value is read at each announcement.
    ChangeLog(const std::shared_ptr<NSObject>& object, NSString key, std::function<Value()> value)
        : m_object(object)
        , m_key(std::move(key))
        , m_value(std::move(value))
    {
    }
    ~ChangeLog() override
    {
        if (const auto object = m_object.lock())
            object->removeObserver(*this, m_key, nullptr);
    }

    void observeValueForKeyPath(const NSString& key, NSObject& object, const void*) override
    {
        if (key == m_key && &object == m_object.lock().get())
            values.push_back(m_value());
        if (whenTold)
            whenTold();
    }

    std::vector<Value> values;
    std::function<void()> whenTold;

protected:
    void init() override
    {
        NSObject::init();
        if (const auto object = m_object.lock())
            object->addObserver(*this, m_key, nullptr);
    }

private:
    std::weak_ptr<NSObject> m_object;
    const NSString m_key;
    const std::function<Value()> m_value;
};

// A log of what a getter answers whenever a change of the key is announced.
template <typename Object, typename Value>
std::shared_ptr<ChangeLog<Value>> logChanges(
    const std::shared_ptr<Object>& object, const char* key, Value (Object::*getter)() const)
{
    return make<ChangeLog<Value>>(
        object, QLatin1String(key), [raw = object.get(), getter] { return (raw->*getter)(); });
}
