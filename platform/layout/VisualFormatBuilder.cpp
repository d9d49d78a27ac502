#include "platform/layout/VisualFormatBuilder.h"

#include "platform/layout/LayoutAttributes.h"

namespace {

// Between two views; from the container's edge it is the container's margin.
constexpr double standardGap = 8;

struct Alignment {
    NSLayoutFormatOptions option;
    NSLayoutAttribute attribute;
};
constexpr Alignment alignments[] = {
    { NSLayoutFormatOptions::AlignAllLeft, NSLayoutAttribute::Left },
    { NSLayoutFormatOptions::AlignAllRight, NSLayoutAttribute::Right },
    { NSLayoutFormatOptions::AlignAllTop, NSLayoutAttribute::Top },
    { NSLayoutFormatOptions::AlignAllBottom, NSLayoutAttribute::Bottom },
    { NSLayoutFormatOptions::AlignAllLeading, NSLayoutAttribute::Leading },
    { NSLayoutFormatOptions::AlignAllTrailing, NSLayoutAttribute::Trailing },
    { NSLayoutFormatOptions::AlignAllCenterX, NSLayoutAttribute::CenterX },
    { NSLayoutFormatOptions::AlignAllCenterY, NSLayoutAttribute::CenterY },
    { NSLayoutFormatOptions::AlignAllLastBaseline, NSLayoutAttribute::LastBaseline },
    { NSLayoutFormatOptions::AlignAllFirstBaseline, NSLayoutAttribute::FirstBaseline },
};

} // namespace

VisualFormatBuilder::List VisualFormatBuilder::build(const VisualFormat& format)
{
    m_constraints.clear();
    if (!buildAll(format))
        return {};
    return std::move(m_constraints);
}

bool VisualFormatBuilder::buildAll(const VisualFormat& format)
{
    if (!chooseFlow(format.axis) || !checkAlignments(format.axis) || !findItems(format.views)
        || !findContainers(format))
        return false;
    if (format.start && !buildStart(*format.start))
        return false;
    for (std::size_t index = 0; index < m_items.size(); ++index) {
        const View& view = format.views[index];
        const Place place { m_items[index], m_flow.start };
        if (index > 0 && !buildGap(view.gapBefore, { m_items[index - 1], m_flow.end }, place, standardGap))
            return false;
        for (const Predicate& size : view.sizes)
            if (!buildSize(*m_items[index], size))
                return false;
    }
    if (format.end && !buildEnd(*format.end))
        return false;
    buildAlignments();
    return true;
}

// --- What is given -----------------------------------------------------------------------------------

bool VisualFormatBuilder::chooseFlow(UILayoutConstraintAxis axis)
{
    using enum NSLayoutAttribute;
    constexpr auto leftToRight = NSLayoutFormatOptions::DirectionLeftToRight;
    constexpr auto rightToLeft = NSLayoutFormatOptions::DirectionRightToLeft;
    if (hasBits(m_options, leftToRight | rightToLeft))
        return fail({}, QStringLiteral("the options ask for two directions"));
    if (axis == UILayoutConstraintAxis::Vertical)
        m_flow = { Top, Bottom, TopMargin, BottomMargin, Height, false };
    else if (hasBits(m_options, leftToRight))
        m_flow = { Left, Right, LeftMargin, RightMargin, Width, false };
    else if (hasBits(m_options, rightToLeft))
        m_flow = { Right, Left, RightMargin, LeftMargin, Width, true };
    else
        m_flow = { Leading, Trailing, LeadingMargin, TrailingMargin, Width, false };
    return true;
}

bool VisualFormatBuilder::checkAlignments(UILayoutConstraintAxis axis)
{
    for (const Alignment& alignment : alignments) {
        const auto traits = traitsOf(alignment.attribute);
        if (hasBits(m_options, alignment.option) && traits.axis == axis)
            return fail({},
                QStringLiteral("views in a row along an axis cannot share a place on it: %1")
                    .arg(QLatin1String(traits.name)));
    }
    return true;
}

bool VisualFormatBuilder::findItems(const std::vector<View>& views)
{
    m_items.clear();
    m_items.reserve(views.size());
    for (const View& view : views) {
        LayoutItem* const item = m_names.view(view.name, view.position);
        if (!item)
            return false;
        for (const LayoutItem* earlier : m_items)
            if (item == earlier)
                return fail(view.position, QStringLiteral("the view \"%1\" is there already").arg(view.name));
        m_items.push_back(item);
    }
    return true;
}

bool VisualFormatBuilder::findContainers(const VisualFormat& format)
{
    m_startContainer = m_items.front()->layoutContainer();
    m_endContainer = m_items.back()->layoutContainer();
    const auto missing = QStringLiteral("the view \"%1\" has no superview");
    if (format.start && !m_startContainer)
        return fail(format.start->position, missing.arg(format.views.front().name));
    if (format.end && !m_endContainer)
        return fail(format.end->position, missing.arg(format.views.back().name));
    if (format.start && format.end && m_startContainer != m_endContainer)
        return fail(format.end->position, QStringLiteral("the views at both ends have different superviews"));
    return true;
}

// --- What is made ------------------------------------------------------------------------------------

bool VisualFormatBuilder::buildStart(const VisualFormat::Pin& pin)
{
    const bool keepsMargin = pin.gap.kind == VisualFormat::GapKind::Standard;
    const auto edge = keepsMargin ? m_flow.startMargin : m_flow.start;
    return buildGap(pin.gap, { m_startContainer, edge }, { m_items.front(), m_flow.start }, 0);
}

bool VisualFormatBuilder::buildEnd(const VisualFormat::Pin& pin)
{
    const bool keepsMargin = pin.gap.kind == VisualFormat::GapKind::Standard;
    const auto edge = keepsMargin ? m_flow.endMargin : m_flow.end;
    return buildGap(pin.gap, { m_items.back(), m_flow.end }, { m_endContainer, edge }, 0);
}

bool VisualFormatBuilder::buildGap(const Gap& gap, Place before, Place after, double standardDistance)
{
    if (m_flow.isAgainstCoordinates)
        std::swap(before, after);
    if (gap.kind != VisualFormat::GapKind::Given) {
        const double distance = gap.kind == VisualFormat::GapKind::Standard ? standardDistance : 0;
        relate(after, before, { NSLayoutRelation::Equal, distance, UILayoutPriorityRequired });
        return true;
    }
    for (const Predicate& predicate : gap.predicates) {
        Rule rule { predicate.relation, 0, UILayoutPriorityRequired };
        if (!m_names.findNumber(predicate.value, rule.constant)
            || !m_names.findPriority(predicate.priority, rule.priority))
            return false;
        relate(after, before, rule);
    }
    return true;
}

bool VisualFormatBuilder::buildSize(LayoutItem& item, const Predicate& predicate)
{
    Rule rule { predicate.relation, predicate.value.number, UILayoutPriorityRequired };
    const auto& value = predicate.value;
    Place other { nullptr, NSLayoutAttribute::NotAnAttribute };
    if (!value.name.isEmpty()) {
        const double* metric = nullptr;
        if (!m_names.findMetric(value.name, value.position, metric))
            return false;
        if (metric)
            rule.constant = *metric;
        else if (LayoutItem* const view = m_names.view(value.name, value.position, "metric or view"))
            other = { view, m_flow.size };
        else
            return false;
    }
    if (other.item == &item)
        return fail(value.position, QStringLiteral("a view cannot follow its own size"));
    if (rule.constant < 0)
        return fail(value.position, QStringLiteral("a size cannot be negative"));
    if (!m_names.findPriority(predicate.priority, rule.priority))
        return false;
    relate({ &item, m_flow.size }, other, rule);
    return true;
}

void VisualFormatBuilder::buildAlignments()
{
    for (const Alignment& alignment : alignments) {
        if (!hasBits(m_options, alignment.option))
            continue;
        for (std::size_t index = 1; index < m_items.size(); ++index)
            relate({ m_items[index], alignment.attribute }, { m_items[index - 1], alignment.attribute },
                { NSLayoutRelation::Equal, 0, UILayoutPriorityRequired });
    }
}

// All that could make the engine refuse has been looked at before.
void VisualFormatBuilder::relate(Place first, Place second, const Rule& rule)
{
    auto constraint = NSLayoutConstraint::constraintWithItem(
        *first.item, first.attribute, rule.relation, second.item, second.attribute, 1, rule.constant);
    constraint->setPriority(rule.priority);
    m_constraints.push_back(std::move(constraint));
}

bool VisualFormatBuilder::fail(VisualFormat::Position position, const NSString& message)
{
    m_error = { position.index, message };
    return false;
}
