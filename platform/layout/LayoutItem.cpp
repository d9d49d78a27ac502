#include "platform/layout/LayoutItem.h"

LayoutItem::LayoutItem() = default;

LayoutItem::~LayoutItem() = default;

CGSize LayoutItem::layoutContentSize() const { return { UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric }; }

UILayoutPriority LayoutItem::contentHuggingPriority(UILayoutConstraintAxis) const
{
    return UILayoutPriorityDefaultLow;
}

UILayoutPriority LayoutItem::contentCompressionResistancePriority(UILayoutConstraintAxis) const
{
    return UILayoutPriorityDefaultHigh;
}

void LayoutItem::setLayoutListener(Key, std::unique_ptr<LayoutItemListener> listener)
{
    m_listener = std::move(listener);
}

void LayoutItem::layoutFrameDidChange()
{
    if (m_listener)
        m_listener->givenFrameDidChange();
}

void LayoutItem::layoutContentDidChange()
{
    if (m_listener)
        m_listener->contentDidChange();
}

void LayoutItem::layoutRoleDidChange()
{
    if (m_listener)
        m_listener->roleDidChange();
}

void LayoutItem::dropLayoutListener()
{
    if (m_listener)
        m_listener->itemWillLeave();
    m_listener = nullptr;
}
