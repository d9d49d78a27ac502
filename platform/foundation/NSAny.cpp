#include "platform/foundation/NSAny.h"

#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSURL.h"

NSAny::NSAny(const NSString& string)
{
    if (!string.isNull())
        m_value = string;
}

NSAny::NSAny(const NSURL& url)
{
    if (!url.isEmpty())
        m_value = url;
}

NSAny::NSAny(const NSDate& date)
{
    if (date.isValid())
        m_value = date;
}

NSAny::NSAny(const NSValue& value)
{
    if (!value.isNull())
        m_value = value;
}

NSAny::NSAny(std::shared_ptr<NSObject> object, IsObject)
{
    if (object)
        m_value = std::move(object);
}

bool NSAny::isEqual(const NSAny& other) const
{
    if (isNil() || m_value.index() != other.m_value.index())
        return false;
    if (const auto object = asObject<NSObject>())
        return object->isEqual(other.asObject<NSObject>().get());
    return m_value == other.m_value;
}

NSString NSAny::description() const
{
    if (const auto* number = as<NSNumber>())
        return number->stringValue();
    if (const auto* string = as<NSString>())
        return *string;
    if (const auto* url = as<NSURL>())
        return absoluteString(*url);
    if (const auto* date = as<NSDate>())
        return ::description(*date);
    if (const auto* value = as<NSValue>()) {
        QStringList members;
        for (const double member : value->members())
            members.append(NSNumber(member).stringValue());
        return value->kind() + u'(' + members.join(QStringLiteral(", ")) + u')';
    }
    const auto object = asObject<NSObject>();
    return object ? object->description() : QStringLiteral("(null)");
}
