#include "platform/views/UIResponder.h"

#include "platform/foundation/Messages.h"
#include "platform/views/UIWindow.h"

void UIResponder::touchesBegan(const UITouches& touches, UIEvent& event)
{
    if (UIResponder* const next = nextResponder())
        next->touchesBegan(touches, event);
}

void UIResponder::touchesMoved(const UITouches& touches, UIEvent& event)
{
    if (UIResponder* const next = nextResponder())
        next->touchesMoved(touches, event);
}

void UIResponder::touchesEnded(const UITouches& touches, UIEvent& event)
{
    if (UIResponder* const next = nextResponder())
        next->touchesEnded(touches, event);
}

void UIResponder::touchesCancelled(const UITouches& touches, UIEvent& event)
{
    if (UIResponder* const next = nextResponder())
        next->touchesCancelled(touches, event);
}

UIWindow* UIResponder::responderWindow() const
{
    const UIResponder* const next = nextResponder();
    return next ? next->responderWindow() : nullptr;
}

bool UIResponder::becomeFirstResponder()
{
    const UIWindow* const window = responderWindow();
    if (!window || !canBecomeFirstResponder())
        return false;
    const auto current = window->firstResponder();
    if (current.get() == this)
        return true;
    if (current && !current->resignFirstResponder())
        return false;
    UIWindow* const windowNow = responderWindow(); // the one before may have changed the tree
    if (windowNow)
        windowNow->setFirstResponder(strongSelf(this));
    return windowNow != nullptr;
}

bool UIResponder::resignFirstResponder()
{
    if (!isFirstResponder())
        return true;
    const KeepAlive keepAlive(*this);
    if (!canResignFirstResponder())
        return false;
    if (isFirstResponder()) // still: the answer may have changed the tree
        responderWindow()->setFirstResponder(nullptr);
    return true;
}

bool UIResponder::isFirstResponder() const
{
    const UIWindow* const window = responderWindow();
    return window && window->firstResponder().get() == this;
}
