#include "platform/host/HostExecutor.h"

#include <QCoreApplication>
#include <QEvent>

HostExecutor::HostExecutor()
    : m_main([this] { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); })
    , m_executor(m_main, m_global)
{
    Executor::setCurrent(&m_executor);
}

HostExecutor::~HostExecutor()
{
    m_global.stop(); // while the executor is in force: the last jobs may still submit to the main queue
}

// The only events that are sent to it are its own.
void HostExecutor::customEvent(QEvent*) { m_main.drain(); }
