// The scene-graph nodes of a screen, kept equal to a frame list.
//
// The tree is itself the root node, so that the scene graph, which may throw its nodes away at any time,
// throws away with them all that belongs to them. Lives in the scene graph's thread.
#pragma once

#include "platform/host/CoveredMoves.h"
#include "platform/host/FlatteningPlan.h"
#include "platform/host/FrameDifference.h"
#include "platform/host/LayerNode.h"
#include "platform/host/TextureCache.h"

class NodeTree final : public QSGTransformNode {
public:
    explicit NodeTree(QQuickWindow& window,
        FlatteningPlan::FlattensMoving flattensMoving = FlatteningPlan::FlattensMoving::Yes);
    ~NodeTree() override;

    // Makes the nodes show the list; Qt counts devicePixelRatio of the list's device pixels as one of its
    // own.
    void update(const FrameList& list, double devicePixelRatio);

    std::int64_t uploadCount() const { return m_textures.uploadCount(); }
    std::int64_t textureCount() const { return m_textures.textureCount(); }
    // How many subtrees are drawn as one picture each.
    int pictureCount() const { return m_pictureCount; }

private:
    void updateAll(const FrameList& list);
    void updatePlanned(const FrameList& list);
    void updateNode(const FrameList& list, int index);
    void renewCovered(const FrameList& list);
    NodeEdges edges(const FrameItem& item, int index) const;
    void takeNodes(const FrameList& list);
    void linkNodes(const FrameList& list);

    QQuickWindow& m_window;
    const NodeEdges m_edges; // of what is upright
    TextureCache m_textures;
    FrameDifference m_difference;
    FlatteningPlan m_plan;
    FrameList m_list; // as the nodes show it
    std::vector<LayerNode*> m_nodes; // by index in m_list; null for what is not drawn
    std::vector<LayerNode*> m_previousNodes;
    std::vector<LayerNode*> m_leavingNodes;
    std::vector<LayerNode*> m_sublayers;
    std::vector<int> m_movedItems; // those whose nodes were there and lie elsewhere now
    CoveredMoves m_coveredMoves;
    int m_pictureCount = 0;
    bool m_linksChanged = false;
};
