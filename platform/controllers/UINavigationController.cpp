#include "platform/controllers/UINavigationController.h"

#include <algorithm>

void UINavigationController::init()
{
    UIViewController::init();
    m_navigationBar = m_barMaker ? m_barMaker() : make<UINavigationBar>();
}

void UINavigationController::setViewControllers(std::vector<std::shared_ptr<UIViewController>> controllers)
{
    for (const auto& controller : m_viewControllers) {
        if (std::find(controllers.begin(), controllers.end(), controller) != controllers.end())
            continue;
        controller->willMoveToParentViewController(nullptr);
        if (controller->isViewLoaded())
            controller->view()->removeFromSuperview();
        controller->removeFromParentViewController();
    }
    m_viewControllers = std::move(controllers);
    for (const auto& controller : m_viewControllers) {
        if (controller->parentViewController() == this)
            continue;
        addChildViewController(controller);
        controller->didMoveToParentViewController(this);
    }
    if (isViewLoaded())
        showTopViewController();
}

std::shared_ptr<UIViewController> UINavigationController::topViewController() const
{
    return m_viewControllers.empty() ? nullptr : m_viewControllers.back();
}

void UINavigationController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    view()->addSubview(m_navigationBar);
    showTopViewController();
}

void UINavigationController::showTopViewController()
{
    const auto top = topViewController();
    for (const auto& controller : m_viewControllers)
        if (controller != top && controller->isViewLoaded())
            controller->view()->removeFromSuperview();
    m_navigationBar->setTopItem(top ? top->navigationItem() : nullptr);
    if (top)
        view()->insertSubviewBelow(top->view(), *m_navigationBar);
    view()->setNeedsLayout();
}

void UINavigationController::viewWillLayoutSubviews()
{
    UIViewController::viewWillLayoutSubviews();
    const CGRect area = view()->bounds();
    const double barBottom = view()->safeAreaInsets().top + UINavigationBar::height;
    m_navigationBar->setFrame(
        { 0, barBottom - UINavigationBar::height, area.width(), UINavigationBar::height });
    if (const auto top = topViewController())
        top->view()->setFrame({ 0, barBottom, area.width(), area.height() - barBottom });
}
