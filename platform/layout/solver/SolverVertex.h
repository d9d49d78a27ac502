// One corner of what the constraints allow: the symbols, which of them are basic, and their values.
//
// Offers the moves that a simplex method is made of and keeps the books for them; which move is a good one is
// for DualSimplex and PrimalSimplex to say.
#pragma once

#include "platform/layout/solver/RedundantEquations.h"
#include "platform/layout/solver/SolverConstraints.h"
#include "platform/layout/solver/SolverPriorities.h"
#include "platform/layout/solver/SolverTableau.h"

class SolverVertex {
public:
    using Index = std::uint32_t;
    using Kind = SolverSymbol::Kind;
    using Sides = SolverSymbol::Sides;
    using Term = SolverConstraints::Term;
    static constexpr Index none = 0; // no symbol has this number
    static constexpr Index noColumn = ~0u;
    static constexpr double smallestPivot = 1e-9;

    void reserve(std::size_t variables, std::size_t constraints);
    Index addVariable();
    void removeVariable(Index, const SolverConstraints&); // one that no constraint mentions
    // Adds the symbol of a constraint as a row, without doing anything about its value.
    Index addConstraint(std::span<const Term>, double constant, Kind, double priority);
    // The equations that followed from it take its place.
    void removeConstraint(Index, const SolverConstraints&);
    // The constant of a constraint has grown by so much.
    void shiftConstraint(Index, double difference);

    // Whether required equations fix the value of the row's symbol: nothing else in the row may move.
    bool isDetermined(Index row);
    // Drops the row of a required equation that others determine.
    void dropRow(Index equation);
    const RedundantEquations& redundantEquations() const { return m_redundant; }

    const SolverSymbol& symbol(Index index) const { return m_symbols[index]; }
    Index symbolCount() const { return Index(m_symbols.size()); } // unused ones included
    Index rowSymbol(Index row) const { return m_rowSymbols[row]; }
    Index columnSymbol(Index column) const { return m_columnSymbols[column]; }
    SolverTableau& tableau() { return m_tableau; }
    const SolverTableau& tableau() const { return m_tableau; }
    const std::vector<SolverTableau::Word>& movableColumns() const { return m_movable; }
    std::size_t levelCount() const { return m_priorities.count(); }
    // Values nearer to each other than this are the same. Grows with the numbers that are dealt with.
    double tolerance() const { return m_tolerance; }
    void widenTolerance(double magnitude);

    // Whether moving a symbol outside the basis cannot lessen what the weaker constraints cost.
    bool isOptimal() const { return m_isOptimal; }
    void setOptimal(bool isOptimal) { m_isOptimal = isOptimal; }
    bool mayMove(Index index, int direction) const
    {
        const SolverSymbol& symbol = m_symbols[index];
        return direction > 0 || !symbol.isRequired() || symbol.kind != Kind::Inequality;
    }
    // What it costs, by level, to move the column's symbol by 1 that way.
    void computeCost(Index column, int direction, double* cost) const;

    // A column in the row whose symbol is bound to nothing; noColumn when there is none.
    Index freeColumn(Index row);
    void moveColumn(Index column, double distance);
    void setSides(Index symbol, Sides);
    // The row's symbol leaves the basis; the column's one enters it, moving that way.
    void pivot(Index row, Index column, int direction);
    // Makes the row's symbol 0 by moving the column's one, and swaps the two. The direction is that of the
    // move, which is not to be seen where there is no way to go.
    void settle(Index row, Index column, int direction);
    // A new constraint leaves the basis if there is a free column for it. Saves the state before that when
    // required symbols are outside their sides afterwards.
    void settleNew(Index symbol);

    // The basic symbols that may have left their sides, the required ones and the others.
    std::vector<Index>& requiredSuspects() { return m_requiredSuspects; }
    std::vector<Index>& weakSuspects() { return m_weakSuspects; }
    bool hasSuspects() const { return !m_requiredSuspects.empty() || !m_weakSuspects.empty(); }
    void clearSuspicion(Index symbol) { m_symbols[symbol].isSuspect = false; }
    // Hands (index, value) of each variable whose value may have changed to the visitor, and forgets them.
    template <typename Visitor> void takeTouched(Visitor visit);

    // Makes the tableau anew for the same basis, free of what rounding has added up to.
    void rebuild(const SolverConstraints&);
    bool isWorn() const { return m_wear > 4096; } // worth to be rebuilt
    // Puts back the values and the basis of the last save(); symbols made since are rows.
    void save();
    void restore(const SolverConstraints&);

private:
    void makeRoom(std::size_t symbolCount);
    Index takeSymbol(Kind);
    void releaseSymbol(Index);
    void addRow(Index symbol, std::span<const Term>, double constant);
    void resetSides(Index symbol);
    bool settleOnFreeColumn(Index symbol);
    void restate(Index equation, const SolverConstraints&);
    void shiftFollowers(Index source, double difference);
    void removeWithoutColumn(Index);
    void checkOptimality(Index column);
    void restateFollowers(Index source, const SolverConstraints&);
    void setColumn(Index column, Index symbol);
    void leaveBasis(Index symbol, Index column);
    void setSlope(Index symbol, int slope);
    void acquireLevel(Index symbol, double priority);
    void check(SolverSymbol& symbol, Index index)
    {
        if (symbol.isOutside(m_tolerance) && !symbol.isSuspect)
            suspect(symbol, index);
    }
    void suspect(SolverSymbol&, Index);
    bool isCostFree(Index column);
    void resetTableau();
    void orderConstraints();
    void findSuspects();

    SolverTableau m_tableau;
    SolverPriorities m_priorities;
    RedundantEquations m_redundant;
    std::vector<Index> m_followers; // of an equation that is being removed
    std::vector<SolverSymbol> m_symbols;
    std::vector<Index> m_unused;
    std::vector<Index> m_rowSymbols;
    std::vector<Index> m_columnSymbols;
    std::vector<SolverTableau::Word> m_free; // the columns of variables and of abandoned symbols
    std::vector<SolverTableau::Word> m_movable; // those, and all others that need not stay at 0
    std::vector<Index> m_sloping; // the basic symbols whose cost has a slope
    std::vector<Index> m_requiredSuspects;
    std::vector<Index> m_weakSuspects;
    std::vector<Index> m_touched; // room for all variables, so many of which are in use:
    std::size_t m_touchedCount = 0;
    std::vector<double> m_cost;
    std::vector<SolverSymbol> m_saved;
    std::vector<Index> m_order; // of the constraints while rebuilding
    double m_tolerance = 1e-9;
    std::uint32_t m_wear = 0; // moves since the tableau was made
    bool m_isOptimal = true;
    bool m_wasOptimal = true;
};

template <typename Visitor> inline void SolverVertex::takeTouched(Visitor visit)
{
    SolverSymbol* const symbols = m_symbols.data();
    const Index* const end = m_touched.data() + m_touchedCount;
    for (const Index* index = m_touched.data(); index != end; ++index) {
        symbols[*index].isTouched = false;
        visit(*index, symbols[*index].value);
    }
    m_touchedCount = 0;
}

inline void SolverVertex::computeCost(Index column, int direction, double* cost) const
{
    for (std::size_t level = 0; level < m_priorities.count(); ++level)
        cost[level] = 0;
    for (const Index index : m_sloping) {
        const SolverSymbol& symbol = m_symbols[index];
        cost[symbol.level] += symbol.slope * direction * m_tableau.cell(symbol.place, column);
    }
    const SolverSymbol& own = m_symbols[m_columnSymbols[column]];
    const int slope = own.slopeOn(direction > 0 ? SolverSymbol::Positive : SolverSymbol::Negative);
    if (slope != 0)
        cost[own.level] += slope * direction;
}
