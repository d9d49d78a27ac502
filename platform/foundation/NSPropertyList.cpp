#include "platform/foundation/NSPropertyList.h"

NSPropertyList::NSPropertyList(const NSString& string)
{
    if (!string.isNull())
        m_value = string;
}

NSPropertyList::NSPropertyList(const NSDate& date)
{
    if (date.isValid())
        m_value = date;
}

NSPropertyList::NSPropertyList(const NSData& data)
    : m_value(data)
{
}

NSPropertyList::NSPropertyList(Array array)
    : m_value(std::make_shared<const Array>(std::move(array)))
{
}

NSPropertyList::NSPropertyList(Dictionary dictionary)
    : m_value(std::make_shared<const Dictionary>(std::move(dictionary)))
{
}

const NSPropertyList& NSPropertyList::operator[](const NSString& key) const
{
    static const NSPropertyList nil;
    const auto found = dictionary().find(key);
    return found == dictionary().end() ? nil : found->second;
}

const NSPropertyList& NSPropertyList::operator[](std::size_t index) const
{
    static const NSPropertyList nil;
    return index < array().size() ? array()[index] : nil;
}

std::size_t NSPropertyList::count() const { return isDictionary() ? dictionary().size() : array().size(); }

const NSPropertyList::Array& NSPropertyList::array() const
{
    static const Array empty;
    const auto* array = std::get_if<SharedArray>(&m_value);
    return array ? **array : empty;
}

const NSPropertyList::Dictionary& NSPropertyList::dictionary() const
{
    static const Dictionary empty;
    const auto* dictionary = std::get_if<SharedDictionary>(&m_value);
    return dictionary ? **dictionary : empty;
}

NSString NSPropertyList::stringValue() const
{
    const auto* string = std::get_if<NSString>(&m_value);
    return string ? *string : NSString();
}

NSDate NSPropertyList::dateValue() const
{
    const auto* date = std::get_if<NSDate>(&m_value);
    return date ? *date : NSDate();
}

NSData NSPropertyList::dataValue() const
{
    const auto* data = std::get_if<NSData>(&m_value);
    return data ? *data : NSData();
}

double NSPropertyList::doubleValue() const { return numberValue().doubleValue(); }

std::uint64_t NSPropertyList::unsignedIntegerValue() const { return numberValue().unsignedIntegerValue(); }

std::int64_t NSPropertyList::integerValue() const { return numberValue().integerValue(); }

// The number, or what a string begins with: white space, a sign, digits, a fraction, an exponent.
NSNumber NSPropertyList::numberValue() const
{
    if (const auto* number = std::get_if<NSNumber>(&m_value))
        return *number;
    const QByteArray text = stringValue().trimmed().toLatin1();
    qsizetype end = 0;
    const auto skip = [&](const char* accepted) {
        if (end < text.size() && QByteArrayView(accepted).contains(text.at(end)))
            ++end;
    };
    const auto skipDigits = [&] {
        const auto start = end;
        while (end < text.size() && text.at(end) >= '0' && text.at(end) <= '9')
            ++end;
        return end > start;
    };
    skip("+-");
    bool isWhole = skipDigits();
    if (end < text.size() && text.at(end) == '.') {
        ++end;
        isWhole = false;
        skipDigits();
    }
    const auto mantissaEnd = end;
    skip("eE");
    if (end > mantissaEnd) {
        skip("+-");
        if (skipDigits())
            isWhole = false;
        else
            end = mantissaEnd;
    }
    const QByteArray number = text.first(end);
    return isWhole ? NSNumber::withDecimalDigits(number) : NSNumber(NSString::fromLatin1(number).toDouble());
}
