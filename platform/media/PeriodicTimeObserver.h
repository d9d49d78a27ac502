// A player's promise to call a block with the time, and the token that takes it back.
//
// The block is called on its queue; once stop() has returned it is called no more, and it is released as
// soon as a call under way has ended. Main thread only, the block aside.
#pragma once

#include "platform/foundation/Executor.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/Scheduler.h"
#include "platform/media/CMTime.h"

#include <atomic>
#include <functional>

class PeriodicTimeObserver final : public NSObject {
public:
    using Block = std::function<void(CMTime)>;

    PeriodicTimeObserver(CMTime interval, DispatchQueue&, Block);
    ~PeriodicTimeObserver() override;

    // Calls the work every interval, until pauseTicking(); never for an interval that is no positive number.
    void startTicking(const std::function<void()>& work);
    void pauseTicking();

    // Submits a call of the block.
    void tell(CMTime);
    void stop();

private:
    // Shared with the calls that are waiting in the queue.
    struct Delivery {
        Block block;
        std::atomic<bool> isStopped = false;
    };

    const double m_interval; // seconds; 0 for none
    DispatchQueue& m_queue;
    std::shared_ptr<Delivery> m_delivery; // null once stopped
    Scheduler::TimerID m_timer = Scheduler::TimerID::None;
};
