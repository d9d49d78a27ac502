#include "app/ORVAppDelegate.h"

#include "platform/application/UIDevice.h"
#include "platform/controls/UINavigationItem.h"
#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/Executor.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/media/AVPlayer.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/UIColor+ORVTheme.h"

REGISTER_CLASS(ORVAppDelegate);

namespace {

// Long enough for the first frame to be on the screen, short enough to come before the first tap.
constexpr double warmUpDelay = 0.5; // seconds

} // namespace

bool ORVAppDelegate::applicationDidFinishLaunchingWithOptions(
    UIApplication&, const UIApplicationLaunchOptions&)
{
    m_window = make<UIWindow>(UIScreen::mainScreen()->bounds());
    m_window->setBackgroundColor(UIColor::blackColor());
    m_window->setTintColor(orv_oruvaneMainColor());
    m_recordsStorage = make<ORVRecordsStorage>();
    setupCommonRootUI();

    const UIUserInterfaceIdiom idiom = UIDevice::currentDevice()->userInterfaceIdiom();
    NSCAssert(idiom == UIUserInterfaceIdiom::Phone || idiom == UIUserInterfaceIdiom::Pad, "ORVAppDelegate",
        QStringLiteral("Wat."));
    m_window->setRootViewController(m_listNavigationController);

    m_listViewController->updateRecordsIfNecessary();
    m_window->makeKeyAndVisible();
    dispatchAfterOnMainQueue(warmUpDelay, [] { AVPlayer::warmUp(); });
    return true;
}

void ORVAppDelegate::setupCommonRootUI()
{
    m_listViewController = make<ORVRecordsListViewController>();
    m_listViewController->navigationItem()->setTitle(QStringLiteral("ORUVANE"));
    m_listViewController->setRecordsStorage(m_recordsStorage);
    m_listViewController->setUserLocation(m_recordsStorage->fakeUserLocation());
    m_listNavigationController = themedNavigationController(m_listViewController);
}

std::shared_ptr<UINavigationController> ORVAppDelegate::themedNavigationController(
    const std::shared_ptr<UIViewController>& rootViewController)
{
    auto controller = make<UINavigationController>([] { return make<ORVAutoTintNavigationBar>(); });
    controller->navigationBar()->setTranslucent(false);
    controller->navigationBar()->setBarStyle(UIBarStyle::Black);
    if (rootViewController)
        controller->setViewControllers({ rootViewController });
    return controller;
}
