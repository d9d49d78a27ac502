#include "platform/layout/GivenFrames.h"

#include <algorithm>

namespace {

bool isSolvable(double number) { return std::abs(number) <= ConstraintSolver::largest; } // false for NaN

} // namespace

GivenFrames::Variable GivenFrames::variable(
    ConstraintSolver& solver, const LayoutNode& node, LayoutQuantity quantity)
{
    for (const Number& number : m_numbers)
        if (number.node == &node && number.quantity == quantity)
            return number.variable;
    double value = node.givenValue(quantity);
    if (!isSolvable(value))
        value = 0;
    const Variable variable = solver.addVariable();
    const ConstraintSolver::Term term { variable, 1 };
    const Constraint equation = solver.addConstraint({ &term, 1 }, -value, ConstraintSolver::Relation::Equal);
    m_numbers.push_back({ &node, quantity, variable, equation, value });
    return variable;
}

bool GivenFrames::haveChanged(const LayoutNode& node) const
{
    return std::any_of(m_numbers.begin(), m_numbers.end(), [&](const Number& number) {
        return number.node == &node && number.value != node.givenValue(number.quantity);
    });
}

bool GivenFrames::update(ConstraintSolver& solver)
{
    bool isFeasible = true;
    for (Number& number : m_numbers) {
        const double value = number.node->givenValue(number.quantity);
        if (value == number.value || !isSolvable(value))
            continue;
        number.value = value;
        isFeasible = solver.setConstant(number.equation, -value);
    }
    return isFeasible;
}

void GivenFrames::remove(ConstraintSolver& solver, const LayoutNode& node)
{
    std::erase_if(m_numbers, [&](const Number& number) {
        if (number.node != &node)
            return false;
        solver.removeConstraint(number.equation);
        solver.removeVariable(number.variable);
        return true;
    });
}

NSString GivenFrames::nameOf(const Number& number)
{
    static constexpr const char* quantities[] = { "left", "top", "width", "height" };
    return QStringLiteral("%1.%2 is %3")
        .arg(number.node->item().layoutName(), QLatin1String(quantities[static_cast<int>(number.quantity)]))
        .arg(number.value);
}

NSString GivenFrames::nameOf(Constraint constraint) const
{
    for (const Number& number : m_numbers)
        if (number.equation == constraint)
            return nameOf(number);
    return {};
}

NSString GivenFrames::description() const
{
    NSString text;
    for (const Number& number : m_numbers)
        text += nameOf(number) + QLatin1Char('\n');
    return text;
}
