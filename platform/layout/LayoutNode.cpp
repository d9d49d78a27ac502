#include "platform/layout/LayoutNode.h"

#include <algorithm>

LayoutNode::LayoutNode(LayoutItem& item)
    : m_item(item)
    , m_isGiven(item.hasGivenFrame())
{
}

LayoutNode& LayoutNode::ensure(LayoutItem& item)
{
    if (!item.layoutListener())
        item.setLayoutListener({}, std::make_unique<LayoutNode>(item));
    return *of(item);
}

void LayoutNode::removeConstraint(const NSLayoutConstraint& constraint)
{
    std::erase(m_constraints, &constraint);
}

bool LayoutNode::updateBaselines()
{
    const LayoutBaseline firstBefore = std::exchange(m_firstBaseline, m_item.firstBaselinePlace());
    const LayoutBaseline lastBefore = std::exchange(m_lastBaseline, m_item.lastBaselinePlace());
    return firstBefore != m_firstBaseline || lastBefore != m_lastBaseline;
}

void LayoutNode::forgetVariables()
{
    m_variables.fill(Variable::None);
    m_contentConstraints.fill({});
    m_contentIsStale = true;
}

double LayoutNode::givenValue(LayoutQuantity quantity) const
{
    if (const UIEdgeInsets* const insets = m_item.layoutInsets()) {
        const double distances[] = { insets->left, insets->top, insets->right, insets->bottom };
        return distances[static_cast<int>(quantity)];
    }
    const CGRect frame = m_item.layoutFrame();
    const double numbers[] = { frame.x(), frame.y(), frame.width(), frame.height() };
    return numbers[static_cast<int>(quantity)];
}

void LayoutNode::addReader(LayoutNodeListener& island)
{
    if (std::find(m_readers.begin(), m_readers.end(), &island) == m_readers.end())
        m_readers.push_back(&island);
}

bool LayoutNode::removeReader(const LayoutNodeListener& island) { return std::erase(m_readers, &island) > 0; }

void LayoutNode::givenFrameDidChange()
{
    for (LayoutNodeListener* const island : m_readers)
        island->givenFrameDidChange(*this);
}

void LayoutNode::contentDidChange()
{
    if (m_island)
        m_island->contentDidChange(*this);
}

void LayoutNode::roleDidChange()
{
    const bool wasGiven = std::exchange(m_isGiven, m_item.hasGivenFrame());
    if (wasGiven == m_isGiven)
        return;
    std::vector<std::shared_ptr<LayoutNodeListener>> islands;
    for (LayoutNodeListener* const island : m_readers)
        islands.push_back(island->shared_from_this());
    if (m_island)
        islands.push_back(m_island);
    for (const auto& island : islands)
        island->roleDidChange();
}

void LayoutNode::itemWillLeave()
{
    while (!m_constraints.empty())
        m_constraints.back()->setActive(false);
}
