#include "platform/layout/solver/ConstraintSolver.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

} // namespace

void ConstraintSolver::reserve(std::size_t variables, std::size_t constraints)
{
    if (variables + constraints == 0)
        return;
    m_form.reserve(variables, constraints);
    m_constraints.reserveTerms(4 * constraints);
    makeRoom(Index(variables + constraints));
}

// For what is known of a variable, doubling what there is.
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
    const Index index = m_form.addExternalVariable();
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
    m_form.removeExternalVariable(index, m_constraints);
    m_values[index] = unknown;
    const auto end = m_changed.begin() + std::ptrdiff_t(m_changedCount);
    m_changedCount = std::size_t(std::remove(m_changed.begin(), end, variable) - m_changed.begin());
    --m_variableCount;
}

// False when one of them cannot be taken. A variable may come several times: the tableau adds up.
bool ConstraintSolver::collectTerms(std::span<const Term> terms, int sign)
{
    if (m_terms.size() < terms.size())
        m_terms.resize(terms.size());
    SolvedForm::Term* end = m_terms.data();
    bool areAcceptable = true;
    double largestCoefficient = 0;
    for (const Term& term : terms) {
        if (!isVariable(term.variable) || !isModest(term.coefficient)) [[unlikely]] {
            reportRefused(term);
            areAcceptable = false;
        }
        largestCoefficient = std::max(largestCoefficient, std::abs(term.coefficient));
        *end++ = { static_cast<Index>(term.variable), sign * term.coefficient };
    }
    if (areAcceptable)
        m_form.widenTolerance(largestCoefficient);
    return areAcceptable;
}

ConstraintSolver::Constraint ConstraintSolver::addConstraint(
    std::span<const Term> terms, double constant, Relation relation, double priority)
{
    const bool isAcceptable = isModest(constant) && priority > 0 && priority <= required;
    if (!isAcceptable) [[unlikely]]
        reportRefused(constant, priority);
    const int sign = relation == Relation::LessThanOrEqual ? -1 : 1;
    if (!collectTerms(terms, sign) || !isAcceptable)
        return Constraint::None;
    // A contradiction that was found before may have been resolved since.
    if (m_isConflicting)
        isFeasible();
    m_form.widenTolerance(constant);
    const auto kind
        = relation == Relation::Equal ? SolverVariable::Kind::Equality : SolverVariable::Kind::Inequality;
    const std::span<const SolvedForm::Term> turned { m_terms.data(), terms.size() };
    const Index index = m_form.addConstraint(turned, sign * constant, kind, priority);
    makeRoom(index);
    m_constraints.add(index, turned, sign * constant, priority, sign);
    m_isPending = true;
    if (!admit(index))
        return Constraint::None;
    ++m_constraintCount;
    return Constraint { index };
}

bool ConstraintSolver::admit(Index index)
{
    m_form.exchangeNew(index);
    const SolverVariable& variable = m_form.variable(index);
    if (variable.isParametric() && m_form.requiredInfeasible().empty()) [[likely]]
        return true;
    if (!variable.isRequired())
        return true;
    if (variable.isBasic() && variable.kind == SolverVariable::Kind::Equality) {
        if (m_form.isDetermined(variable.place))
            return admitDetermined(index);
        m_equationsWithRows.push_back(index);
    }
    if (m_isConflicting || m_form.requiredInfeasible().empty())
        return true;
    const Index obstacle = m_dual.fulfilRequired(m_form);
    if (obstacle == SolvedForm::none)
        return true;
    noteConflict(obstacle, index);
    m_form.restore(m_constraints);
    m_form.removeConstraint(index, m_constraints);
    m_constraints.remove(index);
    return false;
}

// An equation whose row holds nothing that may move follows from others, or contradicts them.
bool ConstraintSolver::admitDetermined(Index index)
{
    const bool holds = !m_form.variable(index).isOutside(m_form.tolerance());
    m_form.dropRow(index);
    if (holds || m_isConflicting)
        return true;
    noteConflict(index, index);
    m_form.removeConstraint(index, m_constraints);
    m_constraints.remove(index);
    return false;
}

// All constraints hold: what may move takes the rows of equations over, or these follow from others.
void ConstraintSolver::freeRows()
{
    for (const Index index : m_equationsWithRows) {
        const SolverVariable& variable = m_form.variable(index);
        if (!variable.isRequiredEquation() || !variable.isBasic())
            continue;
        if (m_form.isDetermined(variable.place))
            m_form.dropRow(index);
        else
            m_dual.leaveBasis(m_form, index);
    }
    m_equationsWithRows.clear();
}

// A required row that cannot come to 0 consists of variables that may not move: they and it contradict each
// other, and any of them less would give way.
void ConstraintSolver::noteConflict(Index variable, Index except)
{
    m_conflict.clear();
    const auto note = [&](Index index) {
        if (index != except)
            m_conflict.push_back(Constraint { index });
    };
    note(variable);
    if (m_form.variable(variable).isRedundant()) {
        m_form.redundantEquations().forEachSource(variable, [&](Index source, double) { note(source); });
        return;
    }
    const Index row = m_form.variable(variable).place;
    for (Index index = 1; index < m_form.variableCount(); ++index) {
        const SolverVariable& other = m_form.variable(index);
        if (other.isConstraint() && other.isParametric()
            && std::abs(m_form.tableau().cell(row, other.place)) > SolvedForm::smallestPivot)
            note(index);
    }
}

void ConstraintSolver::removeConstraint(Constraint constraint)
{
    if (!isConstraint(constraint)) [[unlikely]]
        return reportRefused(constraint, 0);
    const auto index = static_cast<Index>(constraint);
    m_form.removeConstraint(index, m_constraints);
    m_constraints.remove(index);
    --m_constraintCount;
    m_isPending = true;
}

bool ConstraintSolver::isFeasible()
{
    if (m_form.requiredInfeasible().empty()) {
        m_isConflicting = false;
        return true;
    }
    const Index obstacle = m_dual.fulfilRequired(m_form);
    m_isConflicting = obstacle != SolvedForm::none;
    if (m_isConflicting)
        noteConflict(obstacle, SolvedForm::none);
    return !m_isConflicting;
}

bool ConstraintSolver::setConstant(Constraint constraint, double constant)
{
    if (!isConstraint(constraint) || !isModest(constant)) [[unlikely]] {
        reportRefused(constraint, constant);
        return !m_isConflicting;
    }
    const auto index = static_cast<Index>(constraint);
    if (const double difference = m_constraints.changeConstant(index, constant); difference != 0) {
        m_form.widenTolerance(constant);
        m_form.shiftConstraint(index, difference);
        m_isPending = true;
    }
    return isFeasible();
}

bool ConstraintSolver::solve()
{
    if (!m_isPending)
        return true;
    if (m_form.isDueForRebuild())
        m_form.rebuild(m_constraints);
    const Index obstacle = !m_form.hasInfeasible() ? SolvedForm::none
        : m_form.isOptimal()                       ? m_dual.fulfilAll(m_form)
                                                   : m_dual.fulfilRequired(m_form);
    m_isConflicting = obstacle != SolvedForm::none;
    if (m_isConflicting) {
        noteConflict(obstacle, SolvedForm::none);
        return false;
    }
    if (!m_form.isOptimal())
        m_primal.optimise(m_form);
    if (!m_equationsWithRows.empty())
        freeRows();
    publish();
    m_isPending = false;
    return true;
}

void ConstraintSolver::publish()
{
    // The list is empty as a rule, and then needs no look at who is in it already.
    if (m_changedCount == 0)
        return publishTo(m_changed.data(), [](Index) { return true; });
    const std::size_t known = m_changedCount;
    for (std::size_t place = 0; place < known; ++place)
        m_isChanged[static_cast<std::size_t>(m_changed[place])] = true;
    publishTo(m_changed.data() + known, [this](Index index) { return !m_isChanged[index]; });
    for (std::size_t place = 0; place < known; ++place)
        m_isChanged[static_cast<std::size_t>(m_changed[place])] = false;
}

// Takes over the values that differ, and appends those variables that are not listed yet.
template <typename IsNew> void ConstraintSolver::publishTo(Variable* end, IsNew isNew)
{
    const double tolerance = m_form.tolerance();
    double* const values = m_values.data();
    m_form.takeMoved([=, &end](Index index, double value) {
        if (std::abs(value - values[index]) < tolerance)
            return;
        values[index] = value;
        if (isNew(index))
            *end++ = Variable { index };
    });
    m_changedCount = std::size_t(end - m_changed.data());
}
