#include "platform/layout/solver/SolvedForm.h"

#include <algorithm>
#include <utility>

namespace {

using Word = Tableau::Word;

void setBit(std::vector<Word>& words, std::uint32_t index, bool isSet)
{
    const Word bit = Word(1) << (index % Tableau::wordBits);
    Word& word = words[index / Tableau::wordBits];
    word = isSet ? word | bit : word & ~bit;
}

} // namespace

// The lists of variables get room for all of them, so that they need none later.
void SolvedForm::makeRoom(std::size_t variableCount)
{
    m_variables.reserve(variableCount);
    for (std::vector<Index>* list :
        { &m_unused, &m_sloped, &m_requiredInfeasible, &m_weakInfeasible, &m_order })
        list->reserve(variableCount);
}

SolvedForm::Index SolvedForm::takeVariable(Kind kind)
{
    if (m_unused.empty() && m_variables.size() == m_variables.capacity())
        makeRoom(std::max<std::size_t>(32, 2 * m_variables.size()));
    if (m_variables.empty())
        m_variables.emplace_back(); // the one that stands for none
    Index index = Index(m_variables.size());
    if (m_unused.empty()) {
        m_variables.emplace_back();
    } else {
        index = m_unused.back();
        m_unused.pop_back();
        m_variables[index] = SolverVariable();
    }
    m_variables[index].kind = kind;
    return index;
}

void SolvedForm::releaseVariable(Index index)
{
    SolverVariable& variable = m_variables[index];
    if (variable.slope != 0)
        setSlope(index, 0);
    if (!variable.isRequired())
        m_priorities.release(variable.level);
    const bool isListedInfeasible = variable.isListedInfeasible;
    const bool isListedMoved = variable.isListedMoved;
    variable = SolverVariable();
    if (isListedInfeasible) {
        std::erase(m_requiredInfeasible, index);
        std::erase(m_weakInfeasible, index);
    }
    if (isListedMoved)
        m_movedCount
            = std::size_t(std::remove(m_moved.begin(), m_moved.begin() + std::ptrdiff_t(m_movedCount), index)
                - m_moved.begin());
    m_unused.push_back(index);
}

void SolvedForm::setColumn(Index column, Index index)
{
    const SolverVariable& variable = m_variables[index];
    const bool isFree = !variable.isConstraint();
    const bool isMovable = isFree || !variable.isRequired() || variable.kind == Kind::Inequality;
    setBit(m_free, column, isFree);
    setBit(m_movable, column, isMovable);
    m_parametricVariables[column] = index;
}

SolvedForm::Index SolvedForm::addExternalVariable()
{
    const Index index = takeVariable(Kind::External);
    const Index column = m_tableau.addColumn();
    if (column >= m_parametricVariables.size())
        m_parametricVariables.resize(2 * std::size_t(column) + 8);
    if (column >= m_moved.size())
        m_moved.resize(2 * std::size_t(column) + 8);
    if (m_free.size() < m_tableau.columnWords()) {
        m_free.resize(m_tableau.columnWords());
        m_movable.resize(m_tableau.columnWords());
    }
    m_variables[index].place = column;
    setColumn(column, index);
    return index;
}

void SolvedForm::removeExternalVariable(Index index, const StatedConstraints& constraints)
{
    // Removed variables may still tie it to others.
    if (m_variables[index].isBasic() || !m_tableau.isColumnEmpty(m_variables[index].place))
        rebuild(constraints);
    const Index column = m_variables[index].place;
    m_parametricVariables[column] = none;
    setBit(m_free, column, false);
    setBit(m_movable, column, false);
    m_tableau.removeColumn(column);
    releaseVariable(index);
}

void SolvedForm::addRow(Index index, std::span<const Term> terms, double constant)
{
    const Index row = m_tableau.addRow();
    if (row >= m_basicVariables.size())
        m_basicVariables.resize(2 * std::size_t(row) + 8);
    m_basicVariables[row] = index;
    const SolverVariable* const variables = m_variables.data();
    double value = constant;
    for (const Term& term : terms) {
        const SolverVariable& variable = variables[term.variable];
        value += term.coefficient * variable.value;
        if (variable.isBasic())
            m_tableau.addMultiple(variable.place, term.coefficient);
        else
            m_tableau.add(variable.place, term.coefficient);
    }
    SolverVariable& variable = m_variables[index];
    variable.role = SolverVariable::Role::Basic;
    variable.place = row;
    variable.value = value;
    variable.slope = 0;
}

void SolvedForm::acquireLevel(Index index, double priority)
{
    const auto level = m_priorities.acquire(priority);
    const auto moved = m_priorities.movedLevels();
    if (!moved.empty())
        for (SolverVariable& variable : m_variables)
            if (!variable.isRequired())
                variable.level = moved[variable.level];
    m_variables[index].level = level;
    m_cost.resize(m_priorities.count());
}

SolvedForm::Index SolvedForm::addConstraint(
    std::span<const Term> terms, double constant, Kind kind, double priority)
{
    const Index index = takeVariable(kind);
    if (priority < 1000)
        acquireLevel(index, priority);
    resetSides(index);
    addRow(index, terms, constant);
    return index;
}

// The slope with which a basic variable costs nothing.
void SolvedForm::resetSides(Index index)
{
    SolverVariable& variable = m_variables[index];
    variable.sides = variable.kind == Kind::Equality ? SolverVariable::Neither : SolverVariable::Positive;
}

void SolvedForm::removeConstraint(Index index, const StatedConstraints& constraints)
{
    SolverVariable& variable = m_variables[index];
    if (!variable.isParametric())
        return removeWithoutColumn(index);
    if (!variable.isRequired())
        m_priorities.release(variable.level);
    variable.kind = Kind::Removed;
    variable.level = SolverVariable::requiredLevel;
    setColumn(variable.place, index);
    if (m_redundant.hasFollowers(index)) [[unlikely]]
        return restateFollowers(index, constraints);
    if (!m_sloped.empty())
        checkOptimality(variable.place);
}

void SolvedForm::removeWithoutColumn(Index index)
{
    const SolverVariable& variable = m_variables[index];
    if (variable.isRedundant()) {
        m_redundant.remove(index);
    } else {
        m_isOptimal = m_isOptimal && variable.slope == 0;
        m_tableau.removeRow(variable.place);
    }
    releaseVariable(index);
}

// A column that is free from now on may have something to gain.
void SolvedForm::checkOptimality(Index column) { m_isOptimal = m_isOptimal && isCostFree(column); }

// The first one that can takes the removed column, and then the others may follow from it.
void SolvedForm::restateFollowers(Index source, const StatedConstraints& constraints)
{
    m_redundant.takeFollowers(source, m_followers);
    for (const Index follower : m_followers)
        restate(follower, constraints);
    if (m_variables[source].kind == Kind::Removed)
        checkOptimality(m_variables[source].place);
}

void SolvedForm::restate(Index index, const StatedConstraints& constraints)
{
    addRow(index, constraints.terms(index), constraints[index].constant);
    if (!exchangeWithFreeColumn(index))
        dropRow(index);
}

bool SolvedForm::isDetermined(Index row)
{
    bool isMovable = false;
    m_tableau.forEachInRow(row, m_movable,
        [&](Index, double value) { isMovable = isMovable || std::abs(value) > smallestPivot; });
    return !isMovable;
}

void SolvedForm::dropRow(Index index)
{
    SolverVariable& variable = m_variables[index];
    m_redundant.makeRoom(m_variables.capacity());
    m_tableau.forEachInRow(variable.place, [&](Index column, double value) {
        if (std::abs(value) > smallestPivot)
            m_redundant.addSource(index, m_parametricVariables[column], value);
    });
    m_tableau.removeRow(variable.place);
    variable.role = SolverVariable::Role::Redundant;
}

void SolvedForm::shiftConstraint(Index index, double difference)
{
    SolverVariable& variable = m_variables[index];
    if (!variable.isParametric()) {
        variable.value += difference;
        check(variable, index);
        return;
    }
    if (m_redundant.hasFollowers(index)) [[unlikely]]
        shiftFollowers(index, difference);
    variable.value = difference; // which moving the column takes back to 0
    moveColumn(variable.place, -difference);
}

void SolvedForm::shiftFollowers(Index source, double difference)
{
    m_redundant.forEachFollower(source, [&](Index equation, double factor) {
        m_variables[equation].value -= factor * difference;
        check(m_variables[equation], equation);
    });
}

void SolvedForm::widenTolerance(double magnitude)
{
    m_tolerance = std::max(m_tolerance, 1e-12 * std::abs(magnitude));
}

bool SolvedForm::isCostFree(Index column)
{
    computeCost(column, 1, m_cost.data());
    return std::all_of(
        m_cost.begin(), m_cost.end(), [](double part) { return std::abs(part) <= smallestPivot; });
}

// Prefers a column that no other row shares, because then nothing else changes; next, large cells.
SolvedForm::Index SolvedForm::freeColumn(Index row)
{
    Index best = noColumn;
    double bestSize = smallestPivot;
    m_tableau.forEachInRow(row, m_free, [&](Index column, double value) {
        double size = std::abs(value);
        if (size <= smallestPivot)
            return;
        if (m_variables[m_parametricVariables[column]].kind == Kind::Removed)
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

void SolvedForm::listInfeasible(SolverVariable& variable, Index index)
{
    variable.isListedInfeasible = true;
    (variable.isRequired() ? m_requiredInfeasible : m_weakInfeasible).push_back(index);
}

void SolvedForm::moveColumn(Index column, double distance)
{
    ++m_movesSinceRebuild;
    SolverVariable* const variables = m_variables.data();
    const Index* const basicVariables = m_basicVariables.data();
    Index* moved = m_moved.data() + m_movedCount;
    m_tableau.forEachInColumn(column, [=, this, &moved](std::size_t row, double value) {
        const Index index = basicVariables[row];
        SolverVariable& variable = variables[index];
        variable.value += value * distance;
        if (variable.sides != SolverVariable::Both)
            check(variable, index);
        else if (!std::exchange(variable.isListedMoved, true))
            *moved++ = index;
    });
    const Index index = m_parametricVariables[column];
    SolverVariable& variable = variables[index];
    variable.value += distance;
    if (variable.kind == Kind::External && !std::exchange(variable.isListedMoved, true))
        *moved++ = index;
    m_movedCount = std::size_t(moved - m_moved.data());
}

void SolvedForm::reserve(std::size_t variables, std::size_t constraints)
{
    m_tableau.reserve(Index(variables), Index(constraints));
    makeRoom(variables + constraints + 1);
    m_moved.resize(std::max(variables, m_moved.size()));
    m_parametricVariables.resize(std::max(variables, m_parametricVariables.size()));
    m_basicVariables.resize(std::max(constraints, m_basicVariables.size()));
}

void SolvedForm::setSlope(Index index, int slope)
{
    SolverVariable& variable = m_variables[index];
    if (slope != 0 && variable.slope == 0) {
        variable.slopedIndex = Index(m_sloped.size());
        m_sloped.push_back(index);
    } else if (slope == 0 && variable.slope != 0) {
        m_sloped[variable.slopedIndex] = m_sloped.back();
        m_variables[m_sloped.back()].slopedIndex = variable.slopedIndex;
        m_sloped.pop_back();
    }
    variable.slope = static_cast<signed char>(slope);
}

void SolvedForm::setSides(Index index, Sides sides)
{
    SolverVariable& variable = m_variables[index];
    variable.sides = sides;
    setSlope(index, variable.slopeOn(sides));
}

void SolvedForm::leaveBasis(Index index, Index column)
{
    SolverVariable& variable = m_variables[index];
    if (variable.slope != 0)
        setSlope(index, 0);
    variable.role = SolverVariable::Role::Parametric;
    variable.place = column;
    variable.value = 0;
    setColumn(column, index);
}

void SolvedForm::pivot(Index row, Index column, int direction)
{
    ++m_movesSinceRebuild;
    m_tableau.pivot(row, column);
    const Index entering = m_parametricVariables[column];
    leaveBasis(m_basicVariables[row], column);
    m_basicVariables[row] = entering;
    SolverVariable& variable = m_variables[entering];
    variable.role = SolverVariable::Role::Basic;
    variable.place = row;
    if (variable.kind == Kind::Removed) {
        m_tableau.removeRow(row);
        releaseVariable(entering);
    } else if (variable.kind != Kind::External) {
        setSides(entering, direction > 0 ? SolverVariable::Positive : SolverVariable::Negative);
    }
}

void SolvedForm::exchange(Index row, Index column, int direction)
{
    const Index leaving = m_basicVariables[row];
    moveColumn(column, -m_variables[leaving].value / m_tableau.cell(row, column));
    pivot(row, column, direction);
}

bool SolvedForm::exchangeWithFreeColumn(Index index)
{
    const Index row = m_variables[index].place;
    const Index column = freeColumn(row);
    if (column == noColumn) {
        m_tableau.closeRow(row);
        check(m_variables[index], index);
        return false;
    }
    exchange(row, column, 1);
    return true;
}

void SolvedForm::exchangeNew(Index index)
{
    const Index row = m_variables[index].place;
    const Index column = freeColumn(row);
    const bool isRequired = m_variables[index].isRequired();
    if (column == noColumn) {
        m_tableau.closeRow(row);
        check(m_variables[index], index);
        if (isRequired && !m_requiredInfeasible.empty())
            save();
        return;
    }
    const double distance = -m_variables[index].value / m_tableau.cell(row, column);
    moveColumn(column, distance);
    if (isRequired && !m_requiredInfeasible.empty()) {
        moveColumn(column, -distance);
        save();
        moveColumn(column, distance);
    }
    const Index entering = m_parametricVariables[column];
    if (m_variables[entering].kind != Kind::Removed) {
        pivot(row, column, 1);
        return;
    }
    m_tableau.pivotAway(row, column);
    leaveBasis(index, column);
    releaseVariable(entering);
}
