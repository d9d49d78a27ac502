// Motions that were started together and have one time of their own: held, moved by hand, let go as one.
//
// Every animation that a layer is given while a Collection is in force belongs to the group, wherever its
// layer is and whatever its delay. What ran before does not, nor does what is started later; a motion that
// follows one of the group's (see CAAnimation::group()) does. The group's time is a fraction of its duration.
// It takes no part in the scheduler's clock while it is held, and each animation works out its moment from
// that one time.
//
//     Held ── finish() ──▶ Finishing ──▶ Finished  ── settle() ──▶ Settled
//       └─── cancel() ──▶ Cancelling ──▶ Cancelled ── settle() ──▶ Settled
//
// On arrival the animations tell their ends (not finished, when they were cancelled), but none is removed:
// what is shown stays as it is until settle(). An animation that somebody removes or replaces leaves the
// group and tells its end as always. A group that is dropped settles. Main thread only.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/layers/CAMediaTiming.h"
#include "platform/layers/CAMediaTimingFunction.h"
#include "platform/layers/CAModelChanges.h"

#include <functional>
#include <optional>
#include <vector>

class CALayer;
class CALayerAnimations;

class CAMotionGroup final : public NSObject {
public:
    enum class State { Held, Finishing, Finished, Cancelling, Cancelled, Settled };
    enum class Outcome { Kept, TakenBack };
    using End = std::function<void(bool finished)>;
    using Pace = std::shared_ptr<CAMediaTimingFunction>;

    ~CAMotionGroup() override;

    // The group that collects; null while none does. The innermost collection counts, and none collects
    // whose group has been settled meanwhile.
    static std::shared_ptr<CAMotionGroup> collecting();
    class [[nodiscard]] Collection {
    public:
        explicit Collection(std::shared_ptr<CAMotionGroup> group);
        ~Collection();
        Collection(const Collection&) = delete;
        Collection& operator=(const Collection&) = delete;
    };

    State state() const { return m_state; }
    // Seconds that the whole fraction stands for: as set, else until the last of the motions that end has
    // ended.
    double duration() const { return m_duration.value_or(m_lastEnd); }
    void setDuration(double seconds); // a number from 0 on
    // Where the group stands, 0 to 1.
    double fraction() const;
    // While held: moves there, to the nearer of 0 and 1 from outside. Does nothing in other states.
    void setFraction(double fraction);
    // While held: runs the rest, or back, at that speed (above 0). The pace says how much of the way is done
    // after a share of that time; null is an even one. They do nothing in other states.
    void finish(double speed = 1, Pace pace = nullptr);
    void cancel(double speed = 1, Pace pace = nullptr);
    // Lets go. Kept: the model stays, and what has not ended yet goes on by itself. TakenBack: the model gets
    // back what was changed in the recording, and everything that has not ended is told so.
    void settle(Outcome outcome);

    // What recorded changes go into.
    CAModelChanges& changes() { return m_changes; }
    // To be told on arrival, after the animations: for motions that turned out to move nothing.
    void endTogether(End end) { m_ends.push_back(std::move(end)); }

    // --- For layers ----------------------------------------------------------------------------------

    void join(CALayer& layer, CALayerAnimations& animations, const CAMediaTiming& timing);
    // The moment of an animation whose begin counts from the group's own: on a line that stands still.
    CAMoment momentOf(const CAMediaTiming& timing) const;
    // Whether an animation has reached its end by now.
    bool hasReachedEnd(const CAMediaTiming& timing) const;
    // Seconds since the group's begin.
    double time() const { return fraction() * duration(); }
    // Whether every frame differs from the one before.
    bool isMoving() const { return m_state == State::Finishing || m_state == State::Cancelling; }

private:
    struct Member {
        std::weak_ptr<NSObject> layer;
        CALayerAnimations* animations; // lives as long as the layer
    };
    // The way after the release, on the scheduler's clock.
    struct Run {
        double start = 0;
        double length = 0;
        double from = 0;
        double to = 0;
        Pace pace;
    };

    void run(State towards, double to, double speed, Pace pace);
    void arrive();
    void tellArrival(bool finished);
    void cancelArrival();
    template <typename Visit> void visitMembers(Visit visit);

    State m_state = State::Held;
    double m_fraction = 0; // unless moving
    std::optional<double> m_duration;
    double m_lastEnd = 0;
    double m_treeSpeed = 1; // of the window: slowed as a whole, it slows the run as well
    Run m_run;
    Scheduler::TimerID m_arrival = Scheduler::TimerID::None;
    std::vector<Member> m_members;
    std::vector<End> m_ends;
    CAModelChanges m_changes;
};
