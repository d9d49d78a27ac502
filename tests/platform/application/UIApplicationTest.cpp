#include "platform/application/UIApplication.h"

#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/layers/CATransaction.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

namespace {

using Lines = std::vector<std::string>;
Lines events;
bool launches = true;
int loadHooksRun = 0;

class TestDelegate : public UIResponder, public UIApplicationDelegate {
public:
    ~TestDelegate() override { events.push_back("delegate gone"); }
    bool applicationDidFinishLaunchingWithOptions(
        UIApplication& application, const UIApplicationLaunchOptions& options) override
    {
        const bool isShared = UIApplication::sharedApplication().get() == &application;
        events.push_back(isShared && options.empty() ? "launched" : "wrong");
        return launches;
    }
    void applicationDidEnterBackground(UIApplication&) override { events.push_back("background"); }
    void applicationWillEnterForeground(UIApplication&) override { events.push_back("foreground"); }
};
class TestApplication : public UIApplication { };
class NoDelegate : public NSObject { };

REGISTER_CLASS(TestDelegate);
REGISTER_CLASS(TestApplication);
REGISTER_CLASS(NoDelegate);
const ClassRegistry::LoadHook countHook([] { ++loadHooksRun; });

class UIApplicationTest : public SceneFixture {
protected:
    UIApplicationTest()
    {
        events.clear();
        launches = true;
    }
    void TearDown() override
    {
        application = nullptr;
        SceneFixture::TearDown();
    }
    std::shared_ptr<UIApplication> launch()
    {
        return UIApplication::launch(NSString(), QStringLiteral("TestDelegate"));
    }
    std::shared_ptr<UIApplication> application;
};

class Listener : public NSObject {
public:
    void heard(NSNotification& notification) { senders.push_back(notification.object().get()); }
    std::vector<NSObject*> senders;
};

TEST_F(UIApplicationTest, MakesTheDelegateByItsNameAndKeepsIt)
{
    EXPECT_EQ(UIApplication::sharedApplication(), nullptr);
    application = launch();
    ASSERT_TRUE(application);
    EXPECT_EQ(UIApplication::sharedApplication(), application);
    EXPECT_TRUE(std::dynamic_pointer_cast<TestDelegate>(application->delegate()));
    EXPECT_EQ(events, (Lines { "launched" }));
    EXPECT_EQ(loadHooksRun, 1);
    application = nullptr;
    EXPECT_EQ(events.back(), "delegate gone");
    EXPECT_EQ(UIApplication::sharedApplication(), nullptr);
}

TEST_F(UIApplicationTest, AnotherPrincipalClassMayBeNamed)
{
    application = UIApplication::launch(QStringLiteral("TestApplication"), QStringLiteral("TestDelegate"));
    ASSERT_TRUE(application);
    EXPECT_TRUE(application->isKindOfClass<TestApplication>());
}

TEST_F(UIApplicationTest, DoesNotRunWhereTheDelegateSaysNo)
{
    launches = false;
    EXPECT_EQ(launch(), nullptr);
    EXPECT_EQ(UIApplication::sharedApplication(), nullptr);
}

TEST_F(UIApplicationTest, AnUnknownClassIsAProgrammingError)
{
    AssertionRecorder recorder;
    EXPECT_EQ(UIApplication::launch(NSString(), QStringLiteral("Nobody")), nullptr);
    EXPECT_EQ(UIApplication::launch(NSString(), QStringLiteral("NoDelegate")), nullptr);
    EXPECT_EQ(UIApplication::launch(QStringLiteral("TestDelegate"), QStringLiteral("TestDelegate")), nullptr);
    EXPECT_EQ(recorder.messages(),
        (std::vector<NSString> { QStringLiteral("There is no suitable class named \"Nobody\"."),
            QStringLiteral("There is no suitable class named \"NoDelegate\"."),
            QStringLiteral("There is no suitable class named \"TestDelegate\".") }));
}

TEST_F(UIApplicationTest, TellsOfTheBackgroundOnceAndOfTheWayBack)
{
    application = launch();
    const auto listener = make<Listener>();
    const Action heard(listener, &Listener::heard);
    NSNotificationCenter::defaultCenter().addObserver(heard, UIApplicationDidEnterBackgroundNotification);
    NSNotificationCenter::defaultCenter().addObserver(heard, UIApplicationWillEnterForegroundNotification);
    application->enterBackground();
    application->enterBackground();
    EXPECT_EQ(application->applicationState(), UIApplicationState::Background);
    EXPECT_EQ(listener->senders, (std::vector<NSObject*> { application.get() }));
    application->enterForeground();
    application->enterForeground();
    EXPECT_EQ(application->applicationState(), UIApplicationState::Active);
    EXPECT_EQ(listener->senders.size(), 2u);
    EXPECT_EQ(events, (Lines { "launched", "background", "foreground" }));
}

TEST_F(UIApplicationTest, FingersAreLiftedInTheBackground)
{
    application = launch();
    ASSERT_TRUE(application->touches());
    application->touches()->touchBegan(TouchID { 1 }, { 10, 10 });
    EXPECT_TRUE(window->touches().hasTouches());
    application->enterBackground();
    EXPECT_FALSE(window->touches().hasTouches());
    EXPECT_EQ(application->touches(), nullptr);
    application->enterForeground();
    EXPECT_TRUE(application->touches());
}

TEST_F(UIApplicationTest, AFrameIsTheKeyWindowsOrEmpty)
{
    application = launch();
    window->setBackgroundColor(UIColor::whiteColor());
    EXPECT_EQ(application->performFrame().items.size(), 1u);
    window = nullptr;
    const FrameList empty = application->performFrame();
    EXPECT_TRUE(empty.items.empty());
    EXPECT_EQ(empty.size, CGSize(390, 844));
    EXPECT_EQ(empty.scale, 2);
    EXPECT_EQ(application->touches(), nullptr);
}

TEST_F(UIApplicationTest, AFrameIsEmptyWhenItsWindowGoesWithinIt)
{
    application = launch();
    window->setBackgroundColor(UIColor::whiteColor());
    EXPECT_EQ(application->performFrame().items.size(), 1u);
    const std::weak_ptr<UIWindow> gone = window;
    CATransaction::setCompletionBlock([this] { window = nullptr; });
    EXPECT_TRUE(application->performFrame().items.empty());
    EXPECT_TRUE(gone.expired());
}

TEST_F(UIApplicationTest, AnotherAppearanceReachesTheViews)
{
    application = launch();
    runFrames();
    application->setUserInterfaceStyle(UIUserInterfaceStyle::Dark);
    EXPECT_EQ(CurrentUserInterfaceStyle::get(), UIUserInterfaceStyle::Dark);
    EXPECT_TRUE(scheduler.isFrameRequested());
}

} // namespace
