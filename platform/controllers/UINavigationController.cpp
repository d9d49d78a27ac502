#include "platform/controllers/UINavigationController.h"

#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"

#include <algorithm>

// Here, because only this class knows which of the ancestors it is.
UINavigationController* UIViewController::navigationController() const
{
    for (UIViewController* ancestor = parentViewController(); ancestor;
         ancestor = ancestor->parentViewController())
        if (auto* controller = dynamic_cast<UINavigationController*>(ancestor))
            return controller;
    return nullptr;
}

void UINavigationController::init()
{
    UIViewController::init();
    m_navigationBar = m_barMaker ? m_barMaker() : nullptr;
    if (!m_navigationBar)
        m_navigationBar = make<UINavigationBar>();
}

// Controllers may set another stack while they are told of this one: what is in the stack then counts.
void UINavigationController::setViewControllers(std::vector<std::shared_ptr<UIViewController>> controllers)
{
    const bool areControllers
        = std::find(controllers.begin(), controllers.end(), nullptr) == controllers.end();
    NSParameterAssert(areControllers, "UINavigationController", "controllers are no nulls");
    std::erase(controllers, nullptr);
    const KeepAlive keepAlive(*this);
    const auto before = std::exchange(m_viewControllers, std::move(controllers));
    const auto after = m_viewControllers;
    for (const auto& controller : before)
        if (controller->parentViewController() == this && !isInStack(controller))
            takeOut(*controller);
    for (const auto& controller : after) {
        if (controller->parentViewController() == this || !isInStack(controller))
            continue;
        addChildViewController(controller);
        if (isInStack(controller))
            controller->didMoveToParentViewController(this);
        else
            takeOut(*controller);
    }
    if (isViewLoaded())
        showTopViewController();
}

bool UINavigationController::isInStack(const std::shared_ptr<UIViewController>& controller) const
{
    return std::find(m_viewControllers.begin(), m_viewControllers.end(), controller)
        != m_viewControllers.end();
}

void UINavigationController::takeOut(UIViewController& controller)
{
    controller.willMoveToParentViewController(nullptr);
    if (const auto view = controller.viewIfLoaded())
        view->removeFromSuperview();
    controller.removeFromParentViewController();
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
    const auto topView = top ? top->view() : nullptr;
    const auto stack = m_viewControllers;
    for (const auto& controller : stack)
        if (controller != top && top == topViewController() && controller->isViewLoaded())
            controller->view()->removeFromSuperview();
    if (top != topViewController())
        return; // loading or leaving has set another stack, which is shown by now
    m_navigationBar->setTopItem(top ? top->navigationItem() : nullptr);
    if (topView)
        view()->insertSubviewBelow(topView, *m_navigationBar);
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
