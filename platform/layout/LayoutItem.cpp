#include "platform/layout/LayoutItem.h"

#include "platform/layout/LayoutNode.h"

LayoutItem::LayoutItem() = default;

LayoutItem::~LayoutItem() = default;

LayoutNode& LayoutItem::ensureLayoutNode()
{
    if (!m_node)
        m_node = std::make_unique<LayoutNode>(*this);
    return *m_node;
}

CGSize LayoutItem::layoutContentSize() const { return { UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric }; }

UILayoutPriority LayoutItem::contentHuggingPriority(UILayoutConstraintAxis) const
{
    return UILayoutPriorityDefaultLow;
}

UILayoutPriority LayoutItem::contentCompressionResistancePriority(UILayoutConstraintAxis) const
{
    return UILayoutPriorityDefaultHigh;
}

void LayoutItem::layoutFrameDidChange()
{
    if (m_node)
        m_node->givenFrameDidChange();
}

void LayoutItem::layoutContentDidChange()
{
    if (m_node)
        m_node->contentDidChange();
}

void LayoutItem::layoutRoleDidChange()
{
    if (m_node)
        m_node->roleDidChange();
}

void LayoutItem::dropLayoutNode()
{
    if (m_node)
        m_node->deactivateConstraints();
    m_node = nullptr;
}
