#include "platform/controls/UIBarButtonItemLayout.h"

#include "platform/views/UIView.h"

#include <algorithm>

namespace {

bool contains(const UIBarButtonItems& items, const std::shared_ptr<UIBarButtonItem>& item)
{
    return std::find(items.begin(), items.end(), item) != items.end();
}

} // namespace

void UIBarButtonItemLayout::show(UIView& bar, UIBarButtonItems& shown, const UIBarButtonItems& wanted)
{
    const UIBarButtonItems before = std::exchange(shown, wanted);
    std::erase(shown, nullptr);
    for (const auto& item : before)
        if (!contains(shown, item) && item->view()->superview() == &bar)
            item->view()->removeFromSuperview();
    const UIBarButtonItems now = shown;
    for (const auto& item : now)
        if (item->view()->superview() != &bar)
            bar.addSubview(item->view());
    bar.setNeedsLayout();
}

double UIBarButtonItemLayout::preferredWidth(const UIBarButtonItems& items)
{
    double width = items.empty() ? 0 : -spacing;
    for (const auto& item : items)
        width += item->preferredWidth() + spacing;
    return width;
}

void UIBarButtonItemLayout::place(const UIBarButtonItems& items, const CGRect& area)
{
    const double room = area.width() - preferredWidth(items);
    double squeezableWidth = 0;
    int flexibleCount = 0;
    for (const auto& item : items) {
        squeezableWidth += item->isSqueezable() ? item->preferredWidth() : 0;
        flexibleCount += item->isFlexible() ? 1 : 0;
    }
    double left = area.left();
    for (const auto& item : items) {
        double width = item->preferredWidth();
        if (room < 0 && item->isSqueezable())
            width *= std::max(1 + room / squeezableWidth, 0.0);
        else if (room > 0 && item->isFlexible())
            width += room / flexibleCount;
        item->placeIn({ left, area.top(), width, area.height() });
        left += width + spacing;
    }
}
