// The one store: the user's own position, the authors and the records, and which records are nearest.
//
// Everything is read from the main bundle's property lists the first time it is asked for and is kept,
// unchanged, from then on; nothing is ever written back. The lists are FakeUserLocation, FakePeople and
// FakeRecords. There is no lock: the first reading is one caller's, what is loaded may be read by all.
#pragma once

#include "model/ORVRecord.h"
#include "platform/location/CLLocation.h"
#include "platform/location/NearestIndex.h"

#include <functional>
#include <optional>
#include <vector>

class ORVRecordsStorage : public NSObject {
public:
    using Authors = std::vector<std::shared_ptr<ORVAuthor>>;
    using Records = std::vector<std::shared_ptr<ORVRecord>>;
    using Completion = std::function<void(const Records&)>;

    const std::shared_ptr<CLLocation>& fakeUserLocation();
    const Authors& authors();
    const Records& records(); // loads the authors first

    // recordsAroundCoordinate:withLimit: — at most that many records, nearest first along the earth's
    // surface; equally distant ones in no particular order.
    Records recordsAroundCoordinate(const CLLocationCoordinate2D& coordinate, std::size_t limit);
    // queryRecordsAroundCoordinate:withLimit:completion: — the same, found on the global queue and handed
    // to the completion on the main queue after this call has returned. Keeps the store alive until then.
    // Several queries may be under way; each answers once.
    void queryRecordsAroundCoordinate(
        const CLLocationCoordinate2D& coordinate, std::size_t limit, Completion completion);

    // --- Loaders: each call makes new objects ----------------------------------------------------------

    static Authors fakeAuthors();
    static Records fakeRecordsWithAuthors(const Authors& authors);
    // randomRecordsAroundCoordinate:withCount:authors: — records without a sound, spread evenly over a box
    // of ±0.02 degrees and over the last 72 hours.
    static Records randomRecordsAroundCoordinate(
        const CLLocationCoordinate2D& coordinate, std::size_t count, const Authors& authors);

protected:
    // Where records() come from on their first reading.
    virtual Records loadRecords();

private:
    std::shared_ptr<CLLocation> m_fakeUserLocation;
    std::optional<Authors> m_authors;
    std::optional<Records> m_records;
    NearestIndex m_index; // of m_records, made with them
};
