#include "platform/host/SceneItem.h"

#include "platform/host/NodeTree.h"

#include <QQuickWindow>

#include <utility>

SceneItem::SceneItem(QQuickItem* parent, FlatteningPlan::FlattensMoving flattensMoving)
    : QQuickItem(parent)
    , m_flattensMoving(flattensMoving)
{
    setFlag(ItemHasContents);
}

SceneItem::~SceneItem() = default;

bool SceneItem::setFrameList(FrameList list)
{
    if (list == m_list)
        return false;
    m_list = std::move(list);
    update();
    return true;
}

QSGNode* SceneItem::updatePaintNode(QSGNode* node, UpdatePaintNodeData*)
{
    auto* tree = static_cast<NodeTree*>(node);
    if (!tree) { // the first time, and whenever the scene graph has lost its nodes
        tree = new NodeTree(*window(), m_flattensMoving);
        m_uploadsOfFormerTrees = m_uploadCount;
    }
    tree->update(m_list, window()->effectiveDevicePixelRatio());
    m_uploadCount = m_uploadsOfFormerTrees + tree->uploadCount();
    m_pictureCount = tree->pictureCount();
    return tree;
}
