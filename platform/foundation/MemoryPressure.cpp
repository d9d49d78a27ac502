#include "platform/foundation/MemoryPressure.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

std::mutex listenersMutex;

std::vector<std::weak_ptr<MemoryPressureListener>>& allListeners()
{
    static std::vector<std::weak_ptr<MemoryPressureListener>> listeners;
    return listeners;
}

} // namespace

void MemoryPressure::addListener(const std::weak_ptr<MemoryPressureListener>& listener)
{
    const std::lock_guard lock(listenersMutex);
    std::erase_if(allListeners(), [](const auto& held) { return held.expired(); });
    allListeners().push_back(listener);
}

void MemoryPressure::send(MemoryPressureLevel level)
{
    std::vector<std::shared_ptr<MemoryPressureListener>> told;
    {
        const std::lock_guard lock(listenersMutex);
        for (const auto& held : allListeners())
            if (auto listener = held.lock())
                told.push_back(std::move(listener));
    }
    // Outside the lock: what a listener drops may itself own a listener.
    for (const auto& listener : told)
        listener->memoryPressureDidRise(level);
}
