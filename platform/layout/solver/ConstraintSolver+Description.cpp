#include "platform/layout/solver/ConstraintSolver.h"

#include <QStringList>

namespace {

NSString number(double value) { return NSString::number(value, 'g', 10); }

// A sum, as it is written: 2 v1 - v2 + 0.5
class SumText {
public:
    void add(double coefficient, const NSString& name)
    {
        const double size = std::abs(coefficient);
        addPart(coefficient < 0,
            name.isEmpty()  ? number(size)
                : size == 1 ? name
                            : number(size) + ' ' + name);
    }
    NSString text() const { return m_text.isEmpty() ? QStringLiteral("0") : m_text; }

private:
    void addPart(bool isNegative, const NSString& part)
    {
        if (m_text.isEmpty())
            m_text = (isNegative ? QStringLiteral("-") : NSString()) + part;
        else
            m_text += (isNegative ? QStringLiteral(" - ") : QStringLiteral(" + ")) + part;
    }

    NSString m_text;
};

NSString nameOf(const SolverVariable& variable, std::uint32_t index)
{
    const char letter = variable.kind == SolverVariable::Kind::External ? 'v'
        : variable.isConstraint()                                       ? 'c'
                                                                        : 'x';
    return NSString(QLatin1Char(letter)) + NSString::number(index);
}

} // namespace

NSString ConstraintSolver::textOfConstraint(Index index) const
{
    const auto& constraint = m_constraints[index];
    SumText sum;
    for (const auto& term : m_constraints.terms(index))
        sum.add(constraint.sign * term.coefficient, nameOf(m_form.variable(term.variable), term.variable));
    if (constraint.constant != 0)
        sum.add(constraint.sign * constraint.constant, NSString());
    const bool isEquality = m_form.variable(index).kind == SolverVariable::Kind::Equality;
    const auto relation = isEquality ? QStringLiteral(" = 0")
        : constraint.sign > 0        ? QStringLiteral(" >= 0")
                                     : QStringLiteral(" <= 0");
    const auto priority
        = constraint.priority < required ? QStringLiteral(" @") + number(constraint.priority) : NSString();
    SumText sources;
    m_form.redundantEquations().forEachSource(index,
        [&](Index source, double factor) { sources.add(factor, nameOf(m_form.variable(source), source)); });
    const auto following
        = m_form.variable(index).isRedundant() ? QStringLiteral(", by ") + sources.text() : NSString();
    return nameOf(m_form.variable(index), index) + QStringLiteral(": ") + sum.text() + relation + priority
        + following;
}

// The basic variable by those outside the basis, and its value.
NSString ConstraintSolver::textOfRow(Index index) const
{
    const SolverVariable& variable = m_form.variable(index);
    SumText sum;
    for (Index other = 1; other < m_form.variableCount(); ++other) {
        const SolverVariable& outside = m_form.variable(other);
        if (outside.kind == SolverVariable::Kind::Unused || !outside.isParametric())
            continue;
        const double coefficient = m_form.tableau().cell(variable.place, outside.place);
        if (std::abs(coefficient) > Tableau::tiny)
            sum.add(coefficient, nameOf(outside, other));
    }
    return QStringLiteral("row ") + nameOf(variable, index) + QStringLiteral(" by ") + sum.text()
        + QStringLiteral(", now ") + number(variable.value);
}

NSString ConstraintSolver::description() const
{
    QStringList variables;
    QStringList constraints;
    QStringList rows;
    for (Index index = 1; index < m_form.variableCount(); ++index) {
        const SolverVariable& variable = m_form.variable(index);
        if (variable.kind == SolverVariable::Kind::External)
            variables.push_back(nameOf(variable, index) + QStringLiteral(" = ") + number(m_values[index]));
        if (variable.isConstraint())
            constraints.push_back(textOfConstraint(index));
        if (variable.isBasic())
            rows.push_back(textOfRow(index));
    }
    const auto heading
        = QStringLiteral("%1 variables, %2 constraints").arg(m_variableCount).arg(m_constraintCount);
    return (QStringList { heading } + variables + constraints + rows).join('\n');
}
