#include "platform/foundation/Action.h"

#include <gmock/gmock.h>

namespace {

class Base {
public:
    virtual ~Base() = default;
    virtual void first() { ++calls; }
    int calls = 0;
};

class OtherBase {
public:
    virtual ~OtherBase() = default;
    virtual void second() { ++otherCalls; }
    int otherCalls = 0;
};

class Sender : public NSObject { };
class OtherSender : public NSObject { };

class Target : public NSObject, public Base, public OtherBase {
public:
    void plain() { ++plainCalls; }
    void withSender(Sender& sender) { lastSender = &sender; }
    void dropItself()
    {
        owner->reset();
        ++plainCalls;
    }
    int plainCalls = 0;
    const Sender* lastSender = nullptr;
    std::shared_ptr<Target>* owner = nullptr;
};

} // namespace

TEST(ActionTest, CallsTheMethodOfItsTarget)
{
    const auto target = make<Target>();
    Action(target, &Target::plain).perform();
    EXPECT_EQ(target->plainCalls, 1);
}

TEST(ActionTest, CallsAMethodThatTheTargetInherits)
{
    const auto target = make<Target>();
    Action(target, &Base::first).perform();
    Action(target, &OtherBase::second).perform();
    EXPECT_EQ(target->calls, 1);
    EXPECT_EQ(target->otherCalls, 1);
}

TEST(ActionTest, DeliversTheSenderWhenItIsOfTheKind)
{
    const auto target = make<Target>();
    const auto sender = make<Sender>();
    const Action action(target, &Target::withSender);
    action.perform(make<OtherSender>().get());
    action.perform(nullptr);
    EXPECT_EQ(target->lastSender, nullptr);
    action.perform(sender.get());
    EXPECT_EQ(target->lastSender, sender.get());
}

TEST(ActionTest, ATargetThatIsGoneIsNotCalled)
{
    auto target = make<Target>();
    const Action action(target, &Target::plain);
    EXPECT_TRUE(action.hasTarget());
    target.reset();
    EXPECT_FALSE(action.hasTarget());
    action.perform();
}

TEST(ActionTest, ATargetMayBeDroppedInsideItsOwnMethod)
{
    auto target = make<Target>();
    target->owner = &target;
    const std::weak_ptr<Target> weak = target;
    Action(target, &Target::dropItself).perform();
    EXPECT_TRUE(weak.expired());
}

TEST(ActionTest, IsEqualByTargetAndMethod)
{
    const auto target = make<Target>();
    const auto other = make<Target>();
    const Action action(target, &Target::plain);
    EXPECT_TRUE(action == Action(target, &Target::plain));
    EXPECT_FALSE(action == Action(other, &Target::plain));
    EXPECT_FALSE(action == Action(target, &Target::withSender));
    EXPECT_FALSE(action == Action());
    EXPECT_TRUE(action.isTarget(*target));
    EXPECT_FALSE(action.isTarget(*other));
}

TEST(ActionTest, MethodsOfTwoBasesAtTheSamePlaceAreNotEqual)
{
    const auto target = make<Target>();
    EXPECT_FALSE(Action(target, &Base::first) == Action(target, &OtherBase::second));
}

TEST(ActionTest, AnEmptyActionDoesNothing)
{
    Action().perform();
    EXPECT_FALSE(Action().hasTarget());
    EXPECT_TRUE(Action() == Action());
}
