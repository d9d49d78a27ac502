#include "platform/foundation/LiveObjects.h"

#include <atomic>
#include <mutex>

namespace {

std::atomic<bool> isCounting = false;
std::mutex mutex; // guards what follows
std::unordered_set<const NSObject*>* counted = nullptr;

} // namespace

LiveObjects::LiveObjects()
{
    const std::lock_guard lock(mutex);
    counted = &m_objects;
    isCounting = true;
}

LiveObjects::~LiveObjects()
{
    const std::lock_guard lock(mutex);
    isCounting = false;
    counted = nullptr;
}

std::map<std::string, std::int64_t> LiveObjects::countsByClass() const
{
    const std::lock_guard lock(mutex);
    std::unordered_map<const std::type_info*, std::int64_t> counts;
    for (const NSObject* const object : m_objects)
        ++counts[&typeid(*object)];
    std::map<std::string, std::int64_t> named;
    for (const auto& [type, count] : counts)
        named[NSObject::nameOfClass(*type).toStdString()] += count;
    return named;
}

void LiveObjects::added(const NSObject& object)
{
    if (!isCounting.load(std::memory_order_relaxed))
        return;
    const std::lock_guard lock(mutex);
    if (counted)
        counted->insert(&object);
}

void LiveObjects::removed(const NSObject& object)
{
    if (!isCounting.load(std::memory_order_relaxed))
        return;
    const std::lock_guard lock(mutex);
    if (counted)
        counted->erase(&object);
}
