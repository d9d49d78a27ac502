// The root of the object graph: builds the window, the store and the list when the application starts.
#pragma once

#include "list/ORVRecordsListViewController.h"
#include "platform/application/UIApplicationDelegate.h"
#include "platform/controllers/UINavigationController.h"
#include "platform/views/UIWindow.h"

class ORVAppDelegate final : public UIResponder, public UIApplicationDelegate {
public:
    const std::shared_ptr<UIWindow>& window() const { return m_window; }
    const std::shared_ptr<ORVRecordsStorage>& recordsStorage() const { return m_recordsStorage; }
    const std::shared_ptr<ORVRecordsListViewController>& listViewController() const
    {
        return m_listViewController;
    }
    const std::shared_ptr<UINavigationController>& listNavigationController() const
    {
        return m_listNavigationController;
    }

    // themedNavigationControllerWithRootViewController: — no root gives an empty one.
    static std::shared_ptr<UINavigationController> themedNavigationController(
        const std::shared_ptr<UIViewController>& rootViewController);

    bool applicationDidFinishLaunchingWithOptions(UIApplication&, const UIApplicationLaunchOptions&) override;

private:
    void setupCommonRootUI();

    std::shared_ptr<UIWindow> m_window;
    std::shared_ptr<ORVRecordsStorage> m_recordsStorage;
    std::shared_ptr<ORVRecordsListViewController> m_listViewController;
    std::shared_ptr<UINavigationController> m_listNavigationController;
};
