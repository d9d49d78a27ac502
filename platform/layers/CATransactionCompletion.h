// The end of a transaction's animations: counts them and runs the block once.
#pragma once

#include <functional>
#include <memory>

class CATransactionCompletion {
public:
    // The outer one, which may be null, waits for the same animations.
    CATransactionCompletion(std::function<void()> block, std::shared_ptr<CATransactionCompletion> outer);

    void animationAdded();
    void animationEnded();
    // Runs the block if nothing is waited for, and from now on when nothing is any more.
    void transactionCommitted();

private:
    void runIfComplete();

    std::function<void()> m_block;
    std::shared_ptr<CATransactionCompletion> m_outer;
    int m_running = 0;
    bool m_committed = false;
};
