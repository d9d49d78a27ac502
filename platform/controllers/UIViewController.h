// Looks after one view: makes it when it is first asked for, fills it, and hears when it comes and goes.
//
// A controller may hold child controllers; whoever adds a child also places the child's view. The
// view's appearance is told around its time in a window: viewWillAppear() when it enters one, viewDidAppear()
// after its first layout there, viewWillDisappear() before it leaves, viewDidDisappear() when it has left.
// What leaves before its first layout has not appeared, and does not disappear. Main thread only.
#pragma once

#include "platform/foundation/FoundationTypes.h"
#include "platform/views/UIView.h"
#include "platform/views/UIViewOwner.h"

class UINavigationController;
class UINavigationItem;

class UIViewController : public UIViewOwner {
public:
    UIViewController() = default;
    ~UIViewController() override;

    // Loads the view at the first call.
    std::shared_ptr<UIView> view() override;
    void setView(std::shared_ptr<UIView> view);
    bool isViewLoaded() const { return m_view != nullptr; }
    std::shared_ptr<UIView> viewIfLoaded() const { return m_view; }

    const NSString& title() const { return m_title; }
    // Also the navigation item's title.
    void setTitle(const NSString& title);
    // How the controller shows itself in a navigation bar; made at the first call.
    const std::shared_ptr<UINavigationItem>& navigationItem();
    // The nearest one that this controller is in; null for none. Defined beside that class.
    UINavigationController* navigationController() const;

    UIViewController* parentViewController() const { return m_parent; }
    const std::vector<std::shared_ptr<UIViewController>>& childViewControllers() const { return m_children; }
    // A controller cannot be its own child, however deep. Takes the child from where it was, after telling it
    // with willMoveToParentViewController(); the parent tells it didMoveToParentViewController() when its
    // view is in place.
    void addChildViewController(std::shared_ptr<UIViewController> child);
    // The counterpart: the parent tells the child willMove (to none) first, didMove is told here.
    void removeFromParentViewController();
    virtual void willMoveToParentViewController(UIViewController*) { }
    virtual void didMoveToParentViewController(UIViewController*) { }

    // Sets the view; a plain one unless a subclass makes its own.
    virtual void loadView();
    virtual void viewDidLoad() { }
    virtual void viewWillAppear(Animated) { }
    virtual void viewDidAppear(Animated) { }
    virtual void viewWillDisappear(Animated) { }
    virtual void viewDidDisappear(Animated) { }
    void viewDidLayoutSubviews() override;
    void viewWillMoveToWindow(UIWindow* window) override;
    void viewDidMoveToWindow() override;
    UIResponder* nextResponder() const override;

private:
    enum class Appearance { Gone, Appearing, Appeared, Disappearing };

    bool contains(const UIViewController& controller) const; // or is it
    bool isInWindow() const;
    void willDisappear();

    std::shared_ptr<UIView> m_view;
    NSString m_title;
    std::shared_ptr<UINavigationItem> m_navigationItem;
    UIViewController* m_parent = nullptr;
    std::vector<std::shared_ptr<UIViewController>> m_children;
    Appearance m_appearance = Appearance::Gone;
};
