#include "playback/ORVCircularProgressView.h"

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CATransaction.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr double wholeTurn = 2 * std::numbers::pi;
// The circle begins at the top: stroke fractions count from there.
constexpr double startAngle = 1.5 * std::numbers::pi;
constexpr double endAngle = 3.5 * std::numbers::pi;
constexpr bool clockwise = true;

constexpr double spinDuration = 0.6; // seconds a turn
// Of the circle, and what is left of it.
constexpr double spinArc = 1.0F / 15;
constexpr double beyondSpinArc = 14.0F / 15;
constexpr double forever = std::numeric_limits<float>::max();

const NSString& progressKey()
{
    static const NSString key = QStringLiteral("progress");
    return key;
}

const NSString& spinKey()
{
    static const NSString key = QStringLiteral("indeterminateGroup");
    return key;
}

// Changes without the layers' own motions.
template <typename Change> void atOnce(const Change& change)
{
    const CATransaction::Guard transaction;
    CATransaction::setDisableActions(true);
    change();
}

} // namespace

void ORVCircularProgressView::init()
{
    UIControl::init();
    setupDefaults();
    setupSublayers();
}

void ORVCircularProgressView::setupDefaults()
{
    m_trackTintColor = UIColor::colorWithRed(0.612, 0.612, 0.624, 0.3);
}

bool ORVCircularProgressView::automaticallyNotifiesObserversForKey(const NSString& key) const
{
    return key != progressKey() && UIControl::automaticallyNotifiesObserversForKey(key);
}

// --- Looks -------------------------------------------------------------------------------------------

void ORVCircularProgressView::setTrackTintColor(std::shared_ptr<UIColor> color)
{
    m_trackTintColor = std::move(color);
    atOnce([this] { m_trackLayer->setStrokeColor(m_trackTintColor); });
}

void ORVCircularProgressView::setTrackWidth(double width)
{
    NSParameterAssert(std::isfinite(width), "ORVCircularProgressView", "width is finite");
    if (!std::isfinite(width))
        return;
    const double change = std::abs(width - m_trackWidth);
    m_trackWidth = width;
    atOnce([this] {
        m_trackLayer->setLineWidth(m_trackWidth);
        m_progressLayer->setLineWidth(m_trackWidth);
    });
    if (change > std::numeric_limits<float>::epsilon())
        setNeedsLayout();
}

void ORVCircularProgressView::tintColorDidChange()
{
    UIControl::tintColorDidChange();
    const auto recolor = [this] { m_progressLayer->setStrokeColor(tintColor()); };
    // Inside an animation, as when the interface dims, the arc changes its colour along with it; outside of
    // one, as when the ring has just joined a window, at once.
    if (UIView::isInAnimation())
        recolor();
    else
        atOnce(recolor);
}

// --- Progress ----------------------------------------------------------------------------------------

void ORVCircularProgressView::setDirection(ORVCircularProgressDirection direction)
{
    if (std::exchange(m_direction, direction) == direction)
        return;
    if (m_indeterminate)
        addIndeterminateAnimation();
    else
        updateProgress(Animated::No);
}

void ORVCircularProgressView::setProgress(double progress, Animated animated)
{
    const KeepAlive keepAlive(*this); // an observer may drop the view
    willChangeValueForKey(progressKey());
    m_progress = progress;
    didChangeValueForKey(progressKey());
    if (!m_indeterminate)
        updateProgress(animated);
}

void ORVCircularProgressView::setIndeterminate(bool indeterminate)
{
    if (std::exchange(m_indeterminate, indeterminate) == indeterminate)
        return;
    if (m_indeterminate) {
        addIndeterminateAnimation();
    } else {
        removeIndeterminateAnimation();
        updateProgress(Animated::No);
    }
}

void ORVCircularProgressView::updateProgress(Animated animated)
{
    m_progressLayer->setProgressAnimationsEnabled(animated == Animated::Yes);
    switch (m_direction) {
    case ORVCircularProgressDirectionClockwise:
        m_progressLayer->setStrokeStart(0);
        m_progressLayer->setStrokeEnd(m_progress);
        break;
    case ORVCircularProgressDirectionCounterclockwise:
        m_progressLayer->setStrokeStart(1 - m_progress);
        m_progressLayer->setStrokeEnd(1);
        break;
    }
}

void ORVCircularProgressView::addIndeterminateAnimation()
{
    m_progressLayer->setProgressAnimationsEnabled(false);
    const auto spin = CABasicAnimation::animationWithKeyPath(QStringLiteral("transform.rotation.z"));
    spin->setDuration(spinDuration);
    spin->setRepeatCount(forever);
    switch (m_direction) {
    case ORVCircularProgressDirectionClockwise:
        m_progressLayer->setStrokeStart(0);
        m_progressLayer->setStrokeEnd(spinArc);
        spin->setFromValue(0.0);
        spin->setToValue(wholeTurn);
        break;
    case ORVCircularProgressDirectionCounterclockwise:
        m_progressLayer->setStrokeStart(beyondSpinArc);
        m_progressLayer->setStrokeEnd(1);
        spin->setFromValue(wholeTurn);
        spin->setToValue(0.0);
        break;
    default:
        return;
    }
    m_progressLayer->addAnimation(spin, spinKey());
}

void ORVCircularProgressView::removeIndeterminateAnimation()
{
    m_progressLayer->removeAnimationForKey(spinKey());
}

// --- Layers ------------------------------------------------------------------------------------------

std::shared_ptr<ORVProgressShapeLayer> ORVCircularProgressView::makeSublayer(
    const std::shared_ptr<UIColor>& strokeColor) const
{
    auto sublayer = make<ORVProgressShapeLayer>();
    sublayer->setStrokeColor(strokeColor);
    sublayer->setFillColor(nullptr);
    sublayer->setLineWidth(m_trackWidth);
    layer()->addSublayer(sublayer);
    return sublayer;
}

void ORVCircularProgressView::setupSublayers()
{
    for (const auto& old : { m_trackLayer, m_progressLayer })
        if (old)
            old->removeFromSuperlayer();
    m_trackLayer = makeSublayer(m_trackTintColor);
    m_progressLayer = makeSublayer(tintColor());
    if (m_indeterminate)
        addIndeterminateAnimation();
    else
        updateProgress(Animated::No);
    setNeedsLayout();
}

void ORVCircularProgressView::layoutSubviews()
{
    UIControl::layoutSubviews();
    updateSublayers();
}

void ORVCircularProgressView::updateSublayers()
{
    const CGRect rect = bounds();
    const CGPoint center(rect.width() / 2, rect.height() / 2);
    const double radius = std::min(rect.width(), rect.height()) / 2 - m_trackWidth / 2;
    const CGPathRef circle
        = UIBezierPath::bezierPathWithArcCenter(center, radius, startAngle, endAngle, clockwise)->cgPath();
    placeSublayers([&] {
        for (const auto& sublayer : { m_trackLayer, m_progressLayer }) {
            sublayer->setBounds(rect);
            sublayer->setPosition(center);
            sublayer->setPath(circle);
        }
    });
}
