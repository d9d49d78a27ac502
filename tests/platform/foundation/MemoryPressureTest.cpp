#include "platform/foundation/MemoryPressure.h"

#include <gmock/gmock.h>

#include <functional>
#include <vector>

using testing::ElementsAre;

namespace {

class Listener final : public MemoryPressureListener {
public:
    explicit Listener(std::function<void()> reaction = {})
        : m_reaction(std::move(reaction))
    {
    }
    void memoryPressureDidRise(MemoryPressureLevel level) override
    {
        levels.push_back(level);
        if (m_reaction)
            m_reaction();
    }
    std::vector<MemoryPressureLevel> levels;

private:
    std::function<void()> m_reaction;
};

} // namespace

TEST(MemoryPressureTest, TellsEveryListenerTheLevel)
{
    const auto first = std::make_shared<Listener>();
    const auto second = std::make_shared<Listener>();
    MemoryPressure::addListener(first);
    MemoryPressure::addListener(second);
    MemoryPressure::send(MemoryPressureLevel::Warning);
    MemoryPressure::send(MemoryPressureLevel::Critical);
    EXPECT_THAT(first->levels, ElementsAre(MemoryPressureLevel::Warning, MemoryPressureLevel::Critical));
    EXPECT_EQ(second->levels, first->levels);
}

TEST(MemoryPressureTest, AListenerThatIsGoneIsForgotten)
{
    auto listener = std::make_shared<Listener>();
    const std::weak_ptr<Listener> weak = listener;
    MemoryPressure::addListener(listener);
    listener.reset();
    EXPECT_TRUE(weak.expired());
    MemoryPressure::send(MemoryPressureLevel::Warning);
}

TEST(MemoryPressureTest, ListenersMayComeAndGoWhileTheyAreTold)
{
    std::shared_ptr<Listener> late;
    std::shared_ptr<Listener> first;
    first = std::make_shared<Listener>([&] {
        late = std::make_shared<Listener>();
        MemoryPressure::addListener(late);
        first.reset();
    });
    const std::weak_ptr<Listener> weak = first;
    MemoryPressure::addListener(first);
    MemoryPressure::send(MemoryPressureLevel::Warning);
    EXPECT_TRUE(weak.expired());
    EXPECT_TRUE(late->levels.empty());
    MemoryPressure::send(MemoryPressureLevel::Warning);
    EXPECT_EQ(late->levels.size(), 1u);
}
