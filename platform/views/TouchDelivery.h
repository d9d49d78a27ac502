// What the views know of the touches on them. A touch is in one of these states:
//
//   state      the view                              leaves it
//   ---------  ------------------------------------  ------------------------------------------------------
//   Held       has not heard of it yet: a view       to Delivered when neither holds any more; to Withheld
//              around it lets its content wait, or   when a gesture takes it, or the view cannot be touched
//              a recogniser holds it back            any more; to Late when the finger leaves
//
//   Delivered  has been told and hears every change  to Withheld, told as cancelled, for the same reasons;
//                                                    gone with the finger
//
//   Withheld   hears nothing                         gone with the finger
//
//   Late       has not heard of it, and the finger   gone: told whole when no recogniser holds it back any
//              has left                              more, or never when a gesture takes it
//
// A view that does not want several touches at a time hears of the first one only. Everybody who is told may
// do anything from inside the call, drop the window included.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/views/GestureArena.h"
#include "platform/views/UIEvent.h"

class TouchDelivery final : public GestureArenaObserver, public std::enable_shared_from_this<TouchDelivery> {
public:
    explicit TouchDelivery(std::shared_ptr<const GestureArena> arena);
    ~TouchDelivery();

    bool isEmpty() const { return m_entries.empty(); }
    // All touches whose fingers are on the screen, now.
    std::shared_ptr<UIEvent> makeEvent() const { return makeEventWith(nullptr); }

    // A touch that recognisers are about to see, and that its view may see from then on.
    void add(const std::shared_ptr<UITouch>& touch);
    void offer(const std::shared_ptr<UITouch>& touch);
    // After a change that recognisers have seen.
    void touchMoved(const std::shared_ptr<UITouch>& touch);
    // After its end; the delivery keeps it only if the view is to hear of it late.
    void touchFinished(const std::shared_ptr<UITouch>& touch);

    // Those on the view and on views inside it.
    UITouches touchesIn(const UIView& root) const;
    void withhold(const UITouch& touch);
    // Nobody will hear of what has not been told yet.
    void forgetLate();

    void gestureTakesTouches(const UIGestureRecognizer&) override;
    void gestureWasDecided() override;

private:
    enum class State { Held, Delivered, Withheld, Late };
    struct Entry;
    using EntryPointer = std::shared_ptr<Entry>;

    EntryPointer find(const UITouch& touch) const;
    std::shared_ptr<UIEvent> makeEventWith(const std::shared_ptr<UITouch>& touch) const;
    void tellView(const Entry&, UITouchPhase);
    void deliverWhenFree(Entry&);
    void deliverLate(const EntryPointer&);
    void withhold(Entry&);
    void withholdIfUntouchable(Entry&);
    bool isTakenByAnotherTouch(const Entry&) const;
    static double contentDelayOf(const UITouch&);

    const std::shared_ptr<const GestureArena> m_arena;
    std::vector<EntryPointer> m_entries; // in the order in which they came
};
