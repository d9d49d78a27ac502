#include "platform/layout/solver/SolverTableau.h"

#include <algorithm>

namespace {

using Index = SolverTableau::Index;
using Word = SolverTableau::Word;

Index wordsFor(Index bits) { return (bits + SolverTableau::wordBits - 1) / SolverTableau::wordBits; }
Word bit(Index index) { return Word(1) << (index % SolverTableau::wordBits); }

Index enlarged(Index size) { return std::max<Index>(24, (size + size / 2 + 7) / 8 * 8); }

// Gives each of the lines in a block more room; what it had comes first.
template <typename Value> void widen(std::vector<Value>& block, Index lines, Index from, Index to)
{
    std::vector<Value> wider(std::size_t(lines) * to);
    for (std::size_t line = 0; line < lines && from > 0; ++line)
        std::copy_n(
            block.begin() + std::ptrdiff_t(line * from), from, wider.begin() + std::ptrdiff_t(line * to));
    block.swap(wider);
}

} // namespace

void SolverTableau::growColumns()
{
    const Index stride = enlarged(m_stride);
    const Index words = wordsFor(stride);
    widen(m_cells, m_rowCapacity, m_stride, stride);
    if (words != m_columnWords)
        widen(m_rowMasks, m_rowCapacity, m_columnWords, words);
    m_stride = stride;
    m_columnWords = words;
    m_entries.resize(stride);
    m_columnMasks.resize(std::size_t(stride) * m_rowWords);
}

void SolverTableau::growRows()
{
    const Index capacity = enlarged(m_rowCapacity);
    const Index words = wordsFor(capacity);
    if (words != m_rowWords)
        widen(m_columnMasks, m_stride, m_rowWords, words);
    m_rowWords = words;
    m_rowCapacity = capacity;
    m_cells.resize(std::size_t(capacity) * m_stride);
    m_rowMasks.resize(std::size_t(capacity) * m_columnWords);
}

Index SolverTableau::addColumn()
{
    if (!m_freeColumns.empty()) {
        const Index column = m_freeColumns.back();
        m_freeColumns.pop_back();
        return column;
    }
    if (m_columnCount == m_stride)
        growColumns();
    return m_columnCount++;
}

void SolverTableau::removeColumn(Index column) { m_freeColumns.push_back(column); }

Index SolverTableau::addRow()
{
    if (!m_freeRows.empty()) {
        const Index row = m_freeRows.back();
        m_freeRows.pop_back();
        return row;
    }
    if (m_rowCount == m_rowCapacity)
        growRows();
    return m_rowCount++;
}

void SolverTableau::removeRow(Index row)
{
    forEachBit(rowMask(row), m_columnWords, [&](Index column) {
        cells(row)[column] = 0;
        columnMask(column)[row / wordBits] &= ~bit(row);
    });
    std::fill_n(rowMask(row), m_columnWords, 0);
    m_freeRows.push_back(row);
}

void SolverTableau::clear()
{
    std::fill(m_cells.begin(), m_cells.end(), 0.0);
    std::fill(m_rowMasks.begin(), m_rowMasks.end(), 0);
    std::fill(m_columnMasks.begin(), m_columnMasks.end(), 0);
    m_freeRows.clear();
    m_freeColumns.clear();
    m_rowCount = 0;
    m_columnCount = 0;
}

void SolverTableau::erase(Index row, Index column)
{
    cells(row)[column] = 0;
    rowMask(row)[column / wordBits] &= ~bit(column);
    columnMask(column)[row / wordBits] &= ~bit(row);
}

bool SolverTableau::isColumnEmpty(Index column)
{
    bool isEmpty = true;
    forEachInColumn(column, [&](Index, double) { isEmpty = false; });
    return isEmpty;
}

bool SolverTableau::isOnlyInRow(Index column, Index row) const
{
    const Word* const mask = m_columnMasks.data() + std::size_t(column) * m_rowWords;
    for (Index word = 0; word < m_rowWords; ++word)
        if (mask[word] != (word == row / wordBits ? bit(row) : 0))
            return false;
    return true;
}

void SolverTableau::add(Index row, Index column, double value)
{
    cells(row)[column] += value;
    rowMask(row)[column / wordBits] |= bit(column);
    columnMask(column)[row / wordBits] |= bit(row);
}

void SolverTableau::addMultiple(Index row, Index source, double factor)
{
    double* const target = cells(row);
    const double* const values = cells(source);
    Word* const mask = rowMask(row);
    const Word* const sourceMask = rowMask(source);
    for (Index word = 0; word < m_columnWords; ++word)
        mask[word] |= sourceMask[word];
    forEachBit(sourceMask, m_columnWords, [&](Index column) {
        target[column] += factor * values[column];
        columnMask(column)[row / wordBits] |= bit(row);
    });
}

// Solves the row for the column's symbol; what it then consists of, that column left out, is in m_entries.
SolverTableau::Entry* SolverTableau::collectPivotRow(Index row, Index column)
{
    double* const values = cells(row);
    const double inverse = 1 / values[column];
    Entry* end = m_entries.data();
    forEachBit(rowMask(row), m_columnWords, [&](Index other) {
        if (other == column)
            return;
        if (std::abs(values[other]) < tiny) {
            erase(row, other);
            return;
        }
        values[other] *= -inverse;
        *end++ = { values[other], other };
    });
    values[column] = inverse;
    return end;
}

void SolverTableau::pivot(Index row, Index column)
{
    const Entry* const begin = m_entries.data();
    const Entry* const end = collectPivotRow(row, column);
    const Word* const pivotMask = rowMask(row);
    const double inverse = cell(row, column);
    forEachInColumn(column, [&](Index other, double factor) {
        if (other == row)
            return;
        double* const values = cells(other);
        values[column] = factor * inverse;
        for (const Entry* entry = begin; entry != end; ++entry)
            values[entry->column] += factor * entry->value;
        Word* const mask = rowMask(other);
        for (Index word = 0; word < m_columnWords; ++word)
            mask[word] |= pivotMask[word];
    });
    const Word* const rows = columnMask(column);
    for (const Entry* entry = begin; entry != end; ++entry) {
        Word* const mask = columnMask(entry->column);
        for (Index word = 0; word < m_rowWords; ++word)
            mask[word] |= rows[word];
    }
}
