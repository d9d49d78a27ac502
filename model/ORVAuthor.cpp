#include "model/ORVAuthor.h"

#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSUUID.h"

namespace {

NSString authorIDKey() { return QStringLiteral("authorID"); }
NSString fullNameKey() { return QStringLiteral("fullName"); }
NSString portraitFileURLKey() { return QStringLiteral("portraitFileURL"); }
NSString smallPortraitFileURLKey() { return QStringLiteral("smallPortraitFileURL"); }
NSString bioKey() { return QStringLiteral("bio"); }
NSString recordsCountKey() { return QStringLiteral("recordsCount"); }
NSString placesCountKey() { return QStringLiteral("placesCount"); }
NSString followersCountKey() { return QStringLiteral("followersCount"); }

} // namespace

ORVAuthor::ORVAuthor()
    : ORVAuthor(NSUUID().uuidString())
{
}

ORVAuthor::ORVAuthor(NSString authorID)
    : m_authorID(std::move(authorID))
{
    NSParameterAssert(!m_authorID.isNull(), "ORVAuthor", "authorID != nil");
}

ORVAuthor::ORVAuthor(const NSCoder& coder)
    : m_authorID(coder.decodeObjectOfClass<NSString>(authorIDKey()))
    , m_fullName(coder.decodeObjectOfClass<NSString>(fullNameKey()))
    , m_portraitFileURL(coder.decodeObjectOfClass<NSURL>(portraitFileURLKey()))
    , m_smallPortraitFileURL(coder.decodeObjectOfClass<NSURL>(smallPortraitFileURLKey()))
    , m_bio(coder.decodeObjectOfClass<NSString>(bioKey()))
    , m_recordsCount(static_cast<std::uint64_t>(coder.decodeIntegerForKey(recordsCountKey())))
    , m_placesCount(static_cast<std::uint64_t>(coder.decodeIntegerForKey(placesCountKey())))
    , m_followersCount(static_cast<std::uint64_t>(coder.decodeIntegerForKey(followersCountKey())))
{
}

void ORVAuthor::encodeWithCoder(NSCoder& coder) const
{
    coder.encodeObject(authorID(), authorIDKey());
    coder.encodeObject(fullName(), fullNameKey());
    coder.encodeObject(portraitFileURL(), portraitFileURLKey());
    coder.encodeObject(smallPortraitFileURL(), smallPortraitFileURLKey());
    coder.encodeObject(bio(), bioKey());
    coder.encodeInteger(static_cast<std::int64_t>(recordsCount()), recordsCountKey());
    coder.encodeInteger(static_cast<std::int64_t>(placesCount()), placesCountKey());
    coder.encodeInteger(static_cast<std::int64_t>(followersCount()), followersCountKey());
}

bool ORVAuthor::isEqual(const NSObject* other) const
{
    const auto* author = dynamic_cast<const ORVAuthor*>(other);
    return author && !m_authorID.isNull() && !author->m_authorID.isNull() && m_authorID == author->m_authorID;
}

NSString ORVAuthor::description() const
{
    return NSObject::description()
        + NSStringWithFormat(QStringLiteral(": %@ (%@)"), { m_fullName, m_authorID });
}
