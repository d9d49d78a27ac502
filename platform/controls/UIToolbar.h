// A bar of items side by side, anywhere in a view.
//
// A bar without a height grows to the standard one. Its background is its barTintColor, else the system's.
#pragma once

#include "platform/controls/UIBarButtonItem.h"
#include "platform/graphics/UIColor.h"
#include "platform/views/UIView.h"

class UIToolbar : public UIView {
public:
    using UIView::UIView;

    static constexpr double standardHeight = 44;

    // From left to right.
    const UIBarButtonItems& items() const { return m_items; }
    void setItems(UIBarButtonItems items);

    // Lets a little of what is behind the bar shine through; on by default.
    bool isTranslucent() const { return m_translucent; }
    void setTranslucent(bool translucent);
    const std::shared_ptr<UIColor>& barTintColor() const { return m_barTintColor; }
    void setBarTintColor(std::shared_ptr<UIColor> color);

    // A subclass may colour itself after the view that it lies in, whatever tint its items have.
    bool followsInheritedTint() const override { return true; }

    CGSize sizeThatFits(const CGSize& size) const override { return { size.width(), standardHeight }; }
    CGSize intrinsicContentSize() const override { return { UIViewNoIntrinsicMetric, standardHeight }; }
    void layoutSubviews() override;

protected:
    void init() override;

private:
    void growToStandardHeight();
    void updateBackground();

    std::shared_ptr<UIView> m_background;
    UIBarButtonItems m_items;
    UIBarButtonItems m_shownItems;
    std::shared_ptr<UIColor> m_barTintColor;
    bool m_translucent = true;
};
