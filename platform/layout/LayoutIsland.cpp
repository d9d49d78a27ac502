#include "platform/layout/LayoutIsland.h"

#include "platform/layout/LayoutExpression.h"

#include <algorithm>

namespace {

bool isFree(const LayoutNode& node) { return !node.item().hasGivenFrame(); }

// Those that the constraint mentions, each once.
std::vector<LayoutNode*> nodesOf(const NSLayoutConstraint& constraint)
{
    std::vector<LayoutNode*> nodes;
    const LayoutExpression expression = LayoutExpression::of(constraint);
    nodes.reserve(expression.terms().size());
    for (const auto& term : expression.terms()) {
        LayoutNode* const node = &LayoutNode::ensure(*term.item);
        if (std::ranges::find(nodes, node) == nodes.end())
            nodes.push_back(node);
    }
    return nodes;
}

} // namespace

std::shared_ptr<LayoutIsland> LayoutIsland::islandOf(const NSLayoutConstraint& constraint)
{
    return std::static_pointer_cast<LayoutIsland>(systemOf(constraint));
}

void LayoutIsland::add(NSLayoutConstraint& constraint)
{
    auto nodes = nodesOf(constraint);
    std::shared_ptr<LayoutIsland> island;
    for (const LayoutNode* const node : nodes)
        if (isFree(*node) && node->island())
            island = merged(island, islandOf(*node));
    if (!island)
        island = std::make_shared<LayoutIsland>();
    island->admit(constraint, std::move(nodes));
}

// The larger of the two, with the other one in it; the first may be null.
std::shared_ptr<LayoutIsland> LayoutIsland::merged(
    std::shared_ptr<LayoutIsland> first, std::shared_ptr<LayoutIsland> second)
{
    if (!first || first == second)
        return second;
    if (first->constraintCount() < second->constraintCount())
        std::swap(first, second);
    first->annex(*second);
    return first;
}

void LayoutIsland::admit(NSLayoutConstraint& constraint, std::vector<LayoutNode*> nodes)
{
    for (LayoutNode* const node : nodes) {
        node->addConstraint(constraint);
        if (!isFree(*node)) {
            node->addReader(*this);
        } else if (!node->island()) {
            node->setIsland(shared_from_this());
            addNode(*node);
        }
    }
    addConstraint(constraint, std::move(nodes));
}

void LayoutIsland::annex(LayoutIsland& other)
{
    other.forEachConstraint([&](const NSLayoutConstraint&, const std::vector<LayoutNode*>& nodes) {
        for (LayoutNode* const node : nodes)
            if (node->removeReader(other))
                node->addReader(*this);
    });
    const auto keepAlive = other.shared_from_this();
    for (LayoutNode* const node : other.nodes())
        node->setIsland(shared_from_this());
    absorb(other);
}

void LayoutIsland::remove(NSLayoutConstraint& constraint)
{
    if (const auto island = islandOf(constraint))
        island->expel(constraint);
}

void LayoutIsland::expel(NSLayoutConstraint& constraint)
{
    for (LayoutNode* const node : removeConstraint(constraint)) {
        node->removeConstraint(constraint);
        takeOutIfUnused(*node);
    }
}

// A free item that no constraint mentions leaves; a given frame that none mentions is forgotten.
void LayoutIsland::takeOutIfUnused(LayoutNode& node)
{
    if (node.island().get() == this) {
        if (!node.constraints().empty())
            return;
        removeNode(node);
        node.setIsland(nullptr);
        return;
    }
    if (std::ranges::any_of(
            node.constraints(), [this](const auto* constraint) { return contains(*constraint); }))
        return;
    forgetGivenFrame(node);
    node.removeReader(*this);
}

void LayoutIsland::roleDidChange()
{
    const auto keepAlive = shared_from_this();
    std::vector<NSLayoutConstraint*> constraints;
    forEachConstraint(
        [&](NSLayoutConstraint& constraint, const auto&) { constraints.push_back(&constraint); });
    for (NSLayoutConstraint* const constraint : constraints)
        expel(*constraint);
    for (NSLayoutConstraint* const constraint : constraints)
        add(*constraint);
}
