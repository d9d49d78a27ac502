// Passes on the system's word that memory runs short.
//
// The kernel measures how long programs wait for memory and wakes whoever asked to know (pressure stall
// information, kernel documentation "accounting/psi"). Where it does not tell, nobody is told. Main thread
// only.
#pragma once

#include "platform/foundation/MemoryPressure.h"

#include <functional>
#include <memory>
#include <vector>

class MemoryPressureMonitor {
public:
    // Opens what becomes exceptionally readable when the trigger is met; -1 where there is none.
    using Opener = std::function<int(const char* trigger)>;

    explicit MemoryPressureMonitor(const Opener& open = openSystemTrigger);
    ~MemoryPressureMonitor();
    MemoryPressureMonitor(const MemoryPressureMonitor&) = delete;
    MemoryPressureMonitor& operator=(const MemoryPressureMonitor&) = delete;

    static int openSystemTrigger(const char* trigger);

private:
    class Watch;
    void watch(const Opener& open, const char* trigger, MemoryPressureLevel level);

    std::vector<std::unique_ptr<Watch>> m_watches;
};
