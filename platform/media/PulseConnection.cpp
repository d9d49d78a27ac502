#include "platform/media/PulseConnection.h"

#include <QCoreApplication>

#include <mutex>

PulseConnection::Lock::Lock(const PulseConnection& connection)
    : m_connection(connection)
{
    m_connection.m_library.pa_threaded_mainloop_lock(m_connection.m_loop);
}

PulseConnection::Lock::~Lock() { m_connection.m_library.pa_threaded_mainloop_unlock(m_connection.m_loop); }

std::shared_ptr<PulseConnection> PulseConnection::shared()
{
    static std::mutex mutex;
    static std::shared_ptr<PulseConnection> connection;
    const PulseLibrary* library = PulseLibrary::shared();
    if (!library)
        return nullptr;
    const std::lock_guard guard(mutex);
    const auto isLost = [] {
        const Lock lock(*connection);
        return connection->isLost();
    };
    if (!connection || isLost()) {
        connection.reset(new PulseConnection(*library));
        connection->connect();
    }
    return connection;
}

PulseConnection::PulseConnection(const PulseLibrary& library)
    : m_library(library)
    , m_loop(library.pa_threaded_mainloop_new())
{
}

PulseConnection::~PulseConnection()
{
    m_library.pa_threaded_mainloop_stop(m_loop);
    if (m_context) {
        m_library.pa_context_set_state_callback(m_context, nullptr, nullptr);
        m_library.pa_context_disconnect(m_context);
        m_library.pa_context_unref(m_context);
    }
    m_library.pa_threaded_mainloop_free(m_loop);
}

void PulseConnection::connect()
{
    const Lock lock(*this);
    const QByteArray name = QCoreApplication::applicationName().toUtf8();
    m_context = m_library.pa_context_new(m_library.pa_threaded_mainloop_get_api(m_loop), name.constData());
    if (!m_context)
        return;
    m_library.pa_context_set_state_callback(
        m_context, [](pa_context*, void* self) { static_cast<PulseConnection*>(self)->stateDidChange(); },
        this);
    // Without a server this fails, which shows in the state: starting one is left to the system.
    m_library.pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    m_library.pa_threaded_mainloop_start(m_loop);
}

bool PulseConnection::isReady() const
{
    return m_context && m_library.pa_context_get_state(m_context) == PA_CONTEXT_READY;
}

bool PulseConnection::isLost() const
{
    return !m_context || !PA_CONTEXT_IS_GOOD(m_library.pa_context_get_state(m_context));
}

void PulseConnection::addListener(Listener& listener) { m_listeners.push_back(&listener); }

void PulseConnection::removeListener(Listener& listener) { std::erase(m_listeners, &listener); }

void PulseConnection::stateDidChange()
{
    if (!isReady() && !isLost())
        return;
    for (Listener* listener : std::vector(m_listeners)) {
        if (isReady())
            listener->connectionIsReady();
        else
            listener->connectionIsLost();
    }
}
