#include "platform/layout/solver/SolverVertex.h"

#include <algorithm>
#include <utility>

namespace {

using Word = SolverTableau::Word;

void setBit(std::vector<Word>& words, std::uint32_t index, bool isSet)
{
    const Word bit = Word(1) << (index % SolverTableau::wordBits);
    Word& word = words[index / SolverTableau::wordBits];
    word = isSet ? word | bit : word & ~bit;
}

} // namespace

// The lists of symbols get room for all of them, so that they need none later.
void SolverVertex::makeRoom(std::size_t symbolCount)
{
    m_symbols.reserve(symbolCount);
    for (std::vector<Index>* list : { &m_unused, &m_sloping, &m_requiredSuspects, &m_weakSuspects, &m_order })
        list->reserve(symbolCount);
}

SolverVertex::Index SolverVertex::takeSymbol(Kind kind)
{
    if (m_unused.empty() && m_symbols.size() == m_symbols.capacity())
        makeRoom(std::max<std::size_t>(32, 2 * m_symbols.size()));
    if (m_symbols.empty())
        m_symbols.emplace_back(); // the one that stands for none
    Index index = Index(m_symbols.size());
    if (m_unused.empty()) {
        m_symbols.emplace_back();
    } else {
        index = m_unused.back();
        m_unused.pop_back();
        m_symbols[index] = SolverSymbol();
    }
    m_symbols[index].kind = kind;
    return index;
}

void SolverVertex::releaseSymbol(Index index)
{
    SolverSymbol& symbol = m_symbols[index];
    if (symbol.slope != 0)
        setSlope(index, 0);
    if (!symbol.isRequired())
        m_priorities.release(symbol.level);
    const bool isSuspect = symbol.isSuspect;
    const bool isTouched = symbol.isTouched;
    symbol = SolverSymbol();
    if (isSuspect) {
        std::erase(m_requiredSuspects, index);
        std::erase(m_weakSuspects, index);
    }
    if (isTouched)
        m_touchedCount = std::size_t(
            std::remove(m_touched.begin(), m_touched.begin() + std::ptrdiff_t(m_touchedCount), index)
            - m_touched.begin());
    m_unused.push_back(index);
}

void SolverVertex::setColumn(Index column, Index index)
{
    const SolverSymbol& symbol = m_symbols[index];
    const bool isFree = !symbol.isConstraint();
    const bool isMovable = isFree || !symbol.isRequired() || symbol.kind == Kind::Inequality;
    setBit(m_free, column, isFree);
    setBit(m_movable, column, isMovable);
    m_columnSymbols[column] = index;
}

SolverVertex::Index SolverVertex::addVariable()
{
    const Index index = takeSymbol(Kind::Variable);
    const Index column = m_tableau.addColumn();
    if (column >= m_columnSymbols.size())
        m_columnSymbols.resize(2 * std::size_t(column) + 8);
    if (column >= m_touched.size())
        m_touched.resize(2 * std::size_t(column) + 8);
    if (m_free.size() < m_tableau.columnWords()) {
        m_free.resize(m_tableau.columnWords());
        m_movable.resize(m_tableau.columnWords());
    }
    m_symbols[index].place = column;
    setColumn(column, index);
    return index;
}

void SolverVertex::removeVariable(Index index, const SolverConstraints& constraints)
{
    // Abandoned symbols may still tie it to others.
    if (m_symbols[index].isBasic() || !m_tableau.isColumnEmpty(m_symbols[index].place))
        rebuild(constraints);
    const Index column = m_symbols[index].place;
    m_columnSymbols[column] = none;
    setBit(m_free, column, false);
    setBit(m_movable, column, false);
    m_tableau.removeColumn(column);
    releaseSymbol(index);
}

void SolverVertex::addRow(Index index, std::span<const Term> terms, double constant)
{
    const Index row = m_tableau.addRow();
    if (row >= m_rowSymbols.size())
        m_rowSymbols.resize(2 * std::size_t(row) + 8);
    m_rowSymbols[row] = index;
    const SolverSymbol* const symbols = m_symbols.data();
    double value = constant;
    for (const Term& term : terms) {
        const SolverSymbol& symbol = symbols[term.symbol];
        value += term.coefficient * symbol.value;
        if (symbol.isBasic())
            m_tableau.addMultiple(symbol.place, term.coefficient);
        else
            m_tableau.add(symbol.place, term.coefficient);
    }
    SolverSymbol& symbol = m_symbols[index];
    symbol.role = SolverSymbol::Role::Basic;
    symbol.place = row;
    symbol.value = value;
    symbol.slope = 0;
}

void SolverVertex::acquireLevel(Index index, double priority)
{
    const auto level = m_priorities.acquire(priority);
    const auto moved = m_priorities.movedLevels();
    if (!moved.empty())
        for (SolverSymbol& symbol : m_symbols)
            if (!symbol.isRequired())
                symbol.level = moved[symbol.level];
    m_symbols[index].level = level;
    m_cost.resize(m_priorities.count());
}

SolverVertex::Index SolverVertex::addConstraint(
    std::span<const Term> terms, double constant, Kind kind, double priority)
{
    const Index index = takeSymbol(kind);
    if (priority < 1000)
        acquireLevel(index, priority);
    resetSides(index);
    addRow(index, terms, constant);
    return index;
}

// The slope with which a basic symbol costs nothing.
void SolverVertex::resetSides(Index index)
{
    SolverSymbol& symbol = m_symbols[index];
    symbol.sides = symbol.kind == Kind::Equality ? SolverSymbol::Neither : SolverSymbol::Positive;
}

void SolverVertex::removeConstraint(Index index, const SolverConstraints& constraints)
{
    SolverSymbol& symbol = m_symbols[index];
    if (!symbol.isParametric())
        return removeWithoutColumn(index);
    if (!symbol.isRequired())
        m_priorities.release(symbol.level);
    symbol.kind = Kind::Abandoned;
    symbol.level = SolverSymbol::requiredLevel;
    setColumn(symbol.place, index);
    if (m_redundant.hasFollowers(index)) [[unlikely]]
        return restateFollowers(index, constraints);
    if (!m_sloping.empty())
        checkOptimality(symbol.place);
}

void SolverVertex::removeWithoutColumn(Index index)
{
    const SolverSymbol& symbol = m_symbols[index];
    if (symbol.isRedundant()) {
        m_redundant.remove(index);
    } else {
        m_isOptimal = m_isOptimal && symbol.slope == 0;
        m_tableau.removeRow(symbol.place);
    }
    releaseSymbol(index);
}

// A column that is free from now on may have something to gain.
void SolverVertex::checkOptimality(Index column) { m_isOptimal = m_isOptimal && isCostFree(column); }

// The first one that can takes the abandoned column, and then the others may follow from it.
void SolverVertex::restateFollowers(Index source, const SolverConstraints& constraints)
{
    m_redundant.takeFollowers(source, m_followers);
    for (const Index follower : m_followers)
        restate(follower, constraints);
    if (m_symbols[source].kind == Kind::Abandoned)
        checkOptimality(m_symbols[source].place);
}

void SolverVertex::restate(Index index, const SolverConstraints& constraints)
{
    addRow(index, constraints.terms(index), constraints[index].constant);
    if (!settleOnFreeColumn(index))
        dropRow(index);
}

bool SolverVertex::isDetermined(Index row)
{
    bool isMovable = false;
    m_tableau.forEachInRow(row, m_movable,
        [&](Index, double value) { isMovable = isMovable || std::abs(value) > smallestPivot; });
    return !isMovable;
}

void SolverVertex::dropRow(Index index)
{
    SolverSymbol& symbol = m_symbols[index];
    m_redundant.makeRoom(m_symbols.capacity());
    m_tableau.forEachInRow(symbol.place, [&](Index column, double value) {
        if (std::abs(value) > smallestPivot)
            m_redundant.addSource(index, m_columnSymbols[column], value);
    });
    m_tableau.removeRow(symbol.place);
    symbol.role = SolverSymbol::Role::Redundant;
}

void SolverVertex::shiftConstraint(Index index, double difference)
{
    SolverSymbol& symbol = m_symbols[index];
    if (!symbol.isParametric()) {
        symbol.value += difference;
        check(symbol, index);
        return;
    }
    moveColumn(symbol.place, -difference);
    symbol.value = 0;
    if (m_redundant.hasFollowers(index)) [[unlikely]]
        shiftFollowers(index, difference);
}

void SolverVertex::shiftFollowers(Index source, double difference)
{
    m_redundant.forEachFollower(source, [&](Index equation, double factor) {
        m_symbols[equation].value -= factor * difference;
        check(m_symbols[equation], equation);
    });
}

void SolverVertex::widenTolerance(double magnitude)
{
    m_tolerance = std::max(m_tolerance, 1e-12 * std::abs(magnitude));
}

bool SolverVertex::isCostFree(Index column)
{
    computeCost(column, 1, m_cost.data());
    return std::all_of(
        m_cost.begin(), m_cost.end(), [](double part) { return std::abs(part) <= smallestPivot; });
}

// Prefers a column that no other row shares, because then nothing else changes; next, large cells.
SolverVertex::Index SolverVertex::freeColumn(Index row)
{
    Index best = noColumn;
    double bestSize = smallestPivot;
    m_tableau.forEachInRow(row, m_free, [&](Index column, double value) {
        double size = std::abs(value);
        if (size <= smallestPivot)
            return;
        if (m_symbols[m_columnSymbols[column]].kind == Kind::Abandoned)
            size *= 16;
        else if (m_tableau.isColumnEmpty(column))
            size *= 4;
        if (size > bestSize) {
            bestSize = size;
            best = column;
        }
    });
    return best;
}

void SolverVertex::suspect(SolverSymbol& symbol, Index index)
{
    symbol.isSuspect = true;
    (symbol.isRequired() ? m_requiredSuspects : m_weakSuspects).push_back(index);
}

void SolverVertex::moveColumn(Index column, double distance)
{
    ++m_wear;
    SolverSymbol* const symbols = m_symbols.data();
    const Index* const rowSymbols = m_rowSymbols.data();
    Index* touched = m_touched.data() + m_touchedCount;
    m_tableau.forEachInColumn(column, [=, this, &touched](std::size_t row, double value) {
        const Index index = rowSymbols[row];
        SolverSymbol& symbol = symbols[index];
        symbol.value += value * distance;
        if (symbol.sides != SolverSymbol::Both)
            check(symbol, index);
        else if (!std::exchange(symbol.isTouched, true))
            *touched++ = index;
    });
    const Index index = m_columnSymbols[column];
    SolverSymbol& symbol = symbols[index];
    symbol.value += distance;
    if (symbol.kind == Kind::Variable && !std::exchange(symbol.isTouched, true))
        *touched++ = index;
    m_touchedCount = std::size_t(touched - m_touched.data());
}

void SolverVertex::reserve(std::size_t variables, std::size_t constraints)
{
    m_tableau.reserve(Index(variables), Index(constraints));
    makeRoom(variables + constraints + 1);
    m_touched.resize(std::max(variables, m_touched.size()));
    m_columnSymbols.resize(std::max(variables, m_columnSymbols.size()));
    m_rowSymbols.resize(std::max(constraints, m_rowSymbols.size()));
}

void SolverVertex::setSlope(Index index, int slope)
{
    SolverSymbol& symbol = m_symbols[index];
    if (slope != 0 && symbol.slope == 0) {
        symbol.sloping = Index(m_sloping.size());
        m_sloping.push_back(index);
    } else if (slope == 0 && symbol.slope != 0) {
        m_sloping[symbol.sloping] = m_sloping.back();
        m_symbols[m_sloping.back()].sloping = symbol.sloping;
        m_sloping.pop_back();
    }
    symbol.slope = static_cast<signed char>(slope);
}

void SolverVertex::setSides(Index index, Sides sides)
{
    SolverSymbol& symbol = m_symbols[index];
    symbol.sides = sides;
    setSlope(index, symbol.slopeOn(sides));
}

void SolverVertex::leaveBasis(Index index, Index column)
{
    SolverSymbol& symbol = m_symbols[index];
    if (symbol.slope != 0)
        setSlope(index, 0);
    symbol.role = SolverSymbol::Role::Parametric;
    symbol.place = column;
    symbol.value = 0;
    setColumn(column, index);
}

void SolverVertex::pivot(Index row, Index column, int direction)
{
    ++m_wear;
    m_tableau.pivot(row, column);
    const Index entering = m_columnSymbols[column];
    leaveBasis(m_rowSymbols[row], column);
    m_rowSymbols[row] = entering;
    SolverSymbol& symbol = m_symbols[entering];
    symbol.role = SolverSymbol::Role::Basic;
    symbol.place = row;
    if (symbol.kind == Kind::Abandoned) {
        m_tableau.removeRow(row);
        releaseSymbol(entering);
    } else if (symbol.kind != Kind::Variable) {
        setSides(entering, direction > 0 ? SolverSymbol::Positive : SolverSymbol::Negative);
    }
}

void SolverVertex::settle(Index row, Index column, int direction)
{
    const Index leaving = m_rowSymbols[row];
    moveColumn(column, -m_symbols[leaving].value / m_tableau.cell(row, column));
    pivot(row, column, direction);
}

bool SolverVertex::settleOnFreeColumn(Index index)
{
    const Index row = m_symbols[index].place;
    const Index column = freeColumn(row);
    if (column == noColumn) {
        m_tableau.closeRow(row);
        check(m_symbols[index], index);
        return false;
    }
    settle(row, column, 1);
    return true;
}

void SolverVertex::settleNew(Index index)
{
    const Index row = m_symbols[index].place;
    const Index column = freeColumn(row);
    const bool isRequired = m_symbols[index].isRequired();
    if (column == noColumn) {
        m_tableau.closeRow(row);
        check(m_symbols[index], index);
        if (isRequired && !m_requiredSuspects.empty())
            save();
        return;
    }
    const double distance = -m_symbols[index].value / m_tableau.cell(row, column);
    moveColumn(column, distance);
    if (isRequired && !m_requiredSuspects.empty()) {
        moveColumn(column, -distance);
        save();
        moveColumn(column, distance);
    }
    const Index entering = m_columnSymbols[column];
    if (m_symbols[entering].kind != Kind::Abandoned) {
        pivot(row, column, 1);
        return;
    }
    m_tableau.pivotAway(row, column);
    leaveBasis(index, column);
    releaseSymbol(entering);
}
