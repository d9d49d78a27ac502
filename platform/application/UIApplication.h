// The running application, and what the host drives it by.
//
// The host starts it by class names and then only asks for frames and hands in touches and changes of the
// device. Main thread only.
#pragma once

#include "platform/application/UIApplicationDelegate.h"
#include "platform/views/UIWindow.h"

// Posted on the main thread, with the application as their object.
inline const NSString UIApplicationDidEnterBackgroundNotification
    = QStringLiteral("UIApplicationDidEnterBackgroundNotification");
inline const NSString UIApplicationWillEnterForegroundNotification
    = QStringLiteral("UIApplicationWillEnterForegroundNotification");

enum class UIApplicationState { Active = 0, Background = 2 };

class UIApplication : public UIResponder {
public:
    UIApplication() = default;
    ~UIApplication() override;

    // Null while none runs. Whoever launched it keeps it.
    static std::shared_ptr<UIApplication> sharedApplication();

    // Runs the load hooks, makes the application and its delegate by their class names (a null principal
    // class is UIApplication), and tells the delegate. Null when the delegate says no; an unknown class is
    // a programming error and gives null too.
    static std::shared_ptr<UIApplication> launch(const NSString& principalClassName,
        const NSString& delegateClassName, const UIApplicationLaunchOptions& options = {});

    const std::shared_ptr<UIApplicationDelegate>& delegate() const { return m_delegate; }
    std::shared_ptr<UIWindow> keyWindow() const { return UIWindow::keyWindow(); }
    UIApplicationState applicationState() const { return m_state; }

    // --- For the host --------------------------------------------------------------------------------

    // What is to be seen now, until the next frame; an empty screen while there is no window.
    const FrameList& performFrame();
    // Where the host delivers touches and wheel turns; null while there is no window or the application is in
    // the background.
    TouchDispatcher* touches() const;
    // Light or dark; everything that depends on it is drawn again.
    void setUserInterfaceStyle(UIUserInterfaceStyle style);
    // Doing either twice does it once. In the background no finger touches anything.
    void enterBackground();
    void enterForeground();

private:
    std::shared_ptr<UIApplicationDelegate> m_delegate;
    UIApplicationState m_state = UIApplicationState::Active;
    FrameList m_emptyScreen;
};
