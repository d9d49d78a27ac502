// A store on a small bundle that tests change before it is read.
#pragma once

#include "model/ORVRecordsStorage.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/ManualExecutor.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/TemporaryBundle.h"

#include <gtest/gtest.h>

using Messages = std::vector<NSString>;

inline NSString key(const char* name) { return QString::fromLatin1(name); }

inline QVariantMap person(const char* identity, const char* portrait = "face")
{
    return { { key("id"), key(identity) }, { key("full_name"), key("Some Name") },
        { key("bio"), key("Listens.") }, { key("portrait_name"), key(portrait) },
        { key("recordings_count"), 12 }, { key("places_count"), 3 }, { key("followers_count"), 4500 } };
}

inline QVariantMap recording(double latitude, double longitude, const char* author = "mara")
{
    return { { key("author_id"), key(author) }, { key("sound_name"), key("tram") },
        { key("seconds_ago"), 3600.0 }, { key("latitude"), latitude }, { key("longitude"), longitude },
        { key("location_name"), key("Some Place") } };
}

class ORVRecordsStorageTest : public testing::Test {
protected:
    ORVRecordsStorageTest()
    {
        for (const char* name : { "face.jpg", "face-small.jpg", "tram.m4a" })
            bundle.writeFile(key(name));
        bundle.writeList(key("FakeUserLocation"),
            QVariantMap { { key("latitude"), -37.81785 }, { key("longitude"), 144.96755 },
                { key("altitude"), 24.0 }, { key("accuracy"), 10.0 } });
        bundle.writeList(key("FakePeople"), QVariantList { person("mara"), person("gus") });
        bundle.writeList(
            key("FakeRecords"), QVariantList { recording(0, 3), recording(0, 1, "gus"), recording(0, 2) });
    }

    ORVRecordsStorage& store()
    {
        bundle.makeMain();
        return *storage;
    }
    void people(const QVariantList& list) { bundle.writeList(key("FakePeople"), list); }
    void recordings(const QVariantList& list) { bundle.writeList(key("FakeRecords"), list); }

    void expectFailures(const Messages& messages) const
    {
        EXPECT_EQ(assertions.messages(), messages);
        for (const NSAssertionFailure& failure : assertions.failures())
            EXPECT_TRUE(failure.source == key("ORVRecordsStorage") || failure.source == key("ORVAuthor"));
    }

    ManualScheduler scheduler;
    ManualExecutor executor;
    AssertionRecorder assertions;
    TemporaryBundle bundle;
    std::shared_ptr<ORVRecordsStorage> storage = make<ORVRecordsStorage>();
};
