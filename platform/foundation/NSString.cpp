#include "platform/foundation/NSString.h"

#include "platform/foundation/NSLocale.h"

#include <QLocale>

#include <limits>

namespace {

using Arguments = std::initializer_list<NSFormatArgument>;

// Fills one format from left to right.
class FormatFilling {
public:
    FormatFilling(const NSString& format, Arguments arguments, NSString locale)
        : m_format(format)
        , m_arguments(arguments)
        , m_locale(std::move(locale))
    {
    }

    NSString fill()
    {
        while (m_position < m_format.size()) {
            const auto start = m_position;
            if (at(start) != u'%' || !fillOne()) {
                m_result.append(at(start));
                m_position = start + 1;
            }
        }
        return m_result;
    }

private:
    // Past the end stands a character that no format contains.
    QChar at(qsizetype position) const
    {
        return position < m_format.size() ? m_format.at(position) : QChar();
    }

    // Reads what follows a percent sign; false when it is nothing that a format may say.
    bool fillOne()
    {
        ++m_position;
        if (at(m_position) == u'%') {
            ++m_position;
            m_result.append(u'%');
            return true;
        }
        const std::size_t number = argumentNumber();
        while (at(m_position) == u'l')
            ++m_position;
        const QChar conversion = at(m_position++);
        if (conversion.isNull() || !QStringView(u"@dup").contains(conversion))
            return false;
        const std::size_t index = number > 0 ? number - 1 : m_next++;
        m_result.append(index < m_arguments.size() ? (m_arguments.begin() + index)->text(m_locale)
                                                   : QStringLiteral("(null)"));
        return true;
    }

    // "2$" asks for the second argument; 0 when the format leaves it to the order.
    std::size_t argumentNumber()
    {
        auto end = m_position;
        while (at(end) >= u'0' && at(end) <= u'9')
            ++end;
        if (end == m_position || at(end) != u'$')
            return 0;
        bool fits = false;
        const std::size_t number = m_format.mid(m_position, end - m_position).toUInt(&fits);
        m_position = end + 1;
        return fits && number > 0 ? number : std::numeric_limits<std::size_t>::max();
    }

    const NSString& m_format;
    const Arguments m_arguments;
    const NSString m_locale;
    NSString m_result { QStringLiteral("") };
    qsizetype m_position = 0;
    std::size_t m_next = 0;
};

NSString localizedWholeNumber(const NSNumber& number, const NSString& identifier)
{
    const QLocale locale(identifier);
    if (number == NSNumber(number.integerValue()))
        return locale.toString(qlonglong { number.integerValue() });
    if (number == NSNumber(number.unsignedIntegerValue()))
        return locale.toString(qulonglong { number.unsignedIntegerValue() });
    return number.stringValue();
}

} // namespace

NSString NSFormatArgument::text(const NSString& locale) const
{
    if (m_isPointer)
        return QStringLiteral("0x") + NSString::number(reinterpret_cast<quintptr>(m_pointer), 16);
    const auto* number = m_value.as<NSNumber>();
    return number && !locale.isEmpty() ? localizedWholeNumber(*number, locale) : m_value.description();
}

NSString NSStringWithFormat(const NSString& format, Arguments arguments)
{
    return FormatFilling(format, arguments, {}).fill();
}

NSString NSLocalizedStringWithFormat(const NSString& format, Arguments arguments)
{
    return NSLocalizedStringWithFormat(NSLocale::currentIdentifier(), format, arguments);
}

NSString NSLocalizedStringWithFormat(const NSString& locale, const NSString& format, Arguments arguments)
{
    return FormatFilling(format, arguments, locale).fill();
}
