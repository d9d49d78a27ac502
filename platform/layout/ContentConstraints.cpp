#include "platform/layout/ContentConstraints.h"

#include <algorithm>

namespace {

using Relation = ConstraintSolver::Relation;

constexpr UILayoutPriority almostRequired = 999.999;

} // namespace

void ContentConstraints::keepFromTurningNegative(ConstraintSolver& solver, ConstraintSolver::Variable size)
{
    const ConstraintSolver::Term term { size, 1 };
    m_notNegative = solver.addConstraint({ &term, 1 }, 0, Relation::GreaterThanOrEqual, almostRequired);
}

bool ContentConstraints::state(ConstraintSolver& solver, ConstraintSolver::Variable size, const Wish& wish)
{
    if (wish.hugging != m_wish.hugging || wish.compressionResistance != m_wish.compressionResistance)
        removeWish(solver);
    m_wish = wish;
    bool isFeasible = true;
    const ConstraintSolver::Term term { size, 1 };
    const auto keep = [&](Constraint& constraint, Relation relation, UILayoutPriority priority) {
        if (constraint == Constraint::None)
            constraint = solver.addConstraint({ &term, 1 }, -wish.size, relation, priority);
        else
            isFeasible = solver.setConstant(constraint, -wish.size);
    };
    keep(m_hugging, Relation::LessThanOrEqual, wish.hugging);
    keep(m_compressionResistance, Relation::GreaterThanOrEqual, wish.compressionResistance);
    return isFeasible;
}

void ContentConstraints::removeWish(ConstraintSolver& solver)
{
    remove(solver, m_hugging);
    remove(solver, m_compressionResistance);
}

void ContentConstraints::removeAll(ConstraintSolver& solver)
{
    removeWish(solver);
    remove(solver, m_notNegative);
}

bool ContentConstraints::removeOneOf(
    ConstraintSolver& solver, std::span<const ConstraintSolver::Constraint> conflict)
{
    for (Constraint* const constraint : { &m_hugging, &m_compressionResistance })
        if (*constraint != Constraint::None && std::ranges::find(conflict, *constraint) != conflict.end()) {
            remove(solver, *constraint);
            return true;
        }
    return false;
}

void ContentConstraints::remove(ConstraintSolver& solver, Constraint& constraint)
{
    if (constraint != Constraint::None)
        solver.removeConstraint(constraint);
    constraint = Constraint::None;
}
