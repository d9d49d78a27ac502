// The solved form: a tableau, the variables that its rows (basic) and columns (parametric) stand for, and
// their values. Geometrically a vertex of what the constraints allow.
//
// Offers the steps that a simplex method is made of; which pivot is a good one is for DualSimplex and
// PrimalSimplex to say. It is feasible when no marker has left its side of 0, and optimal when moving a
// parametric variable cannot lessen what the weaker constraints cost.
#pragma once

#include "platform/layout/solver/PriorityLevels.h"
#include "platform/layout/solver/RedundantEquations.h"
#include "platform/layout/solver/StatedConstraints.h"
#include "platform/layout/solver/Tableau.h"

class SolvedForm {
public:
    using Index = std::uint32_t;
    using Kind = SolverVariable::Kind;
    using Sides = SolverVariable::Sides;
    using Term = StatedConstraints::Term;
    static constexpr Index none = 0; // no variable has this number
    static constexpr Index noColumn = ~0u;
    static constexpr double smallestPivot = 1e-9;

    void reserve(std::size_t variables, std::size_t constraints);
    Index addExternalVariable();
    void removeExternalVariable(Index, const StatedConstraints&); // one that no constraint mentions
    // Adds the marker of a constraint as a basic variable, without doing anything about its value.
    Index addConstraint(std::span<const Term>, double constant, Kind, double priority);
    // The equations that followed from it take its place.
    void removeConstraint(Index, const StatedConstraints&);
    // The constant of a constraint has grown by so much.
    void shiftConstraint(Index, double difference);

    // Whether required equations fix the row's variable: nothing in the row may move.
    bool isDetermined(Index row);
    // Drops the row of a required equation that others determine.
    void dropRow(Index equation);
    const RedundantEquations& redundantEquations() const { return m_redundant; }

    const SolverVariable& variable(Index index) const { return m_variables[index]; }
    Index variableCount() const { return Index(m_variables.size()); } // unused ones included
    Index basicVariable(Index row) const { return m_basicVariables[row]; }
    Index parametricVariable(Index column) const { return m_parametricVariables[column]; }
    Tableau& tableau() { return m_tableau; }
    const Tableau& tableau() const { return m_tableau; }
    const std::vector<Tableau::Word>& movableColumns() const { return m_movable; }
    std::size_t levelCount() const { return m_priorities.count(); }
    // Values nearer to each other than this are the same. Grows with the numbers that are dealt with.
    double tolerance() const { return m_tolerance; }
    void widenTolerance(double magnitude);

    // Whether moving a parametric variable cannot lessen what the weaker constraints cost.
    bool isOptimal() const { return m_isOptimal; }
    void setOptimal(bool isOptimal) { m_isOptimal = isOptimal; }
    bool mayMove(Index index, int direction) const
    {
        const SolverVariable& variable = m_variables[index];
        return direction > 0 || !variable.isRequired() || variable.kind != Kind::Inequality;
    }
    // What it costs, by level, to move the column's variable by 1 that way.
    void computeCost(Index column, int direction, double* cost) const;

    // A column in the row whose variable is unrestricted; noColumn when there is none.
    Index freeColumn(Index row);
    void moveColumn(Index column, double distance);
    void setSides(Index variable, Sides);
    // The row's variable becomes parametric; the column's one becomes basic, moving that way.
    void pivot(Index row, Index column, int direction);
    // Makes the row's variable 0 by moving the column's one, and swaps the two. The direction is that of the
    // move, which is not to be seen where there is no way to go.
    void exchange(Index row, Index column, int direction);
    // A new constraint becomes parametric if there is a free column for it. Saves the state before that when
    // markers of required constraints are infeasible afterwards.
    void exchangeNew(Index variable);

    // The markers that may be infeasible, of required constraints and of weaker ones.
    std::vector<Index>& requiredInfeasible() { return m_requiredInfeasible; }
    std::vector<Index>& weakInfeasible() { return m_weakInfeasible; }
    bool hasInfeasible() const { return !m_requiredInfeasible.empty() || !m_weakInfeasible.empty(); }
    void unlistInfeasible(Index variable) { m_variables[variable].isListedInfeasible = false; }
    // Hands (index, value) of each variable whose value may have changed to the visitor, and forgets them.
    template <typename Visitor> void takeMoved(Visitor visit);

    // Makes the tableau anew for the same basis, free of what rounding has added up to.
    void rebuild(const StatedConstraints&);
    bool isDueForRebuild() const { return m_movesSinceRebuild > 4096; } // because of rounding
    // Puts back the values and the basis of the last save(); variables made since are rows.
    void save();
    void restore(const StatedConstraints&);

private:
    void makeRoom(std::size_t variableCount);
    Index takeVariable(Kind);
    void releaseVariable(Index);
    void addRow(Index variable, std::span<const Term>, double constant);
    void resetSides(Index variable);
    bool exchangeWithFreeColumn(Index variable);
    void restate(Index equation, const StatedConstraints&);
    void shiftFollowers(Index source, double difference);
    void removeWithoutColumn(Index);
    void checkOptimality(Index column);
    void restateFollowers(Index source, const StatedConstraints&);
    void setColumn(Index column, Index variable);
    void leaveBasis(Index variable, Index column);
    void setSlope(Index variable, int slope);
    void acquireLevel(Index variable, double priority);
    void check(SolverVariable& variable, Index index)
    {
        if (variable.isOutside(m_tolerance) && !variable.isListedInfeasible)
            listInfeasible(variable, index);
    }
    void listInfeasible(SolverVariable&, Index);
    bool isCostFree(Index column);
    void resetTableau();
    void orderConstraints();
    void findInfeasible();

    Tableau m_tableau;
    PriorityLevels m_priorities;
    RedundantEquations m_redundant;
    std::vector<Index> m_followers; // of an equation that is being removed
    std::vector<SolverVariable> m_variables;
    std::vector<Index> m_unused;
    std::vector<Index> m_basicVariables;
    std::vector<Index> m_parametricVariables;
    std::vector<Tableau::Word>
        m_free; // the columns of unrestricted variables: external ones and removed markers
    std::vector<Tableau::Word> m_movable; // those, and all others that need not stay at 0
    std::vector<Index> m_sloped; // the basic variables whose cost has a slope
    std::vector<Index> m_requiredInfeasible;
    std::vector<Index> m_weakInfeasible;
    std::vector<Index> m_moved; // room for all variables, so many of which are in use:
    std::size_t m_movedCount = 0;
    std::vector<double> m_cost;
    std::vector<SolverVariable> m_saved;
    std::vector<Index> m_order; // of the constraints while rebuilding
    double m_tolerance = 1e-9;
    std::uint32_t m_movesSinceRebuild = 0; // moves since the tableau was made
    bool m_isOptimal = true;
    bool m_wasOptimal = true;
};

template <typename Visitor> inline void SolvedForm::takeMoved(Visitor visit)
{
    SolverVariable* const variables = m_variables.data();
    const Index* const end = m_moved.data() + m_movedCount;
    for (const Index* index = m_moved.data(); index != end; ++index) {
        variables[*index].isListedMoved = false;
        visit(*index, variables[*index].value);
    }
    m_movedCount = 0;
}

inline void SolvedForm::computeCost(Index column, int direction, double* cost) const
{
    for (std::size_t level = 0; level < m_priorities.count(); ++level)
        cost[level] = 0;
    for (const Index index : m_sloped) {
        const SolverVariable& variable = m_variables[index];
        cost[variable.level] += variable.slope * direction * m_tableau.cell(variable.place, column);
    }
    const SolverVariable& own = m_variables[m_parametricVariables[column]];
    const int slope = own.slopeOn(direction > 0 ? SolverVariable::Positive : SolverVariable::Negative);
    if (slope != 0)
        cost[own.level] += slope * direction;
}
