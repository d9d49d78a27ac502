#include "platform/layout/solver/PrimalSimplex.h"

#include "platform/layout/solver/SolverCost.h"

#include <algorithm>

void PrimalSimplex::optimise(SolverVertex& vertex)
{
    m_cost.resize(vertex.levelCount());
    m_best.resize(vertex.levelCount());
    m_stepsInPlace = 0;
    acceptSides(vertex);
    const Index enough = 1000 + 16 * vertex.symbolCount();
    for (Index steps = 0; steps < enough && step(vertex); ++steps) { }
    vertex.setOptimal(true);
}

// Weaker constraints may be on either side: their costs are those of where they are.
void PrimalSimplex::acceptSides(SolverVertex& vertex)
{
    for (const Index index : vertex.weakSuspects()) {
        vertex.clearSuspicion(index);
        const SolverSymbol& symbol = vertex.symbol(index);
        if (symbol.isBasic() && symbol.isOutside(vertex.tolerance()))
            vertex.setSides(index, symbol.value < 0 ? SolverSymbol::Negative : SolverSymbol::Positive);
    }
    vertex.weakSuspects().clear();
}

void PrimalSimplex::considerColumn(const SolverVertex& vertex, Index column, int direction)
{
    const Index index = vertex.columnSymbol(column);
    if (!vertex.mayMove(index, direction))
        return;
    vertex.computeCost(column, direction, m_cost.data());
    if (signOfCost(m_cost) >= 0)
        return;
    if (m_column != SolverVertex::noColumn) {
        const bool isBetter = m_stepsInPlace > patience ? index < vertex.columnSymbol(m_column)
                                                        : compareCosts(m_cost, m_best) < 0;
        if (!isBetter)
            return;
    }
    m_column = column;
    m_direction = direction;
    m_cost.swap(m_best);
}

void PrimalSimplex::chooseColumn(SolverVertex& vertex)
{
    m_column = SolverVertex::noColumn;
    SolverTableau::forEachBit(
        vertex.movableColumns().data(), vertex.tableau().columnWords(), [&](Index column) {
            considerColumn(vertex, column, 1);
            considerColumn(vertex, column, -1);
        });
}

bool PrimalSimplex::isBefore(const Corner& one, const Corner& other) const
{
    if (one.distance != other.distance)
        return one.distance < other.distance;
    const double size = std::abs(one.rate);
    const double otherSize = std::abs(other.rate);
    return m_stepsInPlace > patience || size == otherSize ? one.symbol < other.symbol : size > otherSize;
}

void PrimalSimplex::collectCorners(SolverVertex& vertex)
{
    m_corners.clear();
    vertex.tableau().forEachInColumn(m_column, [&](std::size_t row, double value) {
        const Index index = vertex.rowSymbol(Index(row));
        const SolverSymbol& symbol = vertex.symbol(index);
        const double rate = m_direction * value;
        if (std::abs(rate) <= SolverVertex::smallestPivot)
            return;
        if (symbol.sides & (rate > 0 ? SolverSymbol::Positive : SolverSymbol::Negative))
            return;
        m_corners.push_back({ std::max(-symbol.value / rate, 0.0), rate, index });
    });
    std::sort(m_corners.begin(), m_corners.end(),
        [this](const Corner& one, const Corner& other) { return isBefore(one, other); });
}

// Whether going on past the corner would not make the costs fall any more.
bool PrimalSimplex::stopsAt(const SolverVertex& vertex, const Corner& corner)
{
    const SolverSymbol& symbol = vertex.symbol(corner.symbol);
    if (symbol.isRequired())
        return true;
    const int slope = symbol.slopeOn(corner.rate > 0 ? SolverSymbol::Positive : SolverSymbol::Negative);
    m_best[symbol.level] += std::abs((slope - symbol.slope) * corner.rate);
    return signOfCost(m_best) >= 0;
}

bool PrimalSimplex::step(SolverVertex& vertex)
{
    chooseColumn(vertex);
    if (m_column == SolverVertex::noColumn)
        return false;
    collectCorners(vertex);
    for (const Corner& corner : m_corners) {
        // Past the last corner nothing can be won, whatever rounding says.
        if (stopsAt(vertex, corner) || &corner == &m_corners.back()) {
            m_stepsInPlace = corner.distance > 0 ? 0 : m_stepsInPlace + 1;
            vertex.settle(vertex.symbol(corner.symbol).place, m_column, m_direction);
            return true;
        }
        vertex.setSides(corner.symbol, corner.rate > 0 ? SolverSymbol::Positive : SolverSymbol::Negative);
    }
    return false;
}
