#include "platform/foundation/NSCache.h"

#include <iterator>

// Everything that leaves the cache is moved to a local list first and ends after the lock is released: a
// destructor may ask the cache again.

void NSCache::init()
{
    NSObject::init();
    MemoryPressure::addListener(weakSelf(this));
}

std::size_t NSCache::KeyHash::operator()(const Key& key) const
{
    return std::visit([&](const auto& value) { return qHash(value, key.index()); }, key);
}

std::shared_ptr<NSObject> NSCache::objectForKey(const Key& key)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_index.find(key);
    if (found == m_index.end())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    return found->second->object;
}

void NSCache::setObject(const std::shared_ptr<NSObject>& object, const Key& key)
{
    Entries replaced;
    const std::lock_guard lock(m_mutex);
    const auto found = m_index.find(key);
    if (found != m_index.end()) {
        replaced.splice(replaced.begin(), m_entries, found->second);
        m_index.erase(found);
    }
    if (!object)
        return;
    m_entries.push_front({ key, object });
    m_index.emplace(key, m_entries.begin());
}

void NSCache::removeObjectForKey(const Key& key) { setObject(nullptr, key); }

void NSCache::removeAllObjects()
{
    Entries removed;
    const std::lock_guard lock(m_mutex);
    removed = takeOldest(m_entries.size());
}

std::size_t NSCache::count() const
{
    const std::lock_guard lock(m_mutex);
    return m_entries.size();
}

void NSCache::memoryPressureDidRise(MemoryPressureLevel level)
{
    Entries removed;
    const std::lock_guard lock(m_mutex);
    const std::size_t all = m_entries.size();
    removed = takeOldest(level == MemoryPressureLevel::Critical ? all : (all + 1) / 2);
}

NSCache::Entries NSCache::takeOldest(std::size_t count)
{
    const auto first = std::prev(m_entries.end(), static_cast<std::ptrdiff_t>(count));
    for (auto entry = first; entry != m_entries.end(); ++entry)
        m_index.erase(entry->key);
    Entries taken;
    taken.splice(taken.begin(), m_entries, first, m_entries.end());
    return taken;
}
