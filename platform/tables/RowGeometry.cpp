#include "platform/tables/RowGeometry.h"

#include <algorithm>
#include <cmath>

RowGeometry::RowGeometry(int rowCount, const std::function<double(int row)>& heightOfRow)
{
    m_tops.reserve(static_cast<std::size_t>(rowCount) + 1);
    for (int row = 0; row < rowCount; ++row) {
        const double height = heightOfRow(row);
        m_tops.push_back(m_tops.back() + (height > 0 && std::isfinite(height) ? height : 0));
    }
}

int RowGeometry::rowAt(double y) const
{
    if (!(y >= 0 && y < totalHeight()))
        return -1;
    const auto below = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    return static_cast<int>(below - m_tops.begin()) - 1;
}

RowGeometry::Span RowGeometry::rowsBetween(double top, double bottom) const
{
    if (!(bottom > top))
        return {};
    const auto first = std::upper_bound(m_tops.begin() + 1, m_tops.end(), top) - m_tops.begin() - 1;
    const auto last = std::lower_bound(m_tops.begin(), m_tops.end() - 1, bottom) - m_tops.begin();
    return first < last ? Span { static_cast<int>(first), static_cast<int>(last) } : Span {};
}
