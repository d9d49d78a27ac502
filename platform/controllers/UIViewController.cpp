#include "platform/controllers/UIViewController.h"

#include "platform/controls/UINavigationItem.h"
#include "platform/foundation/Messages.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/views/DepartedView.h"
#include "platform/views/UIWindow.h"

#include <algorithm>

UIViewController::~UIViewController()
{
    if (m_view && m_view->owner() == this)
        m_view->setOwner(nullptr);
    for (const auto& child : m_children)
        child->m_parent = nullptr;
}

std::shared_ptr<UIView> UIViewController::view()
{
    if (m_view)
        return m_view;
    const KeepAlive keepAlive(*this);
    loadView();
    NSCAssert(m_view, "UIViewController", QStringLiteral("loadView set no view."));
    if (!m_view)
        UIViewController::loadView();
    viewDidLoad();
    return m_view;
}

void UIViewController::setView(std::shared_ptr<UIView> view)
{
    const KeepAlive keepAlive(*this);
    if (!view || !view->window())
        willDisappear();
    if (m_view && m_view->owner() == this)
        m_view->setOwner(nullptr);
    m_view = std::move(view);
    if (m_view)
        m_view->setOwner(this);
    viewDidMoveToWindow(); // the new view may be elsewhere
}

void UIViewController::loadView() { setView(make<UIView>()); }

void UIViewController::setTitle(const NSString& title)
{
    m_title = title;
    navigationItem()->setTitle(title);
}

const std::shared_ptr<UINavigationItem>& UIViewController::navigationItem()
{
    if (!m_navigationItem) {
        m_navigationItem = make<UINavigationItem>();
        m_navigationItem->setTitle(m_title);
    }
    return m_navigationItem;
}

// --- Containment -------------------------------------------------------------------------------------

void UIViewController::addChildViewController(std::shared_ptr<UIViewController> child)
{
    const bool isPossible = child && !child->contains(*this);
    NSParameterAssert(isPossible, "UIViewController", "childController is another controller");
    if (!isPossible || child->m_parent == this)
        return;
    const KeepAlive keepAlive(*this);
    child->willMoveToParentViewController(this);
    if (child->m_parent)
        child->removeFromParentViewController();
    child->m_parent = this;
    m_children.push_back(std::move(child));
}

bool UIViewController::contains(const UIViewController& controller) const
{
    for (const UIViewController* ancestor = &controller; ancestor; ancestor = ancestor->m_parent)
        if (ancestor == this)
            return true;
    return false;
}

void UIViewController::removeFromParentViewController()
{
    if (!m_parent)
        return;
    const KeepAlive keepAlive(*this);
    std::erase_if(m_parent->m_children, [this](const auto& child) { return child.get() == this; });
    m_parent = nullptr;
    didMoveToParentViewController(nullptr);
}

UIResponder* UIViewController::nextResponder() const
{
    return m_view ? DepartedView::superviewOf(*m_view) : nullptr;
}

// --- Appearance --------------------------------------------------------------------------------------

bool UIViewController::isInWindow() const { return m_view && m_view->window(); }

void UIViewController::viewWillMoveToWindow(UIWindow* window)
{
    if (!window)
        willDisappear();
}

void UIViewController::willDisappear()
{
    if (m_appearance != Appearance::Appeared)
        return;
    m_appearance = Appearance::Disappearing;
    viewWillDisappear(Animated::No);
}

void UIViewController::viewDidMoveToWindow()
{
    const KeepAlive keepAlive(*this);
    if (!isInWindow())
        willDisappear(); // where the view has left without an announcement
    const Appearance before = m_appearance;
    const bool inWindow = isInWindow();
    if (inWindow && (before == Appearance::Gone || before == Appearance::Disappearing)) {
        m_appearance = Appearance::Appearing;
        m_view->setNeedsLayout();
        viewWillAppear(Animated::No);
    } else if (!inWindow) {
        m_appearance = Appearance::Gone;
        if (before == Appearance::Disappearing)
            viewDidDisappear(Animated::No);
    }
}

void UIViewController::viewDidLayoutSubviews()
{
    if (m_appearance != Appearance::Appearing || !isInWindow())
        return;
    m_appearance = Appearance::Appeared;
    viewDidAppear(Animated::No);
}
