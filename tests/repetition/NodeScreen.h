// A screen of the host whose scene-graph nodes follow the frames and are never drawn: what a renderer would
// get.
//
// Drawing them ten thousand times would show nothing of what is left behind that they do not.
#pragma once

#include "platform/host/NodeTree.h"
#include "tests/platform/host/SceneStage.h"

class NodeScreen {
public:
    void show(const FrameList& list)
    {
        m_itemsShown += static_cast<std::int64_t>(
            list.history.follows(m_shown) ? list.history.changedItems.size() : list.items.size());
        m_shown = list.history;
        m_nodes.update(list, 1);
        ++m_framesShown;
    }

    std::int64_t nodeCount() const { return nodesBelow(m_nodes); }
    std::int64_t textureCount() const { return m_nodes.textureCount(); }

    // What has been done in all.
    std::int64_t framesShown() const { return m_framesShown; }
    std::int64_t itemsShown() const { return m_itemsShown; } // new or changed drawing steps
    std::int64_t uploads() const { return m_nodes.uploadCount(); }

private:
    static std::int64_t nodesBelow(const QSGNode& node)
    {
        std::int64_t count = 0;
        for (const QSGNode* child = node.firstChild(); child; child = child->nextSibling())
            count += 1 + nodesBelow(*child);
        return count;
    }

    SceneStage m_stage { { 8, 8 } }; // a window whose scene graph is alive
    NodeTree m_nodes { m_stage.window() };
    FrameHistory m_shown;
    std::int64_t m_framesShown = 0;
    std::int64_t m_itemsShown = 0;
};
