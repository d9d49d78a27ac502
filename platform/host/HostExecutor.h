// The queues of a running application: the main one drained by Qt's event loop, the global one a pool
// of threads. In force from construction to destruction. Made on the main thread.
#pragma once

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/ThreadPool.h"

#include <QObject>

class HostExecutor final : private QObject {
public:
    HostExecutor();
    ~HostExecutor() override;

private:
    void customEvent(QEvent*) override;

    MainQueue m_main;
    ThreadPool m_global;
    Executor m_executor;
};
