// What animations take from their surroundings when they are added: duration, pace, whether there are
// implicit ones at all, and who is told when all of them have ended.
//
// Transactions nest; a new one starts with the values of the one around it. Outside of all there is an
// implicit one, which ends with the frame and then starts anew with the defaults. Main thread only.
#pragma once

#include "platform/layers/CALayerDelegate.h"
#include "platform/layers/CAMediaTimingFunction.h"

#include <functional>

class CATransactionCompletion;

class CATransaction {
public:
    static void begin();
    // Without a begin it is a programming error.
    static void commit();
    // Ends the implicit transaction; the host calls it with every frame.
    static void flush();

    // For animations without a duration of their own; 0.25 s by default. Not a positive number: no time at
    // all.
    static double animationDuration();
    static void setAnimationDuration(double);
    // For animations without a timing function of their own; nil by default.
    static std::shared_ptr<CAMediaTimingFunction> animationTimingFunction();
    static void setAnimationTimingFunction(std::shared_ptr<CAMediaTimingFunction>);
    // Whether changes of properties take effect at once.
    static bool disableActions();
    static void setDisableActions(bool);
    // Asked for the animation of a layer's change where nobody else has answered, before the layer makes one
    // of its own; null by default.
    using ActionMaker = std::function<CAActionAnswer(const CALayer& layer, const NSString& key)>;
    static const ActionMaker& actionMaker();
    static void setActionMaker(ActionMaker maker);
    // Called once when every animation added after this call, until the commit, has ended or been removed;
    // within the commit when there is none.
    static void setCompletionBlock(std::function<void()>);

    // A transaction that lasts as long as the guard.
    class [[nodiscard]] Guard {
    public:
        Guard() { begin(); }
        ~Guard() { commit(); }
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
    };

    // For layers: what an animation that is being added reports its end to; may be null.
    static std::shared_ptr<CATransactionCompletion> completion();
};
