#include "platform/layout/solver/DualSimplex.h"

#include "platform/layout/solver/SolverCost.h"

#include <algorithm>

void DualSimplex::start(SolverVertex& vertex)
{
    m_steps = 0;
    m_cost.resize(vertex.levelCount());
    m_cheapest.resize(vertex.levelCount());
}

bool DualSimplex::isWornOut(const SolverVertex& vertex) const
{
    return m_steps > 1000 + 16 * vertex.symbolCount();
}

// The one that is farthest out; when patience has come to an end, the first. The list loses those that are
// where they belong.
DualSimplex::Index DualSimplex::takeSuspect(SolverVertex& vertex, std::vector<Index>& suspects) const
{
    Index best = SolverVertex::none;
    double farthest = 0;
    std::size_t kept = 0;
    for (const Index index : suspects) {
        const SolverSymbol& symbol = vertex.symbol(index);
        if (symbol.isParametric() || !symbol.isOutside(vertex.tolerance())) {
            vertex.clearSuspicion(index);
            continue;
        }
        suspects[kept++] = index;
        const double distance = m_steps > patience ? 1.0 / index : std::abs(symbol.value);
        if (distance > farthest) {
            farthest = distance;
            best = index;
        }
    }
    suspects.resize(kept);
    return best;
}

DualSimplex::Index DualSimplex::fulfilRequired(SolverVertex& vertex)
{
    if (vertex.requiredSuspects().empty())
        return SolverVertex::none;
    start(vertex);
    while (const Index index = takeSuspect(vertex, vertex.requiredSuspects()))
        if (isWornOut(vertex) || !step(vertex, index))
            return index;
    return SolverVertex::none;
}

DualSimplex::Index DualSimplex::fulfilAll(SolverVertex& vertex)
{
    if (vertex.requiredSuspects().empty() && vertex.weakSuspects().empty())
        return SolverVertex::none;
    start(vertex);
    for (;;) {
        Index index = SolverVertex::none;
        if (!vertex.requiredSuspects().empty())
            index = takeSuspect(vertex, vertex.requiredSuspects());
        if (index == SolverVertex::none && !vertex.weakSuspects().empty())
            index = takeSuspect(vertex, vertex.weakSuspects());
        if (index == SolverVertex::none)
            return SolverVertex::none;
        if (isWornOut(vertex)) {
            vertex.setOptimal(false);
            return fulfilRequired(vertex);
        }
        if (!step(vertex, index))
            return index;
    }
}

bool DualSimplex::step(SolverVertex& vertex, Index index)
{
    ++m_steps;
    if (vertex.symbol(index).isRedundant())
        return false; // what it follows from would have to give way
    const Index row = vertex.symbol(index).place;
    const int direction = vertex.symbol(index).value < 0 ? 1 : -1;
    Index column = vertex.freeColumn(row);
    if (column == SolverVertex::noColumn) {
        if (vertex.isOptimal()) {
            column = cheapestColumn(vertex, row, direction);
            if (crossOver(vertex, index, column != SolverVertex::noColumn))
                return true;
        } else {
            column = largestColumn(vertex, row, direction);
        }
    }
    if (column == SolverVertex::noColumn)
        return false;
    vertex.settle(row, column, vertex.tableau().cell(row, column) > 0 ? direction : -direction);
    return true;
}

void DualSimplex::leaveBasis(SolverVertex& vertex, Index index)
{
    start(vertex);
    const Index row = vertex.symbol(index).place;
    for (const int direction : { 1, -1 }) {
        const Index column = vertex.isOptimal() ? cheapestColumn(vertex, row, direction)
                                                : largestColumn(vertex, row, direction);
        if (column == SolverVertex::noColumn)
            continue;
        vertex.settle(row, column, vertex.tableau().cell(row, column) > 0 ? direction : -direction);
        return;
    }
}

// Negative when the first is to be preferred. Large cells keep the numbers sound.
int DualSimplex::compareTies(
    const SolverVertex& vertex, Index column, double size, Index other, double otherSize) const
{
    if (m_steps <= patience && size != otherSize)
        return size > otherSize ? -1 : 1;
    return vertex.columnSymbol(column) < vertex.columnSymbol(other) ? -1 : 1;
}

DualSimplex::Index DualSimplex::cheapestColumn(SolverVertex& vertex, Index row, int direction)
{
    Index best = SolverVertex::noColumn;
    double bestSize = 0;
    vertex.tableau().forEachInRow(row, vertex.movableColumns(), [&](Index column, double value) {
        const double size = std::abs(value);
        const int move = value > 0 ? direction : -direction;
        if (size <= SolverVertex::smallestPivot || !vertex.mayMove(vertex.columnSymbol(column), move))
            return;
        vertex.computeCost(column, move, m_cost.data());
        if (size != 1)
            for (double& part : m_cost)
                part /= size;
        int order = best == SolverVertex::noColumn ? -1 : compareCosts(m_cost, m_cheapest);
        if (order == 0)
            order = compareTies(vertex, column, size, best, bestSize);
        if (order > 0)
            return;
        best = column;
        bestSize = size;
        m_cost.swap(m_cheapest);
    });
    return best;
}

DualSimplex::Index DualSimplex::largestColumn(SolverVertex& vertex, Index row, int direction) const
{
    Index best = SolverVertex::noColumn;
    double bestSize = 0;
    vertex.tableau().forEachInRow(row, vertex.movableColumns(), [&](Index column, double value) {
        const double size = std::abs(value);
        const int move = value > 0 ? direction : -direction;
        if (size <= SolverVertex::smallestPivot || !vertex.mayMove(vertex.columnSymbol(column), move))
            return;
        if (best == SolverVertex::noColumn || compareTies(vertex, column, size, best, bestSize) < 0) {
            best = column;
            bestSize = size;
        }
    });
    return best;
}

// Answers whether the symbol of a weaker constraint stays where it is, because that costs no more than the
// cheapest column does.
bool DualSimplex::crossOver(SolverVertex& vertex, Index index, bool hasColumn)
{
    const SolverSymbol& symbol = vertex.symbol(index);
    if (symbol.isRequired())
        return false;
    const auto side = symbol.value < 0 ? SolverSymbol::Negative : SolverSymbol::Positive;
    if (hasColumn) {
        std::fill(m_cost.begin(), m_cost.end(), 0.0);
        m_cost[symbol.level] = std::abs(symbol.slopeOn(side) - symbol.slope);
        if (compareCosts(m_cost, m_cheapest) > 0)
            return false;
    }
    vertex.setSides(index, side);
    return true;
}
