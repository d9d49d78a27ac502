#include "platform/host/FrameDifference.h"

#include <algorithm>

namespace {

bool areContentsEqual(const FrameItem& first, const FrameItem& second)
{
    return first.bounds == second.bounds && first.cornerRadius == second.cornerRadius
        && first.clipsToBounds == second.clipsToBounds && first.backgroundColor == second.backgroundColor
        && first.content == second.content;
}

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
    m_items.assign(next.items.size() + 1, Item {});
    m_sameStructure = areStructuresEqual(previous, next);
    match(previous, next);
    findParents(next);
    compareItems(previous, next);
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
    for (std::size_t index = 0; index < next.items.size(); ++index) {
        Item& item = m_items[index];
        bool follows = false;
        if (item.previous != None) {
            const FrameItem& now = next.items[index];
            const FrameItem& before = previous.items[std::size_t(item.previous)];
            item.contentEqual = sameScale && areContentsEqual(now, before);
            item.transformEqual = now.transform == before.transform;
            item.opacityEqual = now.opacity == before.opacity;
            item.lengthEqual = now.subtreeEnd - int(index) == before.subtreeEnd - item.previous;
            follows = index > 0 && m_items[index - 1].previous == item.previous - 1;
        }
        const bool parentMoved = item.parent != None && m_items[std::size_t(item.parent)].moved;
        item.moved = parentMoved || !item.transformEqual;
        const bool same
            = follows && item.contentEqual && item.transformEqual && item.opacityEqual && item.lengthEqual;
        m_items[index + 1].changesBefore = item.changesBefore + (same ? 0 : 1);
    }
}

bool FrameDifference::isSubtreeSteady(int index) const
{
    const Item& item = m_items[std::size_t(index)];
    const Item& end = m_items[std::size_t(m_subtreeEnds[std::size_t(index)])];
    const int changesInside = end.changesBefore - m_items[std::size_t(index) + 1].changesBefore;
    return item.contentEqual && item.lengthEqual && changesInside == 0;
}
