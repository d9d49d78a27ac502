// Tells those who keep memory that they could give back when the system runs short of it.
//
// The host is warned by the system and passes it on; caches are the listeners. Safe from any thread.
#pragma once

#include <memory>

enum class MemoryPressureLevel { Warning, Critical };

class MemoryPressureListener {
public:
    virtual void memoryPressureDidRise(MemoryPressureLevel) = 0; // on the sender's thread

protected:
    ~MemoryPressureListener() = default; // nobody owns a listener through this type
};

class MemoryPressure {
public:
    // Held weakly; a listener that is gone is forgotten.
    static void addListener(const std::weak_ptr<MemoryPressureListener>&);
    // Tells every listener before it returns.
    static void send(MemoryPressureLevel);
};
