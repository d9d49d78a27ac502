// Who belongs to an island: constraints that come and go, and the items that they bring along.
#include "platform/layout/LayoutIsland.h"

#include "platform/layout/LayoutContainer.h"

#include <algorithm>

namespace {

// Islands with something to solve.
std::vector<std::weak_ptr<LayoutIsland>>& waitingIslands()
{
    static std::vector<std::weak_ptr<LayoutIsland>> islands;
    return islands;
}

unsigned long nextSerial()
{
    static unsigned long serial = 0;
    return ++serial;
}

bool isFree(const LayoutItem& item) { return !item.hasGivenFrame(); }

} // namespace

// --- Constraints come and go -------------------------------------------------------------------------

void LayoutIsland::add(NSLayoutConstraint& constraint)
{
    const LayoutTerms terms = LayoutTerms::of(constraint);
    std::shared_ptr<LayoutIsland> island;
    for (const auto& term : terms.terms()) {
        const LayoutNode& node = term.item->ensureLayoutNode();
        if (isFree(*term.item) && node.island())
            island = merged(island, node.island());
    }
    if (!island)
        island = std::make_shared<LayoutIsland>();
    island->admit(constraint, terms);
}

// The larger of the two, with the other one in it; either may be null.
std::shared_ptr<LayoutIsland> LayoutIsland::merged(
    std::shared_ptr<LayoutIsland> first, std::shared_ptr<LayoutIsland> second)
{
    if (!first || first == second)
        return second;
    if (first->m_members.size() < second->m_members.size())
        std::swap(first, second);
    first->absorb(*second);
    return first;
}

void LayoutIsland::admit(NSLayoutConstraint& constraint, const LayoutTerms& terms)
{
    Member member { .constraint = &constraint, .nodes = {}, .serial = nextSerial() };
    for (const auto& term : terms.terms()) {
        LayoutNode& node = *term.item->layoutNode();
        if (std::find(member.nodes.begin(), member.nodes.end(), &node) != member.nodes.end())
            continue;
        member.nodes.push_back(&node);
        node.addConstraint(constraint);
        if (isFree(*term.item) && !node.island()) {
            node.setIsland(shared_from_this());
            m_nodes.push_back(&node);
            m_contentsChanged = true;
            node.contentIsStale = true;
            tellContainer(node.item().layoutContainer());
        }
    }
    tellContainer(constraint.holder());
    constraint.membership({}) = { shared_from_this(), m_members.size() };
    m_members.push_back(std::move(member));
    m_membersWait = true;
    wait();
}

void LayoutIsland::absorb(LayoutIsland& other)
{
    const auto keepAlive = other.shared_from_this();
    for (Member& member : other.m_members) {
        member.rule = Rule::None;
        member.constraint->membership({}) = { shared_from_this(), m_members.size() };
        m_members.push_back(std::move(member));
    }
    for (LayoutNode* const node : other.m_nodes) {
        node->forgetUnknowns();
        node->setIsland(shared_from_this());
        m_nodes.push_back(node);
    }
    for (const Given& given : other.m_givens)
        given.node->removeReader(other);
    other.m_members.clear();
    other.m_nodes.clear();
    other.m_givens.clear();
    m_membersWait = true;
    m_contentsChanged = true;
    wait();
}

void LayoutIsland::remove(NSLayoutConstraint& constraint)
{
    const auto membership = std::exchange(constraint.membership({}), {});
    if (membership.island)
        membership.island->expel(membership.index);
}

void LayoutIsland::expel(std::size_t index)
{
    Member member = std::move(m_members[index]);
    if (index + 1 != m_members.size()) {
        m_members[index] = std::move(m_members.back());
        m_members[index].constraint->membership({}).index = index;
    }
    m_members.pop_back();

    dropRule(member.rule);
    for (LayoutNode* const node : member.nodes) {
        node->removeConstraint(*member.constraint);
        takeOutIfUnused(*node);
    }
    tellContainer(member.constraint->holder());
    m_membersWait = true; // one that was left out may fit now
    wait();
}

// A free item that no constraint speaks of leaves; a number that is given and that nobody reads is forgotten.
void LayoutIsland::takeOutIfUnused(LayoutNode& node)
{
    if (node.island().get() == this) {
        if (node.constraints().empty())
            takeOutFree(node);
        return;
    }
    const auto isRead = [this](const NSLayoutConstraint* constraint) { return isMember(*constraint); };
    if (std::any_of(node.constraints().begin(), node.constraints().end(), isRead))
        return;
    std::erase_if(m_givens, [&](Given& given) {
        if (given.node != &node)
            return false;
        dropRule(given.rule);
        m_solver.removeVariable(given.unknown);
        node.removeReader(*this);
        return true;
    });
}

void LayoutIsland::takeOutFree(LayoutNode& node)
{
    for (auto& rules : node.contentRules) {
        dropRule(rules.hugging);
        dropRule(rules.resistance);
        dropRule(rules.notNegative);
    }
    for (const Unknown unknown : node.unknowns)
        if (unknown != Unknown::None) {
            m_nodeOfUnknown[static_cast<std::size_t>(unknown)] = nullptr;
            m_solver.removeVariable(unknown);
        }
    node.forgetUnknowns();
    std::erase(m_nodes, &node);
    const auto keepAlive = node.island();
    node.setIsland(nullptr);
}

bool LayoutIsland::isMember(const NSLayoutConstraint& constraint) const
{
    return constraint.membership({}).island.get() == this;
}

void LayoutIsland::renew(NSLayoutConstraint& constraint)
{
    const auto membership = constraint.membership({});
    if (!membership.island)
        return;
    Member& member = membership.island->m_members[membership.index];
    membership.island->dropRule(member.rule);
    member.isReported = false;
    tellContainer(constraint.holder());
    membership.island->m_membersWait = true;
    membership.island->wait();
}

void LayoutIsland::constantDidChange(NSLayoutConstraint& constraint)
{
    const auto membership = constraint.membership({});
    if (!membership.island)
        return;
    LayoutIsland& island = *membership.island;
    island.m_members[membership.index].constantIsStale = true;
    tellContainer(constraint.holder());
    island.m_membersWait = true;
    island.wait();
}

void LayoutIsland::rebuild()
{
    const auto keepAlive = shared_from_this();
    const auto members = std::exchange(m_members, {});
    const auto nodes = std::exchange(m_nodes, {});
    const auto givens = std::exchange(m_givens, {});
    for (const Given& given : givens)
        given.node->removeReader(*this);
    for (LayoutNode* const node : nodes) {
        node->forgetUnknowns();
        node->setIsland(nullptr);
    }
    for (const Member& member : members) {
        for (LayoutNode* const node : member.nodes)
            node->removeConstraint(*member.constraint);
        member.constraint->membership({}) = {};
    }
    for (const Member& member : members)
        add(*member.constraint);
}

// --- What changes around the constraints -------------------------------------------------------------

void LayoutIsland::givenFrameDidChange(LayoutNode& node)
{
    const auto changes = [&](const Given& given) {
        return given.node == &node && given.value != node.givenValue(given.quantity);
    };
    if (std::none_of(m_givens.begin(), m_givens.end(), changes))
        return;
    tellContainer(node.item().layoutContainer());
    m_givensChanged = true;
    wait();
}

void LayoutIsland::contentDidChange(LayoutNode& node)
{
    node.contentIsStale = true;
    m_contentsChanged = true;
    tellContainer(node.item().layoutContainer());
    wait();
}

void LayoutIsland::wait()
{
    if (std::exchange(m_waits, true))
        return;
    waitingIslands().push_back(weak_from_this());
}

void LayoutIsland::solvePending()
{
    auto& waiting = waitingIslands();
    for (std::size_t index = 0; index < waiting.size(); ++index) // solving may make others wait
        if (const auto island = waiting[index].lock())
            island->solve();
    waiting.clear();
}

// --- Who is told -------------------------------------------------------------------------------------

const LayoutContainer*& LayoutIsland::placedContainer()
{
    static const LayoutContainer* container = nullptr;
    return container;
}

LayoutIsland::Placing::Placing(const LayoutContainer& container)
    : m_previous(std::exchange(placedContainer(), &container))
{
}

LayoutIsland::Placing::~Placing() { placedContainer() = m_previous; }

void LayoutIsland::tellContainer(LayoutContainer* container)
{
    if (container && container != placedContainer())
        container->layoutInsideDidChange();
}
