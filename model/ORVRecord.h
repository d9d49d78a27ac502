// One sound, recorded by an author at a place and a time.
//
// Records are equal when their identities are, whatever their other properties; a record without an identity
// is accepted and equals none, not even itself. The hash stays the object's own, so records
// are no keys of hashed collections. The store fills a record once; from then on it is only read, on any
// thread.
#pragma once

#include "model/ORVAuthor.h"
#include "platform/location/CLLocationCoordinate2D.h"

class ORVRecord : public NSObject, public NSCoding {
public:
    // With a fresh random identity.
    ORVRecord();
    // initWithRecordID:
    explicit ORVRecord(NSString recordID);
    // initWithCoder:
    explicit ORVRecord(const NSCoder&);
    void encodeWithCoder(NSCoder&) const override;

    const NSString& recordID() const { return m_recordID; }

    const std::shared_ptr<ORVAuthor>& author() const { return m_author; }
    void setAuthor(std::shared_ptr<ORVAuthor> author) { m_author = std::move(author); }

    const NSDate& timestamp() const { return m_timestamp; }
    void setTimestamp(NSDate timestamp) { m_timestamp = std::move(timestamp); }

    const CLLocationCoordinate2D& coordinate() const { return m_coordinate; }
    void setCoordinate(const CLLocationCoordinate2D& coordinate) { m_coordinate = coordinate; }

    const NSString& locationName() const { return m_locationName; }
    void setLocationName(NSString name) { m_locationName = std::move(name); }

    const NSURL& soundFileURL() const { return m_soundFileURL; }
    void setSoundFileURL(NSURL url) { m_soundFileURL = std::move(url); }

    bool isEqual(const NSObject* other) const override;
    // Appends ": by author at place on date (identity)".
    NSString description() const override;

private:
    NSString m_recordID;
    std::shared_ptr<ORVAuthor> m_author;
    NSDate m_timestamp;
    CLLocationCoordinate2D m_coordinate;
    NSString m_locationName;
    NSURL m_soundFileURL;
};
