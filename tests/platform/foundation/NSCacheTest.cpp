#include "platform/foundation/NSCache.h"

#include <gmock/gmock.h>

#include <thread>

namespace {

class Sample : public NSObject { };
class OtherSample : public NSObject { };

// Asks its cache when it ends.
class Asker : public NSObject {
public:
    explicit Asker(std::weak_ptr<NSCache> cache)
        : m_cache(std::move(cache))
    {
    }
    ~Asker() override
    {
        if (const auto cache = m_cache.lock())
            cache->setObject(make<Sample>(), QStringLiteral("from a destructor"));
    }

private:
    std::weak_ptr<NSCache> m_cache;
};

NSCache::Key key(int number) { return NSString::number(number); }

class NSCacheTest : public testing::Test {
protected:
    void fill(int count)
    {
        for (int number = 0; number < count; ++number)
            cache->setObject(make<Sample>(), key(number));
    }

    std::shared_ptr<NSCache> cache = make<NSCache>();
};

} // namespace

TEST_F(NSCacheTest, GivesBackTheVeryObject)
{
    const auto sample = make<Sample>();
    cache->setObject(sample, key(1));
    EXPECT_EQ(cache->objectForKey(key(1)), sample);
    EXPECT_EQ(cache->objectForKey<Sample>(key(1)), sample);
    EXPECT_EQ(cache->objectForKey(key(2)), nullptr);
}

TEST_F(NSCacheTest, AnObjectOfAnotherClassIsNil)
{
    cache->setObject(make<Sample>(), key(1));
    EXPECT_EQ(cache->objectForKey<OtherSample>(key(1)), nullptr);
}

TEST_F(NSCacheTest, AnAddressNeverEqualsItsString)
{
    const NSURL url(QStringLiteral("file:///a.m4a"));
    const auto byURL = make<Sample>();
    const auto byString = make<Sample>();
    cache->setObject(byURL, url);
    EXPECT_EQ(cache->objectForKey(url.toString()), nullptr);
    cache->setObject(byString, url.toString());
    EXPECT_EQ(cache->objectForKey(url), byURL);
    EXPECT_EQ(cache->count(), 2u);
}

TEST_F(NSCacheTest, ASecondObjectReplacesTheFirst)
{
    auto first = make<Sample>();
    const std::weak_ptr<Sample> weak = first;
    cache->setObject(std::exchange(first, nullptr), key(1));
    const auto second = make<Sample>();
    cache->setObject(second, key(1));
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(cache->objectForKey(key(1)), second);
    EXPECT_EQ(cache->count(), 1u);
}

TEST_F(NSCacheTest, ObjectsCanBeRemoved)
{
    fill(3);
    cache->removeObjectForKey(key(0));
    cache->removeObjectForKey(key(99));
    cache->setObject(nullptr, key(1));
    EXPECT_EQ(cache->objectForKey(key(0)), nullptr);
    EXPECT_EQ(cache->count(), 1u);
    cache->removeAllObjects();
    EXPECT_EQ(cache->count(), 0u);
}

TEST_F(NSCacheTest, HasNoLimitOfItsOwn)
{
    fill(100000);
    EXPECT_EQ(cache->count(), 100000u);
    EXPECT_NE(cache->objectForKey(key(0)), nullptr);
}

TEST_F(NSCacheTest, AWarningDropsTheHalfThatWasNotUsedForTheLongestTime)
{
    fill(4);
    cache->objectForKey(key(0)); // the oldest is the most recently used now
    MemoryPressure::send(MemoryPressureLevel::Warning);
    EXPECT_EQ(cache->count(), 2u);
    EXPECT_NE(cache->objectForKey(key(0)), nullptr);
    EXPECT_NE(cache->objectForKey(key(3)), nullptr);
    EXPECT_EQ(cache->objectForKey(key(1)), nullptr);
}

TEST_F(NSCacheTest, RepeatedWarningsEmptyIt)
{
    fill(3);
    MemoryPressure::send(MemoryPressureLevel::Warning);
    EXPECT_EQ(cache->count(), 1u);
    MemoryPressure::send(MemoryPressureLevel::Warning);
    EXPECT_EQ(cache->count(), 0u);
    MemoryPressure::send(MemoryPressureLevel::Warning);
    EXPECT_EQ(cache->count(), 0u);
}

TEST_F(NSCacheTest, CriticalPressureDropsAll)
{
    fill(10);
    const auto inUse = cache->objectForKey(key(5));
    MemoryPressure::send(MemoryPressureLevel::Critical);
    EXPECT_EQ(cache->count(), 0u);
    EXPECT_EQ(inUse.use_count(), 1); // who uses an object keeps it
    fill(2);
    EXPECT_EQ(cache->count(), 2u);
}

TEST_F(NSCacheTest, ADroppedObjectMayAskTheCacheWhenItEnds)
{
    cache->setObject(make<Asker>(cache), key(1));
    cache->setObject(nullptr, key(1));
    EXPECT_EQ(cache->count(), 1u);
    cache->setObject(make<Asker>(cache), key(2));
    MemoryPressure::send(MemoryPressureLevel::Critical);
    EXPECT_EQ(cache->count(), 1u);
    cache->setObject(make<Asker>(cache), key(3));
    cache->removeAllObjects();
    EXPECT_EQ(cache->count(), 1u);
}

TEST_F(NSCacheTest, IsUsedBySeveralThreadsAtOnceUnderPressure)
{
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] {
            for (int number = 0; number < 2000; ++number) {
                cache->setObject(make<Sample>(), key(number % 50));
                cache->objectForKey(key((number + 7) % 50));
            }
        });
    threads.emplace_back([] {
        for (int round = 0; round < 200; ++round) {
            MemoryPressure::send(round % 2 ? MemoryPressureLevel::Warning : MemoryPressureLevel::Critical);
            make<NSCache>()->setObject(make<Sample>(), key(round));
        }
    });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_LE(cache->count(), 50u);
}
