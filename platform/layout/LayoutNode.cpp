#include "platform/layout/LayoutNode.h"

#include "platform/layout/LayoutContainer.h"
#include "platform/layout/LayoutIsland.h"

#include <algorithm>

LayoutNode::LayoutNode(LayoutItem& item)
    : m_item(item)
    , m_isGiven(item.hasGivenFrame())
{
    forgetUnknowns();
}

LayoutNode::~LayoutNode() = default;

void LayoutNode::forgetUnknowns()
{
    unknowns.fill(ConstraintSolver::Variable::None);
    contentRules.fill({});
    contentIsStale = true;
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

void LayoutNode::addReader(LayoutIsland& island)
{
    if (std::find(m_readers.begin(), m_readers.end(), &island) == m_readers.end())
        m_readers.push_back(&island);
}

void LayoutNode::removeReader(const LayoutIsland& island) { std::erase(m_readers, &island); }

void LayoutNode::removeConstraint(const NSLayoutConstraint& constraint)
{
    std::erase(m_constraints, &constraint);
}

void LayoutNode::deactivateConstraints()
{
    while (!m_constraints.empty())
        m_constraints.back()->setActive(false);
}

void LayoutNode::givenFrameDidChange()
{
    for (LayoutIsland* const island : m_readers)
        island->givenFrameDidChange(*this);
}

void LayoutNode::contentDidChange()
{
    if (m_island)
        m_island->contentDidChange(*this);
}

void LayoutNode::roleDidChange()
{
    if (std::exchange(m_isGiven, m_item.hasGivenFrame()) == m_isGiven)
        return;
    std::vector<std::shared_ptr<LayoutIsland>> islands;
    for (const NSLayoutConstraint* const constraint : m_constraints) {
        auto island = LayoutIsland::islandOf(*constraint);
        if (std::find(islands.begin(), islands.end(), island) == islands.end())
            islands.push_back(std::move(island));
    }
    for (const auto& island : islands)
        island->rebuild();
}
