// An edge, middle, baseline or size of an item, as the start of a constraint.
//
//     portrait->leftAnchor().constraintEqualToAnchor(leftAnchor(), 12)->setActive(true);
//
// Horizontal places, vertical places and sizes are types of their own, so that what cannot be compared does
// not compile. An anchor is a passing value: it must not outlive its item. Constraints are made inactive.
#pragma once

#include "platform/layout/NSLayoutConstraint.h"

class NSLayoutAnchor {
public:
    LayoutItem& item() const { return *m_item; }
    NSLayoutAttribute attribute() const { return m_attribute; }

protected:
    NSLayoutAnchor(LayoutItem& item, NSLayoutAttribute attribute)
        : m_item(&item)
        , m_attribute(attribute)
    {
    }

    std::shared_ptr<NSLayoutConstraint> relate(
        NSLayoutRelation relation, const NSLayoutAnchor& other, double multiplier, double constant) const;
    std::shared_ptr<NSLayoutConstraint> relate(NSLayoutRelation relation, double constant) const;

private:
    LayoutItem* m_item;
    NSLayoutAttribute m_attribute;
};

// A place along one axis: this one is the other one plus so many points.
template <typename Axis> class NSLayoutPlaceAnchor : public NSLayoutAnchor {
public:
    NSLayoutPlaceAnchor(LayoutItem& item, NSLayoutAttribute attribute)
        : NSLayoutAnchor(item, attribute)
    {
    }

    // constraintEqualToAnchor: and constraintEqualToAnchor:constant:
    auto constraintEqualToAnchor(const NSLayoutPlaceAnchor& other, double constant = 0) const
    {
        return relate(NSLayoutRelation::Equal, other, 1, constant);
    }
    auto constraintLessThanOrEqualToAnchor(const NSLayoutPlaceAnchor& other, double constant = 0) const
    {
        return relate(NSLayoutRelation::LessThanOrEqual, other, 1, constant);
    }
    auto constraintGreaterThanOrEqualToAnchor(const NSLayoutPlaceAnchor& other, double constant = 0) const
    {
        return relate(NSLayoutRelation::GreaterThanOrEqual, other, 1, constant);
    }
};

using NSLayoutXAxisAnchor = NSLayoutPlaceAnchor<struct HorizontalAxis>;
using NSLayoutYAxisAnchor = NSLayoutPlaceAnchor<struct VerticalAxis>;

// A width or height: so many points, or a multiple of another size plus so many points.
class NSLayoutDimension : public NSLayoutAnchor {
public:
    NSLayoutDimension(LayoutItem& item, NSLayoutAttribute attribute)
        : NSLayoutAnchor(item, attribute)
    {
    }

    auto constraintEqualToConstant(double constant) const
    {
        return relate(NSLayoutRelation::Equal, constant);
    }
    auto constraintLessThanOrEqualToConstant(double constant) const
    {
        return relate(NSLayoutRelation::LessThanOrEqual, constant);
    }
    auto constraintGreaterThanOrEqualToConstant(double constant) const
    {
        return relate(NSLayoutRelation::GreaterThanOrEqual, constant);
    }
    // constraintEqualToAnchor:multiplier:constant:
    auto constraintEqualToAnchor(
        const NSLayoutDimension& other, double multiplier = 1, double constant = 0) const
    {
        return relate(NSLayoutRelation::Equal, other, multiplier, constant);
    }
    auto constraintLessThanOrEqualToAnchor(
        const NSLayoutDimension& other, double multiplier = 1, double constant = 0) const
    {
        return relate(NSLayoutRelation::LessThanOrEqual, other, multiplier, constant);
    }
    auto constraintGreaterThanOrEqualToAnchor(
        const NSLayoutDimension& other, double multiplier = 1, double constant = 0) const
    {
        return relate(NSLayoutRelation::GreaterThanOrEqual, other, multiplier, constant);
    }
};
