#include "platform/layout/NSLayoutAnchor.h"

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::relate(
    NSLayoutRelation relation, const NSLayoutAnchor& other, double multiplier, double constant) const
{
    return NSLayoutConstraint::constraintWithItem(
        *m_item, m_attribute, relation, other.m_item, other.m_attribute, multiplier, constant);
}

std::shared_ptr<NSLayoutConstraint> NSLayoutAnchor::relate(NSLayoutRelation relation, double constant) const
{
    return NSLayoutConstraint::constraintWithItem(
        *m_item, m_attribute, relation, nullptr, NSLayoutAttribute::NotAnAttribute, 1, constant);
}
