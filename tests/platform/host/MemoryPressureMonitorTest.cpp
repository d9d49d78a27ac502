#include "platform/host/MemoryPressureMonitor.h"

#include <QCoreApplication>

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// A connection whose urgent data stands for the kernel's word: both make a descriptor exceptionally readable.
class UrgentConnection {
public:
    UrgentConnection()
    {
        const int listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(address);
        EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), length), 0);
        listen(listener, 1);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
        m_sender = socket(AF_INET, SOCK_STREAM, 0);
        EXPECT_EQ(connect(m_sender, reinterpret_cast<sockaddr*>(&address), length), 0);
        receiver = accept(listener, nullptr, nullptr);
        close(listener);
    }
    ~UrgentConnection() { close(m_sender); }
    UrgentConnection(const UrgentConnection&) = delete;
    UrgentConnection& operator=(const UrgentConnection&) = delete;

    void raise() { send(m_sender, "!", 1, MSG_OOB); }
    void settle()
    {
        char byte = 0;
        recv(receiver, &byte, 1, MSG_OOB);
    }

    int receiver = -1; // closed by whoever watches it

private:
    int m_sender = -1;
};

class Listener final : public MemoryPressureListener {
public:
    void memoryPressureDidRise(MemoryPressureLevel level) override
    {
        levels.push_back(level);
        (level == MemoryPressureLevel::Warning ? warning : critical)->settle();
    }
    UrgentConnection* warning = nullptr;
    UrgentConnection* critical = nullptr;
    std::vector<MemoryPressureLevel> levels;
};

TEST(MemoryPressureMonitor, PassesOnEachLevel)
{
    UrgentConnection warning;
    UrgentConnection critical;
    const auto listener = std::make_shared<Listener>();
    listener->warning = &warning;
    listener->critical = &critical;
    MemoryPressure::addListener(listener);
    std::vector<std::string> triggers;
    const MemoryPressureMonitor monitor([&](const char* trigger) {
        triggers.push_back(trigger);
        return triggers.size() == 1 ? warning.receiver : critical.receiver;
    });
    EXPECT_THAT(triggers, testing::ElementsAre(testing::StartsWith("some "), testing::StartsWith("full ")));

    warning.raise();
    while (listener->levels.empty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    critical.raise();
    while (listener->levels.size() < 2)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_THAT(
        listener->levels, testing::ElementsAre(MemoryPressureLevel::Warning, MemoryPressureLevel::Critical));
}

TEST(MemoryPressureMonitor, StaysSilentWhereTheSystemDoesNotTell)
{
    int asked = 0;
    const MemoryPressureMonitor monitor([&](const char*) {
        ++asked;
        return -1;
    });
    EXPECT_EQ(asked, 2);
}

TEST(MemoryPressureMonitor, RefusesATriggerThatTheKernelDoesNotKnow)
{
    EXPECT_EQ(MemoryPressureMonitor::openSystemTrigger("nonsense"), -1);
}

} // namespace
