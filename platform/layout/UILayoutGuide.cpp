#include "platform/layout/UILayoutGuide.h"

#include "platform/layout/LayoutContainer.h"

UILayoutGuide::~UILayoutGuide() { dropLayoutNode(); }

void UILayoutGuide::setInsets(const UIEdgeInsets& insets)
{
    if (m_insets == insets)
        return;
    m_insets = insets;
    layoutFrameDidChange();
}

NSString UILayoutGuide::layoutName() const
{
    return m_identifier.isEmpty() ? QStringLiteral("UILayoutGuide") : m_identifier;
}

CGRect UILayoutGuide::layoutFrame() const
{
    if (!m_owner)
        return {};
    if (m_insets)
        return UIEdgeInsetsInsetRect({ CGPoint(), m_owner->layoutFrame().size() }, *m_insets);
    return m_frame;
}

void UILayoutGuide::setOwner(Key, LayoutContainer* owner)
{
    if (m_owner)
        dropLayoutNode();
    m_owner = owner;
}
