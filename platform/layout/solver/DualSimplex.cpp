#include "platform/layout/solver/DualSimplex.h"

#include "platform/layout/solver/LexicographicCost.h"

#include <algorithm>

void DualSimplex::start(SolvedForm& form)
{
    m_steps = 0;
    m_cost.resize(form.levelCount());
    m_cheapest.resize(form.levelCount());
}

bool DualSimplex::exceedsStepLimit(const SolvedForm& form) const
{
    return m_steps > 1000 + 16 * form.variableCount();
}

// The one that is farthest out; by Bland's rule the one with the smallest index. The list loses those that
// are feasible.
DualSimplex::Index DualSimplex::takeInfeasible(SolvedForm& form, std::vector<Index>& infeasible) const
{
    Index best = SolvedForm::none;
    double farthest = 0;
    std::size_t kept = 0;
    for (const Index index : infeasible) {
        const SolverVariable& variable = form.variable(index);
        if (variable.isParametric() || !variable.isOutside(form.tolerance())) {
            form.unlistInfeasible(index);
            continue;
        }
        infeasible[kept++] = index;
        const double distance = m_steps > stepsBeforeBlandsRule ? 1.0 / index : std::abs(variable.value);
        if (distance > farthest) {
            farthest = distance;
            best = index;
        }
    }
    infeasible.resize(kept);
    return best;
}

DualSimplex::Index DualSimplex::fulfilRequired(SolvedForm& form)
{
    if (form.requiredInfeasible().empty())
        return SolvedForm::none;
    start(form);
    while (const Index index = takeInfeasible(form, form.requiredInfeasible()))
        if (exceedsStepLimit(form) || !step(form, index))
            return index;
    return SolvedForm::none;
}

DualSimplex::Index DualSimplex::fulfilAll(SolvedForm& form)
{
    if (form.requiredInfeasible().empty() && form.weakInfeasible().empty())
        return SolvedForm::none;
    start(form);
    for (;;) {
        Index index = SolvedForm::none;
        if (!form.requiredInfeasible().empty())
            index = takeInfeasible(form, form.requiredInfeasible());
        if (index == SolvedForm::none && !form.weakInfeasible().empty())
            index = takeInfeasible(form, form.weakInfeasible());
        if (index == SolvedForm::none)
            return SolvedForm::none;
        if (exceedsStepLimit(form)) {
            form.setOptimal(false);
            return fulfilRequired(form);
        }
        if (!step(form, index))
            return index;
    }
}

bool DualSimplex::step(SolvedForm& form, Index index)
{
    ++m_steps;
    if (form.variable(index).isRedundant())
        return false; // what it follows from would have to give way
    const Index row = form.variable(index).place;
    const int direction = form.variable(index).value < 0 ? 1 : -1;
    Index column = form.freeColumn(row);
    if (column == SolvedForm::noColumn) {
        if (form.isOptimal()) {
            column = cheapestColumn(form, row, direction);
            if (crossOver(form, index, column != SolvedForm::noColumn))
                return true;
        } else {
            column = largestColumn(form, row, direction);
        }
    }
    if (column == SolvedForm::noColumn)
        return false;
    form.exchange(row, column, form.tableau().cell(row, column) > 0 ? direction : -direction);
    return true;
}

void DualSimplex::leaveBasis(SolvedForm& form, Index index)
{
    start(form);
    const Index row = form.variable(index).place;
    for (const int direction : { 1, -1 }) {
        const Index column
            = form.isOptimal() ? cheapestColumn(form, row, direction) : largestColumn(form, row, direction);
        if (column == SolvedForm::noColumn)
            continue;
        form.exchange(row, column, form.tableau().cell(row, column) > 0 ? direction : -direction);
        return;
    }
}

// Negative when the first is to be preferred. Large cells keep the numbers sound.
int DualSimplex::compareTies(
    const SolvedForm& form, Index column, double size, Index other, double otherSize) const
{
    if (m_steps <= stepsBeforeBlandsRule && size != otherSize)
        return size > otherSize ? -1 : 1;
    return form.parametricVariable(column) < form.parametricVariable(other) ? -1 : 1;
}

DualSimplex::Index DualSimplex::cheapestColumn(SolvedForm& form, Index row, int direction)
{
    Index best = SolvedForm::noColumn;
    double bestSize = 0;
    form.tableau().forEachInRow(row, form.movableColumns(), [&](Index column, double value) {
        const double size = std::abs(value);
        const int move = value > 0 ? direction : -direction;
        if (size <= SolvedForm::smallestPivot || !form.mayMove(form.parametricVariable(column), move))
            return;
        form.computeCost(column, move, m_cost.data());
        if (size != 1)
            for (double& part : m_cost)
                part /= size;
        int order = best == SolvedForm::noColumn ? -1 : compareCosts(m_cost, m_cheapest);
        if (order == 0)
            order = compareTies(form, column, size, best, bestSize);
        if (order > 0)
            return;
        best = column;
        bestSize = size;
        m_cost.swap(m_cheapest);
    });
    return best;
}

DualSimplex::Index DualSimplex::largestColumn(SolvedForm& form, Index row, int direction) const
{
    Index best = SolvedForm::noColumn;
    double bestSize = 0;
    form.tableau().forEachInRow(row, form.movableColumns(), [&](Index column, double value) {
        const double size = std::abs(value);
        const int move = value > 0 ? direction : -direction;
        if (size <= SolvedForm::smallestPivot || !form.mayMove(form.parametricVariable(column), move))
            return;
        if (best == SolvedForm::noColumn || compareTies(form, column, size, best, bestSize) < 0) {
            best = column;
            bestSize = size;
        }
    });
    return best;
}

// Answers whether the variable of a weaker constraint stays where it is, because that costs no more than the
// cheapest column does.
bool DualSimplex::crossOver(SolvedForm& form, Index index, bool hasColumn)
{
    const SolverVariable& variable = form.variable(index);
    if (variable.isRequired())
        return false;
    const auto side = variable.value < 0 ? SolverVariable::Negative : SolverVariable::Positive;
    if (hasColumn) {
        std::fill(m_cost.begin(), m_cost.end(), 0.0);
        m_cost[variable.level] = std::abs(variable.slopeOn(side) - variable.slope);
        if (compareCosts(m_cost, m_cheapest) > 0)
            return false;
    }
    form.setSides(index, side);
    return true;
}
