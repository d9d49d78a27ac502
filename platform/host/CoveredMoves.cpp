#include "platform/host/CoveredMoves.h"

#include <QRegion>

#include <algorithm>

namespace {

// As the renderer counts pixels: those that the rectangle covers wholly.
QRect innerPixels(const CGRect& rect)
{
    const QPoint begin(qCeil(rect.left()), qCeil(rect.top()));
    const QPoint end(qFloor(rect.right()) - 1, qFloor(rect.bottom()) - 1);
    return { begin, end };
}

} // namespace

const std::vector<int>& CoveredMoves::find(const FrameList& list, const FrameDifference& difference,
    const std::vector<LayerNode*>& nodes, const std::vector<int>& moved)
{
    m_list = &list;
    m_difference = &difference;
    m_nodes = &nodes;
    m_found.clear();
    collectMoved(moved);
    if (!m_moved.empty())
        collectOpaque(m_moved.front().index);
    for (const Area& area : m_moved)
        if (area.rect.isEmpty() || drawsBelowOpaque(area))
            m_found.push_back(area.index);
    m_list = nullptr;
    m_difference = nullptr;
    m_nodes = nullptr;
    return m_found;
}

void CoveredMoves::collectMoved(const std::vector<int>& moved)
{
    m_moved.clear();
    m_opaque.clear();
    m_reach = {};
    int end = 0; // of the items that were looked at
    for (const int first : moved) {
        const int subtreeEnd = m_list->items[std::size_t(first)].subtreeEnd;
        for (int index = std::max(first, end); index < subtreeEnd; ++index) {
            const LayerNode* const node = (*m_nodes)[std::size_t(index)];
            if (!node)
                continue;
            const CGRect drawn = node->drawnRect();
            if (drawn.isEmpty())
                continue;
            const QRect area = onScreen(index, drawn).toAlignedRect();
            m_moved.push_back({ index, 0, area });
            m_reach |= area;
        }
        end = std::max(end, subtreeEnd);
    }
}

void CoveredMoves::collectOpaque(int from)
{
    const int count = int(m_list->items.size());
    for (int index = from; index < count; ++index) {
        const LayerNode* const node = (*m_nodes)[std::size_t(index)];
        if (!node)
            continue;
        int order = 0;
        node->forEachDrawing([&](const CGRect& rect, bool isOpaque) {
            const QRect area = isOpaque ? innerPixels(onScreen(index, rect)) : QRect();
            if (area.intersects(m_reach) && !isSeenThrough(index))
                m_opaque.push_back({ index, order, area });
            ++order;
        });
        if (const auto clip = node->clipRect(); clip && !onScreen(index, *clip).intersects(m_reach))
            index = m_list->items[std::size_t(index)].subtreeEnd - 1;
    }
}

// Whether something that the item draws is covered wholly.
bool CoveredMoves::drawsBelowOpaque(const Area& all) const
{
    const bool meetsOpaque = std::any_of(m_opaque.begin(), m_opaque.end(),
        [&](const Area& opaque) { return opaque.index >= all.index && opaque.rect.intersects(all.rect); });
    if (!meetsOpaque)
        return false;
    bool isAnyCovered = false;
    Area area { all.index, 0, {} };
    (*m_nodes)[std::size_t(all.index)]->forEachDrawing([&](const CGRect& rect, bool) {
        area.rect = onScreen(area.index, rect).toAlignedRect();
        isAnyCovered = isAnyCovered || (!area.rect.isEmpty() && isCovered(area));
        ++area.order;
    });
    return isAnyCovered;
}

bool CoveredMoves::isCovered(const Area& area) const
{
    const auto isBelow = [&](const Area& opaque) {
        const bool isLater
            = opaque.index > area.index || (opaque.index == area.index && opaque.order > area.order);
        return isLater && opaque.rect.intersects(area.rect);
    };
    if (std::none_of(m_opaque.begin(), m_opaque.end(), isBelow))
        return false;
    QRegion uncovered(area.rect);
    for (const Area& opaque : m_opaque)
        if (isBelow(opaque))
            uncovered -= opaque.rect;
    return uncovered.isEmpty();
}

// A rectangle in an item's coordinates, cut by all that clips it.
CGRect CoveredMoves::onScreen(int index, CGRect rect) const
{
    while (true) {
        const LayerNode& node = *(*m_nodes)[std::size_t(index)];
        if (const auto clip = node.clipRect())
            rect = rect.intersected(*clip);
        rect = node.matrix().mapRect(rect);
        const int parent = m_difference->parentIndex(index);
        if (parent == FrameDifference::None)
            return rect;
        index = parent;
    }
}

bool CoveredMoves::isSeenThrough(int index) const
{
    for (; index != FrameDifference::None; index = m_difference->parentIndex(index))
        if (m_list->items[std::size_t(index)].opacity < 1)
            return true;
    return false;
}
