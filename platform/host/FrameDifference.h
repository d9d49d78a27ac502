// What changed from one frame list to the next, told for each item of the next one.
//
// Items are matched by their layers, wherever in the tree they are. A subtree is steady when everything
// in it is as it was, the transform and the opacity of its first item aside: it can have moved or faded,
// but as one rigid thing. An object is kept and used again for each frame, so that a frame allocates nothing.
// Where the next list says how it follows from the previous one, only what it names is looked at.
#pragma once

#include "platform/layers/FrameList.h"

#include <unordered_map>
#include <vector>

class FrameDifference {
public:
    static constexpr int None = -1;

    // The lists must live while the difference is asked.
    void compare(const FrameList& previous, const FrameList& next);

    // Whether both lists hold the same layers in the same order and nesting.
    bool hasSameStructure() const { return m_sameStructure; }
    // The item of the same layer in the previous list, or None.
    int previousIndex(int index) const { return m_items[std::size_t(index)].previous; }
    // The item that holds the item's layer, or None for the first one.
    int parentIndex(int index) const { return m_items[std::size_t(index)].parent; }
    // Whether what the layer itself draws, and how it clips, is as it was.
    bool isContentEqual(int index) const { return m_items[std::size_t(index)].contentEqual; }
    bool isTransformEqual(int index) const { return m_items[std::size_t(index)].transformEqual; }
    bool isOpacityEqual(int index) const { return m_items[std::size_t(index)].opacityEqual; }
    bool isSubtreeSteady(int index) const;
    // The items that are not as they were, in order.
    const std::vector<int>& changedItems() const { return m_changedItems; }
    // Whether the changed items were all that was looked at: the others are known to be the same.
    bool isPartial() const { return m_isPartial; }
    // Whether the layer lies elsewhere on the screen than before, or was not there.
    bool hasMoved(int index) const { return m_items[std::size_t(index)].moved; }

private:
    struct Item {
        int previous = None;
        int parent = None;
        bool contentEqual = true;
        bool transformEqual = true;
        bool opacityEqual = true;
        bool lengthEqual = true; // the subtree has as many items as before
        bool moved = false;
    };

    void match(const FrameList& previous, const FrameList& next);
    void findParents(const FrameList& next);
    void compareItems(const FrameList& previous, const FrameList& next);
    static bool compareItem(const FrameItem& before, const FrameItem& now, Item& item);
    void compareChangedItems(const FrameList& previous, const FrameList& next);
    void forgetChanges();

    std::vector<Item> m_items;
    std::vector<int> m_subtreeEnds;
    std::vector<int> m_changedItems;
    std::unordered_map<LayerID, int> m_previousIndices;
    std::uint64_t m_comparedList = 0; // the next list of the last comparison
    bool m_sameStructure = false;
    bool m_isPartial = false;
};
