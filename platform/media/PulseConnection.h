// The process's connection to the sound server, with the thread that serves it.
//
// Made with the first sound and kept: on a connection that is ready the server asks for the first samples
// within half a millisecond. A connection that broke is replaced the next time one is wanted. Making one and
// asking for it is safe from any thread.
#pragma once

#include "platform/media/PulseLibrary.h"

#include <memory>
#include <vector>

class PulseConnection {
public:
    // Told that the connection is ready or has broken, on its thread and with its lock held.
    class Listener {
    public:
        virtual void connectionIsReady() = 0;
        virtual void connectionIsLost() = 0;

    protected:
        ~Listener() = default;
    };

    // Connects without waiting where there is no good connection yet; null without a client library.
    static std::shared_ptr<PulseConnection> shared();

    ~PulseConnection();
    PulseConnection(const PulseConnection&) = delete;
    PulseConnection& operator=(const PulseConnection&) = delete;

    const PulseLibrary& library() const { return m_library; }
    pa_context* context() const { return m_context; }

    // Everything about the connection and its streams is touched with this lock held.
    class [[nodiscard]] Lock {
    public:
        explicit Lock(const PulseConnection&);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        const PulseConnection& m_connection;
    };

    // With the lock held.
    bool isReady() const;
    bool isLost() const;
    void addListener(Listener&);
    void removeListener(Listener&);

private:
    explicit PulseConnection(const PulseLibrary&);
    void connect();
    void stateDidChange();

    const PulseLibrary& m_library;
    pa_threaded_mainloop* m_loop = nullptr;
    pa_context* m_context = nullptr;
    std::vector<Listener*> m_listeners;
};
