// Reads one visual format, from left to right, a character ahead at most.
#pragma once

#include "platform/layout/VisualFormat.h"
#include "platform/layout/VisualFormatError.h"

class VisualFormatParser {
public:
    VisualFormatParser(QStringView text, VisualFormatError& error)
        : m_text(text)
        , m_error(error)
    {
    }

    // Nothing, and the error, when the text is no visual format.
    std::optional<VisualFormat> parse();

private:
    using Value = VisualFormat::Value;
    using Predicate = VisualFormat::Predicate;
    using Gap = VisualFormat::Gap;
    using View = VisualFormat::View;

    // Each reads one part of the grammar, blanks before it included; false after an error.
    bool readFormat(VisualFormat& format);
    bool readOrientation(UILayoutConstraintAxis& axis);
    bool readStart(VisualFormat& format);
    bool readChain(VisualFormat& format);
    bool readConnection(Gap& gap); // flush where there is none
    bool readView(View& view);
    bool readPredicates(std::vector<Predicate>& predicates, const char* expectedValue);
    bool readPredicate(Predicate& predicate, const char* expectedValue);
    bool readRelation(NSLayoutRelation& relation);
    bool readPriority(std::optional<Value>& priority);
    bool readValue(Value& value, const char* expected);
    bool readNumber(Value& value);
    bool readDigits();
    bool readMark(char16_t mark, const char* expected);
    QStringView readName(); // empty where there is none

    bool isAtEnd() const { return m_position >= m_text.size(); }
    char16_t current() const { return isAtEnd() ? u'\0' : m_text.at(m_position).unicode(); }
    char16_t next() const
    {
        return m_position + 1 < m_text.size() ? m_text.at(m_position + 1).unicode() : u'\0';
    }
    bool isAtDigit() const { return current() >= u'0' && current() <= u'9'; }
    bool isAtNumber() const;
    // After blanks.
    bool isAt(char16_t mark);
    VisualFormat::Position position();
    void skipBlanks();
    bool take(char16_t mark);
    bool fail(const char* message);

    QStringView m_text;
    VisualFormatError& m_error;
    qsizetype m_position = 0;
};
