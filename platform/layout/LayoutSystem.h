// A system of constraints: it states them to a solver, leaves out what contradicts, and tells who has moved.
//
// Changes only wait: a system is solved once for all of them, when a layout pass begins or the frame of one
// of its items is asked for. What it finds is told to the containers of the items that moved. Which
// constraints and items belong together is for LayoutIsland to say.
#pragma once

#include "platform/layout/GivenFrames.h"

class LayoutSystem : public LayoutNodeListener {
public:
    // Solves all systems that wait.
    static void solvePending();
    // Solves when something waits.
    void solve();
    // The frame of one of its items; what is not constrained is as in the given one. Solve before.
    CGRect foundFrame(const LayoutNode& node, const CGRect& frame) const;

    std::size_t itemCount() const { return m_nodes.size(); }
    std::size_t constraintCount() const { return m_members.size(); }
    // Items with their numbers, constraints with their state, and the solver's tableau.
    NSString description() const;

    // Items inside the container are being placed: it need not be told that they move, until the guard goes.
    class [[nodiscard]] Placing {
    public:
        explicit Placing(const LayoutItem& container);
        ~Placing();
        Placing(const Placing&) = delete;
        Placing& operator=(const Placing&) = delete;

    private:
        const LayoutItem* m_previous;
    };

    void givenFrameDidChange(const LayoutNode&) override;
    void contentDidChange(LayoutNode&) override;

protected:
    LayoutSystem() = default;
    ~LayoutSystem() = default;

    // The one that a constraint is solved in; null while that is inactive.
    static std::shared_ptr<LayoutSystem> systemOf(const NSLayoutConstraint&);
    bool contains(const NSLayoutConstraint& constraint) const { return systemOf(constraint).get() == this; }
    void addConstraint(NSLayoutConstraint&, std::vector<LayoutNode*> nodes);
    // Returns the nodes that it mentions.
    std::vector<LayoutNode*> removeConstraint(NSLayoutConstraint&);
    // A free item, whose frame is found here.
    void addNode(LayoutNode&);
    void removeNode(LayoutNode&);
    const std::vector<LayoutNode*>& nodes() const { return m_nodes; }
    // A given frame that no constraint mentions any more.
    void forgetGivenFrame(const LayoutNode& node) { m_givenFrames.remove(m_solver, node); }
    // Takes all constraints and nodes from another one.
    void absorb(LayoutSystem&);
    template <typename Visitor> void forEachConstraint(Visitor visit) const
    {
        for (const auto& member : m_members)
            visit(*member->constraint, member->nodes);
    }

private:
    using Constraint = ConstraintSolver::Constraint;
    using Variable = ConstraintSolver::Variable;

    // A constraint that is active, as long as it is.
    struct Member final : NSLayoutConstraintListener {
        void constantDidChange() override { system->constantDidChange(*this); }
        void priorityDidChange() override { system->restate(*this); }

        std::shared_ptr<LayoutSystem> system; // lives as long as one of its constraints is active
        NSLayoutConstraint* constraint;
        std::vector<LayoutNode*> nodes; // that it mentions
        unsigned long serial; // the newest has the largest
        std::size_t index; // in m_members
        Constraint stated = Constraint::None; // None while it waits or is left out
        bool hasNewConstant = false;
        bool isReported = false; // as left out
    };

    void constantDidChange(Member&);
    void restate(Member&);
    void wait();
    std::shared_ptr<LayoutSystem> strongSelf();

    void updateConstants();
    void updateContents();
    void updateContent(LayoutNode&, UILayoutConstraintAxis, double size);
    void restateBaselines(const LayoutNode&);
    void stateMembers();
    void state(Member&);
    void unstate(Member&);
    Variable variable(LayoutItem&, LayoutQuantity);

    void resolveConflicts();
    bool leaveOutOne(const std::vector<Constraint>& conflict);
    void leaveOut(Member&, const std::vector<Constraint>& conflict);
    NSString nameOf(Constraint) const;

    void tellContainers();
    static void tellContainer(LayoutItem* container); // null where there is none

    ConstraintSolver m_solver;
    std::vector<std::unique_ptr<Member>> m_members;
    std::vector<LayoutNode*> m_nodes; // free ones
    std::vector<LayoutNode*> m_nodeOfVariable; // by the variable's number; null for given ones
    GivenFrames m_givenFrames;
    std::vector<ConstraintSolver::Term> m_terms; // of the constraint that is being stated
    std::size_t m_leftOutCount = 0; // each is tried again when something changes
    bool m_waits = false;
    bool m_givenFramesChanged = false;
    bool m_contentsChanged = false;
    bool m_constantsChanged = false;
    bool m_membersChanged = false;
    bool m_isFeasible = true;
};
