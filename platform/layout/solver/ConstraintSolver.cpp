#include "platform/layout/solver/ConstraintSolver.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

// Not a number is not either.
bool isModest(double number) { return std::abs(number) <= ConstraintSolver::largest; }

} // namespace

bool ConstraintSolver::isVariable(Variable variable) const
{
    const auto index = static_cast<Index>(variable);
    return index < m_values.size() && !std::isnan(m_values[index]);
}

bool ConstraintSolver::isConstraint(Constraint constraint) const
{
    const auto index = static_cast<Index>(constraint);
    return index < m_vertex.symbolCount() && m_vertex.symbol(index).isConstraint();
}

ConstraintSolver::Variable ConstraintSolver::addVariable()
{
    const Index index = m_vertex.addVariable();
    if (index >= m_values.size()) {
        m_values.resize(index + 1, unknown);
        m_isChanged.resize(index + 1);
    }
    m_values[index] = 0;
    ++m_variableCount;
    return Variable { index };
}

void ConstraintSolver::removeVariable(Variable variable)
{
    NSParameterAssert(isVariable(variable), "ConstraintSolver", "isVariable(variable)");
    if (!isVariable(variable))
        return;
    const auto index = static_cast<Index>(variable);
    const bool isMentioned = m_constraints.isMentioned(index);
    NSParameterAssert(!isMentioned, "ConstraintSolver", "!isMentioned(variable)");
    if (isMentioned)
        return;
    m_vertex.removeVariable(index, m_constraints);
    m_values[index] = unknown;
    if (m_isChanged[index])
        std::erase(m_changed, variable);
    m_isChanged[index] = false;
    --m_variableCount;
}

bool ConstraintSolver::areAcceptable(std::span<const Term> terms, double constant, double priority) const
{
    const bool hasPriority = priority > 0 && priority <= required;
    NSParameterAssert(hasPriority, "ConstraintSolver", "priority > 0 && priority <= 1000");
    NSParameterAssert(isModest(constant), "ConstraintSolver", "fabs(constant) <= 1e9");
    bool isAcceptable = hasPriority && isModest(constant);
    for (const Term& term : terms) {
        NSParameterAssert(isVariable(term.variable), "ConstraintSolver", "isVariable(term.variable)");
        NSParameterAssert(isModest(term.coefficient), "ConstraintSolver", "fabs(term.coefficient) <= 1e9");
        isAcceptable = isAcceptable && isVariable(term.variable) && isModest(term.coefficient);
    }
    return isAcceptable;
}

// Each variable once, none without a coefficient.
void ConstraintSolver::collectTerms(std::span<const Term> terms, int sign)
{
    m_terms.clear();
    for (const Term& term : terms)
        m_terms.push_back({ static_cast<Index>(term.variable), sign * term.coefficient });
    constexpr std::size_t few = 8; // so few are compared in pairs
    if (m_terms.size() > few)
        std::sort(m_terms.begin(), m_terms.end(),
            [](const auto& one, const auto& other) { return one.symbol < other.symbol; });
    std::size_t kept = 0;
    for (const auto& term : m_terms) {
        std::size_t same = m_terms.size() > few && kept > 0 ? kept - 1 : 0;
        while (same < kept && m_terms[same].symbol != term.symbol)
            ++same;
        if (same < kept)
            m_terms[same].coefficient += term.coefficient;
        else
            m_terms[kept++] = term;
    }
    m_terms.resize(kept);
    std::erase_if(m_terms, [](const auto& term) { return std::abs(term.coefficient) < SolverTableau::tiny; });
}

ConstraintSolver::Constraint ConstraintSolver::addConstraint(
    std::span<const Term> terms, double constant, Relation relation, double priority)
{
    if (!areAcceptable(terms, constant, priority))
        return Constraint::None;
    // A contradiction that has been resolved since is not held against the new one.
    if (m_isConflicting)
        isFeasible();
    const int sign = relation == Relation::LessThanOrEqual ? -1 : 1;
    collectTerms(terms, sign);
    m_vertex.widenTolerance(constant);
    for (const auto& term : m_terms)
        m_vertex.widenTolerance(term.coefficient);
    const auto kind
        = relation == Relation::Equal ? SolverSymbol::Kind::Equality : SolverSymbol::Kind::Inequality;
    const Index index = m_vertex.addConstraint(m_terms, sign * constant, kind, priority);
    m_constraints.add(index, m_terms, sign * constant, priority, sign);
    if (index >= m_values.size()) {
        m_values.resize(index + 1, unknown);
        m_isChanged.resize(index + 1);
    }
    m_isPending = true;
    if (!admit(index))
        return Constraint::None;
    ++m_constraintCount;
    return Constraint { index };
}

bool ConstraintSolver::admit(Index index)
{
    m_vertex.settleNew(index);
    if (m_isConflicting || !m_vertex.symbol(index).isRequired() || m_vertex.requiredSuspects().empty())
        return true;
    const Index obstacle = m_dual.fulfilRequired(m_vertex);
    if (obstacle == SolverVertex::none)
        return true;
    noteConflict(obstacle, index);
    m_vertex.restore(m_constraints);
    m_vertex.removeConstraint(index);
    m_constraints.remove(index);
    return false;
}

// A required row that cannot come to 0 consists of symbols that may not move: they and it contradict each
// other, and any of them less would give way.
void ConstraintSolver::noteConflict(Index symbol, Index except)
{
    m_conflict.clear();
    if (symbol != except)
        m_conflict.push_back(Constraint { symbol });
    const Index row = m_vertex.symbol(symbol).place;
    for (Index index = 1; index < m_vertex.symbolCount(); ++index) {
        const SolverSymbol& other = m_vertex.symbol(index);
        if (index != except && other.isConstraint() && !other.isBasic
            && std::abs(m_vertex.tableau().cell(row, other.place)) > SolverVertex::smallestPivot)
            m_conflict.push_back(Constraint { index });
    }
}

void ConstraintSolver::removeConstraint(Constraint constraint)
{
    NSParameterAssert(isConstraint(constraint), "ConstraintSolver", "isConstraint(constraint)");
    if (!isConstraint(constraint))
        return;
    const auto index = static_cast<Index>(constraint);
    m_vertex.removeConstraint(index);
    m_constraints.remove(index);
    --m_constraintCount;
    m_isPending = true;
}

bool ConstraintSolver::isFeasible()
{
    const Index obstacle
        = m_vertex.requiredSuspects().empty() ? SolverVertex::none : m_dual.fulfilRequired(m_vertex);
    m_isConflicting = obstacle != SolverVertex::none;
    if (m_isConflicting)
        noteConflict(obstacle, SolverVertex::none);
    return !m_isConflicting;
}

bool ConstraintSolver::setConstant(Constraint constraint, double constant)
{
    NSParameterAssert(isConstraint(constraint), "ConstraintSolver", "isConstraint(constraint)");
    NSParameterAssert(isModest(constant), "ConstraintSolver", "fabs(constant) <= 1e9");
    if (!isConstraint(constraint) || !isModest(constant))
        return !m_isConflicting;
    const auto index = static_cast<Index>(constraint);
    const double before = m_constraints[index].constant;
    const double after = m_constraints[index].sign * constant;
    if (after != before) {
        m_vertex.widenTolerance(constant);
        m_constraints.setConstant(index, after);
        m_vertex.shiftConstraint(index, after - before);
        m_isPending = true;
    }
    return isFeasible();
}

bool ConstraintSolver::solve()
{
    if (!m_isPending)
        return true;
    if (m_vertex.isWorn())
        m_vertex.rebuild(m_constraints);
    const Index obstacle
        = m_vertex.isOptimal() ? m_dual.fulfilAll(m_vertex) : m_dual.fulfilRequired(m_vertex);
    m_isConflicting = obstacle != SolverVertex::none;
    if (m_isConflicting) {
        noteConflict(obstacle, SolverVertex::none);
        return false;
    }
    if (!m_vertex.isOptimal())
        m_primal.optimise(m_vertex);
    publish();
    m_isPending = false;
    return true;
}

void ConstraintSolver::publish()
{
    for (const Index index : m_vertex.touched()) {
        double value = m_vertex.symbol(index).value;
        if (std::abs(value) < m_vertex.tolerance())
            value = 0;
        if (std::abs(value - m_values[index]) < m_vertex.tolerance())
            continue;
        m_values[index] = value;
        if (!m_isChanged[index])
            m_changed.push_back(Variable { index });
        m_isChanged[index] = true;
    }
    m_vertex.clearTouched();
}

void ConstraintSolver::clearChanges()
{
    for (const Variable variable : m_changed)
        m_isChanged[static_cast<std::size_t>(variable)] = false;
    m_changed.clear();
}

double ConstraintSolver::valueOfUnknown() const
{
    NSParameterAssert(false, "ConstraintSolver", "isVariable(variable)");
    return 0;
}
