#include "platform/layout/solver/SolvedForm.h"

#include <algorithm>

void SolvedForm::save()
{
    m_saved = m_variables;
    m_wasOptimal = m_isOptimal;
}

void SolvedForm::restore(const StatedConstraints& constraints)
{
    m_variables = m_saved;
    for (std::size_t place = 0; place < m_movedCount; ++place)
        m_variables[m_moved[place]].isListedMoved = true;
    m_isOptimal = m_wasOptimal;
    rebuild(constraints);
}

// External variables have columns, and there is no row yet.
void SolvedForm::resetTableau()
{
    m_tableau.clear();
    m_redundant.clear();
    std::fill(m_free.begin(), m_free.end(), 0);
    std::fill(m_movable.begin(), m_movable.end(), 0);
    m_sloped.clear();
    m_unused.clear();
    for (Index index = 1; index < variableCount(); ++index) {
        SolverVariable& variable = m_variables[index];
        if (variable.kind == Kind::Removed)
            variable = SolverVariable();
        if (variable.kind == Kind::Unused)
            m_unused.push_back(index);
        if (variable.kind == Kind::External) {
            variable.role = SolverVariable::Role::Parametric;
            variable.place = m_tableau.addColumn();
            setColumn(variable.place, index);
        }
    }
}

// Those outside the basis first, because only a free column lets one leave it; next, what follows from them.
void SolvedForm::orderConstraints()
{
    using enum SolverVariable::Role;
    m_order.clear();
    for (const SolverVariable::Role role : { Parametric, Redundant, Basic })
        for (Index index = 1; index < variableCount(); ++index)
            if (m_variables[index].isConstraint() && m_variables[index].role == role)
                m_order.push_back(index);
}

void SolvedForm::rebuild(const StatedConstraints& constraints)
{
    resetTableau();
    orderConstraints();
    for (const Index index : m_order) {
        const SolverVariable variable = m_variables[index];
        addRow(index, constraints.terms(index), constraints[index].constant);
        if (variable.isBasic()) {
            m_tableau.closeRow(m_variables[index].place);
            setSides(index, variable.sides);
        } else if (!exchangeWithFreeColumn(index)) {
            if (variable.isRequiredEquation() && isDetermined(m_variables[index].place)) {
                dropRow(index);
                continue;
            }
            resetSides(index);
            m_isOptimal = false;
        }
    }
    findInfeasible();
    m_movesSinceRebuild = 0;
}

void SolvedForm::findInfeasible()
{
    m_requiredInfeasible.clear();
    m_weakInfeasible.clear();
    for (Index index = 1; index < variableCount(); ++index) {
        m_variables[index].isListedInfeasible = false;
        if (m_variables[index].isConstraint() && !m_variables[index].isParametric())
            check(m_variables[index], index);
    }
}
