#include "platform/layout/LayoutExpression.h"

#include "platform/layout/LayoutAttributes.h"

namespace {

// How far along its axis a place is within the item: 0 for the near edge, 1 for the far one.
double fractionOf(NSLayoutAttribute attribute)
{
    switch (attribute) {
    case NSLayoutAttribute::Right:
    case NSLayoutAttribute::Bottom:
    case NSLayoutAttribute::Trailing:
    case NSLayoutAttribute::RightMargin:
    case NSLayoutAttribute::BottomMargin:
    case NSLayoutAttribute::TrailingMargin:
        return 1;
    case NSLayoutAttribute::CenterX:
    case NSLayoutAttribute::CenterY:
    case NSLayoutAttribute::CenterXWithinMargins:
    case NSLayoutAttribute::CenterYWithinMargins:
        return 0.5;
    default:
        return 0;
    }
}

bool isOfMargins(NSLayoutAttribute attribute) { return attribute >= NSLayoutAttribute::LeftMargin; }

constexpr auto horizontal = UILayoutConstraintAxis::Horizontal;
constexpr auto vertical = UILayoutConstraintAxis::Vertical;

} // namespace

LayoutExpression LayoutExpression::of(const NSLayoutConstraint& constraint)
{
    LayoutExpression expression;
    expression.m_terms.reserve(8);
    expression.m_holder = constraint.holder();
    expression.m_constant = -constraint.constant();
    const auto first = constraint.firstItem();
    const auto second = constraint.secondItem();
    const bool needsSecond = constraint.secondAttribute() != NSLayoutAttribute::NotAnAttribute;
    expression.m_valid = first && (second || !needsSecond);
    if (!expression.m_valid)
        return expression;
    expression.addAttribute(*first, constraint.firstAttribute(), 1);
    if (needsSecond)
        expression.addAttribute(*second, constraint.secondAttribute(), -constraint.multiplier());
    return expression;
}

void LayoutExpression::addAttribute(LayoutItem& item, NSLayoutAttribute attribute, double factor)
{
    if (isOfMargins(attribute)) {
        LayoutItem& margins = item.layoutMarginsItem();
        return addPlace(margins, traitsOf(attribute).axis, fractionOf(attribute), factor);
    }
    switch (attribute) {
    case NSLayoutAttribute::Width:
        return addSize(item, horizontal, factor);
    case NSLayoutAttribute::Height:
        return addSize(item, vertical, factor);
    case NSLayoutAttribute::FirstBaseline:
    case NSLayoutAttribute::LastBaseline: {
        const LayoutBaseline place = attribute == NSLayoutAttribute::FirstBaseline ? item.firstBaselinePlace()
                                                                                   : item.lastBaselinePlace();
        m_constant += factor * place.offset;
        return addPlace(item, vertical, place.fraction, factor);
    }
    default:
        return addPlace(item, traitsOf(attribute).axis, fractionOf(attribute), factor);
    }
}

void LayoutExpression::addPlace(LayoutItem& item, UILayoutConstraintAxis axis, double fraction, double factor)
{
    const auto near = axis == horizontal ? LayoutQuantity::Left : LayoutQuantity::Top;
    LayoutItem* outer = &item;
    for (; outer && outer != m_holder; outer = outer->layoutContainer())
        add(*outer, near, factor);
    m_valid = m_valid && outer;
    if (fraction != 0)
        addSize(item, axis, factor * fraction);
}

void LayoutExpression::addSize(LayoutItem& item, UILayoutConstraintAxis axis, double factor)
{
    const auto size = axis == horizontal ? LayoutQuantity::Width : LayoutQuantity::Height;
    if (!item.layoutInsets())
        return add(item, size, factor);
    // The container's size less the distances of both edges.
    const auto near = axis == horizontal ? LayoutQuantity::Left : LayoutQuantity::Top;
    add(item, near, -factor);
    add(item, size, -factor);
    if (LayoutItem* const container = item.layoutContainer())
        addSize(*container, axis, factor);
    else
        m_valid = false;
}

void LayoutExpression::add(LayoutItem& item, LayoutQuantity quantity, double coefficient)
{
    for (Term& term : m_terms)
        if (term.item == &item && term.quantity == quantity) {
            term.coefficient += coefficient;
            return;
        }
    m_terms.push_back({ &item, quantity, coefficient });
}
