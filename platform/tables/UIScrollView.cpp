#include "platform/tables/UIScrollView.h"

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/Scheduler.h"
#include "platform/graphics/FiniteNumbers.h"
#include "platform/graphics/MainScreenScale.h"
#include "platform/layers/CAMediaTimingFunction.h"
#include "platform/layers/PixelGrid.h"
#include "platform/tables/ScrollIndicator.h"
#include "platform/views/InteractionConstants.h"
#include "platform/views/UIPanGestureRecognizer.h"

#include <cmath>

namespace {

constexpr double scrollAnimationDuration = 0.3; // seconds

// Below this a released content only settles, in points a second: a finger that rests still trembles.
constexpr double minimumFlingVelocity = 30;

UIEdgeInsets sum(const UIEdgeInsets& first, const UIEdgeInsets& second)
{
    return { first.top + second.top, first.left + second.left, first.bottom + second.bottom,
        first.right + second.right };
}

} // namespace

// A pan that begins at once when the finger catches a moving content: the touch stops it and is no tap.
class UIScrollView::PanGestureRecognizer final : public UIPanGestureRecognizer {
public:
    explicit PanGestureRecognizer(UIScrollView& scrollView)
        : m_scrollView(scrollView)
    {
    }

protected:
    void touchesBegan(const UITouches& touches, UIEvent& event) override
    {
        UIPanGestureRecognizer::touchesBegan(touches, event);
        if (state() == UIGestureRecognizerState::Possible && m_scrollView.catchContent())
            setState(UIGestureRecognizerState::Began);
    }

private:
    UIScrollView& m_scrollView; // holds this recogniser
};

UIScrollView::~UIScrollView() = default;

void UIScrollView::init()
{
    UIView::init();
    setClipsToBounds(true);
    m_pan = make<PanGestureRecognizer>(*this);
    m_pan->addTarget(Action(strongSelf(this), &UIScrollView::panned));
    addGestureRecognizer(m_pan);
    m_indicators = { make<ScrollIndicator>(ScrollIndicator::Axis::Horizontal),
        make<ScrollIndicator>(ScrollIndicator::Axis::Vertical) };
    for (const auto& indicator : m_indicators)
        addSubview(indicator);
    followSafeArea();
}

void UIScrollView::setContentSize(const CGSize& size)
{
    NSParameterAssert(isFinite(size), "UIScrollView", "isfinite(contentSize)");
    if (!isFinite(size))
        return;
    const KeepAlive keepAlive(*this); // the delegate may drop the view, here and below
    m_contentSize = size;
    countSafeArea();
    keepOffsetInRange();
    placeIndicators();
}

void UIScrollView::setContentInset(const UIEdgeInsets& inset)
{
    NSParameterAssert(isFinite(inset), "UIScrollView", "isfinite(contentInset)");
    if (!isFinite(inset))
        return;
    changeInset(m_contentInset, inset);
}

UIEdgeInsets UIScrollView::adjustedContentInset() const { return sum(m_contentInset, m_safeArea); }

UIEdgeInsets UIScrollView::adjustedScrollIndicatorInsets() const
{
    return sum(m_scrollIndicatorInsets, m_safeArea);
}

void UIScrollView::safeAreaInsetsDidChange()
{
    UIView::safeAreaInsetsDidChange();
    countSafeArea();
}

// Outside of a window what was counted last goes on counting, so that the content is found where it was.
void UIScrollView::countSafeArea()
{
    if (!window())
        return;
    UIEdgeInsets counted = safeAreaInsets();
    if (m_contentSize.width() <= bounds().width())
        counted.left = counted.right = 0;
    if (counted != m_safeArea)
        changeInset(m_safeArea, counted);
}

// Content that rests at its beginning goes on resting there.
void UIScrollView::changeInset(UIEdgeInsets& inset, const UIEdgeInsets& value)
{
    const KeepAlive keepAlive(*this);
    const bool wasAtLeft = contentOffset().x() <= horizontalRange().minimum;
    const bool wasAtTop = contentOffset().y() <= verticalRange().minimum;
    inset = value;
    if (!isDragging() && !m_motion)
        applyOffset({ wasAtLeft ? horizontalRange().minimum : contentOffset().x(),
            wasAtTop ? verticalRange().minimum : contentOffset().y() });
    keepOffsetInRange();
    placeIndicators();
}

void UIScrollView::setContentOffset(const CGPoint& offset)
{
    stopMotion();
    applyOffset(offset);
}

void UIScrollView::setContentOffset(const CGPoint& offset, Animated animated)
{
    if (animated == Animated::No || !window()) {
        setContentOffset(offset);
        return;
    }
    const CGPoint from = contentOffset();
    const auto curve = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut);
    startMotion({ Motion::Kind::Animation, Scheduler::current().now(), scrollAnimationDuration,
        [from, offset, curve](double time) {
            return from + (offset - from) * curve->valueAt(time / scrollAnimationDuration);
        } });
}

void UIScrollView::scrollRectToVisible(const CGRect& rect, Animated animated)
{
    const CGRect uncovered = uncoveredRect();
    const auto nearestOffset
        = [](double offset, double start, double end, double visibleStart, double visibleEnd) {
              if (start < visibleStart || end - start > visibleEnd - visibleStart)
                  return offset + start - visibleStart;
              return end > visibleEnd ? offset + end - visibleEnd : offset;
          };
    const CGPoint offset = contentOffset();
    const CGPoint target(
        nearestOffset(offset.x(), rect.left(), rect.right(), uncovered.left(), uncovered.right()),
        nearestOffset(offset.y(), rect.top(), rect.bottom(), uncovered.top(), uncovered.bottom()));
    if (clampedOffset(target) != offset)
        setContentOffset(clampedOffset(target), animated);
}

void UIScrollView::setScrollIndicatorInsets(const UIEdgeInsets& insets)
{
    NSParameterAssert(isFinite(insets), "UIScrollView", "isfinite(scrollIndicatorInsets)");
    if (!isFinite(insets))
        return;
    m_scrollIndicatorInsets = insets;
    placeIndicators();
}

void UIScrollView::setBounds(const CGRect& bounds)
{
    const CGPoint oldOffset = contentOffset();
    UIView::setBounds(bounds);
    if (oldOffset != contentOffset())
        offsetDidChange();
}

void UIScrollView::layerGeometryWasTakenBack(CALayer& layer, CAProperty property)
{
    UIView::layerGeometryWasTakenBack(layer, property);
    if (property == CAProperty::Bounds)
        offsetDidChange();
}

void UIScrollView::offsetDidChange()
{
    placeIndicators();
    contentOffsetDidChange();
    sendMessage(*this, m_delegate, &UIScrollViewDelegate::scrollViewDidScroll, *this);
}

void UIScrollView::layoutSubviews()
{
    UIView::layoutSubviews();
    countSafeArea();
    keepOffsetInRange();
    placeIndicators();
}

void UIScrollView::didMoveToWindow()
{
    UIView::didMoveToWindow();
    if (window() || !m_motion)
        return;
    // Nobody sees the way any more: be at its end.
    const Motion motion = *m_motion;
    stopMotion();
    applyOffset(motion.offsetAt(motion.duration));
}

void UIScrollView::updateForFrame(double now)
{
    UIView::updateForFrame(now);
    if (!m_motion)
        return;
    const KeepAlive keepAlive(*this);
    const Motion motion = *m_motion;
    const double time = now - motion.startTime;
    if (time < motion.duration) {
        setNeedsFrameUpdate();
        applyOffset(motion.offsetAt(time));
        return;
    }
    m_motion.reset();
    applyOffset(motion.offsetAt(motion.duration));
    const auto message = motion.kind == Motion::Kind::Deceleration
        ? &UIScrollViewDelegate::scrollViewDidEndDecelerating
        : &UIScrollViewDelegate::scrollViewDidEndScrollingAnimation;
    sendMessage(*this, m_delegate, message, *this);
}

double UIScrollView::delayForContentTouches() const { return InteractionConstants::contentTouchDelay; }

bool UIScrollView::scrollWheel(const UIScrollEvent& event)
{
    const CGPoint delta(
        scrollsHorizontally() ? event.delta.x() : 0, scrollsVertically() ? event.delta.y() : 0);
    if (delta.isNull())
        return false;
    stopMotion();
    applyOffset(clampedOffset(contentOffset() - delta));
    return true;
}

CGRect UIScrollView::uncoveredRect() const { return UIEdgeInsetsInsetRect(bounds(), adjustedContentInset()); }

// --- Dragging ----------------------------------------------------------------------------------------

void UIScrollView::panned(UIPanGestureRecognizer& recognizer)
{
    switch (recognizer.state()) {
    case UIGestureRecognizerState::Began:
        beginDragging();
        followFinger(recognizer);
        break;
    case UIGestureRecognizerState::Changed:
        followFinger(recognizer);
        break;
    case UIGestureRecognizerState::Ended:
        endDragging(recognizer.velocityInView(nullptr));
        break;
    case UIGestureRecognizerState::Cancelled:
        endDragging({});
        break;
    default:
        break;
    }
}

void UIScrollView::followFinger(const UIPanGestureRecognizer& recognizer)
{
    if (!m_dragOrigin)
        return;
    const CGPoint wanted = *m_dragOrigin - recognizer.translationInView(nullptr);
    const CGPoint shown(ScrollPhysics::rubberBandOffset(wanted.x(), horizontalRange(), bounds().width()),
        ScrollPhysics::rubberBandOffset(wanted.y(), verticalRange(), bounds().height()));
    applyOffset({ scrollsHorizontally() ? shown.x() : contentOffset().x(),
        scrollsVertically() ? shown.y() : contentOffset().y() });
}

void UIScrollView::beginDragging()
{
    stopMotion();
    // Where the finger would have to pull from to show what is shown, the rubber band taken into account.
    const auto pulledFrom = [](double offset, ScrollPhysics::Range range, double dimension) {
        const double end = range.clamp(offset);
        return end + ScrollPhysics::rubberBandPull(offset - end, dimension);
    };
    m_dragOrigin = CGPoint(pulledFrom(contentOffset().x(), horizontalRange(), bounds().width()),
        pulledFrom(contentOffset().y(), verticalRange(), bounds().height()));
    sendMessage(*this, m_delegate, &UIScrollViewDelegate::scrollViewWillBeginDragging, *this);
}

void UIScrollView::endDragging(const CGPoint& velocity)
{
    if (!m_dragOrigin)
        return;
    m_dragOrigin.reset();
    const auto flung = [](double speed, bool scrolls) {
        return scrolls && std::abs(speed) >= minimumFlingVelocity ? -speed : 0;
    };
    const ScrollFlight horizontal(
        contentOffset().x(), flung(velocity.x(), scrollsHorizontally()), horizontalRange());
    const ScrollFlight vertical(
        contentOffset().y(), flung(velocity.y(), scrollsVertically()), verticalRange());
    const double duration = std::max(horizontal.duration(), vertical.duration());
    if (duration > 0)
        startMotion({ Motion::Kind::Deceleration, Scheduler::current().now(), duration,
            [horizontal, vertical](
                double time) { return CGPoint(horizontal.offsetAt(time), vertical.offsetAt(time)); } });
    sendMessage(*this, m_delegate, &UIScrollViewDelegate::scrollViewDidEndDragging, *this, isDecelerating());
}

bool UIScrollView::catchContent()
{
    if (!m_motion)
        return false;
    stopMotion();
    return true;
}

// --- Motion ------------------------------------------------------------------------------------------

void UIScrollView::startMotion(Motion motion)
{
    if (!window()) { // no frame comes by: a drag has ended because the view has left
        applyOffset(motion.offsetAt(motion.duration));
        return;
    }
    m_motion = std::move(motion);
    setNeedsFrameUpdate();
}

void UIScrollView::stopMotion() { m_motion.reset(); }

void UIScrollView::applyOffset(const CGPoint& offset)
{
    const double scale = MainScreenScale::get();
    const CGPoint whole(PixelGrid::nearestWholeDistance(offset.x(), scale),
        PixelGrid::nearestWholeDistance(offset.y(), scale));
    if (whole == contentOffset() || !isFinite(whole))
        return;
    const KeepAlive keepAlive(*this);
    setBounds({ whole, bounds().size() });
    for (const auto& indicator : m_indicators)
        indicator->flash();
}

void UIScrollView::keepOffsetInRange()
{
    if (!isDragging() && !m_motion)
        applyOffset(clampedOffset(contentOffset()));
}

CGPoint UIScrollView::clampedOffset(const CGPoint& offset) const
{
    return { horizontalRange().clamp(offset.x()), verticalRange().clamp(offset.y()) };
}

ScrollPhysics::Range UIScrollView::horizontalRange() const
{
    const UIEdgeInsets inset = adjustedContentInset();
    const double minimum = -inset.left;
    const double maximum = m_contentSize.width() + inset.right - bounds().width();
    return { minimum, std::max(minimum, maximum) };
}

ScrollPhysics::Range UIScrollView::verticalRange() const
{
    const UIEdgeInsets inset = adjustedContentInset();
    const double minimum = -inset.top;
    const double maximum = m_contentSize.height() + inset.bottom - bounds().height();
    return { minimum, std::max(minimum, maximum) };
}

bool UIScrollView::scrollsHorizontally() const
{
    return horizontalRange().maximum > horizontalRange().minimum;
}

bool UIScrollView::scrollsVertically() const
{
    return m_alwaysBounceVertical || verticalRange().maximum > verticalRange().minimum;
}

void UIScrollView::placeIndicators()
{
    const UIEdgeInsets insets = adjustedScrollIndicatorInsets();
    m_indicators[0]->place(bounds(), insets, m_contentSize.width(), horizontalRange());
    m_indicators[1]->place(bounds(), insets, m_contentSize.height(), verticalRange());
}
