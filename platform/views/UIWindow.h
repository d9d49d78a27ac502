// The root of a view tree: where touches come in and frames come out.
//
// Once it has been made key and visible it fills the screen and follows its changes. Whoever owns the
// loop calls performFrame() when the scheduler runs a frame, and sends fingers and wheels through
// touches(). It keeps itself alive for the length of a frame and of a touch.
#pragma once

#include "platform/layers/CALayerTree.h"
#include "platform/views/TouchDispatcher.h"
#include "platform/views/UIScreen.h"
#include "platform/views/UIView.h"

class UIWindow : public UIView, public UIScreenObserver, public UserInterfaceStyleObserver {
public:
    using UIView::UIView;
    ~UIWindow() override;
    // The last owner has let the window go: touches on it are cancelled, and its views are removed, while the
    // window is still whole, so that whoever is told of it may ask it for anything. From then on no touch
    // comes in, and no view comes into the window or into a view that is still in it.
    void willBeDestroyed();
    bool isGoing() const { return m_isGoing; }

    // The window that was last made key; null when it is gone.
    static std::shared_ptr<UIWindow> keyWindow();
    void makeKeyAndVisible();
    bool isKeyWindow() const;
    const std::shared_ptr<UIScreen>& screen() const { return UIScreen::mainScreen(); }

    // The controller whose view fills the window, below everything else that is in it; the view is asked
    // for once the window is visible. Null shows nothing.
    const std::shared_ptr<UIViewOwner>& rootViewController() const { return m_rootViewController; }
    void setRootViewController(std::shared_ptr<UIViewOwner> controller);

    // One frame: views that move by themselves, layout, display, and what is to be seen, which holds until
    // the next frame or the window's end, which may come within the call.
    const FrameList& performFrame();
    // Whether something changed since the last frame.
    bool needsFrame() const { return m_tree->needsFrame(); }
    // For UIView::setNeedsFrameUpdate().
    void updateInNextFrame(const std::shared_ptr<UIView>& view);

    TouchDispatcher& touches() { return m_touches; }

    // Who receives the keys; null when there is nobody.
    std::shared_ptr<UIResponder> firstResponder() const { return m_firstResponder.lock(); }
    // For a view that has left: whoever in it has become the first responder since it was asked to resign.
    void forgetFirstResponderIn(const UIView& view);
    // For UIResponder, which asks both sides first.
    void setFirstResponder(const std::shared_ptr<UIResponder>& responder) { m_firstResponder = responder; }

    // Children of a window follow its size through their autoresizing masks; the root view always fills it.
    void layoutSubviews() override;
    void screenDidChange() override;
    using UIView::userInterfaceStyleDidChange;
    void userInterfaceStyleDidChange(UIUserInterfaceStyle style) override;

protected:
    void init() override;

private:
    void showRootView();
    void runFrameUpdates();

    std::unique_ptr<CALayerTree> m_tree;
    TouchDispatcher m_touches { *this };
    std::shared_ptr<UIViewOwner> m_rootViewController;
    std::shared_ptr<UIView> m_rootView; // in the window
    std::weak_ptr<UIResponder> m_firstResponder;
    std::vector<std::weak_ptr<UIView>> m_frameUpdates;
    bool m_isGoing = false;
};
