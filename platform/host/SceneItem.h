// Shows frame lists in a Qt Quick window. Main thread, the scene graph's own visits aside.
#pragma once

#include "platform/host/FlatteningPlan.h"

#include <QQuickItem>

class SceneItem final : public QQuickItem {
public:
    explicit SceneItem(QQuickItem* parent,
        FlatteningPlan::FlattensMoving flattensMoving = FlatteningPlan::FlattensMoving::Yes);
    ~SceneItem() override;

    // Shows the list from the next drawn frame on. One that is equal to the shown one draws nothing;
    // answers whether there is something to draw.
    bool setFrameList(const FrameList& list);
    const FrameList& frameList() const { return m_list; }

    // As of the frame drawn last.
    std::int64_t uploadCount() const { return m_uploadCount; }
    int pictureCount() const { return m_pictureCount; }

private:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData*) override;

    FlatteningPlan::FlattensMoving m_flattensMoving;
    FrameList m_list; // its history tells how it differs from the list that the nodes show
    std::int64_t m_uploadCount = 0;
    std::int64_t m_uploadsOfFormerTrees = 0;
    int m_pictureCount = 0;
};
