#include "platform/host/MemoryPressureMonitor.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <cstring>

namespace {

// Microseconds of waiting within a window of two seconds, the shortest that programs without rights may ask
// for.
constexpr const char* warningTrigger = "some 150000 2000000"; // some programs wait 7 % of the time
constexpr const char* criticalTrigger = "full 100000 2000000"; // all of them wait 5 % of the time

} // namespace

class MemoryPressureMonitor::Watch {
public:
    Watch(int descriptor, MemoryPressureLevel level)
        : m_descriptor(descriptor)
        , m_notifier(descriptor, QSocketNotifier::Exception)
    {
        QObject::connect(
            &m_notifier, &QSocketNotifier::activated, &m_notifier, [level] { MemoryPressure::send(level); });
    }
    ~Watch()
    {
        m_notifier.setEnabled(false);
        close(m_descriptor);
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

private:
    int m_descriptor;
    QSocketNotifier m_notifier;
};

MemoryPressureMonitor::MemoryPressureMonitor(const Opener& open)
{
    watch(open, warningTrigger, MemoryPressureLevel::Warning);
    watch(open, criticalTrigger, MemoryPressureLevel::Critical);
}

MemoryPressureMonitor::~MemoryPressureMonitor() = default;

void MemoryPressureMonitor::watch(const Opener& open, const char* trigger, MemoryPressureLevel level)
{
    const int descriptor = open(trigger);
    if (descriptor >= 0)
        m_watches.push_back(std::make_unique<Watch>(descriptor, level));
}

int MemoryPressureMonitor::openSystemTrigger(const char* trigger)
{
    const int descriptor = ::open("/proc/pressure/memory", O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return -1;
    const std::size_t length = std::strlen(trigger) + 1;
    if (write(descriptor, trigger, length) == static_cast<ssize_t>(length))
        return descriptor;
    close(descriptor); // the kernel is too old to let everybody ask
    return -1;
}
