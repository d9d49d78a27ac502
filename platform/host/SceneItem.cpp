#include "platform/host/SceneItem.h"

#include "platform/host/NodeTree.h"

#include <QQuickWindow>

#include <algorithm>

SceneItem::SceneItem(QQuickItem* parent, FlatteningPlan::FlattensMoving flattensMoving)
    : QQuickItem(parent)
    , m_flattensMoving(flattensMoving)
{
    setFlag(ItemHasContents);
}

SceneItem::~SceneItem() = default;

bool SceneItem::setFrameList(const FrameList& list)
{
    FrameHistory& history = m_list.history;
    if (list.history.follows(history)) {
        for (const int index : list.history.changedItems) {
            m_list.items[std::size_t(index)] = list.items[std::size_t(index)];
            history.changedItems.push_back(index);
        }
        history.id = list.history.id;
        if (list.history.changedItems.empty())
            return false;
    } else if (list == m_list) {
        history.id = list.history.id;
        return false;
    } else {
        m_list = list;
        history.previous = 0;
        history.changedItems.clear();
    }
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
    auto& changed = m_list.history.changedItems;
    std::sort(changed.begin(), changed.end()); // of several lists, where none was drawn in between
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    tree->update(m_list, window()->effectiveDevicePixelRatio());
    m_list.history.previous = m_list.history.id;
    m_list.history.changedItems.clear();
    m_uploadCount = m_uploadsOfFormerTrees + tree->uploadCount();
    m_pictureCount = tree->pictureCount();
    return tree;
}
