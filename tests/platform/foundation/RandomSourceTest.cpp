#include "platform/foundation/RandomSource.h"

#include "tests/support/SeededRandomSource.h"

#include <gmock/gmock.h>

#include <array>
#include <deque>
#include <set>

namespace {

// Answers what it was given, in order.
class ScriptedRandomSource final : public RandomSource {
public:
    explicit ScriptedRandomSource(std::deque<std::uint32_t> values)
        : m_values(std::move(values))
    {
    }
    std::uint32_t value() override
    {
        const std::uint32_t next = m_values.front();
        m_values.pop_front();
        return next;
    }
    std::size_t left() const { return m_values.size(); }

private:
    std::deque<std::uint32_t> m_values;
};

} // namespace

TEST(RandomSourceTest, TheSystemsSourceDoesNotRepeatItself)
{
    std::set<std::uint32_t> values;
    for (int draw = 0; draw < 1000; ++draw)
        values.insert(RandomSource::current().value());
    EXPECT_GT(values.size(), 990u);
}

TEST(RandomSourceTest, ASeededSourceGivesTheSameNumbersEveryTime)
{
    const auto draw = [](std::uint32_t seed) {
        SeededRandomSource source(seed);
        return std::array { RandomSource::current().value(), RandomSource::current().value() };
    };
    EXPECT_EQ(draw(7), draw(7));
    EXPECT_NE(draw(7), draw(8));
}

TEST(RandomSourceTest, AReplacementGivesWayToTheOneBefore)
{
    SeededRandomSource outer;
    {
        SeededRandomSource inner;
        EXPECT_EQ(&RandomSource::current(), &inner);
    }
    EXPECT_EQ(&RandomSource::current(), &outer);
}

TEST(RandomSourceTest, UniformDrawsNothingForOneChoiceOrNone)
{
    ScriptedRandomSource source({});
    EXPECT_EQ(source.uniform(0), 0u);
    EXPECT_EQ(source.uniform(1), 0u);
}

TEST(RandomSourceTest, UniformDrawsAgainWhereARemainderWouldBeBiased)
{
    // 2^32 mod 3 is 1: the value 0 is one too many.
    ScriptedRandomSource source({ 0, 1, 2, 3, 0xFFFFFFFF });
    EXPECT_EQ(source.uniform(3), 1u);
    EXPECT_EQ(source.uniform(3), 2u);
    EXPECT_EQ(source.uniform(3), 0u);
    EXPECT_EQ(source.uniform(3), 0u);
    EXPECT_EQ(source.left(), 0u);
}

TEST(RandomSourceTest, UniformReachesEveryValueAboutEquallyOften)
{
    SeededRandomSource source;
    std::array<int, 9> counts {};
    for (int draw = 0; draw < 90000; ++draw)
        ++counts.at(source.uniform(9));
    for (const int count : counts)
        EXPECT_NEAR(count, 10000, 500);
}

TEST(RandomSourceTest, AFractionLiesBetweenZeroAndOneWithoutTheOne)
{
    ScriptedRandomSource source({ 0, 0x80000000, 0xFFFFFFFF });
    EXPECT_EQ(source.fraction(), 0.0);
    EXPECT_EQ(source.fraction(), 0.5);
    EXPECT_LT(source.fraction(), 1.0);
}
