// Settles which of the gestures that watch the same touches goes ahead.
//
// A recogniser enters with its first touch and leaves when it is possible again. Meanwhile it is in one of
// these stages:
//
//   stage     the recogniser                        leaves it
//   --------  ------------------------------------  -------------------------------------------------------
//   Watching  watches touches, or waits for the     to Waiting or Ahead when it reports that it has found
//             next one, and has found nothing yet   its gesture; to Over when it fails or is withdrawn
//
//   Waiting   has found its gesture, while others   to Ahead, or to Over for a gesture that happens at
//             that are to fail first are undecided  once, when the last of those has failed and it may
//                                                   begin; to Over when one of them goes ahead, when it
//                                                   may not begin, when it fails or is withdrawn
//
//   Ahead     has begun, or has changed since       to Over when it ends, is cancelled or is withdrawn, and
//                                                   when its last touch has left and it waits for no other
//                                                   touch
//
//   Over      has ended, was cancelled, has failed  out of the arena when the last of its touches has left
//
// Undecided are those that watch or wait. Whom one waits for is asked once, when it has found its gesture:
// requirements of its own, then both delegates about everybody on its touches. Of two that would wait for
// each other the second does not. It may begin if it and its view are enabled and touchable, its delegate and
// the views under its touches agree, no gesture that it required to fail has been recognised, and nobody on
// its touches is ahead, or over by having been recognised, unless a delegate of the two lets both go on.
//
// When a gesture goes ahead, this happens in order: undecided ones on its touches fail, unless they may go on
// together; the views lose its touches, if it takes them; those that wait for it fail; its targets are told.
// When one fails: views get the touches that it has held back; those that wait for nobody else go ahead.
//
// Everybody who is asked or told may do anything, from inside the call: recognisers come and go, windows too.
#pragma once

#include "platform/views/GestureReferee.h"
#include "platform/views/UIGestureRecognizer.h"

class UIEvent;

// Hears what becomes of touches, which views may have heard of already.
class GestureArenaObserver {
public:
    // One that cancels touches in views goes ahead; it watches them still.
    virtual void gestureTakesTouches(const UIGestureRecognizer&) = 0;
    // One that may have held touches back is no longer undecided.
    virtual void gestureWasDecided() = 0;

protected:
    ~GestureArenaObserver() = default; // nobody owns an observer through this type
};

class GestureArena final : public GestureReferee, public std::enable_shared_from_this<GestureArena> {
public:
    GestureArena();
    ~GestureArena();

    void setObserver(std::weak_ptr<GestureArenaObserver> observer) { m_observer = std::move(observer); }
    bool isEmpty() const { return m_contenders.empty(); }

    // A new touch: invites the recognisers of its view and of the superviews, the deepest first, and tells
    // those that take part.
    void touchBegan(const std::shared_ptr<UITouch>& touch, UIEvent& event);
    // It has moved, ended or was cancelled, as its phase says.
    void touchChanged(const std::shared_ptr<UITouch>& touch, UIEvent& event);
    // After an end, when everybody has seen it.
    void touchLeft(const std::shared_ptr<UITouch>& touch);
    // Whether a recogniser keeps the touch from the views until it has failed.
    bool holdsBack(const UITouch& touch) const;

    // Those that are in the arena and whose views are the given one or inside it.
    UIGestureRecognizers recognizersIn(const UIView& root) const;
    // Takes one out: an undecided one fails, one that is ahead is cancelled.
    void withdraw(UIGestureRecognizer& recognizer);
    void withdrawAll();

    void gestureReports(UIGestureRecognizer&, UIGestureRecognizerState) override;
    void gestureWithdraws(UIGestureRecognizer& recognizer) override { withdraw(recognizer); }

private:
    enum class Stage { Watching, Waiting, Ahead, Over };
    struct Contender;
    using ContenderPointer = std::shared_ptr<Contender>;
    using Contenders = std::vector<ContenderPointer>;

    ContenderPointer find(const UIGestureRecognizer&) const;
    bool isIn(const ContenderPointer&) const;
    bool isUnderWay(const std::shared_ptr<UITouch>& touch) const;
    static bool isUndecided(const Contender&);
    Contenders rivalsOf(const Contender&) const;

    void join(const std::shared_ptr<UIGestureRecognizer>&, const std::shared_ptr<UITouch>&);
    void tell(const std::shared_ptr<UITouch>&, UIEvent&);
    void wait(const ContenderPointer&, UIGestureRecognizerState wanted);
    Contenders possibleRequirementsOf(const Contender&) const;
    static bool mustWaitFor(Contender&, Contender& other);
    static bool waitsFor(const Contender&, const ContenderPointer& other);
    void goAhead(const ContenderPointer&);
    bool mayBegin(const Contender&) const;
    void decide(const ContenderPointer&, UIGestureRecognizerState);
    void failRivals(const Contender&);
    void settleThoseWaitingFor(const ContenderPointer&, bool wentAhead);
    void proceed(const ContenderPointer&, UIGestureRecognizerState);
    void leaveIfFree(const ContenderPointer&);

    Contenders m_contenders; // in the order in which they came
    UITouches m_touches; // on the screen
    std::weak_ptr<GestureArenaObserver> m_observer;
};
