// Items that constraints tie together, solved as one, apart from all others.
//
// An island begins with its first constraint, grows when a constraint meets another island, and keeps the two
// together from then on. Changes only wait: an island is solved once for all of them, when a layout pass
// begins or the frame of one of its items is asked for. What it finds is told to the containers of the items
// that moved.
#pragma once

#include "platform/layout/LayoutNode.h"
#include "platform/layout/LayoutTerms.h"
#include "platform/layout/NSLayoutConstraint.h"

class LayoutIsland : public std::enable_shared_from_this<LayoutIsland> {
public:
    // What becomes of a constraint that is held now, no longer, or with another priority or constant.
    static void add(NSLayoutConstraint& constraint);
    static void remove(NSLayoutConstraint& constraint);
    static void renew(NSLayoutConstraint& constraint);
    static void constantDidChange(NSLayoutConstraint& constraint);
    // The island of a constraint that is held.
    static std::shared_ptr<LayoutIsland> islandOf(const NSLayoutConstraint& constraint)
    {
        return constraint.membership({}).island;
    }
    // Solves all islands that wait.
    static void solvePending();

    // Solves when something waits.
    void solve();
    // The frame of one of its items; what is not constrained is as in the given one. Solve before.
    CGRect foundFrame(const LayoutNode& node, const CGRect& frame) const;

    void givenFrameDidChange(LayoutNode& node);
    void contentDidChange(LayoutNode& node);
    // Takes everything apart and lets every constraint find its island anew.
    void rebuild();

    std::size_t itemCount() const { return m_nodes.size(); }
    std::size_t constraintCount() const { return m_members.size(); }
    // Items with their numbers, constraints with their state, and the solver's tableau.
    NSString description() const;

    // Items inside the container are being placed: it need not be told that they move, until the guard goes.
    class [[nodiscard]] Placing {
    public:
        explicit Placing(const LayoutContainer& container);
        ~Placing();
        Placing(const Placing&) = delete;
        Placing& operator=(const Placing&) = delete;

    private:
        const LayoutContainer* m_previous;
    };

private:
    using Rule = ConstraintSolver::Constraint;
    using Unknown = ConstraintSolver::Variable;

    struct Member {
        NSLayoutConstraint* constraint;
        std::vector<LayoutNode*> nodes; // whose numbers it reads
        unsigned long serial; // the newest has the largest
        Rule rule = Rule::None; // None while it waits or is left out
        bool constantIsStale = false;
        bool isReported = false; // as left out
    };
    // One number of an item with a given frame, as an unknown that is told its value.
    struct Given {
        LayoutNode* node;
        LayoutQuantity quantity;
        Unknown unknown;
        Rule rule;
        double value;
    };

    static std::shared_ptr<LayoutIsland> merged(
        std::shared_ptr<LayoutIsland> first, std::shared_ptr<LayoutIsland> second);
    void admit(NSLayoutConstraint& constraint, const LayoutTerms& terms);
    void absorb(LayoutIsland& other);
    void expel(std::size_t index);
    bool isMember(const NSLayoutConstraint& constraint) const;
    void takeOutIfUnused(LayoutNode& node);
    void takeOutFree(LayoutNode& node);
    void wait();

    void refreshGivens();
    void refreshConstants();
    void refreshContents();
    void refreshContent(LayoutNode& node, UILayoutConstraintAxis axis, double size);
    void refreshBaselines(LayoutNode& node);
    void enforceMembers();
    void enforce(Member& member);
    void resolveConflicts();
    bool leaveOutOne(const std::vector<Rule>& conflict);
    void leaveOut(Member& member, const std::vector<Rule>& conflict);
    void tellContainers();
    static void tellContainer(LayoutContainer* container); // null is nobody

    Unknown unknownOf(LayoutItem& item, LayoutQuantity quantity);
    void keepFromTurningNegative(LayoutNode& node, LayoutQuantity quantity);
    Unknown unknownOfGiven(LayoutNode& node, LayoutQuantity quantity);
    void setRuleConstant(Rule rule, double constant);
    void dropRule(Rule& rule);
    NSString nameOf(Rule rule) const;
    static const LayoutContainer*& placedContainer();

    ConstraintSolver m_solver;
    std::vector<Member> m_members;
    std::vector<LayoutNode*> m_nodes; // free ones
    std::vector<LayoutNode*> m_nodeOfUnknown; // by the unknown's number; null for given ones
    std::vector<Given> m_givens;
    std::vector<ConstraintSolver::Term> m_termsInHand; // kept for its memory
    std::size_t m_leftOutCount = 0; // each is tried again when something changes
    bool m_waits = false;
    bool m_givensChanged = false;
    bool m_contentsChanged = false;
    bool m_membersWait = false;
    bool m_isFeasible = true;
};
