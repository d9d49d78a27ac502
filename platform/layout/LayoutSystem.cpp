#include "platform/layout/LayoutSystem.h"

#include "platform/layout/LayoutExpression.h"

#include <algorithm>

namespace {

constexpr auto horizontal = UILayoutConstraintAxis::Horizontal;
constexpr auto vertical = UILayoutConstraintAxis::Vertical;

std::vector<std::weak_ptr<LayoutSystem>>& waitingSystems()
{
    static std::vector<std::weak_ptr<LayoutSystem>> systems;
    return systems;
}

const LayoutItem*& placedContainer()
{
    static const LayoutItem* container = nullptr;
    return container;
}

unsigned long nextSerial()
{
    static unsigned long serial = 0;
    return ++serial;
}

bool isBaseline(NSLayoutAttribute attribute)
{
    return attribute == NSLayoutAttribute::FirstBaseline || attribute == NSLayoutAttribute::LastBaseline;
}

// A number that differs from 0 by rounding alone is 0.
double withoutResidue(double number) { return std::abs(number) < 1e-9 ? 0 : number; }

std::size_t indexOf(ConstraintSolver::Variable variable) { return static_cast<std::size_t>(variable); }

} // namespace

// --- Constraints and items come and go ---------------------------------------------------------------

std::shared_ptr<LayoutSystem> LayoutSystem::systemOf(const NSLayoutConstraint& constraint)
{
    const auto* const member = static_cast<const Member*>(constraint.listener());
    return member ? member->system : nullptr;
}

void LayoutSystem::addConstraint(NSLayoutConstraint& constraint, std::vector<LayoutNode*> nodes)
{
    auto member = std::make_unique<Member>();
    member->system = strongSelf();
    member->constraint = &constraint;
    member->nodes = std::move(nodes);
    member->serial = nextSerial();
    member->index = m_members.size();
    constraint.setListener({}, member.get());
    m_members.push_back(std::move(member));
    tellContainer(constraint.holder());
    m_membersChanged = true;
    wait();
}

std::vector<LayoutNode*> LayoutSystem::removeConstraint(NSLayoutConstraint& constraint)
{
    const std::size_t index = static_cast<Member*>(constraint.listener())->index;
    const auto member = std::exchange(m_members[index], std::move(m_members.back()));
    m_members.pop_back();
    if (index < m_members.size())
        m_members[index]->index = index;
    constraint.setListener({}, nullptr);
    unstate(*member);
    tellContainer(constraint.holder());
    m_membersChanged = true; // one that was left out may fit now
    wait();
    return std::move(member->nodes);
}

void LayoutSystem::addNode(LayoutNode& node)
{
    node.markContent();
    m_nodes.push_back(&node);
    m_contentsChanged = true;
    tellContainer(node.container());
}

void LayoutSystem::removeNode(LayoutNode& node)
{
    for (const auto axis : { horizontal, vertical })
        node.contentConstraints(axis).removeAll(m_solver);
    for (std::size_t index = 0; index < layoutQuantityCount; ++index)
        if (const Variable variable = node.variable(LayoutQuantity(index)); variable != Variable::None) {
            m_nodeOfVariable[indexOf(variable)] = nullptr;
            m_solver.removeVariable(variable);
        }
    node.forgetVariables();
    std::erase(m_nodes, &node);
}

void LayoutSystem::absorb(LayoutSystem& other)
{
    for (auto& member : other.m_members) {
        member->system = strongSelf();
        member->index = m_members.size();
        member->stated = Constraint::None;
        m_members.push_back(std::move(member));
    }
    for (LayoutNode* const node : other.m_nodes) {
        node->forgetVariables();
        m_nodes.push_back(node);
    }
    other.m_members.clear();
    other.m_nodes.clear();
    other.m_givenFrames.clear();
    m_membersChanged = true; // all of them are stated anew
    m_contentsChanged = true;
    wait();
}

// --- What changes ------------------------------------------------------------------------------------

void LayoutSystem::givenFrameDidChange(const LayoutNode& node)
{
    if (!m_givenFrames.haveChanged(node))
        return;
    tellContainer(node.container());
    m_givenFramesChanged = true;
    wait();
}

void LayoutSystem::contentDidChange(LayoutNode& node)
{
    node.markContent();
    m_contentsChanged = true;
    tellContainer(node.container());
    wait();
}

void LayoutSystem::constantDidChange(Member& member)
{
    member.hasNewConstant = true;
    tellContainer(member.constraint->holder());
    m_constantsChanged = true;
    m_membersChanged = true; // one that was left out may fit now
    wait();
}

void LayoutSystem::restate(Member& member)
{
    unstate(member);
    member.isReported = false;
    tellContainer(member.constraint->holder());
    m_membersChanged = true;
    wait();
}

void LayoutSystem::wait()
{
    if (!std::exchange(m_waits, true))
        waitingSystems().push_back(strongSelf());
}

std::shared_ptr<LayoutSystem> LayoutSystem::strongSelf()
{
    return std::static_pointer_cast<LayoutSystem>(shared_from_this());
}

void LayoutSystem::solvePending()
{
    auto& waiting = waitingSystems();
    for (std::size_t index = 0; index < waiting.size(); ++index) // solving may make others wait
        if (const auto system = waiting[index].lock())
            system->solve();
    waiting.clear();
}

// --- Solving -----------------------------------------------------------------------------------------

void LayoutSystem::solve()
{
    if (!m_waits)
        return;
    const auto keepAlive = weak_from_this().lock();
    m_waits = false;
    // All new constants first: two that change together need not fit each other's old ones.
    if (std::exchange(m_givenFramesChanged, false))
        m_isFeasible = m_givenFrames.update(m_solver);
    if (std::exchange(m_constantsChanged, false))
        updateConstants();
    resolveConflicts();
    if (std::exchange(m_contentsChanged, false))
        updateContents();
    if (std::exchange(m_membersChanged, false) || m_leftOutCount > 0)
        stateMembers();
    m_isFeasible = m_solver.solve();
    resolveConflicts();
    tellContainers();
}

CGRect LayoutSystem::foundFrame(const LayoutNode& node, const CGRect& frame) const
{
    double numbers[layoutQuantityCount] = { frame.x(), frame.y(), frame.width(), frame.height() };
    for (std::size_t index = 0; index < layoutQuantityCount; ++index)
        if (const Variable variable = node.variable(LayoutQuantity(index)); variable != Variable::None)
            numbers[index] = withoutResidue(m_solver.value(variable));
    return { numbers[0], numbers[1], std::max(numbers[2], 0.0), std::max(numbers[3], 0.0) };
}

void LayoutSystem::updateConstants()
{
    for (const auto& member : m_members)
        if (std::exchange(member->hasNewConstant, false) && member->stated != Constraint::None)
            m_isFeasible
                = m_solver.setConstant(member->stated, LayoutExpression::of(*member->constraint).constant());
}

void LayoutSystem::updateContents()
{
    for (LayoutNode* const node : m_nodes) {
        if (!node->takeContentMark())
            continue;
        const CGSize size = node->item().layoutContentSize();
        updateContent(*node, horizontal, size.width());
        updateContent(*node, vertical, size.height());
        if (node->updateBaselines())
            restateBaselines(*node);
    }
}

void LayoutSystem::updateContent(LayoutNode& node, UILayoutConstraintAxis axis, double size)
{
    ContentConstraints& constraints = node.contentConstraints(axis);
    const ContentConstraints::ContentSize content { size, node.item().contentHuggingPriority(axis),
        node.item().contentCompressionResistancePriority(axis) };
    if (!(size >= 0 && size <= ConstraintSolver::largest))
        return constraints.removeContentSize(m_solver);
    if (constraints.isStated(content))
        return;
    const auto quantity = axis == horizontal ? LayoutQuantity::Width : LayoutQuantity::Height;
    m_isFeasible = constraints.state(m_solver, variable(node.item(), quantity), content);
    resolveConflicts();
}

void LayoutSystem::restateBaselines(const LayoutNode& node)
{
    for (NSLayoutConstraint* const constraint : node.constraints())
        if (isBaseline(constraint->firstAttribute()) || isBaseline(constraint->secondAttribute()))
            constraint->listener()->priorityDidChange();
}

void LayoutSystem::stateMembers()
{
    m_leftOutCount = 0;
    for (const auto& member : m_members)
        if (member->stated == Constraint::None)
            state(*member);
}

void LayoutSystem::state(Member& member)
{
    const LayoutExpression expression = LayoutExpression::of(*member.constraint);
    if (!expression.isValid())
        return;
    m_terms.clear();
    for (const auto& term : expression.terms())
        m_terms.push_back({ variable(*term.item, term.quantity), term.coefficient });
    const auto relation = static_cast<ConstraintSolver::Relation>(member.constraint->relation());
    member.hasNewConstant = false;
    member.stated
        = m_solver.addConstraint(m_terms, expression.constant(), relation, member.constraint->priority());
    if (member.stated == Constraint::None)
        leaveOut(member, m_solver.conflict());
}

void LayoutSystem::unstate(Member& member)
{
    if (member.stated != Constraint::None)
        m_solver.removeConstraint(member.stated);
    member.stated = Constraint::None;
}

LayoutSystem::Variable LayoutSystem::variable(LayoutItem& item, LayoutQuantity quantity)
{
    LayoutNode& node = *LayoutNode::of(item);
    if (node.island().get() != this)
        return m_givenFrames.variable(m_solver, node, quantity);
    if (node.variable(quantity) != Variable::None)
        return node.variable(quantity);
    const Variable variable = m_solver.addVariable();
    node.setVariable(quantity, variable);
    if (m_nodeOfVariable.size() <= indexOf(variable))
        m_nodeOfVariable.resize(indexOf(variable) + 1);
    m_nodeOfVariable[indexOf(variable)] = &node;
    if (quantity == LayoutQuantity::Width || quantity == LayoutQuantity::Height) {
        const auto axis = quantity == LayoutQuantity::Width ? horizontal : vertical;
        node.contentConstraints(axis).keepFromTurningNegative(m_solver, variable);
    }
    tellContainer(item.layoutContainer()); // the number is no longer the frame's own, even if it stays 0
    return variable;
}

// --- Conflicts ---------------------------------------------------------------------------------------

void LayoutSystem::resolveConflicts()
{
    while (!m_isFeasible) {
        const std::vector<Constraint> conflict = m_solver.conflict();
        if (!leaveOutOne(conflict))
            return; // only given frames are left, and those do not contradict each other
        m_isFeasible = m_solver.solve();
    }
}

bool LayoutSystem::leaveOutOne(const std::vector<Constraint>& conflict)
{
    Member* newest = nullptr;
    for (const auto& member : m_members)
        if (member->stated != Constraint::None && (!newest || member->serial > newest->serial)
            && std::ranges::find(conflict, member->stated) != conflict.end())
            newest = member.get();
    if (newest) {
        m_solver.removeConstraint(newest->stated);
        leaveOut(*newest, conflict);
        newest->stated = Constraint::None;
        return true;
    }
    return std::ranges::any_of(m_nodes, [&](LayoutNode* node) {
        return node->contentConstraints(horizontal).removeOneOf(m_solver, conflict)
            || node->contentConstraints(vertical).removeOneOf(m_solver, conflict);
    });
}

void LayoutSystem::leaveOut(Member& member, const std::vector<Constraint>& conflict)
{
    ++m_leftOutCount;
    if (std::exchange(member.isReported, true))
        return;
    NSLayoutConstraint::Conflict report { .constraints = {}, .broken = member.constraint->description() };
    for (const Constraint constraint : conflict)
        if (constraint != member.stated || constraint == Constraint::None)
            report.constraints.push_back(nameOf(constraint));
    report.constraints.push_back(report.broken);
    NSLayoutConstraint::report({}, report);
}

NSString LayoutSystem::nameOf(Constraint constraint) const
{
    for (const auto& member : m_members)
        if (member->stated == constraint)
            return member->constraint->description();
    const NSString given = m_givenFrames.nameOf(constraint);
    return given.isEmpty() ? QStringLiteral("the size of some content") : given;
}

// --- What was found ----------------------------------------------------------------------------------

LayoutSystem::Placing::Placing(const LayoutItem& container)
    : m_previous(std::exchange(placedContainer(), &container))
{
}

LayoutSystem::Placing::~Placing() { placedContainer() = m_previous; }

void LayoutSystem::tellContainer(LayoutItem* container)
{
    if (container && container != placedContainer())
        container->layoutInsideDidChange();
}

void LayoutSystem::tellContainers()
{
    for (const Variable variable : m_solver.changedVariables())
        if (indexOf(variable) < m_nodeOfVariable.size() && m_nodeOfVariable[indexOf(variable)])
            tellContainer(m_nodeOfVariable[indexOf(variable)]->container());
    m_solver.clearChanges();
}

NSString LayoutSystem::description() const
{
    NSString text;
    for (const LayoutNode* const node : m_nodes) {
        const CGRect frame = foundFrame(*node, node->item().layoutFrame());
        text += QStringLiteral("%1 (%2 %3; %4 %5)\n")
                    .arg(node->item().layoutName())
                    .arg(frame.x())
                    .arg(frame.y())
                    .arg(frame.width())
                    .arg(frame.height());
    }
    text += m_givenFrames.description();
    for (const auto& member : m_members) {
        text += member->constraint->description();
        text += QLatin1String(member->stated == Constraint::None ? " (not in force)\n" : "\n");
    }
    return text + m_solver.description();
}
