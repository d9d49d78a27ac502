// One corner of what the constraints allow: the symbols, which of them are basic, and their values.
//
// Offers the moves that a simplex method is made of and keeps the books for them; which move is a good one is
// for DualSimplex and PrimalSimplex to say.
#pragma once

#include "platform/layout/solver/SolverPriorities.h"
#include "platform/layout/solver/SolverSymbol.h"
#include "platform/layout/solver/SolverTableau.h"

#include <span>

class SolverVertex {
public:
    using Index = std::uint32_t;
    using Kind = SolverSymbol::Kind;
    using Sides = SolverSymbol::Sides;
    struct Term {
        Index symbol;
        double coefficient;
    };
    static constexpr Index none = 0; // no symbol has this number
    static constexpr Index noColumn = ~0u;
    static constexpr double smallestPivot = 1e-9;

    Index addVariable();
    void removeVariable(Index); // one that is in no row
    // Adds the symbol of a constraint as a row. The value is that of its terms and its constant.
    Index addConstraint(std::span<const Term>, double value, Kind, double priority);
    void removeConstraint(Index);
    // What a constraint's symbol would be now changes by so much, and all that it carries with it.
    void shiftConstraint(Index, double difference);

    const SolverSymbol& symbol(Index index) const { return m_symbols[index]; }
    Index symbolCount() const { return Index(m_symbols.size()); } // unused ones included
    Index rowSymbol(Index row) const { return m_rowSymbols[row]; }
    Index columnSymbol(Index column) const { return m_columnSymbols[column]; }
    SolverTableau& tableau() { return m_tableau; }
    const SolverTableau& tableau() const { return m_tableau; }
    const std::vector<SolverTableau::Word>& movableColumns() const { return m_movable; }
    const SolverPriorities& priorities() const { return m_priorities; }
    double tolerance() const { return m_tolerance; }
    void widenTolerance(double magnitude);

    // Whether no small move of a symbol outside the basis makes the weaker constraints' costs less.
    bool isOptimal() const { return m_isOptimal; }
    void setOptimal(bool isOptimal) { m_isOptimal = isOptimal; }
    bool mayMove(Index symbol, int direction) const;
    // What moving the column's symbol by 1 that way costs, by level.
    void computeCost(Index column, int direction, double* cost) const;
    bool isCostFree(Index column) const; // neither way costs nor saves, its own cost left out

    // A column in the row whose symbol is bound to nothing; noColumn when there is none.
    Index freeColumn(Index row);
    void moveColumn(Index column, double distance);
    void setSides(Index symbol, Sides);
    // The row's symbol leaves the basis with the value 0; the column's one enters it, having moved that way.
    void pivot(Index row, Index column, int direction);

    // The basic symbols that may have left their sides, the required ones and the others.
    std::vector<Index>& requiredSuspects() { return m_requiredSuspects; }
    std::vector<Index>& weakSuspects() { return m_weakSuspects; }
    void clearSuspicion(Index symbol) { m_symbols[symbol].isSuspect = false; }
    // The variables whose values may have changed, each once.
    std::span<const Index> touched() const { return m_touched; }
    void clearTouched();

private:
    friend class SolverRefactoring;

    Index takeSymbol(Kind);
    void release(Index);
    void setColumn(Index column, Index symbol);
    void setSlope(SolverSymbol&, Index, int slope);
    void check(SolverSymbol&, Index);
    void acquireLevel(SolverSymbol&, double priority);

    SolverTableau m_tableau;
    SolverPriorities m_priorities;
    std::vector<SolverSymbol> m_symbols;
    std::vector<Index> m_unused;
    std::vector<Index> m_rowSymbols;
    std::vector<Index> m_columnSymbols;
    std::vector<SolverTableau::Word> m_free; // the columns of variables and of abandoned symbols
    std::vector<SolverTableau::Word> m_movable; // those, and all others that need not stay at 0
    std::vector<Index> m_sloping; // the basic symbols whose cost has a slope
    std::vector<Index> m_requiredSuspects;
    std::vector<Index> m_weakSuspects;
    std::vector<Index> m_touched;
    double m_tolerance = 1e-9;
    bool m_isOptimal = true;
};
