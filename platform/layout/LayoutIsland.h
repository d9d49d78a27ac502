// Items that constraints tie together, solved as one, apart from all others: a connected component of the
// graph whose nodes are free items and whose edges are constraints.
//
// An island begins with its first constraint, grows when a constraint meets another island, and keeps the two
// together from then on.
#pragma once

#include "platform/layout/LayoutSystem.h"

class LayoutIsland final : public LayoutSystem {
public:
    // What becomes of a constraint that is held from now on, or no longer.
    static void add(NSLayoutConstraint&);
    static void remove(NSLayoutConstraint&);
    // The island of a constraint that is held.
    static std::shared_ptr<LayoutIsland> islandOf(const NSLayoutConstraint&);
    // The island that finds the item's frame; null while there is none.
    static std::shared_ptr<LayoutIsland> islandOf(const LayoutNode& node)
    {
        return std::static_pointer_cast<LayoutIsland>(node.island());
    }

    // Takes everything apart and lets every constraint find its island anew.
    void roleDidChange() override;

private:
    static std::shared_ptr<LayoutIsland> merged(
        std::shared_ptr<LayoutIsland> first, std::shared_ptr<LayoutIsland> second);
    void admit(NSLayoutConstraint&, std::vector<LayoutNode*> nodes);
    void annex(LayoutIsland& other);
    void expel(NSLayoutConstraint&);
    void takeOutIfUnused(LayoutNode&);
};
