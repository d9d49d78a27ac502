#include "platform/host/HostApplication.h"

#include "platform/foundation/ClassRegistry.h"
#include "platform/graphics/UIColor.h"
#include "platform/views/UIWindow.h"

#include <QGuiApplication>
#include <QImage>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>

namespace {

const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
const std::shared_ptr<UIColor> blue = UIColor::colorWithRed(0, 0, 1, 1);

// An application with one coloured view, whose tests look at it through what the host does to it.
class HostTestDelegate final : public NSObject, public UIApplicationDelegate {
public:
    bool applicationDidFinishLaunchingWithOptions(UIApplication&, const UIApplicationLaunchOptions&) override
    {
        window = make<UIWindow>(UIScreen::mainScreen()->bounds());
        window->setBackgroundColor(red);
        window->makeKeyAndVisible();
        if (onLaunch)
            onLaunch();
        return launches;
    }
    void applicationDidEnterBackground(UIApplication&) override { ++timesInBackground; }

    std::shared_ptr<UIWindow> window;
    int timesInBackground = 0;

    static inline bool launches = true;
    static inline std::function<void()> onLaunch;
};
REGISTER_CLASS(HostTestDelegate);

class HostApplicationTest : public testing::Test {
protected:
    HostApplicationTest()
    {
        options.scale = 2;
        QGuiApplication::setQuitOnLastWindowClosed(false); // it would end the loop of the next test
    }
    ~HostApplicationTest() override
    {
        HostTestDelegate::launches = true;
        HostTestDelegate::onLaunch = nullptr;
        CurrentUserInterfaceStyle::set(UIUserInterfaceStyle::Light);
    }

    // Runs the work in a running application, which it has to end.
    int run(HostApplication& application, const std::function<void()>& work)
    {
        HostTestDelegate::onLaunch = [work] { Scheduler::current().schedule(0.05, work); };
        return application.run({}, "HostTestDelegate");
    }

    static HostTestDelegate& delegate()
    {
        return dynamic_cast<HostTestDelegate&>(*UIApplication::sharedApplication()->delegate());
    }

    static void press(SceneWindow& window, Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
        QCoreApplication::sendEvent(&window, &event);
    }

    HostOptions options;
};

TEST_F(HostApplicationTest, SavesAScreenshotOfWhatTheApplicationShowsAndEnds)
{
    const QTemporaryDir folder;
    options.screenshotFile = folder.filePath("shown.png");
    HostApplication application(options);
    EXPECT_EQ(application.run({}, "HostTestDelegate"), 0);
    const QImage picture(options.screenshotFile);
    EXPECT_EQ(picture.size(), QSize(780, 1688));
    EXPECT_EQ(picture.pixelColor(5, 5), red->qColor());
    EXPECT_EQ(picture.pixelColor(775, 1680), red->qColor());
}

TEST_F(HostApplicationTest, EndsWithAnErrorWhenTheScreenshotCannotBeSaved)
{
    options.screenshotFile = "/no/such/folder/picture.png";
    HostApplication application(options);
    testing::internal::CaptureStderr();
    EXPECT_EQ(application.run({}, "HostTestDelegate"), 1);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
        testing::StartsWith("cannot save the picture to \"/no/such/folder/picture.png\": "));
}

TEST_F(HostApplicationTest, EndsWithAnErrorWhenTheDelegateDoesNotWantToRun)
{
    HostTestDelegate::launches = false;
    HostApplication application(options);
    testing::internal::CaptureStderr();
    EXPECT_EQ(application.run({}, "HostTestDelegate"), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "the application could not be started\n");
}

TEST_F(HostApplicationTest, DrawsNoFrameWhileNothingChanges)
{
    HostApplication application(options);
    std::int64_t settled = 0;
    run(application, [&] {
        Scheduler::current().schedule(0.1, [&] { settled = application.window().framesDrawn(); });
        Scheduler::current().schedule(0.6, [&] { QGuiApplication::quit(); });
    });
    EXPECT_EQ(settled, 1);
    EXPECT_EQ(application.window().framesDrawn(), settled);
}

TEST_F(HostApplicationTest, DrawsAFrameForAChange)
{
    HostApplication application(options);
    run(application, [&] {
        delegate().window->setBackgroundColor(blue);
        Scheduler::current().schedule(0.1, [&] {
            EXPECT_EQ(application.window().grabWindow().pixelColor(9, 9), blue->qColor());
            QGuiApplication::quit();
        });
    });
    EXPECT_EQ(application.window().framesDrawn(), 2);
}

TEST_F(HostApplicationTest, CountsFramesUploadsAndMemoryInItsReport)
{
    options.reports = true;
    HostApplication application(options);
    testing::internal::CaptureStdout();
    run(application, [] { QGuiApplication::quit(); });
    const std::string report = testing::internal::GetCapturedStdout();
    EXPECT_THAT(report, testing::HasSubstr("frames drawn: 1\n"));
    EXPECT_THAT(report, testing::HasSubstr("textures uploaded: 0\n"));
    EXPECT_GT(application.window().statistics().timeToFirstFrame(), 0);
    EXPECT_GT(application.window().statistics().peakMemory(), 1 << 20);
}

TEST_F(HostApplicationTest, EndsWhenItsWindowIsClosed)
{
    QGuiApplication::setQuitOnLastWindowClosed(true);
    HostApplication application(options);
    EXPECT_EQ(run(application, [&] { application.window().close(); }), 0);
}

TEST_F(HostApplicationTest, EndsInOrderWhenTheSystemAsksItTo)
{
    options.reports = true;
    HostApplication application(options);
    testing::internal::CaptureStdout();
    const int exitCode = run(application, [] { std::raise(SIGTERM); });
    EXPECT_EQ(exitCode, 0);
    EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::HasSubstr("frames drawn: "));
}

TEST_F(HostApplicationTest, TurnsTheDeviceByAKey)
{
    HostApplication application(options);
    run(application, [&] {
        press(application.window(), Qt::Key_R);
        EXPECT_EQ(UIScreen::mainScreen()->bounds().size(), CGSize(844, 390));
        EXPECT_EQ(application.window().size(), QSize(1688, 780));
        press(application.window(), Qt::Key_R);
        EXPECT_EQ(UIScreen::mainScreen()->bounds().size(), CGSize(390, 844));
        QGuiApplication::quit();
    });
}

TEST_F(HostApplicationTest, ChangesTheAppearanceByAKey)
{
    options.appearance = HostOptions::Appearance::Dark;
    HostApplication application(options);
    run(application, [&] {
        EXPECT_EQ(CurrentUserInterfaceStyle::get(), UIUserInterfaceStyle::Dark);
        press(application.window(), Qt::Key_D);
        EXPECT_EQ(CurrentUserInterfaceStyle::get(), UIUserInterfaceStyle::Light);
        press(application.window(), Qt::Key_D);
        EXPECT_EQ(CurrentUserInterfaceStyle::get(), UIUserInterfaceStyle::Dark);
        QGuiApplication::quit();
    });
}

TEST_F(HostApplicationTest, GoesToTheBackgroundAndBackByAKey)
{
    HostApplication application(options);
    run(application, [&] {
        press(application.window(), Qt::Key_B);
        EXPECT_EQ(delegate().timesInBackground, 1);
        EXPECT_EQ(UIApplication::sharedApplication()->applicationState(), UIApplicationState::Background);
        press(application.window(), Qt::Key_B);
        EXPECT_EQ(UIApplication::sharedApplication()->applicationState(), UIApplicationState::Active);
        QGuiApplication::quit();
    });
}

TEST_F(HostApplicationTest, SlowsTheAnimationsOfItsWindow)
{
    options.slowsAnimations = true;
    HostApplication application(options);
    run(application, [&] {
        EXPECT_EQ(delegate().window->layer()->speed(), 0.1);
        QGuiApplication::quit();
    });
}

} // namespace
