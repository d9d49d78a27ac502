// Solves linear constraints with priorities, incrementally.
//
// A constraint compares a sum of variables with 0. Required ones hold, or are refused; the others are met as
// well as they can be: first the errors of the highest priority are made least, then those of the next one
// without giving any of that up, and so on, so a single constraint outweighs any number of weaker ones.
// Within one priority the sum of the absolute errors is least. What that leaves open is chosen alike in every
// run.
//
// Of the Cassowary family (Badros, Borning, Stuckey, "The Cassowary linear arithmetic constraint solving
// algorithm", 2001). The paper's parts are here: the tableau (Tableau), the basic feasible solved form with
// its basic and parametric variables (SolvedForm), external, slack, error and dummy variables
// (SolverVariable), the objective with its symbolic weights (LexicographicCost, PriorityLevels), optimisation
// by the simplex method (PrimalSimplex), and the dual simplex method after the constant of an edit constraint
// has changed (DualSimplex).
//
// Knows nothing of views. Changes cost what they change: what does not meet should be solved apart.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/layout/solver/DualSimplex.h"
#include "platform/layout/solver/PrimalSimplex.h"

#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

class ConstraintSolver {
public:
    enum class Variable : std::uint32_t { None = 0 };
    enum class Constraint : std::uint32_t { None = 0 };
    enum class Relation : signed char { LessThanOrEqual = -1, Equal = 0, GreaterThanOrEqual = 1 };
    struct Term {
        Variable variable = Variable::None;
        double coefficient = 0;
    };

    static constexpr double required = 1000; // the highest priority
    static constexpr double largest = 1e9; // what a coefficient or a constant may be, either way

    ConstraintSolver() = default;
    ConstraintSolver(const ConstraintSolver&) = delete;
    ConstraintSolver& operator=(const ConstraintSolver&) = delete;

    // Makes room for so many in all, where that is known; it saves moving about while they are added.
    void reserve(std::size_t variables, std::size_t constraints);
    // Unrestricted in sign; 0 until it is constrained.
    Variable addVariable();
    // No constraint may mention it any more.
    void removeVariable(Variable);

    // The sum of the terms plus the constant, compared with 0. The priority lies above 0 and is 1000 at most.
    // None when it is required and contradicts others that are: then nothing has changed, and conflict()
    // names those others.
    Constraint addConstraint(std::span<const Term>, double constant, Relation, double priority = required);
    void removeConstraint(Constraint);
    // False when the required constraints cannot all hold with it; the constant is the new one all the same.
    // conflict() names those that contradict each other: take any one of them out and solve() again. Until
    // then the values stay the last ones that fitted.
    bool setConstant(Constraint, double);
    // What addConstraint(), setConstant() or solve() stumbled over last: as few constraints as contradict.
    const std::vector<Constraint>& conflict() const { return m_conflict; }

    // Brings the values up to date. False as for setConstant().
    bool solve();
    // As of the last successful solve().
    double value(Variable) const;

    // Whose values have changed since clearChanges(), each once.
    std::span<const Variable> changedVariables() const { return { m_changed.data(), m_changedCount }; }
    void clearChanges() { m_changedCount = 0; }

    std::size_t variableCount() const { return m_variableCount; }
    std::size_t constraintCount() const { return m_constraintCount; }
    NSString description() const; // constraints, values, and the tableau, a line each

private:
    using Index = SolvedForm::Index;

    void makeRoom(Index);
    bool isVariable(Variable) const;
    bool isConstraint(Constraint) const;
    // False for NaN, too.
    static bool isModest(double number) { return std::abs(number) <= largest; }
    void reportRefused(const Term&) const;
    void reportRefused(double constant, double priority) const;
    void reportRefused(Constraint, double constant) const;
    bool collectTerms(std::span<const Term>, int sign);
    bool isFeasible();
    bool admit(Index);
    bool admitDetermined(Index);
    void freeRows();
    void noteConflict(Index variable, Index except);
    void publish();
    template <typename IsNew> void publishTo(Variable* end, IsNew isNew);
    double valueOfUnknown() const;
    NSString textOfConstraint(Index) const;
    NSString textOfRow(Index) const;

    SolvedForm m_form;
    StatedConstraints m_constraints;
    DualSimplex m_dual;
    PrimalSimplex m_primal;
    std::vector<double> m_values; // by index; NaN where there is no external variable
    std::span<const double> m_knownValues; // the same, found faster
    std::vector<char> m_isChanged; // by variable, while values are published
    std::vector<Variable> m_changed; // room for all, so many of which are in use:
    std::size_t m_changedCount = 0;
    std::vector<Constraint> m_conflict;
    std::vector<Index> m_equationsWithRows; // since the last successful solve(), perhaps gone again
    std::vector<SolvedForm::Term> m_terms; // the first ones are those of the constraint that is being added
    std::size_t m_variableCount = 0;
    std::size_t m_constraintCount = 0;
    bool m_isPending = false;
    bool m_isConflicting = false;
};

inline bool ConstraintSolver::isVariable(Variable variable) const
{
    const auto index = static_cast<std::size_t>(variable);
    return index < m_knownValues.size() && !std::isnan(m_knownValues[index]);
}

inline bool ConstraintSolver::isConstraint(Constraint constraint) const
{
    const auto index = static_cast<Index>(constraint);
    return index < m_form.variableCount() && m_form.variable(index).isConstraint();
}

inline double ConstraintSolver::value(Variable variable) const
{
    if (isVariable(variable)) [[likely]]
        return m_knownValues[static_cast<std::size_t>(variable)];
    return valueOfUnknown();
}
