// Someone who makes recordings.
//
// Authors are equal when their identities are, whatever their other properties; an author without an
// identity equals none, not even itself. The hash stays the object's own, so authors are no keys of
// hashed collections. The store fills an author once; from then on it is only read, on any thread.
#pragma once

#include "platform/foundation/NSCoding.h"
#include "platform/foundation/NSObject.h"

#include <cstdint>

class ORVAuthor : public NSObject, public NSCoding {
public:
    // With a fresh random identity.
    ORVAuthor();
    // initWithAuthorID: — an identity is required.
    explicit ORVAuthor(NSString authorID);
    // initWithCoder: — a missing identity is accepted.
    explicit ORVAuthor(const NSCoder&);
    void encodeWithCoder(NSCoder&) const override;

    const NSString& authorID() const { return m_authorID; }

    const NSString& fullName() const { return m_fullName; }
    void setFullName(NSString name) { m_fullName = std::move(name); }

    // The full-size portrait, and the small one of lists and maps.
    const NSURL& portraitFileURL() const { return m_portraitFileURL; }
    void setPortraitFileURL(NSURL url) { m_portraitFileURL = std::move(url); }
    const NSURL& smallPortraitFileURL() const { return m_smallPortraitFileURL; }
    void setSmallPortraitFileURL(NSURL url) { m_smallPortraitFileURL = std::move(url); }

    const NSString& bio() const { return m_bio; }
    void setBio(NSString bio) { m_bio = std::move(bio); }

    // As the property list states them; they are not counted from the records in the store.
    std::uint64_t recordsCount() const { return m_recordsCount; }
    void setRecordsCount(std::uint64_t count) { m_recordsCount = count; }
    std::uint64_t placesCount() const { return m_placesCount; }
    void setPlacesCount(std::uint64_t count) { m_placesCount = count; }
    std::uint64_t followersCount() const { return m_followersCount; }
    void setFollowersCount(std::uint64_t count) { m_followersCount = count; }

    bool isEqual(const NSObject* other) const override;
    // Appends ": full name (identity)".
    NSString description() const override;

private:
    NSString m_authorID;
    NSString m_fullName;
    NSURL m_portraitFileURL;
    NSURL m_smallPortraitFileURL;
    NSString m_bio;
    std::uint64_t m_recordsCount = 0;
    std::uint64_t m_placesCount = 0;
    std::uint64_t m_followersCount = 0;
};
