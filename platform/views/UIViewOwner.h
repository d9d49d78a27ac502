// A view controller as its view and its window see it.
//
// It stands in the responder chain between its view and that view's superview.
#pragma once

#include "platform/foundation/Messages.h"
#include "platform/views/UIResponder.h"

class UIView;
class UIWindow;

class UIViewOwner : public UIResponder {
public:
    // Never null; made at the first call.
    virtual std::shared_ptr<UIView> view() = 0;

    // Stands in for the view's updateConstraints(), which overrides call through here.
    virtual void updateViewConstraints();

    // Sent by the view, around its own layoutSubviews(), and around its way to another window or to none.
    virtual void viewWillLayoutSubviews() { }
    virtual void viewDidLayoutSubviews() { }
    virtual void viewWillMoveToWindow(UIWindow*) { }
    virtual void viewDidMoveToWindow() { }

    // For views: sends a message to their owner, if they have one, and keeps it for the length of the call.
    // An owner that is being destroyed is told nothing any more. Answers whether anybody was told.
    template <typename... Parameters, typename... Arguments>
    static bool tell(UIViewOwner* owner, void (UIViewOwner::*message)(Parameters...), Arguments... arguments)
    {
        const KeepAlive keepAlive(owner);
        if (keepAlive.holds())
            (owner->*message)(arguments...);
        return keepAlive.holds();
    }
};
