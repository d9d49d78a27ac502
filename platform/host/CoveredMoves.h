// Finds layers whose drawing has moved wholly below something opaque, or out of a clip.
//
// The software renderer draws nothing of what is covered, and with that forgets to draw again where it was
// before: its pixels would stay there. A node that is taken out of the tree it does not forget, so what is
// found here is to be taken out and put in again.
#pragma once

#include "platform/host/FrameDifference.h"
#include "platform/host/LayerNode.h"

class CoveredMoves {
public:
    // The items whose own drawing lies wholly below what later ones draw, or out of a clip, of those in the
    // subtrees whose first items have moved, in order. The nodes are those of the items, null for what is not
    // drawn.
    const std::vector<int>& find(const FrameList& list, const FrameDifference& difference,
        const std::vector<LayerNode*>& nodes, const std::vector<int>& moved);

private:
    struct Area {
        int index;
        int order; // of what one item draws; later ones are drawn above
        QRect rect; // on the screen
    };

    void collectMoved(const std::vector<int>& moved);
    void collectOpaque(int from);
    bool isCovered(const Area& area) const;
    bool drawsBelowOpaque(const Area& area) const;
    CGRect onScreen(int index, CGRect rect) const;
    bool isSeenThrough(int index) const;

    const FrameList* m_list = nullptr; // these three only while finding
    const FrameDifference* m_difference = nullptr;
    const std::vector<LayerNode*>* m_nodes = nullptr;
    std::vector<Area> m_moved; // one for all that an item draws
    std::vector<Area> m_opaque; // that meet what has moved
    QRect m_reach; // around all that has moved
    std::vector<int> m_found;
};
