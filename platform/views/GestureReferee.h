// To whom a recogniser reports: it finds its own gesture, somebody else settles whether it goes ahead.
#pragma once

class UIGestureRecognizer;
enum class UIGestureRecognizerState;

class GestureReferee {
public:
    // The recogniser has found its gesture (began, or ended for one that happens at once), goes on with it
    // (changed), is done with it (ended, cancelled), or has found that there is none (failed).
    virtual void gestureReports(UIGestureRecognizer&, UIGestureRecognizerState) = 0;
    // It is to watch nothing any more: it was disabled or taken off its view.
    virtual void gestureWithdraws(UIGestureRecognizer&) = 0;

protected:
    ~GestureReferee() = default; // nobody owns a referee through this type
};
