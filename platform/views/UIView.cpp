#include "platform/views/UIView.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/FiniteNumbers.h"
#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CATransaction.h"
#include "platform/views/Autoresizing.h"
#include "platform/views/UIGestureRecognizer.h"
#include "platform/views/UIViewAnimationBlock.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/UIWindow.h"
#include "platform/views/ViewInsets.h"

namespace {

CAContentsGravity gravityOf(UIViewContentMode mode)
{
    switch (mode) {
    case UIViewContentMode::ScaleAspectFit:
        return CAContentsGravity::ResizeAspect;
    case UIViewContentMode::ScaleAspectFill:
        return CAContentsGravity::ResizeAspectFill;
    case UIViewContentMode::Center:
        return CAContentsGravity::Center;
    case UIViewContentMode::Top:
        return CAContentsGravity::Top;
    case UIViewContentMode::Bottom:
        return CAContentsGravity::Bottom;
    case UIViewContentMode::Left:
        return CAContentsGravity::Left;
    case UIViewContentMode::Right:
        return CAContentsGravity::Right;
    case UIViewContentMode::TopLeft:
        return CAContentsGravity::TopLeft;
    case UIViewContentMode::TopRight:
        return CAContentsGravity::TopRight;
    case UIViewContentMode::BottomLeft:
        return CAContentsGravity::BottomLeft;
    case UIViewContentMode::BottomRight:
        return CAContentsGravity::BottomRight;
    case UIViewContentMode::ScaleToFill:
        break;
    }
    return CAContentsGravity::Resize;
}

} // namespace

UIView::UIView() = default;

UIView::UIView(const CGRect& frame)
    : m_initialFrame(frame)
{
}

UIView::~UIView()
{
    leaveLayout();
    for (const auto& view : m_subviews) {
        view->m_superview = nullptr;
        view->layoutRoleDidChange();
    }
    for (const auto& recognizer : m_recognizers)
        recognizer->setView({}, nullptr);
}

void UIView::init()
{
    UIResponder::init();
    m_layer = makeLayer();
    m_layer->setDelegate(weakSelf(this));
    m_layer->setContentsScale(UIScreen::mainScreen()->scale());
    UIView::setBounds({ CGPoint(), m_initialFrame.size() });
    UIView::setCenter(m_initialFrame.center());
    setNeedsLayout();
    if (requiresConstraintBasedLayout())
        setNeedsUpdateConstraints();
}

std::shared_ptr<CALayer> UIView::makeLayer() const { return CALayer::layer(); }

// --- Geometry ----------------------------------------------------------------------------------------

CGRect UIView::frame() const { return m_layer->frame(); }

void UIView::setFrame(const CGRect& frame)
{
    const CGPoint anchor = m_layer->anchorPoint();
    const CGPoint center(frame.x() + anchor.x() * frame.width(), frame.y() + anchor.y() * frame.height());
    const bool accepted = isFinite(frame) && isFinite(center);
    NSParameterAssert(accepted, "UIView", "isfinite(frame)");
    if (!accepted)
        return;
    setBounds({ bounds().topLeft(), frame.size() });
    setCenter(center);
}

CGRect UIView::bounds() const { return m_layer->bounds(); }

void UIView::setBounds(const CGRect& bounds)
{
    const bool accepted = isFinite(bounds);
    NSParameterAssert(accepted, "UIView", "isfinite(bounds)");
    if (!accepted)
        return;
    const CGRect oldBounds = m_layer->bounds();
    const CGSize oldSize = oldBounds.size();
    m_layer->setBounds(bounds);
    if (bounds.size() == oldSize) {
        if (bounds != oldBounds)
            ViewInsets::refreshInside(*this);
        return;
    }
    const auto subviews = m_subviews;
    for (const auto& view : subviews)
        if (view->m_superview == this)
            view->resizeWithSuperview(oldSize, bounds.size());
    layoutFrameDidChange();
    setNeedsLayout();
    ViewInsets::refreshInside(*this);
}

CGPoint UIView::center() const { return m_layer->position(); }

void UIView::setCenter(const CGPoint& center)
{
    const bool accepted = isFinite(center);
    NSParameterAssert(accepted, "UIView", "isfinite(center)");
    if (!accepted)
        return;
    const bool moves = center != m_layer->position();
    m_layer->setPosition(center);
    layoutFrameDidChange();
    if (moves)
        ViewInsets::refreshInside(*this);
}

CGAffineTransform UIView::transform() const { return m_layer->transform(); }

void UIView::setTransform(const CGAffineTransform& transform)
{
    NSParameterAssert(isFinite(transform), "UIView", "isfinite(transform)");
    if (!isFinite(transform))
        return;
    m_layer->setTransform(transform);
    ViewInsets::refreshInside(*this);
}

void UIView::layerGeometryWasTakenBack(CALayer&, CAProperty)
{
    layoutFrameDidChange();
    ViewInsets::refreshInside(*this);
}

void UIView::resizeWithSuperview(const CGSize& oldSize, const CGSize& newSize)
{
    if (m_autoresizingMask != UIViewAutoresizing::None && hasGivenFrame())
        setFrame(autoresizedFrame(frame(), m_autoresizingMask, oldSize, newSize));
}

const UIView& UIView::rootView() const
{
    const UIView* view = this;
    while (view->m_superview)
        view = view->m_superview;
    return *view;
}

CGPoint UIView::convertPointToView(const CGPoint& point, const UIView* view) const
{
    return m_layer->convertPointToLayer(point, (view ? *view : rootView()).m_layer.get());
}

CGPoint UIView::convertPointFromView(const CGPoint& point, const UIView* view) const
{
    return m_layer->convertPointFromLayer(point, (view ? *view : rootView()).m_layer.get());
}

CGRect UIView::convertRectToView(const CGRect& rect, const UIView* view) const
{
    return m_layer->convertRectToLayer(rect, (view ? *view : rootView()).m_layer.get());
}

CGRect UIView::convertRectFromView(const CGRect& rect, const UIView* view) const
{
    return m_layer->convertRectFromLayer(rect, (view ? *view : rootView()).m_layer.get());
}

CGSize UIView::sizeThatFits(const CGSize&) const { return bounds().size(); }

void UIView::sizeToFit() { setFrame({ frame().topLeft(), sizeThatFits(bounds().size()) }); }

CGSize UIView::intrinsicContentSize() const { return { UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric }; }

void UIView::invalidateIntrinsicContentSize()
{
    layoutContentDidChange();
    if (m_superview)
        m_superview->setNeedsLayout();
}

// --- Looks -------------------------------------------------------------------------------------------

double UIView::alpha() const { return m_layer->opacity(); }

void UIView::setAlpha(double alpha)
{
    NSParameterAssert(isFinite(alpha), "UIView", "isfinite(alpha)");
    if (!isFinite(alpha))
        return;
    m_layer->setOpacity(alpha);
    touchabilityDidChange();
}

bool UIView::isHidden() const { return m_layer->isHidden(); }

void UIView::setHidden(bool hidden)
{
    m_layer->setHidden(hidden);
    touchabilityDidChange();
}

bool UIView::isOpaque() const { return m_opaque; }

void UIView::setOpaque(bool opaque) { m_opaque = opaque; }

std::shared_ptr<UIColor> UIView::backgroundColor() const { return m_layer->backgroundColor(); }

void UIView::setBackgroundColor(const std::shared_ptr<UIColor>& color) { m_layer->setBackgroundColor(color); }

bool UIView::clipsToBounds() const { return m_layer->masksToBounds(); }

void UIView::setClipsToBounds(bool clips) { m_layer->setMasksToBounds(clips); }

void UIView::setTintColor(std::shared_ptr<UIColor> color)
{
    m_appearanceNotes.noteSetting(&UIView::setTintColor);
    m_tint.setColor(std::move(color));
}

void UIView::setContentMode(UIViewContentMode mode)
{
    m_contentMode = mode;
    m_layer->setContentsGravity(gravityOf(mode));
}

// --- Display -----------------------------------------------------------------------------------------

void UIView::setNeedsFrameUpdate()
{
    if (m_window)
        m_window->updateInNextFrame(strongSelf(this));
}

void UIView::setNeedsDisplay() { m_layer->setNeedsDisplay(); }

void UIView::drawLayerInContext(CALayer&, CGContext& context) { drawRect(bounds(), context); }

// --- Animation ---------------------------------------------------------------------------------------

CAActionAnswer UIView::actionForLayerForKey(CALayer& layer, const NSString& key)
{
    const std::shared_ptr<CAAnimation> atOnce;
    const auto block = UIViewAnimationBlock::current();
    if (!block || !m_window || block->isAnimating(layer, key))
        return atOnce;
    if (block->allowsUserInteraction())
        return block->makeAnimation(layer, key, nullptr);
    ++m_interactionBlocks;
    return block->makeAnimation(layer, key, [weakView = weakSelf(this)] {
        if (const auto view = weakView.lock())
            --view->m_interactionBlocks;
    });
}

// Each change gets a copy of the motion under way, from the value that is shown: the same times, the same
// pace, and held with it where it is held.
void UIView::placeSublayers(const std::function<void()>& changes)
{
    const CATransaction::Guard transaction;
    const auto resizing = std::dynamic_pointer_cast<const CABasicAnimation>(
        m_layer->animationForKey(CAKeyPath::key(CAProperty::Bounds)));
    if (!resizing)
        CATransaction::setDisableActions(true);
    CATransaction::setActionMaker([resizing](const CALayer& layer, const NSString& key) -> CAActionAnswer {
        const auto along = std::static_pointer_cast<CABasicAnimation>(resizing->copy());
        along->setKeyPath(key);
        along->setFromValue(CAKeyPath(key).value(layer.presentationValues()));
        along->setToValue({});
        along->setByValue({});
        along->setDelegate({});
        along->setCompletion(nullptr);
        return along;
    });
    changes();
}

void UIView::animate(double duration, const Animations& animations, Completion completion)
{
    UIViewAnimationBlock::run({ .duration = duration }, animations, std::move(completion));
}

void UIView::animate(double duration, double delay, UIViewAnimationOptions options,
    const Animations& animations, Completion completion)
{
    UIViewAnimationBlock::run(
        { .duration = duration, .delay = delay, .options = options }, animations, std::move(completion));
}

void UIView::animate(double duration, double delay, double springDamping, double initialVelocity,
    UIViewAnimationOptions options, const Animations& animations, Completion completion)
{
    UIViewAnimationBlock::run({ .duration = duration,
                                  .delay = delay,
                                  .options = options,
                                  .spring = UIViewAnimationBlock::Spring { springDamping, initialVelocity } },
        animations, std::move(completion));
}

void UIView::performWithoutAnimation(const Animations& changes) { UIViewAnimationBlock::runWithout(changes); }

bool UIView::isInAnimation() { return UIViewAnimationBlock::current() != nullptr; }

// --- Text --------------------------------------------------------------------------------------------

NSString UIView::description() const
{
    const CGRect place = frame();
    NSString text = QStringLiteral("<%1; frame = (%2 %3; %4 %5)")
                        .arg(className())
                        .arg(place.x())
                        .arg(place.y())
                        .arg(place.width())
                        .arg(place.height());
    if (isHidden())
        text += QStringLiteral("; hidden");
    if (alpha() != 1)
        text += QStringLiteral("; alpha = %1").arg(alpha());
    if (m_tag != 0)
        text += QStringLiteral("; tag = %1").arg(m_tag);
    return text + QLatin1Char('>');
}

NSString UIView::treeDescription() const
{
    NSString text = description() + QLatin1Char('\n');
    for (const auto& view : m_subviews)
        for (const NSString& line : view->treeDescription().split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            text += QStringLiteral("   | ") + line + QLatin1Char('\n');
    return text;
}
