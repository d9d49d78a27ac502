// Bars with views and items of known sizes, and short ways to look into them.
#pragma once

#include "platform/controls/UIBarButtonItem.h"
#include "platform/controls/UILabel.h"
#include "platform/graphics/UIColor.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"

#include <gmock/gmock.h>

class BarScene : public SceneFixture {
protected:
    // An item whose view has that size.
    static std::shared_ptr<UIBarButtonItem> viewItem(double width, double height = 30)
    {
        return make<UIBarButtonItem>(make<UIView>(CGRect(0, 0, width, height)));
    }
    static std::shared_ptr<UIBarButtonItem> flexibleItem(double width, double height = 30)
    {
        const auto item = viewItem(width, height);
        item->customView()->setAutoresizingMask(UIViewAutoresizing::FlexibleWidth);
        return item;
    }
    // An item with a picture of that many points.
    static std::shared_ptr<UIBarButtonItem> pictureItem(int width, const Action& action = {})
    {
        return make<UIBarButtonItem>(picture(width), UIBarButtonItemStyle::Plain, action);
    }
    static std::shared_ptr<UIImage> picture(int width) { return plainImage({ width, 24 }, Qt::black); }
    static std::vector<CGRect> frames(const UIBarButtonItems& items)
    {
        std::vector<CGRect> rects;
        for (const auto& item : items)
            rects.push_back(item->view()->frame());
        return rects;
    }
    // The background is every bar's lowest view.
    static std::shared_ptr<UIColor> background(const UIView& bar)
    {
        return bar.subviews().front()->backgroundColor();
    }
    static bool isColor(const std::shared_ptr<UIColor>& color, const std::shared_ptr<UIColor>& expected)
    {
        return color && color->isEqual(expected.get());
    }

    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    const std::shared_ptr<UIColor> green = UIColor::colorWithRed(0, 1, 0, 1);
};

// Hears of presses.
class PressTarget final : public NSObject {
public:
    Action action() { return { strongSelf(this), &PressTarget::pressed }; }
    void pressed(UIBarButtonItem& item)
    {
        senders.push_back(&item);
        if (onPress)
            onPress();
    }

    std::vector<const UIBarButtonItem*> senders;
    std::function<void()> onPress;
};
