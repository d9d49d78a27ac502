#include "platform/layout/solver/PrimalSimplex.h"

#include "platform/layout/solver/LexicographicCost.h"

#include <algorithm>

void PrimalSimplex::optimise(SolvedForm& form)
{
    m_cost.resize(form.levelCount());
    m_best.resize(form.levelCount());
    m_stepsInPlace = 0;
    acceptSides(form);
    const Index enough = 1000 + 16 * form.variableCount();
    for (Index steps = 0; steps < enough && step(form); ++steps) { }
    form.setOptimal(true);
}

// Weaker constraints may be on either side: their costs are those of where they are.
void PrimalSimplex::acceptSides(SolvedForm& form)
{
    for (const Index index : form.weakInfeasible()) {
        form.unlistInfeasible(index);
        const SolverVariable& variable = form.variable(index);
        if (variable.isBasic() && variable.isOutside(form.tolerance()))
            form.setSides(index, variable.value < 0 ? SolverVariable::Negative : SolverVariable::Positive);
    }
    form.weakInfeasible().clear();
}

void PrimalSimplex::considerColumn(const SolvedForm& form, Index column, int direction)
{
    const Index index = form.parametricVariable(column);
    if (!form.mayMove(index, direction))
        return;
    form.computeCost(column, direction, m_cost.data());
    if (signOfCost(m_cost) >= 0)
        return;
    if (m_column != SolvedForm::noColumn) {
        const bool isBetter = m_stepsInPlace > stepsBeforeBlandsRule
            ? index < form.parametricVariable(m_column)
            : compareCosts(m_cost, m_best) < 0;
        if (!isBetter)
            return;
    }
    m_column = column;
    m_direction = direction;
    m_cost.swap(m_best);
}

void PrimalSimplex::chooseColumn(SolvedForm& form)
{
    m_column = SolvedForm::noColumn;
    Tableau::forEachBit(form.movableColumns().data(), form.tableau().columnWords(), [&](Index column) {
        considerColumn(form, column, 1);
        considerColumn(form, column, -1);
    });
}

bool PrimalSimplex::isBefore(const Corner& one, const Corner& other) const
{
    if (one.distance != other.distance)
        return one.distance < other.distance;
    const double size = std::abs(one.rate);
    const double otherSize = std::abs(other.rate);
    return m_stepsInPlace > stepsBeforeBlandsRule || size == otherSize ? one.variable < other.variable
                                                                       : size > otherSize;
}

void PrimalSimplex::collectCorners(SolvedForm& form)
{
    m_corners.clear();
    form.tableau().forEachInColumn(m_column, [&](std::size_t row, double value) {
        const Index index = form.basicVariable(Index(row));
        const SolverVariable& variable = form.variable(index);
        const double rate = m_direction * value;
        if (std::abs(rate) <= SolvedForm::smallestPivot)
            return;
        if (variable.sides & (rate > 0 ? SolverVariable::Positive : SolverVariable::Negative))
            return;
        m_corners.push_back({ std::max(-variable.value / rate, 0.0), rate, index });
    });
    std::sort(m_corners.begin(), m_corners.end(),
        [this](const Corner& one, const Corner& other) { return isBefore(one, other); });
}

// Whether going on past the corner would not make the costs fall any more.
bool PrimalSimplex::stopsAt(const SolvedForm& form, const Corner& corner)
{
    const SolverVariable& variable = form.variable(corner.variable);
    if (variable.isRequired())
        return true;
    const int slope = variable.slopeOn(corner.rate > 0 ? SolverVariable::Positive : SolverVariable::Negative);
    m_best[variable.level] += std::abs((slope - variable.slope) * corner.rate);
    return signOfCost(m_best) >= 0;
}

bool PrimalSimplex::step(SolvedForm& form)
{
    chooseColumn(form);
    if (m_column == SolvedForm::noColumn)
        return false;
    collectCorners(form);
    for (const Corner& corner : m_corners) {
        // Past the last corner the costs do not fall; rounding may make it seem so.
        if (stopsAt(form, corner) || &corner == &m_corners.back()) {
            m_stepsInPlace = corner.distance > 0 ? 0 : m_stepsInPlace + 1;
            form.exchange(form.variable(corner.variable).place, m_column, m_direction);
            return true;
        }
        form.setSides(corner.variable, corner.rate > 0 ? SolverVariable::Positive : SolverVariable::Negative);
    }
    return false;
}
