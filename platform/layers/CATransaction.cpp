#include "platform/layers/CATransaction.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/Scheduler.h"
#include "platform/layers/CATransactionCompletion.h"

#include <vector>

namespace {

struct Transaction {
    double animationDuration = 0.25;
    std::shared_ptr<CAMediaTimingFunction> animationTimingFunction;
    bool disableActions = false;
    CATransaction::ActionMaker actionMaker;
    std::shared_ptr<CATransactionCompletion> ownCompletion;
    std::shared_ptr<CATransactionCompletion> outerCompletion;

    const auto& completion() const { return ownCompletion ? ownCompletion : outerCompletion; }
};

Transaction implicitTransaction;
std::vector<Transaction> explicitTransactions;

Transaction& current()
{
    return explicitTransactions.empty() ? implicitTransaction : explicitTransactions.back();
}

// What the implicit transaction is given lasts until the frame ends it, so a frame has to come.
Transaction& changing()
{
    if (explicitTransactions.empty() && Scheduler::hasCurrent())
        Scheduler::current().requestFrame();
    return current();
}

void finish(const Transaction& transaction)
{
    if (transaction.ownCompletion)
        transaction.ownCompletion->transactionCommitted();
}

} // namespace

void CATransaction::begin()
{
    Transaction inner = current();
    inner.outerCompletion = current().completion();
    inner.ownCompletion = nullptr;
    explicitTransactions.push_back(std::move(inner));
}

void CATransaction::commit()
{
    NSCAssert(!explicitTransactions.empty(), "CATransaction", QStringLiteral("Commit without a begin."));
    if (explicitTransactions.empty())
        return;
    const Transaction ended = std::move(explicitTransactions.back());
    explicitTransactions.pop_back();
    finish(ended);
}

void CATransaction::flush() { finish(std::exchange(implicitTransaction, Transaction())); }

double CATransaction::animationDuration() { return current().animationDuration; }

void CATransaction::setAnimationDuration(double duration)
{
    changing().animationDuration = duration > 0 ? duration : 0;
}

std::shared_ptr<CAMediaTimingFunction> CATransaction::animationTimingFunction()
{
    return current().animationTimingFunction;
}

void CATransaction::setAnimationTimingFunction(std::shared_ptr<CAMediaTimingFunction> function)
{
    changing().animationTimingFunction = std::move(function);
}

bool CATransaction::disableActions() { return current().disableActions; }

void CATransaction::setDisableActions(bool disable) { changing().disableActions = disable; }

const CATransaction::ActionMaker& CATransaction::actionMaker() { return current().actionMaker; }

void CATransaction::setActionMaker(ActionMaker maker) { changing().actionMaker = std::move(maker); }

void CATransaction::setCompletionBlock(std::function<void()> block)
{
    Transaction& transaction = changing();
    const auto replaced = std::exchange(transaction.ownCompletion,
        block ? std::make_shared<CATransactionCompletion>(std::move(block), transaction.outerCompletion)
              : nullptr);
    // A block that is replaced is still called when the animations that were added for it have ended.
    if (replaced)
        replaced->transactionCommitted();
}

std::shared_ptr<CATransactionCompletion> CATransaction::completion() { return current().completion(); }
