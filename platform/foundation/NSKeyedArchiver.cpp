#include "platform/foundation/NSKeyedArchiver.h"

#include "platform/foundation/NSAssertionHandler.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>

namespace {

constexpr int maximumDepth = 64; // of objects in objects; deeper data refers to itself or is hostile

// Strings and integers stand for themselves. Everything else is an array that begins with its kind.
const QLatin1String urlKind("url");
const QLatin1String dateKind("date");
const QLatin1String valueKind("value");
const QLatin1String objectKind("object");

NSString nonNull(const NSString& string) { return string.isNull() ? QStringLiteral("") : string; }

QCborValue coded(const NSValue& value)
{
    QCborArray members { valueKind, value.kind() };
    for (const double member : value.members())
        members.append(member);
    return members;
}

NSValue decodedValue(const QCborArray& parts)
{
    std::vector<double> members;
    for (qsizetype index = 2; index < parts.size(); ++index) {
        if (!parts.at(index).isDouble())
            return {};
        members.push_back(parts.at(index).toDouble());
    }
    return parts.at(1).isString() ? NSValue(nonNull(parts.at(1).toString()), std::move(members)) : NSValue();
}

// One object's keys and values. Objects within it have coders of their own, one level deeper.
class KeyedCoder final : public NSCoder {
public:
    explicit KeyedCoder(const QCborMap& values = {}, int depth = 0)
        : m_values(values)
        , m_depth(depth)
    {
    }

    const QCborMap& values() const { return m_values; }

    void encodeObject(const NSAny& object, const NSString& key) override
    {
        const QCborValue value = codedObject(object);
        NSParameterAssert(object.isNil() || !value.isUndefined(), "NSKeyedArchiver", "object can be coded");
        if (!value.isUndefined())
            m_values.insert(key, value);
    }

    void encodeInteger(std::int64_t value, const NSString& key) override
    {
        m_values.insert(key, qint64 { value });
    }

    std::int64_t decodeIntegerForKey(const NSString& key) const override
    {
        const QCborValue value = m_values.value(key);
        return value.isInteger() ? value.toInteger() : 0;
    }

protected:
    NSAny decodeValue(const NSString& key) const override
    {
        const QCborValue value = m_values.value(key);
        if (value.isString())
            return nonNull(value.toString());
        const QCborArray parts = value.toArray();
        const QCborValue kind = parts.at(0);
        if (kind == urlKind && parts.at(1).isString())
            return NSURL::fromEncoded(parts.at(1).toString().toLatin1(), QUrl::StrictMode);
        if (kind == dateKind && parts.at(1).isInteger())
            return NSDate::fromMSecsSinceEpoch(parts.at(1).toInteger(), Qt::UTC);
        if (kind == valueKind)
            return decodedValue(parts);
        return {};
    }

    std::shared_ptr<NSObject> decodeObject(const NSString& key, const Recipe& expected) const override
    {
        const QCborArray parts = m_values.value(key).toArray();
        if (parts.at(0) != objectKind || !parts.at(2).isMap() || m_depth >= maximumDepth)
            return nullptr;
        const auto maker = makerFor(parts.at(1).toString(), expected);
        return maker ? maker(KeyedCoder(parts.at(2).toMap(), m_depth + 1)) : nullptr;
    }

private:
    // Undefined for nil and for what cannot be coded.
    QCborValue codedObject(const NSAny& object) const
    {
        if (const auto* string = object.as<NSString>())
            return *string;
        if (const auto* url = object.as<NSURL>())
            return QCborArray { urlKind, NSString::fromLatin1(url->toEncoded()) };
        if (const auto* date = object.as<NSDate>())
            return QCborArray { dateKind, date->toMSecsSinceEpoch() };
        if (const auto* value = object.as<NSValue>())
            return coded(*value);
        const auto coding = object.asObject<NSCoding>();
        if (!coding || m_depth >= maximumDepth)
            return QCborValue(QCborValue::Undefined);
        KeyedCoder nested({}, m_depth + 1);
        coding->encodeWithCoder(nested);
        return QCborArray { objectKind, object.asObject<NSObject>()->className(), nested.values() };
    }

    QCborMap m_values;
    int m_depth;
};

} // namespace

NSData NSKeyedArchiver::archivedDataWithRootObject(const NSAny& root)
{
    if (root.isNil())
        return {};
    KeyedCoder coder;
    coder.encodeObject(root, QStringLiteral("root"));
    return coder.values().toCborValue().toCbor();
}

std::unique_ptr<const NSCoder> NSKeyedUnarchiver::coderFor(const NSData& data)
{
    QCborParserError error;
    const QCborValue root = QCborValue::fromCbor(data, &error);
    const bool isWhole = error.error == QCborError::NoError && error.offset == data.size();
    return std::make_unique<KeyedCoder>(isWhole ? root.toMap() : QCborMap());
}
