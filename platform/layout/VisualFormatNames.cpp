#include "platform/layout/VisualFormatNames.h"

#include "platform/layout/LayoutAttributes.h"

#include <algorithm>

namespace {

// The first entry of the name and the number of them.
template <typename Entries> auto lookUp(const Entries& entries, QStringView name)
{
    const auto hasName = [name](const auto& entry) { return entry.first == name; };
    const auto found = std::find_if(entries.begin(), entries.end(), hasName);
    return std::pair(found, std::count_if(found, entries.end(), hasName));
}

} // namespace

LayoutItem* VisualFormatNames::view(QStringView name, VisualFormat::Position position, const char* kind)
{
    const auto [found, count] = lookUp(m_views, name);
    if (count == 0)
        fail(position, QStringLiteral("there is no %1 \"%2\"").arg(QLatin1String(kind), name));
    else if (count > 1)
        fail(position, QStringLiteral("several views are named \"%1\"").arg(name));
    else if (!found->second)
        fail(position, QStringLiteral("the view \"%1\" is null").arg(name));
    else
        return found->second.get();
    return nullptr;
}

bool VisualFormatNames::findMetric(QStringView name, VisualFormat::Position position, const double*& metric)
{
    metric = nullptr;
    const auto [found, count] = lookUp(m_metrics, name);
    if (count == 0)
        return true;
    if (count > 1)
        return fail(position, QStringLiteral("several metrics are named \"%1\"").arg(name));
    if (!std::isfinite(found->second))
        return fail(position, QStringLiteral("the metric \"%1\" is not finite").arg(name));
    if (!isReasonable(found->second))
        return fail(position, QStringLiteral("the metric \"%1\" is too large").arg(name));
    metric = &found->second;
    return true;
}

bool VisualFormatNames::findNumber(const Value& value, double& number)
{
    number = value.number;
    if (value.name.isEmpty())
        return true;
    const double* metric = nullptr;
    if (!findMetric(value.name, value.position, metric))
        return false;
    if (!metric)
        return fail(value.position, QStringLiteral("there is no metric \"%1\"").arg(value.name));
    number = *metric;
    return true;
}

bool VisualFormatNames::findPriority(const std::optional<Value>& value, UILayoutPriority& priority)
{
    priority = UILayoutPriorityRequired;
    if (!value)
        return true;
    if (!findNumber(*value, priority))
        return false;
    const bool valid = priority > 0 && priority <= UILayoutPriorityRequired;
    return valid || fail(value->position, QStringLiteral("a priority is above 0 and at most 1000"));
}

bool VisualFormatNames::fail(VisualFormat::Position position, const NSString& message)
{
    m_error = { position.index, message };
    return false;
}
