// Counts the objects that live, by class: what a long run must leave as it was.
//
// Counts from construction to destruction; objects that were made before are not seen. Without a count in
// force, making and dropping an object costs one look at a pointer. To be asked while no other thread makes
// or drops objects: what is half made has not its class yet. One at a time.
#pragma once

#include "platform/foundation/NSObject.h"

#include <map>
#include <string>
#include <unordered_set>

class LiveObjects {
public:
    LiveObjects();
    ~LiveObjects();
    LiveObjects(const LiveObjects&) = delete;
    LiveObjects& operator=(const LiveObjects&) = delete;

    // How many live of each class that has any, by the class's name.
    std::map<std::string, std::int64_t> countsByClass() const;

    // For NSObject alone; safe from any thread.
    static void added(const NSObject& object);
    static void removed(const NSObject& object);

private:
    std::unordered_set<const NSObject*> m_objects;
};
