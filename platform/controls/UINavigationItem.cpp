#include "platform/controls/UINavigationItem.h"

void UINavigationItem::setTitle(const NSString& title)
{
    const AutomaticChange change(*this, QStringLiteral("title"));
    m_title = title;
}

void UINavigationItem::setLeftBarButtonItems(UIBarButtonItems items)
{
    const AutomaticChange change(*this, QStringLiteral("leftBarButtonItems"));
    m_leftBarButtonItems = std::move(items);
}

void UINavigationItem::setRightBarButtonItems(UIBarButtonItems items)
{
    const AutomaticChange change(*this, QStringLiteral("rightBarButtonItems"));
    m_rightBarButtonItems = std::move(items);
}
