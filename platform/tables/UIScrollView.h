// Shows a part of larger content: follows the finger, goes on with momentum, resists at the ends.
//
// The content offset is the origin of the view's bounds, always on a whole device pixel, so that text
// stays sharp while it moves. Motions are functions of time, played frame by frame while the view is in a
// window; a touch stops them. Offsets reach past the ends only by rubber band and momentum, or when they
// are set.
#pragma once

#include "platform/tables/ScrollPhysics.h"
#include "platform/tables/UIScrollViewDelegate.h"
#include "platform/views/UIView.h"

#include <array>
#include <optional>

class ScrollIndicator;
class UIPanGestureRecognizer;

class UIScrollView : public UIView {
public:
    using UIView::UIView;
    ~UIScrollView() override;

    void setDelegate(std::weak_ptr<UIScrollViewDelegate> delegate) { m_delegate = std::move(delegate); }
    std::shared_ptr<UIScrollViewDelegate> delegate() const { return m_delegate.lock(); }

    // Sizes and insets that are not finite are programming errors and change nothing.
    CGSize contentSize() const { return m_contentSize; }
    void setContentSize(const CGSize& size);
    // Free space around the content that can be scrolled to, on top of the safe area.
    UIEdgeInsets contentInset() const { return m_contentInset; }
    void setContentInset(const UIEdgeInsets& inset);
    // The content inset and the safe area, which counts by itself: at the top and bottom always, on the left
    // and right where the content is wider than the view. One as wide as the view would scroll sideways else.
    UIEdgeInsets adjustedContentInset() const;
    CGPoint contentOffset() const { return bounds().topLeft(); }
    void setContentOffset(const CGPoint& offset); // stops what is under way
    void setContentOffset(const CGPoint& offset, Animated animated);
    // Scrolls as little as shows the rectangle of the content, or its beginning where it is too long.
    void scrollRectToVisible(const CGRect& rect, Animated animated);

    // Whether the content gives way at its top and bottom even where it fits the view.
    void setAlwaysBounceVertical(bool always) { m_alwaysBounceVertical = always; }
    // On top of the safe area, too.
    UIEdgeInsets scrollIndicatorInsets() const { return m_scrollIndicatorInsets; }
    void setScrollIndicatorInsets(const UIEdgeInsets& insets);
    UIEdgeInsets adjustedScrollIndicatorInsets() const;

    bool isDragging() const { return m_dragOrigin.has_value(); }
    bool isDecelerating() const { return m_motion && m_motion->kind == Motion::Kind::Deceleration; }
    const std::shared_ptr<UIPanGestureRecognizer>& panGestureRecognizer() const { return m_pan; }

    void setBounds(const CGRect& bounds) override;
    void layoutSubviews() override;
    void safeAreaInsetsDidChange() override;
    void updateForFrame(double now) override;
    double delayForContentTouches() const override;
    bool scrollWheel(const UIScrollEvent&) override;

protected:
    void init() override;
    void didMoveToWindow() override;
    void layerGeometryWasTakenBack(CALayer&, CAProperty) override;
    // Sent after every change of the offset, before the delegate hears of it.
    virtual void contentOffsetDidChange() { }
    // The part of the content that shows and is not covered by the insets.
    CGRect uncoveredRect() const;

private:
    struct Motion {
        enum class Kind { Deceleration, Animation };
        Kind kind;
        double startTime;
        double duration;
        std::function<CGPoint(double time)> offsetAt;
    };
    class PanGestureRecognizer;

    void panned(UIPanGestureRecognizer& recognizer);
    void beginDragging();
    void followFinger(const UIPanGestureRecognizer& recognizer);
    void endDragging(const CGPoint& velocity);
    // Whether the content was moving and has been stopped by this.
    bool catchContent();
    void startMotion(Motion motion);
    void stopMotion();
    void applyOffset(const CGPoint& offset);
    void keepOffsetInRange();
    void countSafeArea();
    void changeInset(UIEdgeInsets& inset, const UIEdgeInsets& value);
    ScrollPhysics::Range horizontalRange() const;
    ScrollPhysics::Range verticalRange() const;
    bool scrollsHorizontally() const;
    bool scrollsVertically() const;
    CGPoint clampedOffset(const CGPoint& offset) const;
    void offsetDidChange();
    void placeIndicators();

    std::weak_ptr<UIScrollViewDelegate> m_delegate;
    CGSize m_contentSize;
    UIEdgeInsets m_contentInset;
    UIEdgeInsets m_scrollIndicatorInsets;
    UIEdgeInsets m_safeArea; // what of it counts
    std::shared_ptr<UIPanGestureRecognizer> m_pan;
    std::array<std::shared_ptr<ScrollIndicator>, 2> m_indicators; // horizontal, vertical
    std::optional<CGPoint> m_dragOrigin; // the offset the finger pulls from; set while it drags
    std::optional<Motion> m_motion;
    bool m_alwaysBounceVertical = false;
};
