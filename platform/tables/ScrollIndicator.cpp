#include "platform/tables/ScrollIndicator.h"

#include "platform/graphics/UIColor.h"

#include <algorithm>

namespace {

constexpr double thickness = 3;
constexpr double edgeDistance = 3;
constexpr double minimumLength = 36; // long enough to be seen when there are a hundred thousand rows
constexpr double shortestLength = 8; // squeezed at an end
constexpr double restBeforeFade = 0.5; // seconds
constexpr double fadeDuration = 0.3; // seconds

} // namespace

void ScrollIndicator::init()
{
    UIView::init();
    setUserInteractionEnabled(false);
    setAlpha(0);
    layer()->setCornerRadius(thickness / 2);
    setBackgroundColor(UIColor::labelColor()->colorWithAlphaComponent(0.35));
}

void ScrollIndicator::place(
    const CGRect& bounds, const UIEdgeInsets& insets, double contentLength, ScrollPhysics::Range range)
{
    const bool vertical = m_axis == Axis::Vertical;
    const CGRect area = UIEdgeInsetsInsetRect(bounds, insets)
                            .adjusted(edgeDistance, edgeDistance, -edgeDistance, -edgeDistance);
    const double track = vertical ? area.height() : area.width();
    const double visible = vertical ? bounds.height() : bounds.width();
    const double offset = vertical ? bounds.top() : bounds.left();
    const double room = range.maximum - range.minimum;
    setHidden(room <= 0 || track <= minimumLength);
    if (isHidden())
        return;

    const double full = std::clamp(track * visible / contentLength, minimumLength, track);
    const double pulledPast = std::abs(offset - range.clamp(offset));
    const double length = std::max(full - pulledPast, shortestLength);
    const double fraction = (range.clamp(offset) - range.minimum) / room;
    const double start = fraction * (track - length);
    setFrame(vertical ? CGRect(area.right() - thickness, area.top() + start, thickness, length)
                      : CGRect(area.left() + start, area.bottom() - thickness, length, thickness));
}

void ScrollIndicator::flash()
{
    const Action fadeLater(strongSelf(this), &ScrollIndicator::fade);
    Scheduler::current().cancelPreviousPerforms(fadeLater);
    Scheduler::current().performAfterDelay(fadeLater, restBeforeFade);
    setAlpha(1);
}

void ScrollIndicator::fade()
{
    animate(fadeDuration, [this] { setAlpha(0); });
}
