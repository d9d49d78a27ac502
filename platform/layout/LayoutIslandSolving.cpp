// How an island is solved: givens, contents and constraints go to the solver, and what has moved is told.
#include "platform/layout/LayoutAttributes.h"
#include "platform/layout/LayoutContainer.h"
#include "platform/layout/LayoutIsland.h"

#include <algorithm>

namespace {

constexpr auto horizontal = UILayoutConstraintAxis::Horizontal;
constexpr auto vertical = UILayoutConstraintAxis::Vertical;

bool isBaseline(NSLayoutAttribute attribute)
{
    return attribute == NSLayoutAttribute::FirstBaseline || attribute == NSLayoutAttribute::LastBaseline;
}

// Sizes shrink to nothing rather than turn negative, unless something required leaves them no choice.
constexpr UILayoutPriority almostRequired = 999.999;

// Not a number is not either.
bool isSolvable(double number) { return std::abs(number) <= ConstraintSolver::largest; }

// What rounding leaves of nothing is nothing.
double withoutResidue(double number) { return std::abs(number) < 1e-9 ? 0 : number; }

std::size_t indexOf(ConstraintSolver::Variable unknown) { return static_cast<std::size_t>(unknown); }

} // namespace

void LayoutIsland::solve()
{
    if (!m_waits)
        return;
    const auto keepAlive = weak_from_this().lock();
    m_waits = false;
    // All new constants first: two that change together need not fit each other's old ones.
    if (std::exchange(m_givensChanged, false))
        refreshGivens();
    if (m_membersWait)
        refreshConstants();
    resolveConflicts();
    if (std::exchange(m_contentsChanged, false))
        refreshContents();
    if (std::exchange(m_membersWait, false) || m_leftOutCount > 0)
        enforceMembers();
    m_isFeasible = m_solver.solve();
    resolveConflicts();
    tellContainers();
}

CGRect LayoutIsland::foundFrame(const LayoutNode& node, const CGRect& frame) const
{
    double numbers[layoutQuantityCount] = { frame.x(), frame.y(), frame.width(), frame.height() };
    for (std::size_t index = 0; index < layoutQuantityCount; ++index)
        if (node.unknowns[index] != Unknown::None)
            numbers[index] = withoutResidue(m_solver.value(node.unknowns[index]));
    return { numbers[0], numbers[1], std::max(numbers[2], 0.0), std::max(numbers[3], 0.0) };
}

// --- Givens and contents -----------------------------------------------------------------------------

void LayoutIsland::refreshGivens()
{
    for (Given& given : m_givens) {
        const double value = given.node->givenValue(given.quantity);
        if (value == given.value || !isSolvable(value))
            continue;
        given.value = value;
        m_isFeasible = m_solver.setConstant(given.rule, -value);
    }
}

void LayoutIsland::refreshConstants()
{
    for (Member& member : m_members)
        if (std::exchange(member.constantIsStale, false) && member.rule != Rule::None)
            m_isFeasible = m_solver.setConstant(member.rule, LayoutTerms::of(*member.constraint).constant());
}

void LayoutIsland::refreshContents()
{
    for (LayoutNode* const node : m_nodes) {
        if (!std::exchange(node->contentIsStale, false))
            continue;
        const CGSize size = node->item().layoutContentSize();
        refreshContent(*node, horizontal, size.width());
        refreshContent(*node, vertical, size.height());
        refreshBaselines(*node);
    }
}

void LayoutIsland::refreshContent(LayoutNode& node, UILayoutConstraintAxis axis, double size)
{
    auto& rules = node.contentRules[static_cast<std::size_t>(axis)];
    const auto hugging = node.item().contentHuggingPriority(axis);
    const auto resistance = node.item().contentCompressionResistancePriority(axis);
    const bool hasSize = size >= 0 && isSolvable(size);
    if (!hasSize || hugging != rules.huggingPriority || resistance != rules.resistancePriority) {
        dropRule(rules.hugging);
        dropRule(rules.resistance);
    }
    if (!hasSize)
        return;
    rules.huggingPriority = hugging;
    rules.resistancePriority = resistance;
    if (rules.hugging != Rule::None && rules.size == size)
        return;
    rules.size = size;
    using Relation = ConstraintSolver::Relation;
    const auto quantity = axis == horizontal ? LayoutQuantity::Width : LayoutQuantity::Height;
    const ConstraintSolver::Term term { unknownOf(node.item(), quantity), 1 };
    const auto keep = [&](Rule& rule, Relation relation, UILayoutPriority priority) {
        if (rule == Rule::None)
            rule = m_solver.addConstraint({ &term, 1 }, -size, relation, priority);
        else
            setRuleConstant(rule, -size);
    };
    keep(rules.hugging, Relation::LessThanOrEqual, hugging);
    keep(rules.resistance, Relation::GreaterThanOrEqual, resistance);
}

void LayoutIsland::refreshBaselines(LayoutNode& node)
{
    const LayoutBaseline first = node.item().firstBaselinePlace();
    const LayoutBaseline last = node.item().lastBaselinePlace();
    if (first == node.firstBaseline && last == node.lastBaseline)
        return;
    node.firstBaseline = first;
    node.lastBaseline = last;
    for (NSLayoutConstraint* const constraint : node.constraints())
        if (isBaseline(constraint->firstAttribute()) || isBaseline(constraint->secondAttribute()))
            renew(*constraint);
}

// --- Constraints -------------------------------------------------------------------------------------

void LayoutIsland::enforceMembers()
{
    m_leftOutCount = 0;
    for (Member& member : m_members)
        if (member.rule == Rule::None)
            enforce(member);
}

void LayoutIsland::enforce(Member& member)
{
    const LayoutTerms equation = LayoutTerms::of(*member.constraint);
    if (!equation.isValid())
        return;
    m_termsInHand.clear();
    for (const auto& term : equation.terms())
        m_termsInHand.push_back({ unknownOf(*term.item, term.quantity), term.coefficient });
    const auto relation = static_cast<ConstraintSolver::Relation>(member.constraint->relation());
    member.rule
        = m_solver.addConstraint(m_termsInHand, equation.constant(), relation, member.constraint->priority());
    if (member.rule == Rule::None)
        leaveOut(member, m_solver.conflict());
}

LayoutIsland::Unknown LayoutIsland::unknownOf(LayoutItem& item, LayoutQuantity quantity)
{
    LayoutNode& node = *item.layoutNode();
    if (node.island().get() != this)
        return unknownOfGiven(node, quantity);
    Unknown& unknown = node.unknowns[static_cast<std::size_t>(quantity)];
    if (unknown == Unknown::None) {
        unknown = m_solver.addVariable();
        if (m_nodeOfUnknown.size() <= indexOf(unknown))
            m_nodeOfUnknown.resize(indexOf(unknown) + 1);
        m_nodeOfUnknown[indexOf(unknown)] = &node;
        keepFromTurningNegative(node, quantity);
        tellContainer(item.layoutContainer()); // the number is no longer the frame's own, even if it stays 0
    }
    return unknown;
}

void LayoutIsland::keepFromTurningNegative(LayoutNode& node, LayoutQuantity quantity)
{
    if (quantity != LayoutQuantity::Width && quantity != LayoutQuantity::Height)
        return;
    const auto axis = quantity == LayoutQuantity::Width ? horizontal : vertical;
    const ConstraintSolver::Term term { node.unknowns[static_cast<std::size_t>(quantity)], 1 };
    node.contentRules[static_cast<std::size_t>(axis)].notNegative = m_solver.addConstraint(
        { &term, 1 }, 0, ConstraintSolver::Relation::GreaterThanOrEqual, almostRequired);
}

LayoutIsland::Unknown LayoutIsland::unknownOfGiven(LayoutNode& node, LayoutQuantity quantity)
{
    for (const Given& given : m_givens)
        if (given.node == &node && given.quantity == quantity)
            return given.unknown;
    double value = node.givenValue(quantity);
    if (!isSolvable(value))
        value = 0;
    const Unknown unknown = m_solver.addVariable();
    const ConstraintSolver::Term term { unknown, 1 };
    const Rule rule = m_solver.addConstraint({ &term, 1 }, -value, ConstraintSolver::Relation::Equal);
    m_givens.push_back({ &node, quantity, unknown, rule, value });
    node.addReader(*this);
    return unknown;
}

void LayoutIsland::setRuleConstant(Rule rule, double constant)
{
    if (!m_solver.setConstant(rule, constant)) {
        m_isFeasible = false;
        resolveConflicts();
    }
}

void LayoutIsland::dropRule(Rule& rule)
{
    if (rule != Rule::None)
        m_solver.removeConstraint(rule);
    rule = Rule::None;
}

// --- Conflicts ---------------------------------------------------------------------------------------

void LayoutIsland::resolveConflicts()
{
    while (!m_isFeasible) {
        const std::vector<Rule> conflict = m_solver.conflict();
        if (!leaveOutOne(conflict))
            return; // only givens are left, and those contradict nobody
        m_isFeasible = m_solver.solve();
    }
}

bool LayoutIsland::leaveOutOne(const std::vector<Rule>& conflict)
{
    const auto contradicts = [&](Rule rule) {
        return rule != Rule::None && std::find(conflict.begin(), conflict.end(), rule) != conflict.end();
    };
    Member* newest = nullptr;
    for (Member& member : m_members)
        if (contradicts(member.rule) && (!newest || member.serial > newest->serial))
            newest = &member;
    if (newest) {
        m_solver.removeConstraint(newest->rule);
        leaveOut(*newest, conflict);
        newest->rule = Rule::None;
        return true;
    }
    for (LayoutNode* const node : m_nodes)
        for (auto& rules : node->contentRules)
            for (Rule* const rule : { &rules.hugging, &rules.resistance }) // notNegative is not required
                if (contradicts(*rule)) {
                    dropRule(*rule);
                    return true;
                }
    return false;
}

void LayoutIsland::leaveOut(Member& member, const std::vector<Rule>& conflict)
{
    ++m_leftOutCount;
    if (std::exchange(member.isReported, true))
        return;
    NSLayoutConstraint::Conflict report { .constraints = {}, .broken = member.constraint->description() };
    for (const Rule rule : conflict)
        if (rule != member.rule || rule == Rule::None)
            report.constraints.push_back(nameOf(rule));
    report.constraints.push_back(report.broken);
    NSLayoutConstraint::report({}, report);
}

NSString LayoutIsland::nameOf(Rule rule) const
{
    for (const Member& member : m_members)
        if (member.rule == rule)
            return member.constraint->description();
    static constexpr const char* quantities[] = { "left", "top", "width", "height" };
    for (const Given& given : m_givens)
        if (given.rule == rule)
            return QStringLiteral("%1.%2 is %3")
                .arg(given.node->item().layoutName(),
                    QLatin1String(quantities[static_cast<int>(given.quantity)]))
                .arg(given.value);
    return QStringLiteral("the size of some content");
}

// --- What was found ----------------------------------------------------------------------------------

void LayoutIsland::tellContainers()
{
    for (const Unknown unknown : m_solver.changedVariables())
        if (indexOf(unknown) < m_nodeOfUnknown.size() && m_nodeOfUnknown[indexOf(unknown)])
            tellContainer(m_nodeOfUnknown[indexOf(unknown)]->item().layoutContainer());
    m_solver.clearChanges();
}

NSString LayoutIsland::description() const
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
    for (const Given& given : m_givens)
        text += nameOf(given.rule) + QLatin1Char('\n');
    for (const Member& member : m_members) {
        text += member.constraint->description();
        text += QLatin1String(member.rule == Rule::None ? " (not in force)\n" : "\n");
    }
    return text + m_solver.description();
}
