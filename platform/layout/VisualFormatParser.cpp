#include "platform/layout/VisualFormatParser.h"

#include "platform/layout/LayoutAttributes.h"

std::optional<VisualFormat> VisualFormatParser::parse()
{
    VisualFormat format;
    if (!readFormat(format))
        return std::nullopt;
    return format;
}

bool VisualFormatParser::readFormat(VisualFormat& format)
{
    skipBlanks();
    if (isAtEnd())
        return fail("the format is empty");
    return readOrientation(format.axis) && readStart(format) && readChain(format);
}

bool VisualFormatParser::readOrientation(UILayoutConstraintAxis& axis)
{
    const char16_t letter = current();
    if (next() != u':') {
        const bool beginsWithoutIt = letter == u'|' || letter == u'[';
        return beginsWithoutIt || fail("expected \"H:\", \"V:\", \"|\" or \"[\"");
    }
    if (letter != u'H' && letter != u'V')
        return fail("expected \"H:\" or \"V:\"");
    axis = letter == u'H' ? UILayoutConstraintAxis::Horizontal : UILayoutConstraintAxis::Vertical;
    m_position += 2;
    return true;
}

bool VisualFormatParser::readStart(VisualFormat& format)
{
    const auto place = position();
    if (!take(u'|'))
        return isAt(u'[') || fail("expected \"|\" or \"[\"");
    Gap gap;
    if (!readConnection(gap))
        return false;
    const bool isConnected = gap.kind != VisualFormat::GapKind::Flush;
    format.start = { std::move(gap), place };
    return isAt(u'[') || fail(isConnected ? "expected \"[\"" : "expected \"-\" or \"[\"");
}

// Begins at the "[" of the first view.
bool VisualFormatParser::readChain(VisualFormat& format)
{
    Gap gap;
    while (true) {
        if (isAt(u'[')) {
            format.views.emplace_back().gapBefore = std::move(gap);
            if (!readView(format.views.back()))
                return false;
        } else if (const auto place = position(); take(u'|')) {
            format.end = { std::move(gap), place };
            skipBlanks();
            return isAtEnd() || fail("expected the end after \"|\"");
        } else {
            return fail("expected \"[\" or \"|\"");
        }
        skipBlanks();
        if (isAtEnd())
            return true;
        if (!isAt(u'-') && !isAt(u'[') && !isAt(u'|'))
            return fail("expected \"-\", \"[\", \"|\" or the end");
        gap = {};
        if (!readConnection(gap))
            return false;
    }
}

bool VisualFormatParser::readConnection(Gap& gap)
{
    gap.position = position();
    if (!take(u'-'))
        return true;
    gap.kind = VisualFormat::GapKind::Standard;
    if (isAt(u'[') || isAt(u'|'))
        return true;
    gap.kind = VisualFormat::GapKind::Given;
    if (isAt(u'(')) {
        if (!readPredicates(gap.predicates, "expected a number or the name of a metric"))
            return false;
    } else {
        Predicate& predicate = gap.predicates.emplace_back();
        if (!readValue(predicate.value, "expected a number, the name of a metric, \"(\", \"[\" or \"|\"")
            || !readPriority(predicate.priority))
            return false;
    }
    return readMark(u'-', "expected \"-\" after the gap");
}

bool VisualFormatParser::readView(View& view)
{
    view.position = position();
    take(u'[');
    skipBlanks();
    view.name = readName();
    if (view.name.isEmpty())
        return fail("expected the name of a view");
    if (!isAt(u'('))
        return readMark(u']', "expected \"(\" or \"]\"");
    return readPredicates(view.sizes, "expected a number or the name of a metric or view")
        && readMark(u']', "expected \"]\"");
}

// Begins at the "(".
bool VisualFormatParser::readPredicates(std::vector<Predicate>& predicates, const char* expectedValue)
{
    do {
        ++m_position;
        if (!readPredicate(predicates.emplace_back(), expectedValue))
            return false;
    } while (isAt(u','));
    return readMark(
        u')', predicates.back().priority ? "expected \",\" or \")\"" : "expected \"@\", \",\" or \")\"");
}

bool VisualFormatParser::readPredicate(Predicate& predicate, const char* expectedValue)
{
    return readRelation(predicate.relation) && readValue(predicate.value, expectedValue)
        && readPriority(predicate.priority);
}

bool VisualFormatParser::readRelation(NSLayoutRelation& relation)
{
    skipBlanks();
    switch (current()) {
    case u'<':
        relation = NSLayoutRelation::LessThanOrEqual;
        break;
    case u'=':
        relation = NSLayoutRelation::Equal;
        break;
    case u'>':
        relation = NSLayoutRelation::GreaterThanOrEqual;
        break;
    default:
        return true; // no relation is written: equal
    }
    if (next() != u'=')
        return fail("expected \"==\", \"<=\" or \">=\"");
    m_position += 2;
    return true;
}

bool VisualFormatParser::readPriority(std::optional<Value>& priority)
{
    if (!take(u'@'))
        return true;
    Value value;
    if (!readValue(value, "expected a priority"))
        return false;
    priority = value;
    return true;
}

bool VisualFormatParser::readValue(Value& value, const char* expected)
{
    value.position = position();
    if (isAtNumber())
        return readNumber(value);
    value.name = readName();
    return !value.name.isEmpty() || fail(expected);
}

bool VisualFormatParser::isAtNumber() const
{
    return isAtDigit() || current() == u'+' || current() == u'-' || current() == u'.';
}

bool VisualFormatParser::readNumber(Value& value)
{
    const auto begin = m_position;
    if (current() == u'+' || current() == u'-')
        ++m_position;
    if (current() != u'.' && !readDigits())
        return false;
    if (current() == u'.') {
        ++m_position;
        if (!readDigits())
            return false;
    }
    if (current() == u'e' || current() == u'E') {
        ++m_position;
        if (current() == u'+' || current() == u'-')
            ++m_position;
        if (!readDigits())
            return false;
    }
    value.number = m_text.sliced(begin, m_position - begin).toDouble();
    if (isReasonable(value.number))
        return true;
    m_position = begin;
    return fail("the number is too large");
}

bool VisualFormatParser::readDigits()
{
    if (!isAtDigit())
        return fail("expected a digit");
    while (isAtDigit())
        ++m_position;
    return true;
}

bool VisualFormatParser::readMark(char16_t mark, const char* expected)
{
    return take(mark) || fail(expected);
}

QStringView VisualFormatParser::readName()
{
    const auto begin = m_position;
    while (!isAtEnd()) {
        const QChar character = m_text.at(m_position);
        const bool belongs
            = character.isLetter() || character == u'_' || (m_position > begin && character.isDigit());
        if (!belongs)
            break;
        ++m_position;
    }
    return m_text.sliced(begin, m_position - begin);
}

bool VisualFormatParser::isAt(char16_t mark)
{
    skipBlanks();
    return current() == mark;
}

VisualFormat::Position VisualFormatParser::position()
{
    skipBlanks();
    return { m_position };
}

void VisualFormatParser::skipBlanks()
{
    while (!isAtEnd() && m_text.at(m_position).isSpace())
        ++m_position;
}

bool VisualFormatParser::take(char16_t mark)
{
    if (!isAt(mark))
        return false;
    ++m_position;
    return true;
}

bool VisualFormatParser::fail(const char* message)
{
    m_error = { m_position, NSString::fromLatin1(message) };
    return false;
}
