#include "platform/host/NodeTree.h"

#include "platform/host/FrameGeometry.h"
#include "platform/host/OutOfSight.h"

#include <QQuickWindow>

#include <algorithm>
#include <utility>

NodeTree::NodeTree(QQuickWindow& window, FlatteningPlan::FlattensMoving flattensMoving)
    : m_window(window)
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
    if (m_window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
        putBackHidden(list);
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
    const bool moved = isNew || scaleChanged || !m_difference.isTransformEqual(index);
    if (way == FlatteningPlan::Way::CutPictures) {
        if (moved || !node->showsCutPictures() || !m_difference.isSubtreeSteady(index))
            node->showCutPictures(list, index, m_textures);
        return;
    }
    if (moved || node->showsCutPictures())
        node->setTransform(FrameGeometry::deviceTransform(item, list.scale));
    if (way == FlatteningPlan::Way::Picture) {
        if (isNew || !node->showsSubtree() || !m_plan.keepsPicture(index))
            node->showSubtree(list, index, m_textures);
    } else if (isNew || !node->showsItem() || !m_difference.isContentEqual(index)) {
        node->showItem(list, index, m_textures);
    }
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

// Qt's software renderer draws a place again that a node has left, but not where all of the node is hidden
// now: then it looks no further. It does draw a place again whose node is taken out, so such a node is taken
// out and put back.
void NodeTree::putBackHidden(const FrameList& list)
{
    for (const int changed : m_difference.changedItems()) {
        const FrameItem& item = list.items[std::size_t(changed)];
        const bool concernsSublayers = !m_difference.isTransformEqual(changed) || item.clipsToBounds;
        int first = changed;
        while (!m_nodes[std::size_t(first)] && m_difference.parentIndex(first) != FrameDifference::None)
            first = m_difference.parentIndex(first); // to the node that shows it
        putBackHidden(list, first, concernsSublayers ? item.subtreeEnd : first + 1);
    }
}

void NodeTree::putBackHidden(const FrameList& list, int first, int end)
{
    for (int index = first; index < end; ++index) {
        LayerNode* const node = m_nodes[std::size_t(index)];
        if (!node || m_difference.previousIndex(index) == FrameDifference::None)
            continue;
        const auto drawing = node->showsItem() ? OutOfSight::Drawing::OfItem : OutOfSight::Drawing::OfSubtree;
        if (OutOfSight::isHidden(list, m_difference, index, drawing))
            node->putBack();
    }
}
