#include "platform/foundation/LiveObjects.h"

#include <gmock/gmock.h>

#include <thread>

namespace {

class Leaf : public NSObject { };
class Twig final : public Leaf { };

std::int64_t count(const LiveObjects& objects, const NSObject& example)
{
    const auto counts = objects.countsByClass();
    const auto found = counts.find(example.className().toStdString());
    return found == counts.end() ? 0 : found->second;
}

TEST(LiveObjectsTest, CountsWhatLivesByItsOwnClass)
{
    const LiveObjects objects;
    const auto leaf = make<Leaf>();
    auto twig = make<Twig>();
    const auto another = make<Twig>();
    EXPECT_EQ(count(objects, *leaf), 1);
    EXPECT_EQ(count(objects, *another), 2);
    twig = nullptr;
    EXPECT_EQ(count(objects, *another), 1);
}

TEST(LiveObjectsTest, SeesNothingThatWasMadeBeforeAndMissesNothingThatGoesAfterwards)
{
    const auto before = make<Leaf>();
    auto object = make<Leaf>();
    {
        const LiveObjects objects;
        object = nullptr;
        EXPECT_EQ(count(objects, *before), 0);
        object = make<Leaf>();
        EXPECT_EQ(count(objects, *before), 1);
    }
    object = nullptr;
    const LiveObjects objects;
    EXPECT_EQ(count(objects, *before), 0);
}

TEST(LiveObjectsTest, CountsOnAnyThread)
{
    const auto example = make<Leaf>();
    const LiveObjects objects;
    const auto work = [] {
        for (int round = 0; round < 1000; ++round)
            const auto leaf = make<Leaf>();
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    EXPECT_EQ(count(objects, *example), 0);
}

} // namespace
