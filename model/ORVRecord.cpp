#include "model/ORVRecord.h"

#include "platform/foundation/NSString.h"
#include "platform/foundation/NSUUID.h"
#include "platform/location/NSValue+MKCoordinate.h"

namespace {

NSString recordIDKey() { return QStringLiteral("recordID"); }
NSString authorKey() { return QStringLiteral("author"); }
NSString timestampKey() { return QStringLiteral("timestamp"); }
NSString coordinateKey() { return QStringLiteral("coordinate"); }
NSString locationNameKey() { return QStringLiteral("locationName"); }
NSString soundFileURLKey() { return QStringLiteral("soundFileURL"); }

} // namespace

ORVRecord::ORVRecord()
    : ORVRecord(NSUUID().uuidString())
{
}

ORVRecord::ORVRecord(NSString recordID)
    : m_recordID(std::move(recordID))
{
}

ORVRecord::ORVRecord(const NSCoder& coder)
    : m_recordID(coder.decodeObjectOfClass<NSString>(recordIDKey()))
    , m_author(coder.decodeObjectOfClass<ORVAuthor>(authorKey()))
    , m_timestamp(coder.decodeObjectOfClass<NSDate>(timestampKey()))
    , m_coordinate(MKCoordinateValue(coder.decodeObjectOfClass<NSValue>(coordinateKey())))
    , m_locationName(coder.decodeObjectOfClass<NSString>(locationNameKey()))
    , m_soundFileURL(coder.decodeObjectOfClass<NSURL>(soundFileURLKey()))
{
}

void ORVRecord::encodeWithCoder(NSCoder& coder) const
{
    coder.encodeObject(m_recordID, recordIDKey());
    coder.encodeObject(m_author, authorKey());
    coder.encodeObject(m_timestamp, timestampKey());
    coder.encodeObject(NSValueWithMKCoordinate(m_coordinate), coordinateKey());
    coder.encodeObject(m_locationName, locationNameKey());
    coder.encodeObject(m_soundFileURL, soundFileURLKey());
}

bool ORVRecord::isEqual(const NSObject* other) const
{
    const auto* record = dynamic_cast<const ORVRecord*>(other);
    return record && !m_recordID.isNull() && !record->m_recordID.isNull() && m_recordID == record->m_recordID;
}

NSString ORVRecord::description() const
{
    return NSObject::description()
        + NSStringWithFormat(QStringLiteral(": by %@ at %@ on %@ (%@)"),
            { m_author, m_locationName, m_timestamp, m_recordID });
}
