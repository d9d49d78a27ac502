// Whoever can be told about touches, and receive the keys as the first responder.
//
// Responders form a chain, from a view to its superview and on to the window. What a responder does
// not take itself goes on to the next.
#pragma once

#include "platform/foundation/NSObject.h"

#include <vector>

class UIEvent;
class UITouch;
class UIWindow;

using UITouches = std::vector<std::shared_ptr<UITouch>>;

class UIResponder : public NSObject {
public:
    // Null at the end of the chain.
    virtual UIResponder* nextResponder() const { return nullptr; }

    // touchesBegan:withEvent: and its kin. Every touch that began ends or is cancelled later, at the same
    // responder.
    virtual void touchesBegan(const UITouches& touches, UIEvent& event);
    virtual void touchesMoved(const UITouches& touches, UIEvent& event);
    virtual void touchesEnded(const UITouches& touches, UIEvent& event);
    virtual void touchesCancelled(const UITouches& touches, UIEvent& event);

    virtual bool canBecomeFirstResponder() const { return false; }
    virtual bool canResignFirstResponder() const { return true; }
    // Answers whether it is the first responder now. The one before has to agree to resign.
    virtual bool becomeFirstResponder();
    // Answers whether it is no longer the first responder.
    virtual bool resignFirstResponder();
    bool isFirstResponder() const;

protected:
    // The window whose first responder this can be; null outside of any.
    virtual UIWindow* responderWindow() const;
};
