// An item of a navigation bar or a toolbar: a picture to press, in the bar's tint, or a view of its own.
//
// An item stands in one bar at a time, as a view does in one superview.
#pragma once

#include "platform/foundation/Action.h"
#include "platform/graphics/Geometry.h"
#include "platform/views/UIAccessibility.h"

#include <vector>

class UIButton;
class UIImage;
class UIView;

enum class UIBarButtonItemStyle { Plain = 0 };

// What the item tells to those who do not see the screen is what its button tells; a custom view tells
// what it is itself.
class UIBarButtonItem : public NSObject, public UIAccessibility {
public:
    // A finger's width: no button in a bar is narrower.
    static constexpr double minimumTouchWidth = 44;

    // initWithImage:style:target:action: — the action's sender is the item.
    UIBarButtonItem(std::shared_ptr<UIImage> image, UIBarButtonItemStyle style, Action action);
    // initWithCustomView: — the view keeps its size where the bar has room for it; one with a flexible
    // width takes the room that others leave.
    explicit UIBarButtonItem(std::shared_ptr<UIView> customView);

    UIBarButtonItemStyle style() const { return m_style; }
    const std::shared_ptr<UIImage>& image() const { return m_image; }
    void setImage(std::shared_ptr<UIImage> image);
    const Action& action() const { return m_action; }
    void setAction(Action action) { m_action = std::move(action); }
    const std::shared_ptr<UIView>& customView() const { return m_customView; }

    // --- For bars ------------------------------------------------------------------------------------

    // What stands in the bar: the custom view or the button. Never null.
    std::shared_ptr<UIView> view() const;
    // The width that the item would like, and whether it takes more or less where need be.
    double preferredWidth() const;
    bool isFlexible() const;
    bool isSqueezable() const { return m_customView != nullptr; }
    // A button fills the rectangle; a custom view fills its width and is centred in its height.
    void placeIn(const CGRect& rect);

protected:
    void init() override;

private:
    CGSize preferredSize() const;
    void pressed();

    std::shared_ptr<UIImage> m_image;
    UIBarButtonItemStyle m_style = UIBarButtonItemStyle::Plain;
    Action m_action;
    std::shared_ptr<UIView> m_customView;
    std::shared_ptr<UIButton> m_button; // null with a custom view
    // A custom view's own size, and what the bar has made of it.
    CGSize m_ownSize;
    CGSize m_placedSize;
};

using UIBarButtonItems = std::vector<std::shared_ptr<UIBarButtonItem>>;
