// What a controller puts into the navigation bar while it is shown.
//
// Its title and items can be observed; the bar that shows them does.
#pragma once

#include "platform/controls/UIBarButtonItem.h"

class UINavigationItem : public NSObject {
public:
    // Null shows no title, even when the controller has one.
    const NSString& title() const { return m_title; }
    void setTitle(const NSString& title);
    // From the bar's end inwards: the first item is the outermost, on both sides.
    const UIBarButtonItems& leftBarButtonItems() const { return m_leftBarButtonItems; }
    void setLeftBarButtonItems(UIBarButtonItems items);
    const UIBarButtonItems& rightBarButtonItems() const { return m_rightBarButtonItems; }
    void setRightBarButtonItems(UIBarButtonItems items);

private:
    NSString m_title;
    UIBarButtonItems m_leftBarButtonItems;
    UIBarButtonItems m_rightBarButtonItems;
};
