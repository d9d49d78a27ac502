// The bar above a controller's view: its title in the middle, its items at both ends.
//
// A bar right below the top of the safe area fills what is above it too. Its background is the bar's own
// barTintColor, else that of the appearance object that is in force, else the style's. The title's looks are
// the appearance object's, else the bar's own attributes. The items are in the bar's tint. A long title
// gives way to the items and ends in an ellipsis.
#pragma once

#include "platform/controls/UINavigationBarAppearance.h"
#include "platform/controls/UINavigationItem.h"
#include "platform/views/UIView.h"

class UILabel;

enum class UIBarStyle { Default = 0, Black = 1 };

class UINavigationBar : public UIView {
public:
    using UIView::UIView;
    ~UINavigationBar() override;

    static constexpr double height = 44; // points, without the status bar

    // The item whose title and buttons show; null shows nothing.
    const std::shared_ptr<UINavigationItem>& topItem() const { return m_topItem; }
    void setTopItem(std::shared_ptr<UINavigationItem> item);

    // Bars without an appearance object let a little of what is behind them shine through, unless this is
    // off.
    bool isTranslucent() const { return m_translucent; }
    void setTranslucent(bool translucent);
    UIBarStyle barStyle() const { return m_barStyle; }
    void setBarStyle(UIBarStyle style);
    const std::shared_ptr<UIColor>& barTintColor() const { return m_barTintColor; }
    void setBarTintColor(std::shared_ptr<UIColor> color);
    const NSTextAttributes& titleTextAttributes() const { return m_titleTextAttributes; }
    void setTitleTextAttributes(NSTextAttributes attributes);
    const std::shared_ptr<UINavigationBarAppearance>& standardAppearance() const
    {
        return m_standardAppearance;
    }
    void setStandardAppearance(const std::shared_ptr<UINavigationBarAppearance>& appearance);
    // In force while no content lies under the bar; null stands for the standard one.
    const std::shared_ptr<UINavigationBarAppearance>& scrollEdgeAppearance() const
    {
        return m_scrollEdgeAppearance;
    }
    void setScrollEdgeAppearance(const std::shared_ptr<UINavigationBarAppearance>& appearance);
    // Whether content has been scrolled under the bar; said by whoever lays it out there.
    bool isContentUnderneath() const { return m_contentUnderneath; }
    void setContentUnderneath(bool underneath);

    // A subclass may colour itself after the view that it lies in, whatever tint its items have.
    bool followsInheritedTint() const override { return true; }

    CGSize sizeThatFits(const CGSize& size) const override { return { size.width(), height }; }
    void layoutSubviews() override;
    void observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void* context) override;

protected:
    void init() override;

private:
    void stopObservingItem();
    void updateContent();
    void updateLooks();
    const UINavigationBarAppearance* appearance() const;
    double heightCoveredAbove() const;
    void placeTitle(double left, double right);

    std::shared_ptr<UIView> m_background;
    std::shared_ptr<UILabel> m_titleLabel;
    std::shared_ptr<UINavigationItem> m_topItem;
    UIBarButtonItems m_shownItems;
    std::shared_ptr<UIColor> m_barTintColor;
    NSTextAttributes m_titleTextAttributes;
    std::shared_ptr<UINavigationBarAppearance> m_standardAppearance;
    std::shared_ptr<UINavigationBarAppearance> m_scrollEdgeAppearance;
    UIBarStyle m_barStyle = UIBarStyle::Default;
    bool m_translucent = true;
    bool m_contentUnderneath = false;
};
