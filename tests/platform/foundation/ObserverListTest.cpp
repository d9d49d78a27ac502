#include "platform/foundation/ObserverList.h"

#include <gmock/gmock.h>

#include <functional>

using testing::ElementsAre;

namespace {

struct Listener {
    std::string name;
    std::function<void()> reaction;
};

class ObserverListTest : public testing::Test {
protected:
    void tell()
    {
        list.tell([&](Listener& listener) {
            log.push_back(listener.name);
            if (listener.reaction)
                listener.reaction();
        });
    }
    std::shared_ptr<Listener> listen(const std::string& name, std::function<void()> reaction = {})
    {
        auto listener = std::make_shared<Listener>(Listener { name, std::move(reaction) });
        list.add(listener);
        return listener;
    }

    ObserverList<Listener> list;
    std::vector<std::string> log;
};

} // namespace

TEST_F(ObserverListTest, TellsInTheOrderOfAdding)
{
    const auto a = listen("a");
    const auto b = listen("b");
    tell();
    EXPECT_THAT(log, ElementsAre("a", "b"));
}

TEST_F(ObserverListTest, ForgetsListenersThatAreGone)
{
    auto a = listen("a");
    EXPECT_FALSE(list.isEmpty());
    a.reset();
    EXPECT_TRUE(list.isEmpty());
    tell();
    EXPECT_TRUE(log.empty());
}

TEST_F(ObserverListTest, AListenerRemovedDuringARoundIsNotCalledAgain)
{
    std::shared_ptr<Listener> b;
    const auto a = listen("a", [&] { list.remove(*b); });
    b = listen("b");
    tell();
    tell();
    EXPECT_THAT(log, ElementsAre("a", "a"));
}

TEST_F(ObserverListTest, AListenerDestroyedDuringARoundIsNotCalledAgain)
{
    std::shared_ptr<Listener> b;
    const auto a = listen("a", [&] { b.reset(); });
    b = listen("b");
    tell();
    EXPECT_THAT(log, ElementsAre("a"));
}

TEST_F(ObserverListTest, AListenerMayDropItself)
{
    std::shared_ptr<Listener> a;
    a = listen("a", [&] { a.reset(); });
    tell();
    EXPECT_TRUE(list.isEmpty());
}

TEST_F(ObserverListTest, AListenerAddedDuringARoundIsCalledFromTheNextOneOn)
{
    std::shared_ptr<Listener> b;
    const auto a = listen("a", [&] {
        if (!b)
            b = listen("b");
    });
    tell();
    EXPECT_THAT(log, ElementsAre("a"));
    tell();
    EXPECT_THAT(log, ElementsAre("a", "a", "b"));
}

TEST_F(ObserverListTest, ARoundMayStartInsideARound)
{
    int rounds = 0;
    const auto a = listen("a", [&] {
        if (++rounds == 1)
            tell();
    });
    const auto b = listen("b");
    tell();
    EXPECT_THAT(log, ElementsAre("a", "a", "b", "b"));
}
