#include "platform/views/UIWindow.h"

#include "platform/foundation/Messages.h"
#include "platform/layers/CATransaction.h"
#include "platform/views/UIViewOwner.h"
#include "platform/views/ViewInsets.h"

namespace {

std::weak_ptr<UIWindow> windowInFront;

} // namespace

void UIWindow::init()
{
    UIView::init();
    setHidden(true);
    m_tree = std::make_unique<CALayerTree>(layer());
    setWindow(this);
    UIScreen::mainScreen()->addObserver(weakSelf(this));
    CurrentUserInterfaceStyle::addObserver(weakSelf(this));
}

UIWindow::~UIWindow() = default;

// No view comes in any more, so each round leaves one less. The controllers go last: they hear of what
// happens to their views.
void UIWindow::willBeDestroyed()
{
    m_isGoing = true;
    m_touches.cancelAllTouches();
    while (!subviews().empty())
        subviews().back()->removeFromSuperview();
    m_rootView = nullptr;
    m_rootViewController = nullptr;
}

std::shared_ptr<UIWindow> UIWindow::keyWindow() { return windowInFront.lock(); }

void UIWindow::makeKeyAndVisible()
{
    const KeepAlive keepAlive(*this);
    windowInFront = weakSelf(this);
    setHidden(false);
    showRootView();
}

bool UIWindow::isKeyWindow() const { return keyWindow().get() == this; }

void UIWindow::setRootViewController(std::shared_ptr<UIViewOwner> controller)
{
    if (controller == m_rootViewController)
        return;
    const KeepAlive keepAlive(*this);
    // The one before hears that its view leaves, and may set another one inside that message.
    const auto before = std::exchange(m_rootViewController, std::move(controller));
    if (const auto viewBefore = std::exchange(m_rootView, nullptr))
        viewBefore->removeFromSuperview();
    if (!isHidden())
        showRootView();
}

// A window that nobody sees does not load the view yet: a controller may still be filled until then.
void UIWindow::showRootView()
{
    if (!m_rootViewController || m_rootView || m_isGoing)
        return;
    const auto controller = m_rootViewController;
    const auto view = controller->view();
    if (m_rootView || m_isGoing || controller != m_rootViewController)
        return; // loading it has set another one
    m_rootView = view;
    m_rootView->setFrame(bounds());
    insertSubview(m_rootView, 0);
}

void UIWindow::forgetFirstResponderIn(const UIView& view)
{
    const auto first = firstResponder();
    for (const UIResponder* responder = first.get(); responder; responder = responder->nextResponder())
        if (responder == &view)
            return setFirstResponder(nullptr);
}

void UIWindow::layoutSubviews()
{
    if (m_rootView)
        m_rootView->setFrame(bounds());
}

const FrameList& UIWindow::performFrame()
{
    const KeepAlive keepAlive(*this);
    m_tree->beginFrame();
    runFrameUpdates();
    m_tree->layoutIfNeeded();
    m_tree->displayIfNeeded();
    const FrameList& frame = m_tree->makeFrame(screen()->bounds().size(), screen()->scale());
    CATransaction::flush();
    if (!m_frameUpdates.empty())
        m_tree->setNeedsFrame();
    return frame;
}

void UIWindow::updateInNextFrame(const std::shared_ptr<UIView>& view)
{
    const bool waits = std::any_of(m_frameUpdates.begin(), m_frameUpdates.end(),
        [&](const auto& waiting) { return waiting.lock() == view; });
    if (!waits)
        m_frameUpdates.push_back(view);
    m_tree->setNeedsFrame();
}

void UIWindow::runFrameUpdates()
{
    const double now = Scheduler::current().now();
    const auto views = std::exchange(m_frameUpdates, {});
    for (const auto& waiting : views) {
        const auto view = waiting.lock();
        if (view && view->window() == this)
            view->updateForFrame(now);
    }
}

void UIWindow::screenDidChange()
{
    setFrame(screen()->bounds());
    setWindow(this); // all layers get the scale
    ViewInsets::refreshInside(*this);
    tellSubtree(&UIView::safeAreaInsetsDidChange);
    tellSubtree(&UIView::setNeedsLayout);
    m_tree->setNeedsFrame();
}

void UIWindow::userInterfaceStyleDidChange(UIUserInterfaceStyle)
{
    tellSubtree(&UIView::setNeedsDisplay);
    tellSubtree(&UIView::userInterfaceStyleDidChange);
    m_tree->setNeedsFrame();
}
