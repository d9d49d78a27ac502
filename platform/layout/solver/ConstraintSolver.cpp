#include "platform/layout/solver/ConstraintSolver.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

// Not a number is not either.
bool isModest(double number) { return std::abs(number) <= ConstraintSolver::largest; }

} // namespace

void ConstraintSolver::reserve(std::size_t variables, std::size_t constraints)
{
    if (variables + constraints == 0)
        return;
    m_vertex.reserve(variables, constraints);
    m_constraints.reserveTerms(4 * constraints);
    makeRoom(Index(variables + constraints));
}

// For what is known of a symbol, doubling what there is.
void ConstraintSolver::makeRoom(Index index)
{
    if (index < m_values.size())
        return;
    const std::size_t size = std::max<std::size_t>(index + std::size_t(1), 2 * m_values.size());
    m_values.resize(size, unknown);
    m_knownValues = m_values;
    m_constraints.makeRoom(size);
    m_isChanged.resize(size);
    m_changed.resize(size);
}

ConstraintSolver::Variable ConstraintSolver::addVariable()
{
    const Index index = m_vertex.addVariable();
    makeRoom(index);
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
    const auto end = m_changed.begin() + std::ptrdiff_t(m_changedCount);
    m_changedCount = std::size_t(std::remove(m_changed.begin(), end, variable) - m_changed.begin());
    --m_variableCount;
}

void ConstraintSolver::reportUnacceptable(const Term& term) const
{
    NSParameterAssert(isVariable(term.variable), "ConstraintSolver", "isVariable(term.variable)");
    NSParameterAssert(isModest(term.coefficient), "ConstraintSolver", "fabs(term.coefficient) <= 1e9");
}

// Adds up what a variable has several times, and drops those that are left without a coefficient.
void ConstraintSolver::joinTerms()
{
    std::sort(m_terms.begin(), m_terms.end(),
        [](const auto& one, const auto& other) { return one.symbol < other.symbol; });
    std::size_t kept = 0;
    for (const auto& term : m_terms) {
        if (kept > 0 && m_terms[kept - 1].symbol == term.symbol)
            m_terms[kept - 1].coefficient += term.coefficient;
        else
            m_terms[kept++] = term;
    }
    m_terms.resize(kept);
    std::erase_if(m_terms, [](const auto& term) { return std::abs(term.coefficient) < SolverTableau::tiny; });
}

// False when one of them cannot be taken.
bool ConstraintSolver::collectTerms(std::span<const Term> terms, int sign)
{
    constexpr std::size_t few = 8; // so few are compared in pairs
    m_terms.resize(terms.size());
    SolverVertex::Term* const begin = m_terms.data();
    SolverVertex::Term* end = begin;
    bool areAcceptable = true;
    double largestCoefficient = 0;
    bool isPlain = terms.size() <= few;
    for (const Term& term : terms) {
        if (!isVariable(term.variable) || !isModest(term.coefficient)) [[unlikely]] {
            reportUnacceptable(term);
            areAcceptable = false;
        }
        const auto symbol = static_cast<Index>(term.variable);
        bool isRepeated = false;
        if (isPlain)
            for (const SolverVertex::Term* other = begin; other != end; ++other)
                isRepeated |= other->symbol == symbol;
        const double size = std::abs(term.coefficient);
        isPlain = isPlain && !isRepeated && size >= SolverTableau::tiny;
        largestCoefficient = std::max(largestCoefficient, size);
        *end++ = { symbol, sign * term.coefficient };
    }
    if (!areAcceptable)
        return false;
    if (!isPlain)
        joinTerms();
    m_vertex.widenTolerance(largestCoefficient);
    return true;
}

ConstraintSolver::Constraint ConstraintSolver::addConstraint(
    std::span<const Term> terms, double constant, Relation relation, double priority)
{
    const bool hasPriority = priority > 0 && priority <= required;
    NSParameterAssert(hasPriority, "ConstraintSolver", "priority > 0 && priority <= 1000");
    NSParameterAssert(isModest(constant), "ConstraintSolver", "fabs(constant) <= 1e9");
    const int sign = relation == Relation::LessThanOrEqual ? -1 : 1;
    if (!collectTerms(terms, sign) || !hasPriority || !isModest(constant))
        return Constraint::None;
    // A contradiction that has been resolved since is not held against the new one.
    if (m_isConflicting)
        isFeasible();
    m_vertex.widenTolerance(constant);
    const auto kind
        = relation == Relation::Equal ? SolverSymbol::Kind::Equality : SolverSymbol::Kind::Inequality;
    const Index index = m_vertex.addConstraint(m_terms, sign * constant, kind, priority);
    makeRoom(index);
    m_constraints.add(index, m_terms, sign * constant, priority, sign);
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
    const bool isKnown = isConstraint(constraint);
    NSParameterAssert(isKnown, "ConstraintSolver", "isConstraint(constraint)");
    if (!isKnown)
        return;
    const auto index = static_cast<Index>(constraint);
    m_vertex.removeConstraint(index);
    m_constraints.remove(index);
    --m_constraintCount;
    m_isPending = true;
}

bool ConstraintSolver::isFeasible()
{
    if (m_vertex.requiredSuspects().empty()) {
        m_isConflicting = false;
        return true;
    }
    const Index obstacle = m_dual.fulfilRequired(m_vertex);
    m_isConflicting = obstacle != SolverVertex::none;
    if (m_isConflicting)
        noteConflict(obstacle, SolverVertex::none);
    return !m_isConflicting;
}

bool ConstraintSolver::setConstant(Constraint constraint, double constant)
{
    const bool isKnown = isConstraint(constraint);
    NSParameterAssert(isKnown, "ConstraintSolver", "isConstraint(constraint)");
    NSParameterAssert(isModest(constant), "ConstraintSolver", "fabs(constant) <= 1e9");
    if (!isKnown || !isModest(constant))
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
    const Index obstacle = !m_vertex.hasSuspects() ? SolverVertex::none
        : m_vertex.isOptimal()                     ? m_dual.fulfilAll(m_vertex)
                                                   : m_dual.fulfilRequired(m_vertex);
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
    // The list is empty as a rule, and then needs no look at who is in it already.
    for (std::size_t place = 0; place < m_changedCount; ++place)
        m_isChanged[static_cast<std::size_t>(m_changed[place])] = true;
    const std::size_t known = m_changedCount;
    const double tolerance = m_vertex.tolerance();
    double* const values = m_values.data();
    Variable* end = m_changed.data() + m_changedCount;
    m_vertex.takeTouched([&, tolerance, values, known](Index index, double value) {
        if (std::abs(value - values[index]) < tolerance)
            return;
        values[index] = value;
        if (std::abs(value) < tolerance) [[unlikely]]
            values[index] = 0;
        if (known == 0 || !m_isChanged[index])
            *end++ = Variable { index };
    });
    m_changedCount = std::size_t(end - m_changed.data());
    for (std::size_t place = 0; place < known; ++place)
        m_isChanged[static_cast<std::size_t>(m_changed[place])] = false;
}

double ConstraintSolver::valueOfUnknown() const
{
    NSParameterAssert(false, "ConstraintSolver", "isVariable(variable)");
    return 0;
}
