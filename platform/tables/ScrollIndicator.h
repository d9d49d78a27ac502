// The thin bar at the edge that tells how much of the content shows, and where: it appears while the
// content moves and fades when it has come to rest.
#pragma once

#include "platform/foundation/Scheduler.h"
#include "platform/tables/ScrollPhysics.h"
#include "platform/views/UIView.h"

class ScrollIndicator final : public UIView {
public:
    enum class Axis { Horizontal, Vertical };
    explicit ScrollIndicator(Axis axis)
        : m_axis(axis)
    {
    }

    // Places the bar in the scroll view's bounds, shorter while the content is pulled past an end.
    void place(const CGRect& bounds, const UIEdgeInsets& insets, double contentLength, ScrollPhysics::Range);
    // Shows the bar now and lets it fade after a moment of rest.
    void flash();

protected:
    void init() override;

private:
    void fade();

    Axis m_axis;
};
