// What happened at one moment: all fingers that are on the screen, or a turn of the wheel.
#pragma once

#include "platform/graphics/Geometry.h"
#include "platform/views/UIResponder.h"

class UIEvent final : public NSObject {
public:
    UIEvent(UITouches touches, double timestamp)
        : m_touches(std::move(touches))
        , m_timestamp(timestamp)
    {
    }

    const UITouches& allTouches() const { return m_touches; }
    double timestamp() const { return m_timestamp; }

private:
    UITouches m_touches;
    double m_timestamp;
};

// How a scroll event belongs to its gesture. A plain wheel turns step by step and never says when it ends.
enum class UIScrollPhase { Step, Began, Changed, Ended, Momentum };

// A turn of the wheel, or two fingers moving on a touch pad.
struct UIScrollEvent {
    CGPoint location; // in the window
    CGPoint delta; // how far the content is to move, in points; positive is right and down
    UIScrollPhase phase = UIScrollPhase::Step;
    double timestamp = 0;
};
