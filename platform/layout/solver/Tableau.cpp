#include "platform/layout/solver/Tableau.h"

#include <algorithm>

namespace {

using Index = Tableau::Index;
using Word = Tableau::Word;

Index wordsFor(Index bits) { return (bits + Tableau::wordBits - 1) / Tableau::wordBits; }

Index enlarged(Index size) { return std::max<Index>(32, (size + size / 2 + 7) / 8 * 8); }

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

// Nothing is written to the cells of rows that were never in use; addRow() does that.
void Tableau::moveCells(Index rowCapacity, Index stride)
{
    auto moved = std::make_unique_for_overwrite<double[]>(std::size_t(rowCapacity) * stride);
    for (Index row = 0; row < m_rowCount; ++row) {
        double* const end = std::copy_n(cells(row), m_stride, moved.get() + std::size_t(row) * stride);
        std::fill_n(end, stride - m_stride, 0.0);
    }
    m_cells = std::move(moved);
}

void Tableau::setStride(Index stride)
{
    const Index words = wordsFor(stride);
    moveCells(m_rowCapacity, stride);
    if (words != m_columnWords)
        widen(m_rowMasks, m_rowCapacity, m_columnWords, words);
    m_stride = stride;
    m_columnWords = words;
    m_entries.resize(stride);
    m_freeColumns.reserve(stride);
    m_columnMasks.resize(std::size_t(stride) * m_rowWords);
}

void Tableau::setRowCapacity(Index capacity)
{
    const Index words = wordsFor(capacity);
    moveCells(capacity, m_stride);
    if (words != m_rowWords)
        widen(m_columnMasks, m_stride, m_rowWords, words);
    m_rowWords = words;
    m_rowCapacity = capacity;
    m_freeRows.reserve(capacity);
    m_rowMasks.resize(std::size_t(capacity) * m_columnWords);
}

void Tableau::reserve(Index columns, Index rows)
{
    // Exactly so much the first time, later more: a caller that asks twice is likely to ask again.
    if (columns > m_stride)
        setStride(m_stride == 0 ? (columns + 7) / 8 * 8 : std::max(columns, enlarged(m_stride)));
    if (rows > m_rowCapacity)
        setRowCapacity(m_rowCapacity == 0 ? rows : std::max(rows, enlarged(m_rowCapacity)));
}

Index Tableau::addColumn()
{
    if (!m_freeColumns.empty()) {
        const Index column = m_freeColumns.back();
        m_freeColumns.pop_back();
        return column;
    }
    if (m_columnCount == m_stride)
        setStride(enlarged(m_stride));
    return m_columnCount++;
}

void Tableau::removeColumn(Index column) { m_freeColumns.push_back(column); }

Index Tableau::addRow()
{
    Index row = m_rowCount;
    if (!m_freeRows.empty()) {
        row = m_freeRows.back();
        m_freeRows.pop_back();
    } else {
        if (m_rowCount == m_rowCapacity)
            setRowCapacity(enlarged(m_rowCapacity));
        std::fill_n(cells(m_rowCount++), m_stride, 0.0);
    }
    m_openCells = cells(row);
    m_openMask = rowMask(row);
    return row;
}

void Tableau::removeRow(Index row)
{
    double* const values = cells(row);
    const Word others = ~bit(row);
    Word* const masks = m_columnMasks.data() + row / wordBits;
    forEachBit(rowMask(row), m_columnWords, [=, stride = m_rowWords](Index column) {
        values[column] = 0;
        masks[column * stride] &= others;
    });
    std::fill_n(rowMask(row), m_columnWords, 0);
    m_freeRows.push_back(row);
}

void Tableau::clear()
{
    std::fill(m_rowMasks.begin(), m_rowMasks.end(), 0);
    std::fill(m_columnMasks.begin(), m_columnMasks.end(), 0);
    m_freeRows.clear();
    m_freeColumns.clear();
    m_rowCount = 0;
    m_columnCount = 0;
}

bool Tableau::isColumnEmpty(Index column) const
{
    const Word* const mask = m_columnMasks.data() + std::size_t(column) * m_rowWords;
    return std::all_of(mask, mask + m_rowWords, [](Word word) { return word == 0; });
}

void Tableau::closeRow(Index row)
{
    double* const values = cells(row);
    forEachBit(rowMask(row), m_columnWords, [&](Index column) {
        if (std::abs(values[column]) >= tiny) {
            setBit(columnMask(column), row);
        } else {
            values[column] = 0;
            clearBit(rowMask(row), column);
        }
    });
}

// Solves the row for the column's variable; what it then consists of, that column left out, is in m_entries.
Tableau::Entry* Tableau::collectPivotRow(Index row, Index column)
{
    double* const values = cells(row);
    const double inverse = 1 / values[column];
    Entry* end = m_entries.data();
    clearBit(rowMask(row), column);
    forEachBit(rowMask(row), m_columnWords, [&](Index other) {
        const double value = values[other];
        if (std::abs(value) < tiny) {
            erase(row, other);
            return;
        }
        values[other] = -inverse * value;
        *end++ = { values[other], other };
    });
    values[column] = inverse;
    setBit(rowMask(row), column);
    return end;
}

void Tableau::pivot(Index row, Index column)
{
    Entry* const end = collectPivotRow(row, column);
    setBit(columnMask(column), row); // it was not there if the row was open
    substitute(row, column, cell(row, column), end);
}

void Tableau::pivotAway(Index row, Index column)
{
    double* const values = cells(row);
    const double inverse = 1 / values[column];
    values[column] = 0;
    clearBit(rowMask(row), column);
    Entry* end = m_entries.data();
    forEachBit(rowMask(row), m_columnWords, [values, inverse, &end](Index other) {
        const double value = values[other];
        values[other] = 0;
        if (std::abs(value) >= tiny)
            *end++ = { -inverse * value, other };
    });
    substitute(row, column, inverse, end);
    std::fill_n(rowMask(row), m_columnWords, 0);
    m_freeRows.push_back(row);
}

// Puts what the pivot row consists of into all other rows that have the column.
void Tableau::substitute(Index row, Index column, double inverse, const Entry* end)
{
    const Entry* const begin = m_entries.data();
    const Word* const rows = columnMask(column);
    for (const Entry* entry = begin; entry != end; ++entry) {
        Word* const mask = columnMask(entry->column);
        for (Index word = 0; word < m_rowWords; ++word)
            mask[word] |= rows[word];
    }
    const Word* const pivotMask = rowMask(row);
    double* const block = m_cells.get();
    forEachBit(rows, m_rowWords, [&, block, stride = std::size_t(m_stride)](Index other) {
        if (other == row)
            return;
        double* const values = block + other * stride;
        const double factor = values[column];
        values[column] = factor * inverse;
        Word* const mask = rowMask(other);
        for (Index word = 0; word < m_columnWords; ++word)
            mask[word] |= pivotMask[word];
        for (const Entry* entry = begin; entry != end; ++entry) {
            double& value = values[entry->column];
            value += factor * entry->value;
            if (std::abs(value) < tiny)
                erase(other, entry->column);
        }
    });
}
