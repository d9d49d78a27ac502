// A rectangle on the screen: it has a place in a tree, shows a layer, lays out its subviews, takes touches.
//
// A view holds its subviews, which lie above it in their order, and sets and clears their way back. Its
// layer holds what is shown; geometry and looks go straight to it. Views are made with make<T>(), and set
// themselves up in init(), where the layer exists. Every list that is walked while others are told may
// change during the walk: views may be added, removed and dropped from inside any message. Main thread only.
#pragma once

#include "platform/graphics/Geometry.h"
#include "platform/graphics/UIUserInterfaceStyle.h"
#include "platform/layers/CALayer.h"
#include "platform/layout/LayoutContainer.h"
#include "platform/views/UIAccessibility.h"
#include "platform/views/UIAppearanceNotes.h"
#include "platform/views/UIEvent.h"
#include "platform/views/UIResponder.h"
#include "platform/views/UIViewAnimationOptions.h"
#include "platform/views/UIViewTypes.h"
#include "platform/views/ViewTint.h"

#include <functional>
#include <optional>

class CGContext;
class DepartedView;
class UIColor;
class UIGestureRecognizer;
class UIViewOwner;
class ViewInsets;

class UIView : public UIResponder, public CALayerDelegate, public LayoutContainer, public UIAccessibility {
public:
    UIView();
    // initWithFrame:
    explicit UIView(const CGRect& frame);
    ~UIView() override;

    // --- Geometry ------------------------------------------------------------------------------------
    // A number that is not finite is a programming error and changes nothing.

    const std::shared_ptr<CALayer>& layer() const { return m_layer; }
    // In the superview's coordinates. Setting it goes through setBounds() and setCenter().
    CGRect frame() const;
    void setFrame(const CGRect& frame);
    // The rectangle of the view's own coordinates that it shows. A new size asks for layout.
    CGRect bounds() const;
    virtual void setBounds(const CGRect& bounds);
    CGPoint center() const;
    virtual void setCenter(const CGPoint& center);
    CGAffineTransform transform() const;
    void setTransform(const CGAffineTransform& transform);
    UIViewAutoresizing autoresizingMask() const { return m_autoresizingMask; }
    void setAutoresizingMask(UIViewAutoresizing mask) { m_autoresizingMask = mask; }

    // convertPoint:toView: and its kin. A null view stands for the root of the view's tree: the window.
    CGPoint convertPointToView(const CGPoint& point, const UIView* view) const;
    CGPoint convertPointFromView(const CGPoint& point, const UIView* view) const;
    CGRect convertRectToView(const CGRect& rect, const UIView* view) const;
    CGRect convertRectFromView(const CGRect& rect, const UIView* view) const;

    // The size that suits the view within the given one; its current size unless a subclass knows better.
    virtual CGSize sizeThatFits(const CGSize& size) const;
    void sizeToFit();
    virtual CGSize intrinsicContentSize() const;
    // Says that the intrinsic size is another one; asks the superview for layout.
    void invalidateIntrinsicContentSize();

    // --- Looks ---------------------------------------------------------------------------------------

    // Kept as it is given, which must be finite; shown as the nearer of 0 and 1.
    double alpha() const;
    void setAlpha(double alpha);
    bool isHidden() const;
    void setHidden(bool hidden);
    // Promises that the view's content covers all of its bounds; the background alone answers for itself.
    bool isOpaque() const;
    void setOpaque(bool opaque);
    std::shared_ptr<UIColor> backgroundColor() const;
    virtual void setBackgroundColor(const std::shared_ptr<UIColor>& color);
    bool clipsToBounds() const;
    void setClipsToBounds(bool clips);
    UIViewContentMode contentMode() const { return m_contentMode; }
    virtual void setContentMode(UIViewContentMode mode);

    // The view's tint, dimmed where the mode says so. Setting nil inherits again.
    std::shared_ptr<UIColor> tintColor() const { return m_tint.color(); }
    void setTintColor(std::shared_ptr<UIColor> color);
    // The mode in effect, never automatic.
    UIViewTintAdjustmentMode tintAdjustmentMode() const { return m_tint.mode(); }
    void setTintAdjustmentMode(UIViewTintAdjustmentMode mode) { m_tint.setMode(mode); }
    // Sent to every view whose tint is another one now, hidden ones included.
    virtual void tintColorDidChange() { }
    // Whether tintColorDidChange() is sent for a change of the inherited tint, too, while the view has a tint
    // of its own; no by default.
    virtual bool followsInheritedTint() const { return false; }
    // What setters that may be recorded for the class tell; see UIAppearance.
    UIAppearanceNotes& appearanceNotes() { return m_appearanceNotes; }

    // --- The tree ------------------------------------------------------------------------------------

    UIView* superview() const { return m_superview; }
    const std::vector<std::shared_ptr<UIView>>& subviews() const { return m_subviews; } // the last on top
    UIWindow* window() const { return m_window; }
    // Adds on top, taking the view from where it was; a subview of this view moves to the top. A view
    // cannot be added to itself or to a view inside it.
    void addSubview(const std::shared_ptr<UIView>& view);
    // insertSubview:atIndex: — an index beyond the last is the top.
    void insertSubview(const std::shared_ptr<UIView>& view, int index);
    // insertSubview:aboveSubview: and belowSubview: — the sibling must be a subview.
    void insertSubviewAbove(const std::shared_ptr<UIView>& view, const UIView& sibling);
    void insertSubviewBelow(const std::shared_ptr<UIView>& view, const UIView& sibling);
    void bringSubviewToFront(UIView& view);
    void sendSubviewToBack(UIView& view);
    void removeFromSuperview();
    // Whether the view is this one or inside it.
    bool containsView(const UIView& view) const; // isDescendantOfView: the other way round
    long tag() const { return m_tag; }
    void setTag(long tag) { m_tag = tag; }
    // The first in drawing order with that tag, this view first; null when there is none.
    UIView* viewWithTag(long tag);

    virtual void willMoveToSuperview(UIView*) { }
    virtual void didMoveToSuperview() { }
    virtual void willMoveToWindow(UIWindow*) { }
    // Sent on every change of the window, also to none; to superviews before subviews.
    virtual void didMoveToWindow() { }
    virtual void didAddSubview(UIView&) { }
    virtual void willRemoveSubview(UIView&) { }

    // The view controller whose view this is.
    UIViewOwner* owner() const { return m_owner; }
    void setOwner(UIViewOwner* owner) { m_owner = owner; } // set and cleared by the owner alone
    UIResponder* nextResponder() const override;

    // --- Layout and display --------------------------------------------------------------------------

    void setNeedsLayout();
    // Lays out now what needs it, from the highest superview that does; constraints are updated before.
    void layoutIfNeeded();
    // Comes after the subviews have the frames that constraints have found for them.
    virtual void layoutSubviews() { }
    // For layers of the view's own in layoutSubviews(): while an animation changes the view's size, what
    // changes inside goes along with it, else it changes at once.
    void placeSublayers(const std::function<void()>& changes);
    // Asks for updateConstraints() before the next layout.
    void setNeedsUpdateConstraints();
    bool needsUpdateConstraints() const { return m_needsUpdateConstraints; }
    // Updates now what asked for it in this view and inside it, subviews before superviews.
    void updateConstraintsIfNeeded();
    // Where a view makes and changes its constraints; overrides call the base class.
    virtual void updateConstraints();
    // Whether the view makes its constraints in updateConstraints(), which is then called once without being
    // asked for.
    virtual bool requiresConstraintBasedLayout() const { return false; }

    // How far notches and home indicators reach into the bounds; never below 0, never more than there is. A
    // view beyond an edge of the screen has none on that side.
    UIEdgeInsets safeAreaInsets() const;
    // Sent to all when the screen's own insets change; to a view that follows its safe area, or has a guide,
    // whenever its own do, also because it or a view around it was moved.
    virtual void safeAreaInsetsDidChange() { }
    // The part of the bounds that nothing of that covers. Made with the first call.
    UILayoutGuide& safeAreaLayoutGuide();
    // The distance that content keeps from the edges, on top of the safe area: 8 points unless set.
    // Safe area and superview's margins included.
    UIEdgeInsets layoutMargins() const;
    void setLayoutMargins(const UIEdgeInsets& margins);
    // Whether the margins are at least as wide as the superview's, measured from its edges; off by default.
    bool preservesSuperviewLayoutMargins() const { return m_preservesSuperviewLayoutMargins; }
    void setPreservesSuperviewLayoutMargins(bool preserves);
    virtual void layoutMarginsDidChange() { }
    // What the margins leave. Made with the first call.
    UILayoutGuide& layoutMarginsGuide();
    // Asks for updateForFrame() in the next frame; outside of a window nothing happens.
    void setNeedsFrameUpdate();
    // The first thing in a frame, for what moves by itself: `now` is the frame's time.
    virtual void updateForFrame(double /*now*/) { }

    // Asks for drawRect() in this frame or the next. Only for views that draw themselves.
    void setNeedsDisplay();
    // Whether the view has a drawRect(); such a view gets a bitmap.
    virtual bool drawsContent() const { return false; }
    virtual void drawRect(const CGRect& /*rect*/, CGContext&) { }
    // Sent when the appearance has changed to light or dark; colours that depend on it have followed.
    virtual void userInterfaceStyleDidChange() { }

    // --- Touches -------------------------------------------------------------------------------------

    bool isUserInteractionEnabled() const { return m_userInteractionEnabled; }
    void setUserInteractionEnabled(bool enabled);
    // Off by default: the view hears of one finger at a time.
    bool isMultipleTouchEnabled() const { return m_multipleTouchEnabled; }
    void setMultipleTouchEnabled(bool enabled) { m_multipleTouchEnabled = enabled; }
    // Whether neither the view nor one around it is hidden, nearly transparent (alpha below 0.01) or
    // disabled. Fingers on a view that stops being touchable are taken from it in that moment, and gestures
    // of it and of views inside it are cancelled: inside the setter, after the change, and outside of any
    // animation. Animations that keep new touches out do not count here.
    bool isTouchable() const;
    // The deepest view at the point, in this view's coordinates, the topmost first. Hidden views, views with
    // an alpha below 0.01 and views without interaction are not hit.
    virtual UIView* hitTest(const CGPoint& point);
    // pointInside:withEvent:
    virtual bool pointInside(const CGPoint& point) const;
    void addGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);
    void removeGestureRecognizer(UIGestureRecognizer& recognizer);
    const std::vector<std::shared_ptr<UIGestureRecognizer>>& gestureRecognizers() const
    {
        return m_recognizers;
    }
    // Asked of the touched view and its superviews up to the recogniser's own.
    virtual bool gestureRecognizerShouldBegin(UIGestureRecognizer&) { return true; }
    // How long a touch on a subview waits before the subview hears of it.
    virtual double delayForContentTouches() const { return 0; }
    // Offered from the deepest view upwards; answers whether it took the event.
    virtual bool scrollWheel(const UIScrollEvent&) { return false; }
    // endEditing: — answers whether nothing in this view is being edited any more.
    bool endEditing(bool force);

    // --- Animation -----------------------------------------------------------------------------------

    using Animations = std::function<void()>;
    using Completion = std::function<void(bool finished)>;

    // animateWithDuration:… — what the block changes moves there, over the seconds. The completion always
    // runs later than this call; finished tells whether every motion ran to its end. A duration of 0 applies
    // the changes at once, and so does one below 0. A duration or delay that is not finite is a programming
    // error and counts as 0. A view that leaves its window is no longer animated: the completion hears that
    // it has not finished.
    static void animate(double duration, const Animations& animations, Completion completion = nullptr);
    static void animate(double duration, double delay, UIViewAnimationOptions options,
        const Animations& animations, Completion completion = nullptr);
    // animateWithDuration:delay:usingSpringWithDamping:initialSpringVelocity:options:animations:completion:
    // — a damping of 1 does not swing. The velocity is in whole ways a second.
    static void animate(double duration, double delay, double springDamping, double initialVelocity,
        UIViewAnimationOptions options, const Animations& animations, Completion completion = nullptr);
    static void performWithoutAnimation(const Animations& changes);
    // Whether changes made now are animated.
    static bool isInAnimation();

    NSString description() const override;
    // recursiveDescription — the tree as text, a line a view.
    NSString treeDescription() const;

protected:
    void init() override;
    // layerClass — what kind of layer the view shows.
    virtual std::shared_ptr<CALayer> makeLayer() const;
    UIWindow* responderWindow() const override { return m_window; }

    // How constraints see the view.
    LayoutContainer* layoutContainer() const override { return m_superview; }
    std::shared_ptr<LayoutItem> layoutReference() override { return strongSelf(this); }
    NSString layoutName() const override { return className(); }
    CGRect layoutFrame() const override;
    void setLayoutFrame(const CGRect& frame) override;
    CGSize layoutContentSize() const override { return intrinsicContentSize(); }
    LayoutItem& layoutMarginsItem() override;
    void layoutInsideDidChange() override { setNeedsLayout(); }
    void visitSubcontainers(const std::function<void(LayoutContainer&)>& visit) const override;

    // The layer's questions. A subclass that overrides one asks the base class for what it does not answer.
    CAActionAnswer actionForLayerForKey(CALayer&, const NSString& key) override;
    void layerGeometryWasTakenBack(CALayer&, CAProperty) override;
    void layerVisibilityWasTakenBack(CALayer&) override { touchabilityDidChange(); }
    void layerWillLayoutTree(CALayer&) override;
    void layoutSublayersOfLayer(CALayer&) override;
    bool layerDrawsContent(const CALayer&) const override { return drawsContent(); }
    void drawLayerInContext(CALayer&, CGContext&) override;

    // Sets the window of the whole subtree, null for none, and tells nobody; a window's window is itself.
    void setWindow(UIWindow* window);
    // Sends the message to the whole subtree, superviews first.
    void tellSubtree(void (UIView::*message)());
    // Whether the view lets itself and those inside be touched, whatever is around it; a disabled control
    // does not.
    virtual bool letsItselfBeTouched() const;
    // To be called after a change that may have ended that.
    void touchabilityDidChange();
    // Asks for safeAreaInsetsDidChange() whenever the view's own insets change.
    void followSafeArea() { insets(); }

private:
    void insert(const std::shared_ptr<UIView>& view, std::size_t index);
    void moveSubview(const std::shared_ptr<UIView>& view, std::size_t index);
    void leaveSuperview();
    std::unique_ptr<DepartedView> departingTo(const UIWindow* window);
    bool tellWillMove(UIView* superview, UIWindow* window);
    void tellDidMove(UIWindow* windowBefore);
    std::size_t indexOfSubview(const UIView& view) const; // beyond the last for another view
    std::size_t layerIndex(const UIView& view, std::size_t index) const;
    void tellAllWillMoveToWindow(UIWindow* window);
    void tellWillMoveToWindow(UIWindow* window, const UIView& root, unsigned rootMoves);
    enum class Untold { Moves, MovesAndIntentions };
    void tellDidMoveToWindow(Untold untold);
    void resizeWithSuperview(const CGSize& oldSize, const CGSize& newSize);
    const UIView& rootView() const;
    bool hasPendingConstraintUpdate() const
    {
        return m_needsUpdateConstraints || m_subviewsNeedUpdateConstraints;
    }
    void superviewsNeedUpdateConstraints();
    void updateConstraintsOnce();
    void placeSubviews();
    ViewInsets& insets();
    friend class ViewInsets;
    friend class ViewTint;
    void refreshInsets();

    CGRect m_initialFrame;
    std::shared_ptr<CALayer> m_layer;
    UIView* m_superview = nullptr;
    UIWindow* m_window = nullptr;
    UIWindow* m_windowTold = nullptr; // the one that didMoveToWindow() was last sent for
    std::optional<UIWindow*>
        m_windowToCome; // willMoveToWindow() was sent for it, and no didMoveToWindow() since
    UIViewOwner* m_owner = nullptr;
    std::vector<std::shared_ptr<UIView>> m_subviews;
    std::vector<std::shared_ptr<UIGestureRecognizer>> m_recognizers;
    std::unique_ptr<ViewInsets> m_insets; // null until somebody follows them
    UIEdgeInsets m_layoutMargins { 8, 8, 8, 8 };
    UIAppearanceNotes m_appearanceNotes;
    ViewTint m_tint { *this };
    UIViewContentMode m_contentMode = UIViewContentMode::ScaleToFill;
    UIViewAutoresizing m_autoresizingMask = UIViewAutoresizing::None;
    long m_tag = 0;
    bool m_userInteractionEnabled = true;
    bool m_multipleTouchEnabled = false;
    bool m_opaque = true;
    bool m_preservesSuperviewLayoutMargins = false;
    bool m_needsUpdateConstraints = false;
    bool m_subviewsNeedUpdateConstraints = false;
    int m_interactionBlocks = 0; // animations under way that keep touches out
    unsigned m_moves = 0; // counts the places in the tree that the view has come to
};
