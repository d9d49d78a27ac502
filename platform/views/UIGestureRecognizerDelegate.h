// Is asked by a UIGestureRecognizer. Every message is optional; its default is what an absent one means.
#pragma once

class UIGestureRecognizer;
class UITouch;

class UIGestureRecognizerDelegate {
public:
    // gestureRecognizer:shouldReceiveTouch: — asked for each touch before the recogniser sees it.
    virtual bool gestureRecognizerShouldReceiveTouch(UIGestureRecognizer&, UITouch&) { return true; }
    virtual bool gestureRecognizerShouldBegin(UIGestureRecognizer&) { return true; }
    // gestureRecognizer:shouldRecognizeSimultaneouslyWithGestureRecognizer: — one yes is enough, from
    // either of the two.
    virtual bool gestureRecognizerShouldRecognizeSimultaneously(UIGestureRecognizer&, UIGestureRecognizer&)
    {
        return false;
    }

    // gestureRecognizer:shouldRequireFailureOfGestureRecognizer: — whether the first waits until the second,
    // which watches the same touch, has failed. Asked when the first would begin.
    virtual bool gestureRecognizerShouldRequireFailure(UIGestureRecognizer&, UIGestureRecognizer&)
    {
        return false;
    }
    // gestureRecognizer:shouldBeRequiredToFailByGestureRecognizer: — the same, asked from the other side.
    virtual bool gestureRecognizerShouldBeRequiredToFail(UIGestureRecognizer&, UIGestureRecognizer&)
    {
        return false;
    }

protected:
    ~UIGestureRecognizerDelegate() = default; // nobody owns a delegate through this type
};
