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

bool ContentConstraints::state(
    ConstraintSolver& solver, ConstraintSolver::Variable size, const ContentSize& content)
{
    if (content.hugging != m_content.hugging
        || content.compressionResistance != m_content.compressionResistance)
        removeContentSize(solver);
    m_content = content;
    bool isFeasible = true;
    const ConstraintSolver::Term term { size, 1 };
    const auto keep = [&](Constraint& constraint, Relation relation, UILayoutPriority priority) {
        if (constraint == Constraint::None)
            constraint = solver.addConstraint({ &term, 1 }, -content.size, relation, priority);
        else
            isFeasible = solver.setConstant(constraint, -content.size);
    };
    keep(m_hugging, Relation::LessThanOrEqual, content.hugging);
    keep(m_compressionResistance, Relation::GreaterThanOrEqual, content.compressionResistance);
    return isFeasible;
}

void ContentConstraints::removeContentSize(ConstraintSolver& solver)
{
    remove(solver, m_hugging);
    remove(solver, m_compressionResistance);
}

void ContentConstraints::removeAll(ConstraintSolver& solver)
{
    removeContentSize(solver);
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
