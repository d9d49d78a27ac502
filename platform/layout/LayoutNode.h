// What the layout engine keeps for one item: its four numbers, and which constraints mention it.
//
// The numbers of a free item are unknowns of the one island that the item belongs to. Those of an item whose
// frame is given are the same in every island that reads them, and join none of these islands together.
#pragma once

#include "platform/layout/LayoutItem.h"
#include "platform/layout/solver/ConstraintSolver.h"

#include <array>
#include <memory>
#include <vector>

class LayoutIsland;
class NSLayoutConstraint;

// The numbers of an item's frame; for an item that follows its container, the distances of its four edges.
enum class LayoutQuantity { Left, Top, Width, Height };
inline constexpr std::size_t layoutQuantityCount = 4;

class LayoutNode {
public:
    explicit LayoutNode(LayoutItem& item);
    ~LayoutNode();
    LayoutNode(const LayoutNode&) = delete;
    LayoutNode& operator=(const LayoutNode&) = delete;

    LayoutItem& item() const { return m_item; }

    // --- Of a free item ------------------------------------------------------------------------------

    // The island that finds the frame; null while no constraint says anything about it.
    const std::shared_ptr<LayoutIsland>& island() const { return m_island; }
    void setIsland(std::shared_ptr<LayoutIsland> island) { m_island = std::move(island); }
    // The unknowns in the island; None for a number that nothing is said about.
    std::array<ConstraintSolver::Variable, layoutQuantityCount> unknowns;
    // What the content asks for, along each axis: not to be larger, not to be smaller. And what every size
    // asks for before anything else that is not required: not to turn negative.
    struct ContentRules {
        ConstraintSolver::Constraint hugging = ConstraintSolver::Constraint::None;
        ConstraintSolver::Constraint resistance = ConstraintSolver::Constraint::None;
        ConstraintSolver::Constraint notNegative = ConstraintSolver::Constraint::None;
        double size = UIViewNoIntrinsicMetric;
        UILayoutPriority huggingPriority = 0;
        UILayoutPriority resistancePriority = 0;
    };
    std::array<ContentRules, 2> contentRules; // by axis
    LayoutBaseline firstBaseline; // as the constraints that are in force know them
    LayoutBaseline lastBaseline;
    bool contentIsStale = false; // the rules of the content are to be asked for anew
    void forgetUnknowns();

    // --- Of an item with a given frame -----------------------------------------------------------------

    double givenValue(LayoutQuantity) const;
    void addReader(LayoutIsland& island);
    void removeReader(const LayoutIsland& island);

    // --- Of both -----------------------------------------------------------------------------------------

    // The active constraints that mention the item.
    void addConstraint(NSLayoutConstraint& constraint) { m_constraints.push_back(&constraint); }
    void removeConstraint(const NSLayoutConstraint& constraint);
    const std::vector<NSLayoutConstraint*>& constraints() const { return m_constraints; }
    void deactivateConstraints();

    void givenFrameDidChange();
    void contentDidChange();
    // Whether the frame is given may have changed: if so, the item's islands begin anew.
    void roleDidChange();

private:
    LayoutItem& m_item;
    bool m_isGiven;
    std::shared_ptr<LayoutIsland> m_island;
    std::vector<LayoutIsland*> m_readers; // islands that read a given frame
    std::vector<NSLayoutConstraint*> m_constraints;
};
