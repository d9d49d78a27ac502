// Shows the topmost of a stack of controllers under a navigation bar.
#pragma once

#include "platform/controllers/UIViewController.h"
#include "platform/controls/UINavigationBar.h"

#include <functional>

class UINavigationController : public UIViewController {
public:
    using BarMaker = std::function<std::shared_ptr<UINavigationBar>()>;

    // initWithNavigationBarClass:toolbarClass: — how the bar is made; none stands for a plain one.
    explicit UINavigationController(BarMaker barMaker = nullptr)
        : m_barMaker(std::move(barMaker))
    {
    }

    // Made with the controller.
    const std::shared_ptr<UINavigationBar>& navigationBar() const { return m_navigationBar; }
    const std::vector<std::shared_ptr<UIViewController>>& viewControllers() const
    {
        return m_viewControllers;
    }
    // The last one is shown; an empty stack shows an empty bar.
    void setViewControllers(std::vector<std::shared_ptr<UIViewController>> controllers);
    std::shared_ptr<UIViewController> topViewController() const;

    void viewDidLoad() override;
    void viewWillLayoutSubviews() override;

protected:
    void init() override;

private:
    bool isInStack(const std::shared_ptr<UIViewController>& controller) const;
    void takeOut(UIViewController& controller);
    void showTopViewController();

    BarMaker m_barMaker;
    std::shared_ptr<UINavigationBar> m_navigationBar;
    std::vector<std::shared_ptr<UIViewController>> m_viewControllers;
};
