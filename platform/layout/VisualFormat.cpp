#include "platform/layout/VisualFormat.h"

#include <QLocale>

namespace {

using Value = VisualFormat::Value;
using Predicate = VisualFormat::Predicate;
using Gap = VisualFormat::Gap;

void append(NSString& text, const Value& value)
{
    if (value.name.isEmpty())
        text += NSString::number(value.number, 'g', QLocale::FloatingPointShortest);
    else
        text += value.name;
}

void append(NSString& text, const std::vector<Predicate>& predicates)
{
    static constexpr const char* relations[] = { "<=", "==", ">=" };
    char16_t separator = u'(';
    for (const Predicate& predicate : predicates) {
        text += separator;
        text += QLatin1String(relations[static_cast<int>(predicate.relation) + 1]);
        append(text, predicate.value);
        if (predicate.priority) {
            text += u'@';
            append(text, *predicate.priority);
        }
        separator = u',';
    }
    if (!predicates.empty())
        text += u')';
}

void append(NSString& text, const Gap& gap)
{
    if (gap.kind == VisualFormat::GapKind::Flush)
        return;
    text += u'-';
    if (gap.kind == VisualFormat::GapKind::Standard)
        return;
    append(text, gap.predicates);
    text += u'-';
}

} // namespace

NSString VisualFormat::description() const
{
    NSString text = axis == UILayoutConstraintAxis::Horizontal ? QStringLiteral("H:") : QStringLiteral("V:");
    if (start) {
        text += u'|';
        append(text, start->gap);
    }
    for (const View& view : views) {
        append(text, view.gapBefore);
        text += u'[' + view.name.toString();
        append(text, view.sizes);
        text += u']';
    }
    if (end) {
        append(text, end->gap);
        text += u'|';
    }
    return text;
}
