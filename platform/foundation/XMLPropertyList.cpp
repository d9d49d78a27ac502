#include "platform/foundation/XMLPropertyList.h"

#include <cmath>

namespace {

using NumberText = std::optional<NSNumber>;

// Decimal or, after 0x, hexadecimal, with or without a sign; beyond 64 bits the nearest double.
NumberText integerFrom(const QByteArray& text)
{
    const bool hasSign = text.startsWith('-') || text.startsWith('+');
    QByteArray digits = hasSign ? text.sliced(1) : text;
    const bool isHexadecimal = digits.startsWith("0x") || digits.startsWith("0X");
    if (isHexadecimal)
        digits.remove(0, 2);
    const auto isDigit = [&](char character) {
        return isHexadecimal ? std::isxdigit(static_cast<unsigned char>(character)) != 0
                             : character >= '0' && character <= '9';
    };
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), isDigit))
        return std::nullopt;
    if (!isHexadecimal)
        return NSNumber::withDecimalDigits(text);
    bool fits = false;
    const qulonglong magnitude = digits.toULongLong(&fits, 16);
    if (!fits)
        return std::nullopt;
    return NSNumber::withDecimalDigits((text.startsWith('-') ? "-" : "") + QByteArray::number(magnitude));
}

NumberText realFrom(const QByteArray& text)
{
    const QByteArray name = text.toLower();
    if (name == "nan")
        return NSNumber(std::nan(""));
    for (const char* infinity : { "inf", "+inf", "infinity", "+infinity" })
        if (name == infinity)
            return NSNumber(HUGE_VAL);
    if (name == "-inf" || name == "-infinity")
        return NSNumber(-HUGE_VAL);
    const bool isPlain = std::all_of(
        name.begin(), name.end(), [](char character) { return std::strchr("0123456789+-.e", character); });
    bool isNumber = false;
    const double value = NSString::fromLatin1(text).toDouble(&isNumber); // never by the user's locale
    // Too large for a double is no failure: it is infinite.
    return isPlain && (isNumber || std::isinf(value)) ? NumberText(value) : std::nullopt;
}

NSDate dateFrom(const NSString& text)
{
    QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
    const bool isComplete = text.contains(u'T') && text.endsWith(u'Z');
    return isComplete && date.isValid() ? date.toUTC() : NSDate();
}

} // namespace

XMLPropertyList::XMLPropertyList(const NSString& text, int maximumDepth)
    : m_reader(text) // as text: the reader looks at no declaration of an encoding
    , m_maximumDepth(maximumDepth)
{
}

NSPropertyList XMLPropertyList::read()
{
    while (!m_reader.atEnd())
        if (!readToken())
            return {};
    if (!m_list)
        fail(QStringLiteral("there is no value in the property list"));
    return m_list.value_or(NSPropertyList());
}

bool XMLPropertyList::readToken()
{
    switch (m_reader.readNext()) {
    case QXmlStreamReader::Invalid:
        return fail(m_reader.errorString());
    case QXmlStreamReader::StartElement:
        return beginElement();
    case QXmlStreamReader::EndElement:
        return endElement();
    case QXmlStreamReader::Characters:
        return m_reader.isWhitespace() || fail(QStringLiteral("text outside of a value"));
    case QXmlStreamReader::DTD:
        // A list has nothing to declare, and elements inside a declaration would escape the limit of depth.
        if (m_reader.text().contains(u'[') || m_reader.text().count(u'<') > 1)
            return fail(QStringLiteral("a property list declares nothing of its own"));
        return true;
    default:
        return true;
    }
}

bool XMLPropertyList::beginElement()
{
    const NSString element = m_reader.name().toString();
    if (element == u"plist" && !m_isInList && !m_list) {
        m_isInList = true;
        return true;
    }
    if (element == u"key")
        return readKey();
    if (element != u"dict" && element != u"array")
        return readScalar(element);
    if (m_path.size() >= static_cast<std::size_t>(m_maximumDepth))
        return fail(QStringLiteral("more than %1 values in each other").arg(m_maximumDepth));
    m_path.emplace_back().isDictionary = element == u"dict";
    return true;
}

// Only containers and the list itself end here: what else begins is read with its end.
bool XMLPropertyList::endElement()
{
    if (m_path.empty())
        return true;
    Container container = std::move(m_path.back());
    m_path.pop_back();
    if (container.key)
        return fail(QStringLiteral("the key \"%1\" has no value").arg(*container.key));
    return container.isDictionary ? add(std::move(container.entries)) : add(std::move(container.items));
}

bool XMLPropertyList::readKey()
{
    if (m_path.empty() || !m_path.back().isDictionary)
        return fail(QStringLiteral("a key outside of a dictionary"));
    if (m_path.back().key)
        return fail(QStringLiteral("the key \"%1\" has no value").arg(*m_path.back().key));
    m_path.back().key = m_reader.readElementText();
    return !m_reader.hasError() || fail(m_reader.errorString());
}

bool XMLPropertyList::readScalar(QStringView element)
{
    const bool isText = element == u"string";
    const bool isTruth = element == u"true" || element == u"false";
    const bool isNumber = element == u"integer" || element == u"real";
    if (!isText && !isTruth && !isNumber && element != u"date" && element != u"data")
        return fail(QStringLiteral("<%1> is no kind of value").arg(element));
    const NSString written = m_reader.readElementText();
    if (m_reader.hasError())
        return fail(m_reader.errorString());
    if (isText)
        return add(written.isNull() ? QStringLiteral("") : written);
    const NSString text = written.trimmed();
    if (isTruth)
        return text.isEmpty() ? add(NSNumber(element == u"true")) : failToRead(text, "truth value");
    if (isNumber) {
        const bool isWhole = element == u"integer";
        const NumberText number = isWhole ? integerFrom(text.toUtf8()) : realFrom(text.toUtf8());
        return number ? add(*number) : failToRead(text, isWhole ? "integer" : "number");
    }
    if (element == u"date") {
        const NSDate date = dateFrom(text);
        return date.isValid() ? add(date) : failToRead(text, "date");
    }
    const auto bytes = QByteArray::fromBase64Encoding(
        text.simplified().remove(u' ').toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    return bytes ? add(bytes.decoded.isNull() ? NSData("") : bytes.decoded) : failToRead(text, "base64 data");
}

bool XMLPropertyList::add(NSPropertyList value)
{
    if (m_path.empty()) {
        if (m_list)
            return fail(QStringLiteral("a property list holds one value"));
        m_list = std::move(value);
        return true;
    }
    Container& container = m_path.back();
    if (!container.isDictionary) {
        container.items.push_back(std::move(value));
        return true;
    }
    if (!container.key)
        return fail(QStringLiteral("a value without a key in a dictionary"));
    container.entries.insert_or_assign(*container.key, std::move(value));
    container.key.reset();
    return true;
}

bool XMLPropertyList::failToRead(const NSString& text, const char* kind)
{
    return fail(QStringLiteral("\"%1\" is no %2").arg(text.left(40), QLatin1String(kind)));
}

bool XMLPropertyList::fail(const NSString& problem)
{
    m_problemLine = static_cast<int>(m_reader.lineNumber());
    m_problem = problem;
    return false;
}
