#include "platform/foundation/NSNotificationCenter.h"

#include <gmock/gmock.h>

#include <functional>

namespace {

const NSString background = QStringLiteral("DidEnterBackground");
const NSString foreground = QStringLiteral("WillEnterForeground");

class Listener : public NSObject {
public:
    void hear(NSNotification& notification)
    {
        ++heard;
        lastName = notification.name();
        lastObject = notification.object();
        if (reaction)
            reaction();
    }
    void hearElsewhere() { ++heardElsewhere; }
    int heard = 0;
    int heardElsewhere = 0;
    NSString lastName;
    std::shared_ptr<NSObject> lastObject;
    std::function<void()> reaction;
};

class NSNotificationCenterTest : public testing::Test {
protected:
    Action hearing(const std::shared_ptr<Listener>& who) const { return { who, &Listener::hear }; }

    NSNotificationCenter center;
    std::shared_ptr<Listener> listener = make<Listener>();
    std::shared_ptr<Listener> other = make<Listener>();
};

} // namespace

TEST_F(NSNotificationCenterTest, TellsTheNameAndTheObject)
{
    center.addObserver(hearing(listener), background);
    center.post(background, other);
    EXPECT_EQ(listener->heard, 1);
    EXPECT_EQ(listener->lastName, background);
    EXPECT_EQ(listener->lastObject, other);
}

TEST_F(NSNotificationCenterTest, OtherNamesAreNotHeard)
{
    center.addObserver(hearing(listener), background);
    center.post(foreground);
    EXPECT_EQ(listener->heard, 0);
}

TEST_F(NSNotificationCenterTest, RemovesExactlyThatRegistration)
{
    center.addObserver(hearing(listener), background);
    center.addObserver(hearing(listener), foreground);
    center.addObserver({ listener, &Listener::hearElsewhere }, background);
    center.addObserver(hearing(other), background);
    center.removeObserver(hearing(listener), background);
    center.removeObserver(hearing(listener), QStringLiteral("Unknown"));
    center.post(background);
    center.post(foreground);
    EXPECT_EQ(listener->lastName, foreground);
    EXPECT_EQ(listener->heard, 1);
    EXPECT_EQ(listener->heardElsewhere, 1);
    EXPECT_EQ(other->heard, 1);
}

TEST_F(NSNotificationCenterTest, RemovesEveryRegistrationOfAnObject)
{
    center.addObserver(hearing(listener), background);
    center.addObserver({ listener, &Listener::hearElsewhere }, background);
    center.removeObserver(*listener);
    center.post(background);
    EXPECT_EQ(listener->heard + listener->heardElsewhere, 0);
}

TEST_F(NSNotificationCenterTest, AnObserverThatIsGoneDoesNotStopTheOthers)
{
    center.addObserver(hearing(listener), background);
    center.addObserver(hearing(other), background);
    listener.reset();
    EXPECT_EQ(center.observerCount(), 2u);
    center.post(background);
    EXPECT_EQ(other->heard, 1);
    EXPECT_EQ(center.observerCount(), 1u) << "what it left behind is gone";
}

TEST_F(NSNotificationCenterTest, AnObserverMayBeDroppedInsideItsNotification)
{
    listener->reaction = [&] { listener.reset(); };
    const std::weak_ptr<Listener> weak = listener;
    center.addObserver(hearing(listener), background);
    center.post(background);
    EXPECT_TRUE(weak.expired());
}

TEST_F(NSNotificationCenterTest, WhoIsRemovedWhileOneIsPostedIsNotCalledAgain)
{
    listener->reaction = [&] { center.removeObserver(*other); };
    center.addObserver(hearing(listener), background);
    center.addObserver(hearing(other), background);
    center.post(background);
    EXPECT_EQ(other->heard, 0);
}

TEST_F(NSNotificationCenterTest, WhoIsAddedWhileOneIsPostedIsCalledFromTheNextOneOn)
{
    listener->reaction = [&] {
        listener->reaction = nullptr;
        center.addObserver(hearing(other), background);
    };
    center.addObserver(hearing(listener), background);
    center.post(background);
    EXPECT_EQ(other->heard, 0);
    center.post(background);
    EXPECT_EQ(other->heard, 1);
}

TEST_F(NSNotificationCenterTest, ThereIsOneDefaultCenter)
{
    EXPECT_EQ(&NSNotificationCenter::defaultCenter(), &NSNotificationCenter::defaultCenter());
}
