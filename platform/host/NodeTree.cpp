#include "platform/host/NodeTree.h"

#include "platform/host/FrameGeometry.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <utility>

namespace {

// What is painted lies on whole pixels of its own anyway.
bool dependsOnEdges(const FrameItem& item)
{
    return item.clipsToBounds || !FrameGeometry::needsPainter(item);
}

} // namespace

NodeTree::NodeTree(QQuickWindow& window, FlatteningPlan::FlattensMoving flattensMoving)
    : m_window(window)
    , m_edges(window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software
              ? NodeEdges::OnWholePixels
              : NodeEdges::Anywhere)
    , m_textures(window)
    , m_plan(flattensMoving)
{
}

NodeTree::~NodeTree()
{
    if (!m_nodes.empty())
        delete m_nodes.front(); // and all below it, while the textures live
}

void NodeTree::update(const FrameList& list, double devicePixelRatio)
{
    QMatrix4x4 matrix;
    matrix.scale(static_cast<float>(1 / devicePixelRatio));
    if (this->matrix() != matrix)
        setMatrix(matrix);

    m_difference.compare(m_list, list);
    m_plan.plan(list, m_difference);
    if (m_difference.isPartial() && !m_plan.hasOtherWays())
        updatePlanned(list);
    else
        updateAll(list);
    renewCovered(list);
}

void NodeTree::updateAll(const FrameList& list)
{
    m_linksChanged = !m_difference.hasSameStructure();
    takeNodes(list);
    for (int index = 0; index < int(list.items.size()); ++index)
        updateNode(list, index);
    if (m_linksChanged)
        linkNodes(list);
    m_list = list;
    m_pictureCount = int(std::count_if(
        m_nodes.begin(), m_nodes.end(), [](const LayerNode* node) { return node && node->showsSubtree(); }));
}

// What was not planned anew is shown by its nodes already.
void NodeTree::updatePlanned(const FrameList& list)
{
    for (const int index : m_plan.plannedItems())
        updateNode(list, index);
    for (const int index : list.history.changedItems)
        m_list.items[std::size_t(index)] = list.items[std::size_t(index)];
    m_list.history.id = list.history.id;
}

// Hands each item the nodes of its layer, where there are some and they are still wanted.
void NodeTree::takeNodes(const FrameList& list)
{
    std::swap(m_nodes, m_previousNodes);
    m_nodes.assign(list.items.size(), nullptr);
    m_leavingNodes.clear();
    for (int index = 0; index < int(list.items.size()); ++index) {
        const int previous = m_difference.previousIndex(index);
        if (previous != FrameDifference::None && m_plan.way(index) != FlatteningPlan::Way::Nothing)
            m_nodes[std::size_t(index)] = std::exchange(m_previousNodes[std::size_t(previous)], nullptr);
    }
    for (LayerNode* node : m_previousNodes)
        if (node)
            m_leavingNodes.push_back(node);
    m_linksChanged = m_linksChanged || !m_leavingNodes.empty();
}

void NodeTree::updateNode(const FrameList& list, int index)
{
    const FlatteningPlan::Way way = m_plan.way(index);
    if (way == FlatteningPlan::Way::Nothing)
        return;
    const FrameItem& item = list.items[std::size_t(index)];
    LayerNode*& node = m_nodes[std::size_t(index)];
    const bool isNew = !node;
    if (isNew) {
        node = new LayerNode(m_window);
        node->setFlag(OwnedByParent);
        m_linksChanged = true;
    }
    const bool scaleChanged = list.scale != m_list.scale;
    if (isNew || !m_difference.isOpacityEqual(index))
        node->setOpacity(item.opacity);
    const NodeEdges edges = this->edges(item, index);
    const bool hasOtherEdges = isNew || edges != node->edges();
    const bool moved = hasOtherEdges || scaleChanged || !m_difference.isTransformEqual(index);
    if (way == FlatteningPlan::Way::CutPictures) {
        if (moved || !node->showsCutPictures() || !m_difference.isSubtreeSteady(index))
            node->showCutPictures(list, index, edges, m_textures);
    } else {
        if (moved || node->showsCutPictures())
            node->place(FrameGeometry::deviceTransform(item, list.scale), edges);
        if (way == FlatteningPlan::Way::Picture) {
            if (!node->showsSubtree() || !m_plan.keepsPicture(index))
                node->showSubtree(list, index, m_textures);
        } else if ((hasOtherEdges && dependsOnEdges(item)) || !node->showsItem()
            || !m_difference.isContentEqual(index)) {
            node->showItem(list, index, m_textures);
        }
    }
    if (node->takeHasMoved() && !isNew)
        m_movedItems.push_back(index);
}

// The renderers that draw each frame whole need no such care.
void NodeTree::renewCovered(const FrameList& list)
{
    if (m_edges == NodeEdges::OnWholePixels && !m_movedItems.empty()) {
        std::sort(m_movedItems.begin(), m_movedItems.end());
        for (const int index : m_coveredMoves.find(list, m_difference, m_nodes, m_movedItems))
            m_nodes[std::size_t(index)]->renew();
    }
    m_movedItems.clear();
}

// In what is turned or scaled, whole pixels of its own coordinates are none of the screen.
NodeEdges NodeTree::edges(const FrameItem& item, int index) const
{
    const int parent = m_difference.parentIndex(index);
    const NodeEdges around
        = parent == FrameDifference::None ? m_edges : m_nodes[std::size_t(parent)]->edges();
    return FrameGeometry::isTranslation(item.transform) ? around : NodeEdges::Anywhere;
}

void NodeTree::linkNodes(const FrameList& list)
{
    for (LayerNode* node : m_leavingNodes)
        node->detach();
    for (int index = 0; index < int(list.items.size()); ++index) {
        LayerNode* const node = m_nodes[std::size_t(index)];
        if (!node)
            continue;
        if (index == 0 && node->parent() != this)
            appendChildNode(node);
        m_sublayers.clear();
        FrameGeometry::forEachChild(list, index, [&](int child) {
            if (LayerNode* const sublayer = m_nodes[std::size_t(child)])
                m_sublayers.push_back(sublayer);
        });
        node->setSublayers(m_sublayers);
    }
    // By now nothing that stays lies below one that leaves.
    for (LayerNode* node : m_leavingNodes)
        delete node;
    m_leavingNodes.clear();
}
