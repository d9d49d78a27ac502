#include "platform/layout/NSLayoutConstraint.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layout/LayoutAttributes.h"

#include <cstdio>

namespace {

NSLayoutConstraint::ConflictHandler& conflictHandler()
{
    static NSLayoutConstraint::ConflictHandler handler = [](const NSLayoutConstraint::Conflict& conflict) {
        std::fputs("These constraints cannot all hold:\n", stderr);
        for (const NSString& constraint : conflict.constraints)
            std::fprintf(stderr, "  %s\n", qUtf8Printable(constraint));
        std::fprintf(stderr, "Left out: %s\n", qUtf8Printable(conflict.broken));
    };
    return handler;
}

// The nearest item that holds constraints and contains both; the second one may be null.
NSLayoutConstraintHolder* commonHolder(LayoutItem& first, const LayoutItem* second)
{
    const auto contains = [second](const LayoutItem* container) {
        for (const LayoutItem* item = second; item; item = item->layoutContainer())
            if (item == container)
                return true;
        return !second;
    };
    for (LayoutItem* item = &first; item; item = item->layoutContainer())
        if (contains(item))
            if (NSLayoutConstraintHolder* const holder = item->constraintHolder())
                return holder;
    return nullptr;
}

} // namespace

std::shared_ptr<NSLayoutConstraint> NSLayoutConstraint::constraintWithItem(LayoutItem& item,
    NSLayoutAttribute attribute, NSLayoutRelation relation, LayoutItem* otherItem,
    NSLayoutAttribute otherAttribute, double multiplier, double constant)
{
    if (!otherItem)
        otherAttribute = NSLayoutAttribute::NotAnAttribute;
    const bool comparable = areComparable(attribute, otherAttribute)
        && (otherItem == nullptr || otherAttribute != NSLayoutAttribute::NotAnAttribute);
    NSCAssert(comparable, "NSLayoutConstraint",
        QStringLiteral("A constraint cannot compare %1 with %2.")
            .arg(QLatin1String(traitsOf(attribute).name), QLatin1String(traitsOf(otherAttribute).name)));
    NSParameterAssert(isReasonable(multiplier), "NSLayoutConstraint", "isReasonable(multiplier)");
    NSParameterAssert(isReasonable(constant), "NSLayoutConstraint", "isReasonable(constant)");
    const bool isRelation
        = relation >= NSLayoutRelation::LessThanOrEqual && relation <= NSLayoutRelation::GreaterThanOrEqual;
    NSParameterAssert(isRelation, "NSLayoutConstraint", "relation is one of the three");
    if (!comparable || !isReasonable(multiplier) || !isReasonable(constant) || !isRelation)
        return nullptr;
    const auto other = otherItem ? otherItem->layoutReference() : nullptr;
    return make<NSLayoutConstraint>(
        item.layoutReference(), attribute, relation, other, otherAttribute, multiplier, constant);
}

NSLayoutConstraint::NSLayoutConstraint(std::weak_ptr<LayoutItem> first, NSLayoutAttribute firstAttribute,
    NSLayoutRelation relation, std::weak_ptr<LayoutItem> second, NSLayoutAttribute secondAttribute,
    double multiplier, double constant)
    : m_first(std::move(first))
    , m_second(std::move(second))
    , m_firstAttribute(firstAttribute)
    , m_secondAttribute(secondAttribute)
    , m_relation(relation)
    , m_multiplier(multiplier)
    , m_constant(constant)
{
}

void NSLayoutConstraint::activateConstraints(std::span<const std::shared_ptr<NSLayoutConstraint>> constraints)
{
    for (const auto& constraint : constraints)
        if (constraint)
            constraint->setActive(true);
}

void NSLayoutConstraint::deactivateConstraints(
    std::span<const std::shared_ptr<NSLayoutConstraint>> constraints)
{
    for (const auto& constraint : constraints)
        if (constraint)
            constraint->setActive(false);
}

void NSLayoutConstraint::setConstant(double constant)
{
    NSParameterAssert(isReasonable(constant), "NSLayoutConstraint", "isReasonable(constant)");
    if (!isReasonable(constant) || m_constant == constant)
        return;
    m_constant = constant;
    if (m_listener)
        m_listener->constantDidChange();
}

void NSLayoutConstraint::setPriority(UILayoutPriority priority)
{
    const bool valid = priority > 0 && priority <= UILayoutPriorityRequired;
    NSParameterAssert(valid, "NSLayoutConstraint", "priority > 0 && priority <= UILayoutPriorityRequired");
    if (!valid || m_priority == priority)
        return;
    m_priority = priority;
    if (m_listener)
        m_listener->priorityDidChange();
}

void NSLayoutConstraint::setActive(bool active)
{
    if (active == isActive())
        return;
    const auto self = strongSelf(this);
    if (!active)
        return m_holder->release(*this);

    const auto first = firstItem();
    const auto second = secondItem();
    const bool hasItems = first && (second || m_secondAttribute == NSLayoutAttribute::NotAnAttribute);
    NSCAssert(hasItems, "NSLayoutConstraint",
        QStringLiteral("A constraint cannot outlive its items: %1").arg(description()));
    if (!hasItems)
        return;
    NSLayoutConstraintHolder* const holder = commonHolder(*first, second.get());
    NSCAssert(holder, "NSLayoutConstraint",
        QStringLiteral("The items of a constraint need a view that contains both: %1").arg(description()));
    if (holder)
        holder->hold(self);
}

NSString NSLayoutConstraint::description() const
{
    const auto place = [](const std::shared_ptr<LayoutItem>& item, NSLayoutAttribute attribute) {
        return (item ? item->layoutName() : QStringLiteral("(gone)")) + QLatin1Char('.')
            + QLatin1String(traitsOf(attribute).name);
    };
    static constexpr const char* relations[] = { "<=", "==", ">=" };
    NSString text = m_identifier.isEmpty() ? NSString() : QStringLiteral("'%1' ").arg(m_identifier);
    text += place(firstItem(), m_firstAttribute) + QLatin1Char(' ')
        + QLatin1String(relations[static_cast<int>(m_relation) + 1]) + QLatin1Char(' ');
    if (m_secondAttribute == NSLayoutAttribute::NotAnAttribute)
        text += NSString::number(m_constant);
    else {
        text += place(secondItem(), m_secondAttribute);
        if (m_multiplier != 1)
            text += QStringLiteral(" * %1").arg(m_multiplier);
        if (m_constant != 0)
            text += QLatin1String(m_constant < 0 ? " - " : " + ") + NSString::number(std::abs(m_constant));
    }
    return text + QStringLiteral(" @%1").arg(m_priority);
}

void NSLayoutConstraint::report(Key, const Conflict& conflict) { conflictHandler()(conflict); }

NSLayoutConstraint::ConflictReplacement::ConflictReplacement(ConflictHandler handler)
    : m_previous(std::exchange(conflictHandler(), std::move(handler)))
{
}

NSLayoutConstraint::ConflictReplacement::~ConflictReplacement() { conflictHandler() = m_previous; }
