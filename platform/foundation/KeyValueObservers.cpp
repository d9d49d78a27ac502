#include "platform/foundation/KeyValueObservers.h"

#include <algorithm>
#include <atomic>

namespace {

std::atomic<std::int64_t> registrations = 0; // objects are observed on more threads than one

} // namespace

KeyValueObservers::~KeyValueObservers() { registrations -= static_cast<std::int64_t>(m_entries.size()); }

std::int64_t KeyValueObservers::liveCount() { return registrations; }

void KeyValueObservers::add(KeyValueObservation observation)
{
    m_entries.push_back({ std::move(observation), m_nextSerial++ });
    ++registrations;
}

bool KeyValueObservers::remove(const NSObject& observer, const NSString& keyPath, const void* context)
{
    const auto found = std::find_if(m_entries.rbegin(), m_entries.rend(), [&](const Entry& entry) {
        return entry.observation.identity == &observer && entry.observation.keyPath == keyPath
            && entry.observation.context == context;
    });
    if (found == m_entries.rend())
        return false;
    m_entries.erase(std::next(found).base());
    --registrations;
    return true;
}

void KeyValueObservers::notify(NSObject& object, const NSString& key)
{
    const std::vector<Entry> told = m_entries;
    for (const Entry& entry : told) {
        if (entry.observation.keyPath != key)
            continue;
        const bool stillThere = std::any_of(m_entries.begin(), m_entries.end(),
            [&](const Entry& current) { return current.serial == entry.serial; });
        const auto observer = entry.observation.observer.lock();
        if (stillThere && observer)
            observer->observeValueForKeyPath(key, object, entry.observation.context);
    }
}
