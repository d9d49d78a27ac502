// What was changed in the model while a recording was in force, and how to take it back.
//
// A value is taken back only if it still is what the recorded change made of it: what somebody has set since
// stays. Changes are taken back in the reverse of their order, at once and without animation; the delegates
// of the layers are told when all of it is done. Main thread only.
#pragma once

#include "platform/layers/CAKeyPath.h"

#include <functional>
#include <memory>
#include <vector>

class CALayer;

class CAModelChanges {
public:
    using TakeBack = std::function<void()>;

    // The changes that are being recorded; null while none are. The innermost recording counts.
    static CAModelChanges* recording();

    // A recording that lasts as long as the guard. Null records nothing, and hides a recording around it.
    class [[nodiscard]] Recording {
    public:
        explicit Recording(CAModelChanges* changes);
        ~Recording();
        Recording(const Recording&) = delete;
        Recording& operator=(const Recording&) = delete;

    private:
        CAModelChanges* const m_outer;
    };

    // A property of a layer has changed from one value to the other.
    void note(CALayer& layer, CAProperty property, CAValue before, CAValue after);
    // A layer has been hidden or shown.
    void noteHidden(CALayer& layer, bool hidden);
    // Any other change. The function must hold nothing alive, and leave alone what was changed since.
    void note(TakeBack takeBack) { m_changes.push_back({ std::move(takeBack), nullptr }); }

    bool isEmpty() const { return m_changes.empty(); }
    // Takes everything back and forgets it.
    void takeBack();

private:
    struct Change {
        TakeBack takeBack;
        std::function<void()> tell; // the layer's delegate; may be empty
    };

    std::vector<Change> m_changes;
};
