// A target that writes down the names of the events it is told of, and pictures of one colour.
#pragma once

#include "platform/controls/UIControl.h"
#include "tests/support/Pictures.h"

#include <string>
#include <vector>

using Lines = std::vector<std::string>;

class ControlTarget : public NSObject {
public:
    // Hears of the common events, each under its name.
    void listenTo(UIControl& control)
    {
        using enum UIControlEvents;
        const auto self = strongSelf(this);
        control.addTarget({ self, &ControlTarget::down }, TouchDown);
        control.addTarget({ self, &ControlTarget::enter }, TouchDragEnter);
        control.addTarget({ self, &ControlTarget::exit }, TouchDragExit);
        control.addTarget({ self, &ControlTarget::upInside }, TouchUpInside);
        control.addTarget({ self, &ControlTarget::upOutside }, TouchUpOutside);
        control.addTarget({ self, &ControlTarget::cancel }, TouchCancel);
    }
    void down() { tell("down"); }
    void enter() { tell("enter"); }
    void exit() { tell("exit"); }
    void upInside() { tell("up inside"); }
    void upOutside() { tell("up outside"); }
    void cancel() { tell("cancel"); }
    void pressed(UIControl& control)
    {
        sender = &control;
        tell("pressed");
    }
    Action pressedAction() { return { strongSelf(this), &ControlTarget::pressed }; }

    Lines lines;
    UIControl* sender = nullptr;
    std::function<void()> onEvent;

private:
    void tell(const char* event)
    {
        lines.push_back(event);
        if (onEvent)
            onEvent();
    }
};

// Of that many points, opaque, at a density of 2.
inline std::shared_ptr<UIImage> makePicture(
    int width, int height, UIImageRenderingMode mode = UIImageRenderingMode::Automatic)
{
    return plainImage({ width * 2, height * 2 }, Qt::darkGreen, 2)->imageWithRenderingMode(mode);
}
