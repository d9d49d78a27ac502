#include "platform/layout/solver/SolverVertex.h"

#include <algorithm>

void SolverVertex::save()
{
    m_saved = m_symbols;
    m_wasOptimal = m_isOptimal;
}

void SolverVertex::restore(const SolverConstraints& constraints)
{
    m_symbols = m_saved;
    for (std::size_t place = 0; place < m_touchedCount; ++place)
        m_symbols[m_touched[place]].isTouched = true;
    m_isOptimal = m_wasOptimal;
    rebuild(constraints);
}

// As on the first day: variables have columns, and there is no row yet.
void SolverVertex::resetTableau()
{
    m_tableau.clear();
    m_redundant.clear();
    std::fill(m_free.begin(), m_free.end(), 0);
    std::fill(m_movable.begin(), m_movable.end(), 0);
    m_sloping.clear();
    m_unused.clear();
    for (Index index = 1; index < symbolCount(); ++index) {
        SolverSymbol& symbol = m_symbols[index];
        if (symbol.kind == Kind::Abandoned)
            symbol = SolverSymbol();
        if (symbol.kind == Kind::Unused)
            m_unused.push_back(index);
        if (symbol.kind == Kind::Variable) {
            symbol.role = SolverSymbol::Role::Parametric;
            symbol.place = m_tableau.addColumn();
            setColumn(symbol.place, index);
        }
    }
}

// Those outside the basis first, because only a free column lets one leave it; next, what follows from them.
void SolverVertex::orderConstraints()
{
    using enum SolverSymbol::Role;
    m_order.clear();
    for (const SolverSymbol::Role role : { Parametric, Redundant, Basic })
        for (Index index = 1; index < symbolCount(); ++index)
            if (m_symbols[index].isConstraint() && m_symbols[index].role == role)
                m_order.push_back(index);
}

void SolverVertex::rebuild(const SolverConstraints& constraints)
{
    resetTableau();
    orderConstraints();
    for (const Index index : m_order) {
        const SolverSymbol symbol = m_symbols[index];
        addRow(index, constraints.terms(index), constraints[index].constant);
        if (symbol.isBasic()) {
            m_tableau.closeRow(m_symbols[index].place);
            setSides(index, symbol.sides);
        } else if (!settleOnFreeColumn(index)) {
            if (symbol.isRequiredEquation() && isDetermined(m_symbols[index].place)) {
                dropRow(index);
                continue;
            }
            resetSides(index);
            m_isOptimal = false;
        }
    }
    findSuspects();
    m_wear = 0;
}

void SolverVertex::findSuspects()
{
    m_requiredSuspects.clear();
    m_weakSuspects.clear();
    for (Index index = 1; index < symbolCount(); ++index) {
        m_symbols[index].isSuspect = false;
        if (m_symbols[index].isConstraint() && !m_symbols[index].isParametric())
            check(m_symbols[index], index);
    }
}
