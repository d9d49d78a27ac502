// The part of ConstraintSolver that reports arguments which it refuses.

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/layout/solver/ConstraintSolver.h"

void ConstraintSolver::reportRefused(const Term& term) const
{
    NSParameterAssert(isVariable(term.variable), "ConstraintSolver", "isVariable(term.variable)");
    NSParameterAssert(isModest(term.coefficient), "ConstraintSolver", "fabs(term.coefficient) <= 1e9");
}

void ConstraintSolver::reportRefused(double constant, double priority) const
{
    NSParameterAssert(
        priority > 0 && priority <= required, "ConstraintSolver", "priority > 0 && priority <= 1000");
    NSParameterAssert(isModest(constant), "ConstraintSolver", "fabs(constant) <= 1e9");
}

void ConstraintSolver::reportRefused(Constraint constraint, double constant) const
{
    NSParameterAssert(isConstraint(constraint), "ConstraintSolver", "isConstraint(constraint)");
    NSParameterAssert(isModest(constant), "ConstraintSolver", "fabs(constant) <= 1e9");
}

double ConstraintSolver::valueOfUnknown() const
{
    NSParameterAssert(false, "ConstraintSolver", "isVariable(variable)");
    return 0;
}
