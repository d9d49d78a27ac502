// Hears from a UIScrollView. Every message is optional; its default does nothing.
#pragma once

class UIScrollView;

class UIScrollViewDelegate {
public:
    // scrollViewDidScroll: — after every change of the content offset, whatever made it.
    virtual void scrollViewDidScroll(UIScrollView&) { }
    virtual void scrollViewWillBeginDragging(UIScrollView&) { }
    // scrollViewDidEndDragging:willDecelerate:
    virtual void scrollViewDidEndDragging(UIScrollView&, bool /*willDecelerate*/) { }
    virtual void scrollViewDidEndDecelerating(UIScrollView&) { }
    // After a move that was asked for with animation.
    virtual void scrollViewDidEndScrollingAnimation(UIScrollView&) { }

protected:
    ~UIScrollViewDelegate() = default; // nobody owns a delegate through this type
};
