#include "platform/foundation/StringsTable.h"

#include "platform/foundation/EncodedText.h"

namespace {

class StringsParser {
public:
    explicit StringsParser(const NSString& text)
        : m_text(text)
    {
    }

    StringsTable parse()
    {
        while (skipToNextEntry() && readEntry()) { }
        return std::move(m_table);
    }

    // Whether the whole text was looked at, be it in vain.
    bool isAtEnd() const { return m_position >= m_text.size(); }

private:
    QChar current() const { return isAtEnd() ? QChar() : m_text.at(m_position); }
    bool isAt(QStringView mark) const { return QStringView(m_text).sliced(m_position).startsWith(mark); }

    void advance(qsizetype count = 1)
    {
        for (; count > 0 && !isAtEnd(); --count)
            m_line += m_text.at(m_position++) == u'\n';
    }

    bool fail(const char* message) { return fail(message, m_line); }
    bool fail(const char* message, int line)
    {
        m_table.error = StringsTable::Error { line, NSString::fromLatin1(message) };
        return false;
    }

    bool failAtEnd(const char* message, int line)
    {
        m_position = m_text.size();
        return fail(message, line);
    }

    // White space and comments; false when a comment does not end.
    bool skipSpace()
    {
        while (!isAtEnd()) {
            if (QStringView(u" \t\r\n").contains(current())) {
                advance();
            } else if (isAt(u"//")) {
                while (!isAtEnd() && current() != u'\n')
                    advance();
            } else if (isAt(u"/*")) {
                const auto end = m_text.indexOf(u"*/", m_position + 2);
                if (end < 0)
                    return failAtEnd("a comment does not end", m_line);
                advance(end + 2 - m_position);
            } else {
                break;
            }
        }
        return true;
    }

    bool skipToNextEntry() { return skipSpace() && !isAtEnd(); }

    bool readMark(QChar mark, const char* messageWhenMissing)
    {
        if (!skipSpace())
            return false;
        if (current() != mark)
            return fail(messageWhenMissing);
        advance();
        return true;
    }

    // "key" = "text";
    bool readEntry()
    {
        NSString key;
        NSString text;
        if (!readString(key) || !readMark(u'=', "expected \"=\" after the key") || !readString(text)
            || !readMark(u';', "expected \";\" after the text"))
            return false;
        m_table.entries.insert(key, text);
        return true;
    }

    bool readString(NSString& string)
    {
        if (!readMark(u'"', "expected a text in quotes"))
            return false;
        const int firstLine = m_line;
        string = QStringLiteral("");
        while (current() != u'"') {
            if (isAtEnd())
                return fail("a text in quotes does not end", firstLine);
            if (current() != u'\\')
                readPlainText(string);
            else if (!readEscape(string))
                return false;
        }
        advance();
        return string.isValidUtf16() || fail("half of a surrogate pair", firstLine);
    }

    void readPlainText(NSString& string)
    {
        auto end = m_position;
        while (end < m_text.size() && m_text.at(end) != u'"' && m_text.at(end) != u'\\')
            ++end;
        string += QStringView(m_text).sliced(m_position, end - m_position);
        advance(end - m_position);
    }

    bool readEscape(NSString& string)
    {
        advance();
        const QChar escape = current();
        if (escape == u'U')
            return readUnicodeEscape(string);
        switch (escape.unicode()) {
        case u'n':
            string += u'\n';
            break;
        case u't':
            string += u'\t';
            break;
        case u'"':
        case u'\\':
            string += escape;
            break;
        default:
            return fail("unknown escape after a backslash");
        }
        advance();
        return true;
    }

    // \Uxxxx is one UTF-16 unit; a character beyond the first 65,536 takes two.
    bool readUnicodeEscape(NSString& string)
    {
        advance();
        const NSString digits = m_text.mid(m_position, 4);
        bool isNumber = digits.size() == 4 && std::all_of(digits.cbegin(), digits.cend(), [](QChar digit) {
            return std::isxdigit(digit.toLatin1()) != 0; // 0 for what is not Latin
        });
        if (!isNumber)
            return fail("\\U needs four hexadecimal digits");
        string += QChar(digits.toUShort(&isNumber, 16));
        advance(4);
        return true;
    }

    const NSString& m_text;
    qsizetype m_position = 0;
    int m_line = 1;
    StringsTable m_table;
};

} // namespace

StringsTable StringsTable::parse(const NSData& data)
{
    const EncodedText text = EncodedText::decode(data);
    StringsParser parser(text.text);
    StringsTable table = parser.parse();
    if (!text.problem.isEmpty() && parser.isAtEnd())
        table.error = Error { text.problemLine, text.problem };
    return table;
}
