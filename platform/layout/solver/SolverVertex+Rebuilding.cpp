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
    for (const Index index : m_touched)
        m_symbols[index].isTouched = true;
    m_isOptimal = m_wasOptimal;
    rebuild(constraints);
}

// Everything is a row or a column as on the first day: variables have columns, constraints have rows.
void SolverVertex::resetTableau()
{
    m_tableau.clear();
    std::fill(m_free.begin(), m_free.end(), 0);
    std::fill(m_movable.begin(), m_movable.end(), 0);
    m_outside.clear();
    m_unused.clear();
    m_sloping.clear();
    m_requiredSuspects.clear();
    m_weakSuspects.clear();
    for (Index index = 1; index < symbolCount(); ++index) {
        SolverSymbol& symbol = m_symbols[index];
        if (symbol.kind == Kind::Abandoned)
            symbol = SolverSymbol();
        if (symbol.kind == Kind::Unused)
            m_unused.push_back(index);
        if (symbol.isConstraint() && !symbol.isBasic) {
            symbol.sides = symbol.kind == Kind::Equality ? SolverSymbol::Neither : SolverSymbol::Positive;
            m_outside.push_back(index);
        }
        symbol.isSuspect = false;
        if (symbol.kind == Kind::Variable) {
            symbol.isBasic = false;
            symbol.place = m_tableau.addColumn();
            setColumn(symbol.place, index);
        }
    }
}

void SolverVertex::addRows(const SolverConstraints& constraints)
{
    for (Index index = 1; index < symbolCount(); ++index) {
        SolverSymbol& symbol = m_symbols[index];
        if (!symbol.isConstraint())
            continue;
        symbol.isBasic = true;
        symbol.place = m_tableau.addRow();
        m_rowSymbols[symbol.place] = index;
        symbol.value = constraints[index].constant;
        for (const Term& term : constraints.terms(index)) {
            m_tableau.add(symbol.place, m_symbols[term.symbol].place, term.coefficient);
            symbol.value += term.coefficient * m_symbols[term.symbol].value;
        }
        if (symbol.slope != 0) {
            symbol.sloping = Index(m_sloping.size());
            m_sloping.push_back(index);
        }
    }
}

void SolverVertex::rebuild(const SolverConstraints& constraints)
{
    resetTableau();
    addRows(constraints);
    for (const Index index : m_outside) {
        const Index row = m_symbols[index].place;
        const Index column = freeColumn(row);
        if (column != noColumn)
            settle(row, column, 1);
        else
            m_isOptimal = false;
    }
    m_requiredSuspects.clear();
    m_weakSuspects.clear();
    for (Index index = 1; index < symbolCount(); ++index) {
        m_symbols[index].isSuspect = false;
        if (m_symbols[index].isConstraint() && m_symbols[index].isBasic)
            check(index);
    }
    m_wear = 0;
}
