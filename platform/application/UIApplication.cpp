#include "platform/application/UIApplication.h"

#include "platform/foundation/ClassRegistry.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/NSNotificationCenter.h"

namespace {

std::weak_ptr<UIApplication> runningApplication;

template <typename Class> std::shared_ptr<Class> makeByName(const NSString& className)
{
    auto object = std::dynamic_pointer_cast<Class>(ClassRegistry::makeObject(className));
    NSCAssert(
        object, "UIApplication", QStringLiteral("There is no suitable class named \"%1\".").arg(className));
    return object;
}

} // namespace

UIApplication::~UIApplication() = default;

std::shared_ptr<UIApplication> UIApplication::sharedApplication() { return runningApplication.lock(); }

std::shared_ptr<UIApplication> UIApplication::launch(const NSString& principalClassName,
    const NSString& delegateClassName, const UIApplicationLaunchOptions& options)
{
    ClassRegistry::runLoadHooks();
    auto application
        = principalClassName.isNull() ? make<UIApplication>() : makeByName<UIApplication>(principalClassName);
    const auto delegate = makeByName<UIApplicationDelegate>(delegateClassName);
    if (!application || !delegate)
        return nullptr;
    application->m_delegate = delegate;
    runningApplication = application;
    if (!delegate->applicationDidFinishLaunchingWithOptions(*application, options))
        return nullptr;
    return application;
}

const FrameList& UIApplication::performFrame()
{
    const std::weak_ptr<UIWindow> window = keyWindow();
    if (!window.expired()) {
        const FrameList& frame = window.lock()->performFrame();
        if (!window.expired()) // who is told of an ended animation may have dropped it, and its frame with it
            return frame;
    }
    const auto& screen = UIScreen::mainScreen();
    m_emptyScreen.size = screen->bounds().size();
    m_emptyScreen.scale = screen->scale();
    return m_emptyScreen;
}

TouchDispatcher* UIApplication::touches() const
{
    const auto window = keyWindow();
    return window && m_state == UIApplicationState::Active ? &window->touches() : nullptr;
}

void UIApplication::setUserInterfaceStyle(UIUserInterfaceStyle style)
{
    CurrentUserInterfaceStyle::set(style);
}

void UIApplication::enterBackground()
{
    if (std::exchange(m_state, UIApplicationState::Background) == UIApplicationState::Background)
        return;
    const auto self = strongSelf(this); // a delegate or an observer may drop it
    if (const auto window = keyWindow())
        window->touches().cancelAllTouches();
    if (const auto delegate = m_delegate)
        delegate->applicationDidEnterBackground(*this);
    NSNotificationCenter::defaultCenter().post(UIApplicationDidEnterBackgroundNotification, self);
}

void UIApplication::enterForeground()
{
    if (std::exchange(m_state, UIApplicationState::Active) != UIApplicationState::Background)
        return;
    const auto self = strongSelf(this); // a delegate or an observer may drop it
    if (const auto delegate = m_delegate)
        delegate->applicationWillEnterForeground(*this);
    NSNotificationCenter::defaultCenter().post(UIApplicationWillEnterForegroundNotification, self);
}
