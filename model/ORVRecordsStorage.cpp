#include "model/ORVRecordsStorage.h"

#include "platform/foundation/Executor.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSPropertyList.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/RandomSource.h"
#include "platform/foundation/Scheduler.h"

#include <array>

namespace {

constexpr double randomHalfWidth = 0.02; // degrees
constexpr double randomOldestAge = 72 * 3600; // seconds

// Where the list is or should be: the message about a missing one names it.
NSString pathOfList(const NSString& name)
{
    const auto bundle = NSBundle::mainBundle();
    const NSString path = bundle->pathForResource(name, QStringLiteral("plist"));
    return path.isNull() ? bundle->resourcePath() + u'/' + name + QStringLiteral(".plist") : path;
}

CLLocationCoordinate2D coordinateOf(const NSPropertyList& entry)
{
    return { entry[QStringLiteral("latitude")].doubleValue(),
        entry[QStringLiteral("longitude")].doubleValue() };
}

void setPortraits(ORVAuthor& author, const NSString& name)
{
    const auto bundle = NSBundle::mainBundle();
    const NSString extension = QStringLiteral("jpg");
    const NSString smallName = name.isNull() ? name : name + QStringLiteral("-small");
    author.setPortraitFileURL(bundle->urlForResource(name, extension));
    author.setSmallPortraitFileURL(bundle->urlForResource(smallName, extension));
    NSCAssert(!author.portraitFileURL().isEmpty(), "ORVRecordsStorage",
        NSStringWithFormat(QStringLiteral("Portrait image '%@' not found."), { name }));
    NSCAssert(!author.smallPortraitFileURL().isEmpty(), "ORVRecordsStorage",
        NSStringWithFormat(QStringLiteral("Small portrait image '%@' not found."), { name }));
}

std::shared_ptr<ORVAuthor> makeAuthor(const NSPropertyList& entry)
{
    const auto author = make<ORVAuthor>(entry[QStringLiteral("id")].stringValue());
    author->setFullName(entry[QStringLiteral("full_name")].stringValue());
    author->setBio(entry[QStringLiteral("bio")].stringValue());
    setPortraits(*author, entry[QStringLiteral("portrait_name")].stringValue());
    author->setRecordsCount(entry[QStringLiteral("recordings_count")].unsignedIntegerValue());
    author->setPlacesCount(entry[QStringLiteral("places_count")].unsignedIntegerValue());
    author->setFollowersCount(entry[QStringLiteral("followers_count")].unsignedIntegerValue());
    return author;
}

std::shared_ptr<ORVAuthor> findAuthor(const ORVRecordsStorage::Authors& authors, const NSString& authorID)
{
    const auto found
        = std::find_if(authors.begin(), authors.end(), [&](const std::shared_ptr<ORVAuthor>& author) {
              return !authorID.isNull() && author->authorID() == authorID;
          });
    NSCAssert(found != authors.end(), "ORVRecordsStorage",
        NSStringWithFormat(QStringLiteral("Author with ID '%@' not found."), { authorID }));
    return found == authors.end() ? nullptr : *found;
}

NSURL findSound(const NSString& name)
{
    const NSURL url = NSBundle::mainBundle()->urlForResource(name, QStringLiteral("m4a"));
    NSCAssert(!url.isEmpty(), "ORVRecordsStorage",
        NSStringWithFormat(QStringLiteral("Sound file '%@' not found."), { name }));
    return url;
}

std::shared_ptr<ORVRecord> makeRecord(const NSPropertyList& entry, const ORVRecordsStorage::Authors& authors)
{
    const auto record = make<ORVRecord>();
    record->setAuthor(findAuthor(authors, entry[QStringLiteral("author_id")].stringValue()));
    record->setSoundFileURL(findSound(entry[QStringLiteral("sound_name")].stringValue()));
    record->setTimestamp(dateWithTimeIntervalSinceNow(-entry[QStringLiteral("seconds_ago")].doubleValue()));
    record->setCoordinate(coordinateOf(entry));
    record->setLocationName(entry[QStringLiteral("location_name")].stringValue());
    return record;
}

const std::array<NSString, 9>& placeNames()
{
    static const std::array<NSString, 9> names { QStringLiteral("Flinders Street Station"),
        QStringLiteral("Exhibition Centre"), QStringLiteral("Treasury Gardens"),
        QStringLiteral("Royal Exhibition Building"), QStringLiteral("Flagstaff Gardens"),
        QStringLiteral("Etihad Stadium"), QStringLiteral("Royal Botanic Gardens"),
        QStringLiteral("Yarra Park"), QStringLiteral("Rod Laver Arena") };
    return names;
}

// A random element, all with the same probability; null where there is none.
template <typename Elements> typename Elements::value_type randomElement(const Elements& elements)
{
    const std::uint32_t position
        = RandomSource::current().uniform(static_cast<std::uint32_t>(elements.size()));
    return elements.empty() ? typename Elements::value_type {} : elements[position];
}

double randomOffset() { return (2 * RandomSource::current().fraction() - 1) * randomHalfWidth; }

} // namespace

const std::shared_ptr<CLLocation>& ORVRecordsStorage::fakeUserLocation()
{
    if (m_fakeUserLocation)
        return m_fakeUserLocation;
    const auto entry
        = NSPropertyList::dictionaryWithContentsOfFile(pathOfList(QStringLiteral("FakeUserLocation")));
    NSCAssert(!entry.isNil(), "ORVRecordsStorage", QStringLiteral("Can't load fake location dictionary."));
    const double altitude = entry[QStringLiteral("altitude")].doubleValue();
    const double accuracy = entry[QStringLiteral("accuracy")].doubleValue();
    m_fakeUserLocation = make<CLLocation>(
        coordinateOf(entry), altitude, accuracy, accuracy, Scheduler::current().currentDate());
    return m_fakeUserLocation;
}

const ORVRecordsStorage::Authors& ORVRecordsStorage::authors()
{
    if (!m_authors)
        m_authors = fakeAuthors();
    return *m_authors;
}

const ORVRecordsStorage::Records& ORVRecordsStorage::records()
{
    if (m_records)
        return *m_records;
    m_records = loadRecords();
    std::vector<CLLocationCoordinate2D> places;
    places.reserve(m_records->size());
    for (const std::shared_ptr<ORVRecord>& record : *m_records)
        places.push_back(record->coordinate());
    m_index = NearestIndex(std::move(places));
    return *m_records;
}

ORVRecordsStorage::Records ORVRecordsStorage::loadRecords() { return fakeRecordsWithAuthors(authors()); }

ORVRecordsStorage::Records ORVRecordsStorage::recordsAroundCoordinate(
    const CLLocationCoordinate2D& coordinate, std::size_t limit)
{
    const Records& all = records();
    Records nearest;
    for (const std::size_t position : m_index.nearest(coordinate, limit))
        nearest.push_back(all[position]);
    return nearest;
}

void ORVRecordsStorage::queryRecordsAroundCoordinate(
    const CLLocationCoordinate2D& coordinate, std::size_t limit, Completion completion)
{
    NSParameterAssert(completion, "ORVRecordsStorage", "completion != NULL");
    if (!completion)
        return;
    // The store and the completion are moved on to the main queue, so that what they own is destroyed there.
    Executor::current().globalQueue().async([store = strongSelf(this), coordinate, limit,
                                                completion = std::move(completion)]() mutable {
        Records nearest = store->recordsAroundCoordinate(coordinate, limit);
        Executor::current().mainQueue().async([store = std::move(store), completion = std::move(completion),
                                                  nearest = std::move(nearest)] { completion(nearest); });
    });
}

ORVRecordsStorage::Authors ORVRecordsStorage::fakeAuthors()
{
    const auto list = NSPropertyList::arrayWithContentsOfFile(pathOfList(QStringLiteral("FakePeople")));
    Authors authors;
    for (const NSPropertyList& entry : list.array())
        authors.push_back(makeAuthor(entry));
    NSCAssert(!authors.empty(), "ORVRecordsStorage", QStringLiteral("At least one author is required."));
    return authors;
}

ORVRecordsStorage::Records ORVRecordsStorage::fakeRecordsWithAuthors(const Authors& authors)
{
    const auto list = NSPropertyList::arrayWithContentsOfFile(pathOfList(QStringLiteral("FakeRecords")));
    Records records;
    for (const NSPropertyList& entry : list.array())
        records.push_back(makeRecord(entry, authors));
    return records;
}

ORVRecordsStorage::Records ORVRecordsStorage::randomRecordsAroundCoordinate(
    const CLLocationCoordinate2D& coordinate, std::size_t count, const Authors& authors)
{
    Records records;
    records.reserve(count);
    for (std::size_t round = 0; round < count; ++round) {
        const auto record = make<ORVRecord>();
        const double latitude = coordinate.latitude + randomOffset();
        const double longitude = coordinate.longitude + randomOffset();
        record->setCoordinate({ latitude, longitude });
        record->setAuthor(randomElement(authors));
        record->setLocationName(randomElement(placeNames()));
        record->setTimestamp(
            dateWithTimeIntervalSinceNow(RandomSource::current().fraction() * -randomOldestAge));
        records.push_back(record);
    }
    return records;
}
