#include "platform/foundation/StringsTable.h"

#include <QStringDecoder>

namespace {

// Reads the bytes of one table: all its marks are ASCII, and only the texts between quotes are decoded.
class StringsParser {
public:
    explicit StringsParser(const NSData& text)
        : m_text(text)
        , m_position(text.startsWith("\xEF\xBB\xBF") ? 3 : 0)
    {
    }

    StringsTable parse()
    {
        while (skipToNextEntry() && readEntry()) { }
        return std::move(m_table);
    }

private:
    bool isAtEnd() const { return m_position >= m_text.size(); }
    char current() const { return isAtEnd() ? '\0' : m_text.at(m_position); }
    bool isAt(const char* mark) const { return QByteArrayView(m_text).sliced(m_position).startsWith(mark); }

    void advance(qsizetype count = 1)
    {
        for (; count > 0 && !isAtEnd(); --count)
            m_line += m_text.at(m_position++) == '\n';
    }

    bool fail(const char* message) { return fail(message, m_line); }
    bool fail(const char* message, int line)
    {
        m_table.error = StringsTable::Error { line, NSString::fromLatin1(message) };
        return false;
    }

    // White space and comments; false when a comment does not end.
    bool skipSpace()
    {
        while (!isAtEnd()) {
            if (QByteArrayView(" \t\r\n").contains(current())) {
                advance();
            } else if (isAt("//")) {
                while (!isAtEnd() && current() != '\n')
                    advance();
            } else if (isAt("/*")) {
                const auto end = m_text.indexOf("*/", m_position + 2);
                if (end < 0)
                    return fail("a comment does not end");
                advance(end + 2 - m_position);
            } else {
                break;
            }
        }
        return true;
    }

    bool skipToNextEntry() { return skipSpace() && !isAtEnd(); }

    bool readMark(char mark, const char* messageWhenMissing)
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
        if (!readString(key) || !readMark('=', "expected \"=\" after the key") || !readString(text)
            || !readMark(';', "expected \";\" after the text"))
            return false;
        m_table.entries.insert(key, text);
        return true;
    }

    bool readString(NSString& string)
    {
        if (!readMark('"', "expected a text in quotes"))
            return false;
        const int firstLine = m_line;
        string = QStringLiteral("");
        while (current() != '"') {
            if (isAtEnd())
                return fail("a text in quotes does not end", firstLine);
            if (!(current() == '\\' ? readEscape(string) : readPlainText(string)))
                return false;
        }
        advance();
        return string.isValidUtf16() || fail("half of a surrogate pair", firstLine);
    }

    bool readPlainText(NSString& string)
    {
        auto end = m_position;
        while (end < m_text.size() && m_text.at(end) != '"' && m_text.at(end) != '\\')
            ++end;
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        string += decoder.decode(QByteArrayView(m_text).sliced(m_position, end - m_position));
        if (decoder.hasError())
            return fail("the text is not UTF-8");
        advance(end - m_position);
        return true;
    }

    bool readEscape(NSString& string)
    {
        advance();
        const char escape = current();
        if (escape == 'U')
            return readUnicodeEscape(string);
        switch (escape) {
        case 'n':
            string += u'\n';
            break;
        case 't':
            string += u'\t';
            break;
        case '"':
        case '\\':
            string += QLatin1Char(escape);
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
        const NSData digits = m_text.mid(m_position, 4);
        bool isNumber = digits.size() == 4 && std::all_of(digits.cbegin(), digits.cend(), [](char digit) {
            return std::isxdigit(static_cast<unsigned char>(digit)) != 0;
        });
        if (!isNumber)
            return fail("\\U needs four hexadecimal digits");
        string += QChar(digits.toUShort(&isNumber, 16));
        advance(4);
        return true;
    }

    const NSData& m_text;
    qsizetype m_position;
    int m_line = 1;
    StringsTable m_table;
};

} // namespace

StringsTable StringsTable::parse(const NSData& text) { return StringsParser(text).parse(); }
