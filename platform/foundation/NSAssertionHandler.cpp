#include "platform/foundation/NSAssertionHandler.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <utility>

namespace {

std::mutex handlerMutex;

void reportAndAbort(const NSAssertionFailure& failure)
{
    std::fprintf(stderr, "*** Assertion failure in %s:%d: %s\n", qPrintable(failure.source), failure.line,
        qPrintable(failure.message));
    std::fflush(stderr);
    std::abort();
}

NSAssertionHandler::Handler& handlerInForce()
{
    static NSAssertionHandler::Handler handler = reportAndAbort;
    return handler;
}

} // namespace

void NSAssertionHandler::handleFailure(const NSAssertionFailure& failure)
{
    Handler handler;
    {
        const std::lock_guard lock(handlerMutex);
        handler = handlerInForce();
    }
    handler(failure);
}

NSAssertionHandler::Replacement::Replacement(Handler handler)
{
    const std::lock_guard lock(handlerMutex);
    m_previous = std::exchange(handlerInForce(), std::move(handler));
}

NSAssertionHandler::Replacement::~Replacement()
{
    const std::lock_guard lock(handlerMutex);
    handlerInForce() = std::move(m_previous);
}
