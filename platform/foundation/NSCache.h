// Keeps objects that can be made again, until memory runs short.
//
// There is no limit on their number. A memory warning drops the half that has not been used for the
// longest time, critical pressure drops all. A key is a string or an address, and an address never
// equals a string. Made with make<NSCache>(). Safe from any thread; objects that are dropped end outside the
// lock.
#pragma once

#include "platform/foundation/MemoryPressure.h"
#include "platform/foundation/NSObject.h"

#include <list>
#include <mutex>
#include <unordered_map>
#include <variant>

class NSCache final : public NSObject, public MemoryPressureListener {
public:
    using Key = std::variant<NSString, NSURL>;

    // nil when there is none; counts as a use.
    std::shared_ptr<NSObject> objectForKey(const Key&);
    // The same, nil also for an object of another class.
    template <typename Class> std::shared_ptr<Class> objectForKey(const Key& key)
    {
        return std::dynamic_pointer_cast<Class>(objectForKey(key));
    }
    // setObject:forKey: — replaces what was there; a nil object removes it.
    void setObject(const std::shared_ptr<NSObject>& object, const Key& key);
    void removeObjectForKey(const Key&);
    void removeAllObjects();
    std::size_t count() const;

    void memoryPressureDidRise(MemoryPressureLevel) override;

protected:
    void init() override;

private:
    struct Entry {
        Key key;
        std::shared_ptr<NSObject> object;
    };
    using Entries = std::list<Entry>; // the most recently used first
    struct KeyHash {
        std::size_t operator()(const Key&) const;
    };

    Entries takeOldest(std::size_t count); // the lock is held

    mutable std::mutex m_mutex;
    Entries m_entries;
    std::unordered_map<Key, Entries::iterator, KeyHash> m_index;
};
