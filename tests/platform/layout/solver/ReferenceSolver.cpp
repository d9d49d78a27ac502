#include "tests/platform/layout/solver/ReferenceSolver.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>
#include <stdexcept>

namespace {

constexpr double tiny = 1e-9;

std::set<double, std::greater<>> prioritiesOf(const std::vector<ReferenceSolver::Constraint>& constraints)
{
    std::set<double, std::greater<>> priorities { 1000 };
    for (const auto& constraint : constraints)
        priorities.insert(constraint.priority);
    return priorities;
}

} // namespace

ReferenceSolver::ReferenceSolver(std::size_t variableCount, const std::vector<Constraint>& constraints)
    : m_isShut(2 * variableCount + 2 * constraints.size())
    , m_firstError(2 * variableCount)
{
    for (std::size_t index = 0; index < constraints.size(); ++index)
        addRow(constraints[index], variableCount, index, constraints.size());
    for (const double priority : prioritiesOf(constraints))
        minimise(constraints, priority);
    m_isFeasible = m_errors.front() < 1e-6;
}

// terms + constant - surplus + shortage = 0, solved for the one of the two that is not negative.
void ReferenceSolver::addRow(
    const Constraint& constraint, std::size_t variableCount, std::size_t index, std::size_t count)
{
    const double sign = constraint.relation < 0 ? -1 : 1;
    const std::size_t surplus = 2 * variableCount + 2 * index;
    const bool isPositive = sign * constraint.constant >= 0;
    const double turn = isPositive ? -sign : sign; // so that the basic column has the coefficient 1
    Row row(2 * variableCount + 2 * count + 1);
    for (const auto& [variable, coefficient] : constraint.terms) {
        row[2 * variable] += turn * coefficient;
        row[2 * variable + 1] -= turn * coefficient;
    }
    row[surplus] = isPositive ? 1 : -1;
    row[surplus + 1] = isPositive ? -1 : 1;
    row.back() = std::abs(constraint.constant);
    m_rows.push_back(row);
    m_basis.push_back(isPositive ? surplus : surplus + 1);
}

ReferenceSolver::Row ReferenceSolver::costs(const std::vector<Constraint>& constraints, double priority) const
{
    Row result(m_isShut.size() + 1);
    for (std::size_t index = 0; index < constraints.size(); ++index) {
        if (constraints[index].priority != priority)
            continue;
        result[m_firstError + 2 * index] = constraints[index].relation == 0 ? 1 : 0;
        result[m_firstError + 2 * index + 1] = 1;
    }
    const Row own = result;
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        for (std::size_t column = 0; column < result.size(); ++column)
            result[column] -= own[m_basis[row]] * m_rows[row][column];
    return result;
}

bool ReferenceSolver::leavingRow(std::size_t column, std::size_t& row) const
{
    bool isFound = false;
    double least = 0;
    for (std::size_t other = 0; other < m_rows.size(); ++other) {
        const double coefficient = m_rows[other][column];
        if (coefficient <= tiny)
            continue;
        const double ratio = m_rows[other].back() / coefficient;
        if (!isFound || ratio < least - tiny || (ratio < least + tiny && m_basis[other] < m_basis[row])) {
            row = other;
            least = isFound ? std::min(least, ratio) : ratio;
            isFound = true;
        }
    }
    return isFound;
}

void ReferenceSolver::pivot(std::size_t row, std::size_t column)
{
    const double factor = m_rows[row][column];
    for (double& cell : m_rows[row])
        cell /= factor;
    for (std::size_t other = 0; other < m_rows.size(); ++other) {
        const double multiple = m_rows[other][column];
        if (other == row || multiple == 0)
            continue;
        for (std::size_t cell = 0; cell < m_rows[other].size(); ++cell)
            m_rows[other][cell] -= multiple * m_rows[row][cell];
        m_rows[other][column] = 0;
    }
    m_basis[row] = column;
}

void ReferenceSolver::minimise(const std::vector<Constraint>& constraints, double priority)
{
    for (int steps = 0;; ++steps) {
        if (steps > 100'000)
            throw std::runtime_error("The reference solver finds no end.");
        const Row cost = costs(constraints, priority);
        std::size_t column = 0;
        while (column < m_isShut.size() && (m_isShut[column] || cost[column] >= -tiny))
            ++column;
        std::size_t row = 0;
        if (column == m_isShut.size()) {
            m_errors.push_back(-cost.back());
            for (std::size_t other = 0; other < m_isShut.size(); ++other)
                m_isShut[other] = m_isShut[other] || cost[other] > tiny;
            return;
        }
        if (!leavingRow(column, row))
            throw std::runtime_error("The reference solver finds no bound.");
        pivot(row, column);
    }
}

double ReferenceSolver::value(std::size_t variable) const
{
    double result = 0;
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        if (m_basis[row] == 2 * variable)
            result += m_rows[row].back();
        if (m_basis[row] == 2 * variable + 1)
            result -= m_rows[row].back();
    }
    return result;
}

std::vector<double> ReferenceSolver::errorsOf(
    const std::vector<Constraint>& constraints, const std::vector<double>& values)
{
    std::vector<double> errors;
    for (const double priority : prioritiesOf(constraints)) {
        double sum = 0;
        for (const Constraint& constraint : constraints) {
            if (constraint.priority != priority)
                continue;
            double value = constraint.constant;
            for (const auto& [variable, coefficient] : constraint.terms)
                value += coefficient * values[variable];
            sum += constraint.relation == 0 ? std::abs(value) : std::max(0.0, -constraint.relation * value);
        }
        errors.push_back(sum);
    }
    return errors;
}
