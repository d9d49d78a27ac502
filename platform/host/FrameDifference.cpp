#include "platform/host/FrameDifference.h"

#include <algorithm>

namespace {

bool areStructuresEqual(const FrameList& first, const FrameList& second)
{
    return std::equal(first.items.begin(), first.items.end(), second.items.begin(), second.items.end(),
        [](const FrameItem& a, const FrameItem& b) {
            return a.layer == b.layer && a.subtreeEnd == b.subtreeEnd;
        });
}

} // namespace

void FrameDifference::compare(const FrameList& previous, const FrameList& next)
{
    const bool knowsPrevious = m_comparedList == previous.history.id;
    m_comparedList = next.history.id;
    if (knowsPrevious && next.history.follows(previous.history)) {
        compareChangedItems(previous, next);
        return;
    }
    m_isPartial = false;
    m_items.assign(next.items.size(), Item {});
    m_sameStructure = areStructuresEqual(previous, next);
    match(previous, next);
    findParents(next);
    compareItems(previous, next);
}

void FrameDifference::compareChangedItems(const FrameList& previous, const FrameList& next)
{
    forgetChanges();
    m_isPartial = true;
    m_sameStructure = true;
    for (const int index : next.history.changedItems) {
        Item& item = m_items[std::size_t(index)];
        if (compareItem(previous.items[std::size_t(index)], next.items[std::size_t(index)], item))
            continue;
        m_changedItems.push_back(index);
        if (!item.transformEqual)
            for (int below = index; below < m_subtreeEnds[std::size_t(index)]; ++below)
                m_items[std::size_t(below)].moved = true;
    }
}

// What the last comparison found becomes the same as before.
void FrameDifference::forgetChanges()
{
    if (m_isPartial) {
        for (const int index : m_changedItems) {
            Item& item = m_items[std::size_t(index)];
            if (!item.transformEqual)
                for (int below = index; below < m_subtreeEnds[std::size_t(index)]; ++below)
                    m_items[std::size_t(below)].moved = false;
            item = { .previous = index, .parent = item.parent };
        }
    } else {
        for (int index = 0; index < int(m_items.size()); ++index)
            m_items[std::size_t(index)] = { .previous = index, .parent = m_items[std::size_t(index)].parent };
    }
    m_changedItems.clear();
}

void FrameDifference::match(const FrameList& previous, const FrameList& next)
{
    const int count = static_cast<int>(next.items.size());
    if (m_sameStructure) {
        for (int index = 0; index < count; ++index)
            m_items[std::size_t(index)].previous = index;
        return;
    }
    m_previousIndices.clear();
    for (std::size_t index = 0; index < previous.items.size(); ++index)
        m_previousIndices.emplace(previous.items[index].layer, static_cast<int>(index));
    for (int index = 0; index < count; ++index) {
        // Each previous item serves once: a layer that were listed twice would otherwise share its nodes.
        const auto found = m_previousIndices.find(next.items[std::size_t(index)].layer);
        if (found == m_previousIndices.end())
            continue;
        m_items[std::size_t(index)].previous = found->second;
        m_previousIndices.erase(found);
    }
}

void FrameDifference::findParents(const FrameList& next)
{
    const int count = static_cast<int>(next.items.size());
    m_subtreeEnds.resize(next.items.size());
    int parent = None;
    for (int index = 0; index < count; ++index) {
        m_subtreeEnds[std::size_t(index)] = next.items[std::size_t(index)].subtreeEnd;
        while (parent != None && m_subtreeEnds[std::size_t(parent)] <= index)
            parent = m_items[std::size_t(parent)].parent;
        m_items[std::size_t(index)].parent = parent;
        parent = index;
    }
}

void FrameDifference::compareItems(const FrameList& previous, const FrameList& next)
{
    const bool sameScale = previous.scale == next.scale;
    m_changedItems.clear();
    for (int index = 0; index < int(next.items.size()); ++index) {
        Item& item = m_items[std::size_t(index)];
        bool same = false;
        if (item.previous != None) {
            same = compareItem(
                previous.items[std::size_t(item.previous)], next.items[std::size_t(index)], item);
            item.lengthEqual = next.items[std::size_t(index)].subtreeEnd - index
                == previous.items[std::size_t(item.previous)].subtreeEnd - item.previous;
            item.contentEqual = item.contentEqual && sameScale;
            const bool follows = index > 0 && m_items[std::size_t(index) - 1].previous == item.previous - 1;
            same = same && follows && item.lengthEqual && sameScale;
        } else {
            item.contentEqual = item.transformEqual = item.opacityEqual = item.lengthEqual = false;
        }
        const bool parentMoved = item.parent != None && m_items[std::size_t(item.parent)].moved;
        item.moved = parentMoved || !item.transformEqual;
        if (!same)
            m_changedItems.push_back(index);
    }
}

// Answers whether the layer looks the same in the same place.
bool FrameDifference::compareItem(const FrameItem& before, const FrameItem& now, Item& item)
{
    item.contentEqual = now.drawsSame(before);
    item.transformEqual = now.transform == before.transform;
    item.opacityEqual = now.opacity == before.opacity;
    return item.contentEqual && item.transformEqual && item.opacityEqual;
}

bool FrameDifference::isSubtreeSteady(int index) const
{
    const Item& item = m_items[std::size_t(index)];
    const auto inside = std::upper_bound(m_changedItems.begin(), m_changedItems.end(), index);
    const bool changesInside = inside != m_changedItems.end() && *inside < m_subtreeEnds[std::size_t(index)];
    return item.contentEqual && item.lengthEqual && !changesInside;
}
