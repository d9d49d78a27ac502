// The rows of the tableau: each basic variable as a sum of parametric ones, which have a column each.
//
// The cells lie in one dense block, and each row and each column has a mask of where it may differ from 0. So
// a cell is found at once while all work costs what is really there, which in layouts is a tenth of the
// block. Knows rows and columns by number and nothing of what they stand for.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

class Tableau {
public:
    using Index = std::uint32_t;
    using Word = std::uint64_t;
    static constexpr Index wordBits = 64;
    // What is nearer to 0 than this is rounding, and taken for 0 when it is come across.
    static constexpr double tiny = 1e-12;

    Index addColumn();
    void removeColumn(Index); // one without cells
    // A new row is open: made by add() and addMultiple(), no column knows of it before closeRow() or pivot().
    // There is one at a time.
    Index addRow();
    void add(Index column, double value) { m_openCells[column] += value, setBit(m_openMask, column); }
    void addMultiple(Index source, double factor);
    void closeRow(Index);
    void removeRow(Index); // one that is closed
    void clear(); // keeps the memory
    void reserve(Index columns, Index rows);

    double cell(Index row, Index column) const { return m_cells[std::size_t(row) * m_stride + column]; }
    // The variable of the row and that of the column change roles in all rows.
    void pivot(Index row, Index column);
    // The same for an open row when the column's variable is of no more use: the row goes.
    void pivotAway(Index row, Index column);

    Index columnWords() const { return m_columnWords; } // how many words a set of columns has
    bool isColumnEmpty(Index) const;
    // Hands (row, value) to the visitor, rows in order. A value may be 0 now and then.
    template <typename Visitor> void forEachInColumn(Index column, Visitor visit) const;
    // Hands (column, value) to the visitor, columns in order, for the columns of the set.
    template <typename Visitor> void forEachInRow(Index row, const std::vector<Word>& columns, Visitor visit);
    template <typename Visitor> void forEachInRow(Index row, Visitor visit) const;
    template <typename Visitor> static void forEachBit(const Word* words, Index count, Visitor visit);

private:
    struct Entry {
        double value;
        Index column;
    };
    static Word bit(Index index) { return Word(1) << (index % wordBits); }
    static void setBit(Word* words, Index index) { words[index / wordBits] |= bit(index); }
    static void clearBit(Word* words, Index index) { words[index / wordBits] &= ~bit(index); }
    double* cells(Index row) { return m_cells.get() + std::size_t(row) * m_stride; }
    Word* rowMask(Index row) { return m_rowMasks.data() + std::size_t(row) * m_columnWords; }
    Word* columnMask(Index column) { return m_columnMasks.data() + std::size_t(column) * m_rowWords; }
    void erase(Index row, Index column)
    {
        cells(row)[column] = 0;
        clearBit(rowMask(row), column);
        clearBit(columnMask(column), row);
    }
    void moveCells(Index rowCapacity, Index stride);
    void setStride(Index);
    void setRowCapacity(Index);
    Entry* collectPivotRow(Index row, Index column);
    void substitute(Index row, Index column, double inverse, const Entry* end);

    std::unique_ptr<double[]> m_cells; // of the rows that have been in use
    double* m_openCells = nullptr;
    Word* m_openMask = nullptr;
    std::vector<Word> m_rowMasks; // of columns, by row
    std::vector<Word> m_columnMasks; // of rows, by column
    std::vector<Entry> m_entries; // of the row that is being pivoted
    std::vector<Index> m_freeRows;
    std::vector<Index> m_freeColumns;
    Index m_stride = 0;
    Index m_columnWords = 0;
    Index m_rowWords = 0;
    Index m_rowCapacity = 0;
    Index m_rowCount = 0; // free ones included
    Index m_columnCount = 0;
};

template <typename Visitor> inline void Tableau::forEachBit(const Word* words, Index count, Visitor visit)
{
    for (Index word = 0; word < count; ++word)
        for (Word bits = words[word]; bits != 0; bits &= bits - 1)
            visit(word * wordBits + Index(std::countr_zero(bits)));
}

template <typename Visitor> inline void Tableau::forEachInColumn(Index column, Visitor visit) const
{
    const Word* const mask = m_columnMasks.data() + std::size_t(column) * m_rowWords;
    const double* const cells = m_cells.get() + column;
    const std::size_t stride = m_stride;
    for (std::size_t word = 0; word < m_rowWords; ++word)
        for (Word bits = mask[word]; bits != 0; bits &= bits - 1) {
            const std::size_t row = word * wordBits + std::size_t(std::countr_zero(bits));
            visit(row, cells[row * stride]);
        }
}

template <typename Visitor>
inline void Tableau::forEachInRow(Index row, const std::vector<Word>& columns, Visitor visit)
{
    const Word* const mask = rowMask(row);
    const double* const values = cells(row);
    for (Index word = 0; word < m_columnWords; ++word)
        for (Word bits = mask[word] & columns[word]; bits != 0; bits &= bits - 1) {
            const Index column = word * wordBits + Index(std::countr_zero(bits));
            visit(column, values[column]);
        }
}

template <typename Visitor> inline void Tableau::forEachInRow(Index row, Visitor visit) const
{
    const double* const values = m_cells.get() + std::size_t(row) * m_stride;
    const Word* const mask = m_rowMasks.data() + std::size_t(row) * m_columnWords;
    forEachBit(mask, m_columnWords, [&](Index column) { visit(column, values[column]); });
}

inline void Tableau::addMultiple(Index source, double factor)
{
    const Word* const sourceMask = rowMask(source);
    const double* const values = cells(source);
    for (Index word = 0; word < m_columnWords; ++word) {
        Word bits = sourceMask[word];
        m_openMask[word] |= bits;
        for (; bits != 0; bits &= bits - 1) {
            const std::size_t column = std::size_t(word) * wordBits + std::size_t(std::countr_zero(bits));
            m_openCells[column] += factor * values[column];
        }
    }
}
