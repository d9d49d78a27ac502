#include "platform/layout/LayoutContainer.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layout/LayoutIsland.h"

namespace {

bool isInside(const LayoutItem* item, const LayoutItem& container)
{
    while (item && item != &container)
        item = item->layoutContainer();
    return item;
}

bool isPriority(UILayoutPriority priority) { return priority > 0 && priority <= UILayoutPriorityRequired; }

} // namespace

LayoutContainer::~LayoutContainer() = default;

void LayoutContainer::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    if (m_translatesAutoresizingMask == translates)
        return;
    m_translatesAutoresizingMask = translates;
    layoutRoleDidChange();
}

// --- Constraints -------------------------------------------------------------------------------------

void LayoutContainer::addConstraint(const std::shared_ptr<NSLayoutConstraint>& constraint)
{
    if (!constraint || constraint->holder() == this)
        return;
    const auto first = constraint->firstItem();
    const auto second = constraint->secondItem();
    const bool needsSecond = constraint->secondAttribute() != NSLayoutAttribute::NotAnAttribute;
    const bool contained = isInside(first.get(), *this) && (!needsSecond || isInside(second.get(), *this));
    NSCAssert(contained, "UIView",
        QStringLiteral("A view holds constraints only between itself and views inside it: %1")
            .arg(constraint->description()));
    if (!contained)
        return;
    constraint->setActive(false);
    hold(constraint);
}

void LayoutContainer::addConstraints(std::span<const std::shared_ptr<NSLayoutConstraint>> constraints)
{
    for (const auto& constraint : constraints)
        addConstraint(constraint);
}

void LayoutContainer::removeConstraint(NSLayoutConstraint& constraint)
{
    if (constraint.holder() == this)
        constraint.setActive(false);
}

void LayoutContainer::removeConstraints(std::span<const std::shared_ptr<NSLayoutConstraint>> constraints)
{
    for (const auto& constraint : constraints)
        if (constraint)
            removeConstraint(*constraint);
}

void LayoutContainer::hold(const std::shared_ptr<NSLayoutConstraint>& constraint)
{
    m_constraints.push_back(constraint);
    constraint->setHolder({}, this);
    LayoutIsland::add(*constraint);
}

void LayoutContainer::release(NSLayoutConstraint& constraint)
{
    LayoutIsland::remove(constraint);
    constraint.setHolder({}, nullptr);
    std::erase_if(m_constraints, [&](const auto& held) { return held.get() == &constraint; });
}

void LayoutContainer::dropOutsideConstraints()
{
    bool heldOutside = false;
    for (const LayoutContainer* outer = layoutContainer(); outer; outer = outer->layoutContainer())
        heldOutside = heldOutside || !outer->m_constraints.empty();
    if (!heldOutside)
        return;
    std::vector<std::shared_ptr<NSLayoutConstraint>> found;
    collectOutsideConstraints(*this, found);
    NSLayoutConstraint::deactivateConstraints(found);
}

void LayoutContainer::collectOutsideConstraints(
    const LayoutContainer& inside, std::vector<std::shared_ptr<NSLayoutConstraint>>& found)
{
    const auto collectFrom = [&](const LayoutItem& item) {
        const LayoutNode* const node = LayoutNode::of(item);
        if (!node)
            return;
        for (NSLayoutConstraint* const constraint : node->constraints())
            if (!isInside(constraint->holder(), inside))
                found.push_back(std::static_pointer_cast<NSLayoutConstraint>(constraint->shared_from_this()));
    };
    collectFrom(*this);
    for (const auto& guide : m_guides)
        collectFrom(*guide);
    visitSubcontainers([&](LayoutContainer& sub) { sub.collectOutsideConstraints(inside, found); });
}

void LayoutContainer::leaveLayout()
{
    while (!m_constraints.empty())
        m_constraints.back()->setActive(false);
    for (const auto& guide : m_guides)
        guide->setOwner({}, nullptr);
    m_guides.clear();
    dropLayoutListener();
}

// --- Priorities --------------------------------------------------------------------------------------

UILayoutPriority LayoutContainer::contentHuggingPriority(UILayoutConstraintAxis axis) const
{
    return m_hugging[static_cast<std::size_t>(axis)];
}

void LayoutContainer::setContentHuggingPriority(UILayoutPriority priority, UILayoutConstraintAxis axis)
{
    NSParameterAssert(isPriority(priority), "UIView", "priority > 0 && priority <= UILayoutPriorityRequired");
    if (!isPriority(priority))
        return;
    m_hugging[static_cast<std::size_t>(axis)] = priority;
    layoutContentDidChange();
}

UILayoutPriority LayoutContainer::contentCompressionResistancePriority(UILayoutConstraintAxis axis) const
{
    return m_compressionResistance[static_cast<std::size_t>(axis)];
}

void LayoutContainer::setContentCompressionResistancePriority(
    UILayoutPriority priority, UILayoutConstraintAxis axis)
{
    NSParameterAssert(isPriority(priority), "UIView", "priority > 0 && priority <= UILayoutPriorityRequired");
    if (!isPriority(priority))
        return;
    m_compressionResistance[static_cast<std::size_t>(axis)] = priority;
    layoutContentDidChange();
}

// --- Guides ------------------------------------------------------------------------------------------

void LayoutContainer::addLayoutGuide(const std::shared_ptr<UILayoutGuide>& guide)
{
    if (!guide || guide->owningView() == this)
        return;
    if (LayoutItem* const owner = guide->owningView())
        static_cast<LayoutContainer*>(owner)->removeLayoutGuide(*guide); // containers alone own guides
    m_guides.push_back(guide);
    guide->setOwner({}, this);
}

void LayoutContainer::removeLayoutGuide(UILayoutGuide& guide)
{
    if (guide.owningView() != this)
        return;
    const auto keepAlive = guide.shared_from_this();
    guide.setOwner({}, nullptr);
    std::erase_if(m_guides, [&](const auto& owned) { return owned.get() == &guide; });
}

// --- Placing -----------------------------------------------------------------------------------------

void LayoutContainer::placeItem(LayoutItem& item)
{
    const LayoutNode* const node = LayoutNode::of(item);
    const auto island = node ? LayoutIsland::islandOf(*node) : nullptr;
    if (!island)
        return;
    island->solve();
    const CGRect before = item.layoutFrame();
    const CGRect after = island->foundFrame(*node, before);
    if (after != before)
        item.setLayoutFrame(after);
}

void LayoutContainer::placeGuides()
{
    for (const auto& guide : m_guides)
        placeItem(*guide);
}
