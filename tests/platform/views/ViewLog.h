// Views and targets that write down what they are told.
#pragma once

#include "platform/foundation/Action.h"
#include "platform/views/UIGestureRecognizer.h"
#include "platform/views/UITouch.h"
#include "platform/views/UIView.h"

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// Writes touches down as "began 10 20", in its own coordinates.
class LoggingView : public UIView {
public:
    using UIView::UIView;

    void touchesBegan(const UITouches& touches, UIEvent&) override { log("began", *touches.front()); }
    void touchesMoved(const UITouches& touches, UIEvent&) override { log("moved", *touches.front()); }
    void touchesEnded(const UITouches& touches, UIEvent&) override
    {
        log("ended", *touches.front());
        if (onEnd)
            onEnd();
    }
    void touchesCancelled(const UITouches& touches, UIEvent&) override
    {
        log("cancelled", *touches.front());
        if (onCancel)
            onCancel();
    }

    Lines lines;
    std::function<void()> onEnd;
    std::function<void()> onCancel;

private:
    void log(const char* what, const UITouch& touch)
    {
        const CGPoint at = touch.locationInView(this);
        lines.push_back(
            std::string(what) + ' ' + std::to_string(qRound(at.x())) + ' ' + std::to_string(qRound(at.y())));
    }
};

// Writes the states of recognisers down as their numbers.
class GestureTarget : public NSObject {
public:
    void recognized(UIGestureRecognizer& recognizer)
    {
        states.push_back(static_cast<int>(recognizer.state()));
        if (onAction)
            onAction(recognizer);
    }
    Action action() { return { strongSelf(this), &GestureTarget::recognized }; }

    std::vector<int> states;
    std::function<void(UIGestureRecognizer&)> onAction;
};
