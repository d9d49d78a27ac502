// What changed from one frame list to the next, told for each item of the next one.
//
// Items are matched by their layers, wherever in the tree they are. A subtree is steady when everything
// in it is as it was, the transform and the opacity of its first item aside: it can have moved or faded,
// but as one rigid thing. An object is kept and used again for each frame, so that a frame allocates nothing.
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
    // Whether the layer lies elsewhere on the screen than before, or was not there.
    bool hasMoved(int index) const { return m_items[std::size_t(index)].moved; }

private:
    struct Item {
        int previous = None;
        int parent = None;
        int changesBefore = 0; // how many of the items before this one are not as they were
        bool contentEqual = false;
        bool transformEqual = false;
        bool opacityEqual = false;
        bool lengthEqual = false; // the subtree has as many items as before
        bool moved = false;
    };

    void match(const FrameList& previous, const FrameList& next);
    void findParents(const FrameList& next);
    void compareItems(const FrameList& previous, const FrameList& next);

    std::vector<Item> m_items; // one more than the list has, for the last sum
    std::vector<int> m_subtreeEnds;
    std::unordered_map<LayerID, int> m_previousIndices;
    bool m_sameStructure = false;
};
