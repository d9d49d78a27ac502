#include "platform/layout/UILayoutGuide.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/graphics/FiniteNumbers.h"

UILayoutGuide::UILayoutGuide(const UIEdgeInsets& insets)
    : m_insets(UIEdgeInsets())
{
    setInsets(insets);
}

UILayoutGuide::~UILayoutGuide() { dropLayoutListener(); }

void UILayoutGuide::setInsets(const UIEdgeInsets& insets)
{
    NSParameterAssert(isFinite(insets), "UILayoutGuide", "insets are finite");
    if (!isFinite(insets) || m_insets == insets)
        return;
    const bool wasFound = !m_insets;
    m_insets = insets;
    if (wasFound)
        layoutRoleDidChange();
    else
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

void UILayoutGuide::setOwner(Key, LayoutItem* owner)
{
    if (m_owner)
        dropLayoutListener();
    m_owner = owner;
}
