#include "platform/foundation/Executor.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/Scheduler.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<Executor*> executorInForce = nullptr;

} // namespace

DispatchQueue::~DispatchQueue() = default;

Executor::Executor(DispatchQueue& mainQueue, DispatchQueue& globalQueue)
    : m_mainQueue(mainQueue)
    , m_globalQueue(globalQueue)
{
}

Executor::~Executor()
{
    Executor* self = this;
    executorInForce.compare_exchange_strong(self, nullptr);
}

Executor& Executor::current()
{
    Executor* executor = executorInForce;
    NSCAssert(executor, "Executor", QStringLiteral("No executor is in force."));
    if (!executor)
        std::abort(); // a reference cannot be null, whatever the assertion handler does
    return *executor;
}

void Executor::setCurrent(Executor* executor) { executorInForce = executor; }

void dispatchAfterOnMainQueue(double delay, std::function<void()> work)
{
    Scheduler::current().schedule(delay, std::move(work));
}
