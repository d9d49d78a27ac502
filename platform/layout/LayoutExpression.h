// A constraint as a linear expression over the numbers of frames: places are sums of distances up to the
// holder.
#pragma once

#include "platform/layout/LayoutQuantity.h"
#include "platform/layout/NSLayoutConstraint.h"

#include <vector>

class LayoutExpression {
public:
    struct Term {
        LayoutItem* item;
        LayoutQuantity quantity;
        double coefficient;
    };

    // What is compared with 0: first attribute - multiplier * second attribute - constant. Empty when an item
    // is gone or no longer inside the holder.
    static LayoutExpression of(const NSLayoutConstraint& constraint);

    const std::vector<Term>& terms() const { return m_terms; }
    double constant() const { return m_constant; }
    bool isValid() const { return m_valid; }

private:
    void addAttribute(LayoutItem& item, NSLayoutAttribute attribute, double factor);
    void addPlace(LayoutItem& item, UILayoutConstraintAxis axis, double fraction, double factor);
    void addSize(LayoutItem& item, UILayoutConstraintAxis axis, double factor);
    void add(LayoutItem& item, LayoutQuantity quantity, double coefficient);

    const LayoutItem* m_holder = nullptr;
    std::vector<Term> m_terms;
    double m_constant = 0;
    bool m_valid = true;
};
