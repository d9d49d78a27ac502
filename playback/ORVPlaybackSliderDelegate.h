// Hears from an ORVPlaybackSlider. Every message is optional; its default does nothing.
//
// Positions are fractions of the bar from 0 to 1. The slider keeps itself and the delegate alive for the
// length of a call, so a delegate may drop either from inside one.
#pragma once

class ORVPlaybackSlider;

class ORVPlaybackSliderDelegate {
public:
    virtual void playbackSliderDidBeginDraggingThumb(ORVPlaybackSlider&) { } // the thumb has not moved yet
    // playbackSlider:didDragThumbToPosition: — after every move of a drag, the first and the last included.
    virtual void playbackSliderDidDragThumbToPosition(ORVPlaybackSlider&, double) { }
    // playbackSlider:didEndDraggingThumbWithNewPosition: — also when the drag was cancelled.
    virtual void playbackSliderDidEndDraggingThumbWithNewPosition(ORVPlaybackSlider&, double) { }
    // playbackSlider:didTapOnPosition: — the thumb is on its way there.
    virtual void playbackSliderDidTapOnPosition(ORVPlaybackSlider&, double) { }
    virtual void playbackSliderDidBeginRenderingWaveform(ORVPlaybackSlider&) { }
    virtual void playbackSliderDidEndRenderingWaveform(ORVPlaybackSlider&) { } // the picture is shown

protected:
    ~ORVPlaybackSliderDelegate() = default; // nobody owns a delegate through this type
};
