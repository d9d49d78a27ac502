#include "platform/layers/CALayer.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/Scheduler.h"
#include "platform/graphics/FiniteNumbers.h"
#include "platform/graphics/UIColor.h"
#include "platform/layers/CABasicAnimation.h"
#include "platform/layers/CALayerAnimations.h"
#include "platform/layers/CALayerTree.h"
#include "platform/layers/CAModelChanges.h"
#include "platform/layers/CATransaction.h"

#include <algorithm>

namespace {

LayerID nextLayerID()
{
    static std::uint64_t last = 0;
    return LayerID { ++last };
}

bool isFinite(const std::shared_ptr<UIColor>&) { return true; }
bool isFinite(const CGPathRef&) { return true; }

// The ends of a stroke are kept as they are given, and taken to the nearer end where they are drawn.
bool takesAnyNumber(CAProperty property)
{
    return property == CAProperty::StrokeStart || property == CAProperty::StrokeEnd;
}

} // namespace

std::shared_ptr<CALayer> CALayer::layer() { return make<CALayer>(); }

CALayer::CALayer()
    : m_layerID(nextLayerID())
{
}

CALayer::~CALayer()
{
    for (const auto& sublayer : m_sublayers) {
        sublayer->m_superlayer = nullptr;
        sublayer->setTree(nullptr, {});
    }
}

NSString CALayer::description() const
{
    return m_name.isEmpty() ? NSObject::description() : NSObject::description() + u' ' + m_name;
}

// --- Properties ------------------------------------------------------------------------------------------

template <typename Value>
void CALayer::change(CAProperty property, Value CALayerValues::*member, const Value& value)
{
    if (CAValues::isSame(m_values.*member, value)) {
        if constexpr (!std::is_same_v<Value, CGPathRef>) // the old object says that nothing has changed
            m_values.*member = value; // an equal colour may be another object
        return;
    }
    const NSString& key = CAKeyPath::key(property);
    const bool accepted = takesAnyNumber(property) || isFinite(value);
    NSCAssert(accepted, "CALayer", QStringLiteral("Invalid parameter not satisfying: isfinite(%1)").arg(key));
    if (!accepted)
        return;
    const auto action = CATransaction::disableActions() ? nullptr : actionForKey(key);
    if (CAModelChanges* const changes = CAModelChanges::recording())
        changes->note(*this, property, m_values.*member, value);
    m_values.*member = value;
    if (action)
        addAnimation(action, key);
    setNeedsFrame();
}

template void CALayer::change(CAProperty, double CALayerValues::*, const double&);
template void CALayer::change(
    CAProperty, std::shared_ptr<UIColor> CALayerValues::*, const std::shared_ptr<UIColor>&);
template void CALayer::change(CAProperty, CGPathRef CALayerValues::*, const CGPathRef&);

void CALayer::setBounds(const CGRect& bounds)
{
    const CGSize old = m_values.bounds.size();
    change(CAProperty::Bounds, &CALayerValues::bounds, bounds);
    const CGSize size = m_values.bounds.size(); // the old one, where the bounds were refused
    if (old.width() == size.width() && old.height() == size.height())
        return;
    setNeedsLayout();
    contentsDidChange();
}

void CALayer::setPosition(const CGPoint& position)
{
    change(CAProperty::Position, &CALayerValues::position, position);
}

void CALayer::setAnchorPoint(const CGPoint& anchorPoint)
{
    change(CAProperty::AnchorPoint, &CALayerValues::anchorPoint, anchorPoint);
}

void CALayer::setTransform(const CGAffineTransform& transform)
{
    change(CAProperty::Transform, &CALayerValues::transform, transform);
}

void CALayer::setFrame(const CGRect& frame)
{
    CALayerValues placed = m_values;
    const CGAffineTransform& transform = m_values.transform;
    if (transform.isIdentity())
        placed.bounds.setSize(frame.size());
    else if (transform.isInvertible())
        placed.bounds.setSize(transform.inverted().mapRect(frame).size());
    placed.position = {};
    placed.position = frame.topLeft() - placed.frame().topLeft();
    const bool accepted = isFinite(placed.bounds) && isFinite(placed.position);
    NSParameterAssert(accepted, "CALayer", "isfinite(frame)");
    if (!accepted)
        return;
    setBounds(placed.bounds);
    setPosition(placed.position);
}

void CALayer::setOpacity(double opacity) { change(CAProperty::Opacity, &CALayerValues::opacity, opacity); }

void CALayer::setCornerRadius(double radius)
{
    change(CAProperty::CornerRadius, &CALayerValues::cornerRadius, radius);
}

void CALayer::setBackgroundColor(const std::shared_ptr<UIColor>& color)
{
    change(CAProperty::BackgroundColor, &CALayerValues::backgroundColor, color);
}

void CALayer::setContentsTintColor(const std::shared_ptr<UIColor>& color)
{
    change(CAProperty::ContentsTintColor, &CALayerValues::contentsTintColor, color);
}

void CALayer::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    setNeedsFrame(); // before, where hiding is what is to be seen
    m_hidden = hidden;
    if (CAModelChanges* const changes = CAModelChanges::recording())
        changes->noteHidden(*this, hidden);
    setNeedsFrame();
    if (!hidden && (m_needsDisplay || m_sublayersNeedDisplay))
        ancestorsNeedDisplay(); // the passes did not see it while it was hidden
}

void CALayer::setMasksToBounds(bool masks)
{
    if (std::exchange(m_masksToBounds, masks) != masks)
        setNeedsFrame();
}

CAValue CALayer::valueForKeyPath(const NSString& keyPath) const { return CAKeyPath(keyPath).value(m_values); }

void CALayer::setValueForKeyPath(const CAValue& value, const NSString& keyPath)
{
    CALayerValues changed = m_values;
    const CAKeyPath path(keyPath);
    path.setValue(changed, value);
    switch (path.property()) {
    case CAProperty::None:
        return;
    case CAProperty::Bounds:
        return setBounds(changed.bounds);
    case CAProperty::Position:
        return setPosition(changed.position);
    case CAProperty::AnchorPoint:
        return setAnchorPoint(changed.anchorPoint);
    case CAProperty::Transform:
        return setTransform(changed.transform);
    case CAProperty::Opacity:
        return setOpacity(changed.opacity);
    case CAProperty::CornerRadius:
        return setCornerRadius(changed.cornerRadius);
    case CAProperty::BackgroundColor:
        return setBackgroundColor(changed.backgroundColor);
    case CAProperty::ContentsTintColor:
        return setContentsTintColor(changed.contentsTintColor);
    case CAProperty::StrokeStart:
        return change(path.property(), &CALayerValues::strokeStart, changed.strokeStart);
    case CAProperty::StrokeEnd:
        return change(path.property(), &CALayerValues::strokeEnd, changed.strokeEnd);
    case CAProperty::LineWidth:
        return change(path.property(), &CALayerValues::lineWidth, changed.lineWidth);
    case CAProperty::StrokeColor:
        return change(path.property(), &CALayerValues::strokeColor, changed.strokeColor);
    case CAProperty::FillColor:
        return change(path.property(), &CALayerValues::fillColor, changed.fillColor);
    case CAProperty::Path:
        return change(path.property(), &CALayerValues::path, changed.path);
    }
}

// --- Tree ------------------------------------------------------------------------------------------------

bool CALayer::isWithin(const CALayer& ancestor) const
{
    for (const CALayer* layer = this; layer; layer = layer->m_superlayer)
        if (layer == &ancestor)
            return true;
    return false;
}

bool CALayer::isShown() const
{
    for (const CALayer* layer = this; layer; layer = layer->m_superlayer)
        if (layer->m_hidden)
            return false;
    return true;
}

// Where a layer is marked already, so are those above it, or one of them is hidden and changes before
// anything below it can be seen.
void CALayer::markFrameStale()
{
    m_frameRecord.isStale = true;
    for (CALayer* layer = m_superlayer; layer && !layer->m_frameRecord.isStale; layer = layer->m_superlayer)
        layer->m_frameRecord.isStale = true;
}

void CALayer::setNeedsFrame()
{
    markFrameStale();
    if (m_tree && !m_tree->needsFrame() && isShown())
        m_tree->setNeedsFrame();
}

void CALayer::addSublayer(const std::shared_ptr<CALayer>& sublayer)
{
    insertSublayer(sublayer, m_sublayers.size());
}

void CALayer::insertSublayer(std::shared_ptr<CALayer> sublayer, std::size_t index)
{
    NSParameterAssert(sublayer != nullptr, "CALayer", "sublayer != nil");
    if (!sublayer)
        return;
    const bool isFree = !isWithin(*sublayer) && !(sublayer->m_tree && !sublayer->m_superlayer);
    NSCAssert(isFree, "CALayer",
        QStringLiteral("A layer cannot be put into itself, nor the root of a tree into a layer."));
    if (!isFree)
        return;
    CALayer& inserted = *sublayer;
    inserted.removeFromSuperlayer();
    const auto position = static_cast<std::ptrdiff_t>(std::min(index, m_sublayers.size()));
    m_sublayers.insert(m_sublayers.begin() + position, std::move(sublayer));
    inserted.m_superlayer = this;
    inserted.m_frameRecord = {}; // it is about another place
    inserted.setTree(m_tree, {});
    if (inserted.hasPendingLayout())
        inserted.ancestorsNeedLayout();
    if (inserted.m_needsDisplay || inserted.m_sublayersNeedDisplay)
        inserted.ancestorsNeedDisplay();
    inserted.setNeedsFrame();
}

void CALayer::removeFromSuperlayer()
{
    if (!m_superlayer)
        return;
    setNeedsFrame();
    auto& siblings = m_superlayer->m_sublayers;
    const auto found = std::find_if(
        siblings.begin(), siblings.end(), [this](const auto& sibling) { return sibling.get() == this; });
    const std::shared_ptr<CALayer> self = *found; // the superlayer may hold the last reference
    siblings.erase(found);
    m_superlayer = nullptr;
    setTree(nullptr, {});
}

void CALayer::setTree(CALayerTree* tree, TreeKey key)
{
    m_tree = tree;
    if (m_animations)
        m_animations->timingDidChange(); // the layers above have a time of their own
    for (const auto& sublayer : m_sublayers)
        sublayer->setTree(tree, key);
}

// --- Animations ------------------------------------------------------------------------------------------

void CALayer::addAnimation(const std::shared_ptr<CAAnimation>& animation, const NSString& key)
{
    NSParameterAssert(animation != nullptr, "CALayer", "animation != nil");
    if (!animation)
        return;
    if (!m_animations)
        m_animations = std::make_unique<CALayerAnimations>(*this);
    m_animations->add(*animation, key);
    setNeedsFrame();
}

void CALayer::removeEndingAnimationsOfSubtree()
{
    if (hasAnimations()) {
        m_animations->removeEnding();
        setNeedsFrame();
    }
    for (const auto& sublayer : m_sublayers)
        sublayer->removeEndingAnimationsOfSubtree();
}

std::shared_ptr<const CAAnimation> CALayer::animationForKey(const NSString& key) const
{
    return m_animations ? m_animations->animationForKey(key) : nullptr;
}

std::vector<NSString> CALayer::animationKeys() const
{
    return m_animations ? m_animations->keys() : std::vector<NSString>();
}

bool CALayer::hasAnimations() const { return m_animations && !m_animations->isEmpty(); }

void CALayer::removeAnimationForKey(const NSString& key)
{
    if (!hasAnimations())
        return;
    m_animations->remove(key);
    setNeedsFrame();
}

void CALayer::removeAllAnimations()
{
    if (!hasAnimations())
        return;
    m_animations->removeAll();
    setNeedsFrame();
}

std::shared_ptr<CAAnimation> CALayer::actionForKey(const NSString& key)
{
    if (const auto delegate = m_delegate.lock())
        if (const CAActionAnswer answer = delegate->actionForLayerForKey(*this, key))
            return *answer;
    const CAKeyPath path(key);
    if (!m_tree || !path.isValid() || CATransaction::disableActions())
        return nullptr;
    if (const CATransaction::ActionMaker maker = CATransaction::actionMaker())
        if (const CAActionAnswer answer = maker(*this, key))
            return *answer;
    if (path.property() == CAProperty::Path)
        return nullptr; // paths of different lines and curves do not go over into each other
    const auto animation = CABasicAnimation::animationWithKeyPath(key);
    animation->setFromValue(path.value(presentationValues()));
    const auto pace = CATransaction::animationTimingFunction();
    animation->setTimingFunction(
        pace ? pace : CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionDefault));
    return animation;
}

CALayerValues CALayer::presentationValues() const
{
    return hasAnimations() ? presentationValuesAt(Scheduler::current().now()) : m_values;
}

CALayerValues CALayer::presentationValuesAt(double mediaTime) const
{
    CALayerValues shown = m_values;
    if (m_animations)
        m_animations->apply(shown, m_values, momentAt(mediaTime));
    return shown;
}
