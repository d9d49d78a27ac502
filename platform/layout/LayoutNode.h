// What the layout engine keeps for one item. Items are the nodes of a graph whose edges are constraints.
//
// The numbers of a free item are variables of the one island that the item belongs to. Those of an item whose
// frame is given are the same in every island that reads them, and join none of these islands together.
#pragma once

#include "platform/layout/ContentConstraints.h"
#include "platform/layout/LayoutQuantity.h"
#include "platform/layout/NSLayoutConstraint.h"

#include <array>

class LayoutNode;

// Hears from the nodes that it solves for or reads: an island.
class LayoutNodeListener : public std::enable_shared_from_this<LayoutNodeListener> {
public:
    virtual void givenFrameDidChange(const LayoutNode&) = 0;
    virtual void contentDidChange(LayoutNode&) = 0;
    virtual void roleDidChange() = 0; // of one of its nodes: it has to begin anew

protected:
    ~LayoutNodeListener() = default;
};

class LayoutNode final : public LayoutItemListener {
public:
    using Variable = ConstraintSolver::Variable;

    explicit LayoutNode(LayoutItem&);
    // Null while no constraint mentions the item.
    static LayoutNode* of(const LayoutItem& item) { return static_cast<LayoutNode*>(item.layoutListener()); }
    static LayoutNode& ensure(LayoutItem&);

    LayoutItem& item() const { return m_item; }
    LayoutItem* container() const { return m_item.layoutContainer(); }

    // The active constraints that mention the item.
    void addConstraint(NSLayoutConstraint& constraint) { m_constraints.push_back(&constraint); }
    void removeConstraint(const NSLayoutConstraint&);
    const std::vector<NSLayoutConstraint*>& constraints() const { return m_constraints; }

    // --- Of a free item ------------------------------------------------------------------------------

    // The island that finds the frame; null while no constraint says anything about it.
    const std::shared_ptr<LayoutNodeListener>& island() const { return m_island; }
    void setIsland(std::shared_ptr<LayoutNodeListener> island) { m_island = std::move(island); }
    // The variable in the island; None for a number that nothing is said about.
    Variable variable(LayoutQuantity quantity) const
    {
        return m_variables[static_cast<std::size_t>(quantity)];
    }
    void setVariable(LayoutQuantity quantity, Variable variable)
    {
        m_variables[static_cast<std::size_t>(quantity)] = variable;
    }
    ContentConstraints& contentConstraints(UILayoutConstraintAxis axis)
    {
        return m_contentConstraints[static_cast<std::size_t>(axis)];
    }
    // The content is to be asked for anew; whether that was so until now.
    void markContent() { m_contentIsStale = true; }
    bool takeContentMark() { return std::exchange(m_contentIsStale, false); }
    // Takes over where the item's baselines are; whether they differ from what constraints know.
    bool updateBaselines();
    void forgetVariables();

    // --- Of an item with a given frame -----------------------------------------------------------------

    double givenValue(LayoutQuantity) const;
    void addReader(LayoutNodeListener&);
    bool removeReader(const LayoutNodeListener&); // whether it was one

    void givenFrameDidChange() override;
    void contentDidChange() override;
    void roleDidChange() override;
    void itemWillLeave() override;

private:
    LayoutItem& m_item;
    bool m_isGiven;
    std::vector<NSLayoutConstraint*> m_constraints;
    std::shared_ptr<LayoutNodeListener> m_island;
    std::array<Variable, layoutQuantityCount> m_variables {};
    std::array<ContentConstraints, 2> m_contentConstraints; // by axis
    LayoutBaseline m_firstBaseline; // as the constraints that are in force know them
    LayoutBaseline m_lastBaseline;
    bool m_contentIsStale = true;
    std::vector<LayoutNodeListener*> m_readers; // islands that mention a given frame
};
