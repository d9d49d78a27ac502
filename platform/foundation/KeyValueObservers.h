// The observers of one object, by key.
//
// Observers may be added, removed or destroyed while a change is being told: one that is removed
// is not called again, one that is added is called from the next change on.
#pragma once

#include "platform/foundation/NSObject.h"

#include <vector>

struct KeyValueObservation {
    std::weak_ptr<NSObject> observer;
    const NSObject* identity = nullptr; // outlives the weak reference: a destructor removes itself by it
    NSString keyPath;
    const void* context = nullptr;
};

class KeyValueObservers {
public:
    KeyValueObservers() = default;
    ~KeyValueObservers();
    KeyValueObservers(const KeyValueObservers&) = delete;
    KeyValueObservers& operator=(const KeyValueObservers&) = delete;

    void add(KeyValueObservation);
    // Answers whether there was such a registration.
    bool remove(const NSObject& observer, const NSString& keyPath, const void* context);
    void notify(NSObject& object, const NSString& key);

    // How many registrations there are with all objects together.
    static std::int64_t liveCount();

private:
    struct Entry {
        KeyValueObservation observation;
        unsigned serial;
    };
    std::vector<Entry> m_entries;
    unsigned m_nextSerial = 0;
};
