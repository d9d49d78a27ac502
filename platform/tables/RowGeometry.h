// Where the rows of a table lie: their tops as running sums, so that a row is found among a hundred
// thousand in a few steps.
#pragma once

#include <functional>
#include <vector>

class RowGeometry {
public:
    RowGeometry() = default;
    // Asks for the height of each row, in points; a height below 0 or not finite counts as 0.
    RowGeometry(int rowCount, const std::function<double(int row)>& heightOfRow);

    int rowCount() const { return static_cast<int>(m_tops.size()) - 1; }
    double totalHeight() const { return m_tops.back(); }
    double top(int row) const { return m_tops[static_cast<std::size_t>(row)]; }
    double height(int row) const { return top(row + 1) - top(row); }

    // The row at a height, or -1 above the first and below the last.
    int rowAt(double y) const;

    // The rows that show between two heights, as [first, last); empty when there are none.
    struct Span {
        int first = 0;
        int last = 0;
        bool contains(int row) const { return row >= first && row < last; }
        bool operator==(const Span&) const = default;
    };
    Span rowsBetween(double top, double bottom) const;

private:
    std::vector<double> m_tops { 0 }; // one more than there are rows
};
