// The animations of one layer, in the order in which they were added, and the timer that ends them.
//
// Ends come from the scheduler at the exact time, whether or not frames are drawn, and are told from
// there as well: never from inside a call that adds or removes animations. A listener may do anything,
// dropping the layer included. What belongs to a motion group goes by the group's time and ends with it.
//
// Where the layer's time runs backwards, an animation ends at its start. It stays there until time runs
// forwards again: to remove it would show the model, which is the other end.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/layers/CAAnimation.h"

#include <vector>

class CALayer;
class CAMotionGroup;
class CATransactionCompletion;

class CALayerAnimations {
public:
    explicit CALayerAnimations(CALayer& layer);
    ~CALayerAnimations();
    CALayerAnimations(const CALayerAnimations&) = delete;
    CALayerAnimations& operator=(const CALayerAnimations&) = delete;

    bool isEmpty() const { return m_entries.empty(); }
    std::shared_ptr<const CAAnimation> animationForKey(const NSString& key) const;
    std::vector<NSString> keys() const;
    // Whether one that has not ended works on the property.
    bool animates(CAProperty) const;

    // Takes a copy and fills in what it leaves to the transaction. A null key replaces nothing.
    void add(const CAAnimation&, const NSString& key);
    void remove(const NSString& key);
    void removeAll();
    // All but those that repeat for ever.
    void removeEnding();

    void apply(CALayerValues& shown, const CALayerValues& model, const CAMoment& layerMoment) const;
    // Seconds until a frame differs from this one: 0 while one is running, infinite when none will.
    double secondsUntilChange(const CAMoment& layerMoment) const;

    // The layer's time has changed: what ends, ends at another time.
    void timingDidChange();

    // --- For motion groups ---------------------------------------------------------------------------

    using Ending = std::function<void()>;
    // The group has arrived: answers how to tell the ends of those that have ended there. They stay.
    std::vector<Ending> endGroup(const CAMotionGroup& group, bool finished);
    // The group lets go. Dropped, its animations are removed. Released, those that have ended are removed,
    // the others go on by themselves from where they are.
    void dropGroup(const CAMotionGroup& group);
    void releaseGroup(const CAMotionGroup& group);

private:
    struct Entry {
        NSString key;
        std::shared_ptr<const CAAnimation> animation;
        std::shared_ptr<CATransactionCompletion> completion; // may be null
        const CAMotionGroup* group = nullptr; // whose time it goes by
        bool ended = false; // told, and kept for what it shows after its end
        bool returned = false; // ended at its start, and kept there
    };

    std::vector<Entry>::const_iterator find(const NSString& key) const;
    void joinGroup(CAAnimation&, const CAMoment& layerMoment) const;
    CAMoment localMoment(const Entry&, const CAMoment& layerMoment) const;
    void discard(Entry&);
    void endDue();
    void wakeForEnd(const Entry&, const CAMoment& layerMoment);
    void wakeIn(double seconds);
    void cancelWakeUp();
    static void tell(const Entry&, bool finished);

    CALayer& m_layer;
    std::vector<Entry> m_entries;
    Scheduler::TimerID m_wakeUp = Scheduler::TimerID::None;
    double m_wakeUpTime = 0;
};
