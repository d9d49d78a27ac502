#include "platform/layers/CATransactionCompletion.h"

#include <utility>

CATransactionCompletion::CATransactionCompletion(
    std::function<void()> block, std::shared_ptr<CATransactionCompletion> outer)
    : m_block(std::move(block))
    , m_outer(std::move(outer))
{
}

void CATransactionCompletion::animationAdded()
{
    ++m_running;
    if (m_outer)
        m_outer->animationAdded();
}

void CATransactionCompletion::animationEnded()
{
    const auto outer = m_outer;
    --m_running;
    runIfComplete();
    if (outer)
        outer->animationEnded();
}

void CATransactionCompletion::transactionCommitted()
{
    m_committed = true;
    runIfComplete();
}

void CATransactionCompletion::runIfComplete()
{
    if (!m_committed || m_running > 0)
        return;
    if (const auto block = std::exchange(m_block, nullptr))
        block();
}
