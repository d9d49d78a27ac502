// The numbers of given frames that one island reads. Each is a variable with a required equation that tells
// its value: an edit constraint of the paper, whose value is suggested when the frame changes.
#pragma once

#include "platform/layout/LayoutNode.h"

class GivenFrames {
public:
    using Variable = ConstraintSolver::Variable;
    using Constraint = ConstraintSolver::Constraint;

    // The variable of a number, which is read from now on.
    Variable variable(ConstraintSolver&, const LayoutNode&, LayoutQuantity);
    // Whether a number of the node that is read has another value now.
    bool haveChanged(const LayoutNode&) const;
    // Suggests the new values. False when the required constraints cannot all hold with them.
    bool update(ConstraintSolver&);
    // Nothing reads the node's numbers any more.
    void remove(ConstraintSolver&, const LayoutNode&);
    void clear() { m_numbers.clear(); } // the solver is gone

    // "cell.width is 390"; empty when the constraint is none of these.
    NSString nameOf(Constraint) const;
    NSString description() const; // a line for each

private:
    struct Number {
        const LayoutNode* node;
        LayoutQuantity quantity;
        Variable variable;
        Constraint equation;
        double value;
    };

    static NSString nameOf(const Number&);

    std::vector<Number> m_numbers;
};
