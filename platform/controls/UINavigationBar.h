// The bar above a controller's view, with its title.
//
// The background reaches up under the status bar. Its colour is the bar's own barTintColor, else that of
// its appearance object, else the system's; the title's looks are the appearance object's, else the bar's own
// attributes. An appearance object counts as it is when it is set.
#pragma once

#include "platform/controls/UINavigationBarAppearance.h"
#include "platform/controls/UINavigationItem.h"
#include "platform/views/UIView.h"

class UILabel;

enum class UIBarStyle { Default = 0, Black = 1 };

class UINavigationBar : public UIView {
public:
    using UIView::UIView;

    static constexpr double height = 44; // points, without the status bar

    // The item whose title shows; null shows nothing.
    const std::shared_ptr<UINavigationItem>& topItem() const { return m_topItem; }
    void setTopItem(std::shared_ptr<UINavigationItem> item);

    // Bars that let the content shine through blend it with their colour; opaque ones do not.
    bool isTranslucent() const { return m_translucent; }
    void setTranslucent(bool translucent);
    UIBarStyle barStyle() const { return m_barStyle; }
    void setBarStyle(UIBarStyle style);
    const std::shared_ptr<UIColor>& barTintColor() const { return m_barTintColor; }
    void setBarTintColor(std::shared_ptr<UIColor> color);
    const NSTextAttributes& titleTextAttributes() const { return m_titleTextAttributes; }
    void setTitleTextAttributes(NSTextAttributes attributes);
    // While content lies under the bar, and while it is scrolled to its top.
    const std::shared_ptr<UINavigationBarAppearance>& standardAppearance() const
    {
        return m_standardAppearance;
    }
    void setStandardAppearance(std::shared_ptr<UINavigationBarAppearance> appearance);
    const std::shared_ptr<UINavigationBarAppearance>& scrollEdgeAppearance() const
    {
        return m_scrollEdgeAppearance;
    }
    void setScrollEdgeAppearance(std::shared_ptr<UINavigationBarAppearance> appearance);

    CGSize sizeThatFits(const CGSize& size) const override { return { size.width(), height }; }
    void layoutSubviews() override;
    void observeValueForKeyPath(const NSString& keyPath, NSObject& object, const void* context) override;
    ~UINavigationBar() override;

protected:
    void init() override;

private:
    void stopObservingItem();
    void updateTitle();
    void updateLooks();

    std::shared_ptr<UIView> m_background;
    std::shared_ptr<UILabel> m_titleLabel;
    std::shared_ptr<UINavigationItem> m_topItem;
    std::shared_ptr<UIColor> m_barTintColor;
    NSTextAttributes m_titleTextAttributes;
    std::shared_ptr<UINavigationBarAppearance> m_standardAppearance;
    std::shared_ptr<UINavigationBarAppearance> m_scrollEdgeAppearance;
    UIBarStyle m_barStyle = UIBarStyle::Default;
    bool m_translucent = true;
};
