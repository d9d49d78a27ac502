// Random changes of the tree from inside every message that a change of the tree causes. After each step all
// that views, layers, constraints, fingers and responders say of themselves is held against what follows from
// the superviews alone.
#include "platform/layout/NSLayoutConstraint.h"
#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <random>
#include <set>

namespace {

// Calls a function in every message, and keeps what it has been told.
class TellingView : public UIView {
public:
    using UIView::UIView;

    void willMoveToSuperview(UIView*) override { tell(); }
    void didMoveToSuperview() override { tell(); }
    void willMoveToWindow(UIWindow*) override
    {
        isToMove = true;
        tell();
    }
    void didMoveToWindow() override
    {
        EXPECT_TRUE(isToMove || windowTold != window()) << "told without a reason";
        isToMove = false;
        windowTold = window();
        tell();
    }
    void didAddSubview(UIView&) override { tell(); }
    void willRemoveSubview(UIView&) override { tell(); }
    void tintColorDidChange() override
    {
        tintTold = tintColor();
        styleTold = CurrentUserInterfaceStyle::get();
        tell();
    }
    void layoutSubviews() override { tell(); }
    void safeAreaInsetsDidChange() override { tell(); }
    void layoutMarginsDidChange() override { tell(); }
    using UIView::userInterfaceStyleDidChange;
    void userInterfaceStyleDidChange() override { tell(); }
    void touchesBegan(const UITouches& touches, UIEvent&) override
    {
        EXPECT_TRUE(open.insert(touches.front().get()).second);
        tell();
    }
    void touchesMoved(const UITouches& touches, UIEvent&) override
    {
        EXPECT_TRUE(open.contains(touches.front().get()));
        tell();
    }
    void touchesEnded(const UITouches& touches, UIEvent&) override { end(*touches.front()); }
    void touchesCancelled(const UITouches& touches, UIEvent&) override { end(*touches.front()); }
    bool canBecomeFirstResponder() const override { return true; }
    bool canResignFirstResponder() const override
    {
        tell();
        return true;
    }

    std::function<void()> onMessage;
    bool isToMove = false;
    UIWindow* windowTold = nullptr;
    std::shared_ptr<UIColor> tintTold = tintColor();
    UIUserInterfaceStyle styleTold = CurrentUserInterfaceStyle::get(); // the dimmed grey depends on it
    std::set<const UITouch*> open;

private:
    void end(const UITouch& touch)
    {
        EXPECT_EQ(open.erase(&touch), 1u);
        tell();
    }
    void tell() const
    {
        if (onMessage)
            onMessage();
    }
};

class RandomTreeChangesTest : public SceneFixture {
protected:
    void TearDown() override
    {
        beQuiet();
        SceneFixture::TearDown();
    }
    void beQuiet()
    {
        for (const auto& view : views)
            view->onMessage = nullptr;
        target->onAction = nullptr;
    }
    void start(unsigned seed)
    {
        m_random.seed(seed);
        m_open.clear();
        for (int index = 0; index < 9; ++index) {
            const auto view = make<TellingView>(randomFrame());
            anyPlace(true).addSubview(view);
            views.push_back(view);
            for (int count = pick(3); count > 0; --count)
                addRecognizer(*view);
        }
        for (const auto& view : views)
            view->onMessage = [this] { meddle(); };
        target->onAction = [this](UIGestureRecognizer& recognizer) {
            count(recognizer);
            meddle();
        };
    }
    void end()
    {
        beQuiet();
        for (const int finger : { 0, 1, 2 })
            touch.up(finger);
        runFrames();
        expectAgreement();
        EXPECT_FALSE(window->touches().hasTouches());
        window->touches().cancelAllTouches(); // those that wait for a further tap
        EXPECT_FALSE(window->touches().isFollowingTouches());
        for (const auto& gesture : gestures) {
            EXPECT_EQ(gesture->state(), UIGestureRecognizerState::Possible);
            EXPECT_EQ(gesture->numberOfTouches(), 0);
        }
        for (const auto& view : views) {
            EXPECT_TRUE(view->open.empty());
            view->removeFromSuperview();
        }
        for (const auto& constraint : constraints)
            EXPECT_TRUE(!constraint->isActive() || constraint->firstItem() == constraint->secondItem());
        views.clear();
        gestures.clear();
        constraints.clear();
    }

    // --- Chance --------------------------------------------------------------------------------------

    template <typename Count> Count pick(Count count)
    {
        return static_cast<Count>(m_random() % static_cast<unsigned>(count));
    }
    CGRect randomFrame() { return QRectF(pick(200), pick(300), 80 + pick(250), 100 + pick(400)); }
    std::shared_ptr<TellingView> anyView() { return views[pick(views.size())]; }
    UIView& anyPlace(bool mayBeWindow)
    {
        if (views.empty() || (mayBeWindow && pick(3) == 0))
            return *window;
        return *views[pick(views.size())];
    }
    void addRecognizer(UIView& view)
    {
        std::shared_ptr<UIGestureRecognizer> gesture;
        if (pick(3) == 0)
            gesture = make<UITapGestureRecognizer>(target->action());
        else
            gesture = make<UIPanGestureRecognizer>(target->action());
        gesture->setCancelsTouchesInView(pick(2) == 0);
        view.addGestureRecognizer(gesture);
        gestures.push_back(gesture);
    }

    // --- Acts ----------------------------------------------------------------------------------------

    // A third of all messages, up to three deep.
    void meddle()
    {
        if (m_depth >= 3 || pick(3) != 0)
            return;
        ++m_depth;
        ++meddled;
        changeSomething();
        --m_depth;
    }
    void changeSomething()
    {
        const auto view = anyView();
        switch (pick(22)) {
        case 0:
        case 1:
        case 2:
        case 3:
            anyPlace(true).insertSubview(view, pick(4));
            break;
        case 4:
        case 5:
            view->removeFromSuperview();
            break;
        case 6:
            view->setHidden(pick(4) == 0);
            break;
        case 7:
            view->setAlpha(pick(4) == 0 ? 0 : 1);
            break;
        case 8:
            view->setUserInteractionEnabled(pick(4) != 0);
            break;
        case 9:
            view->setTintColor(pick(2) == 0 ? nullptr : UIColor::blackColor());
            break;
        case 10:
            view->setTintAdjustmentMode(static_cast<UIViewTintAdjustmentMode>(pick(3)));
            break;
        case 11:
        case 12:
            constrain(*view, anyPlace(true));
            break;
        case 13:
            view->setFrame(randomFrame());
            break;
        case 14:
            view->setTransform(pick(2) == 0 ? CGAffineTransform() : CGAffineTransform::fromScale(0.5, 2));
            break;
        case 15:
            if (pick(2) == 0)
                view->becomeFirstResponder();
            else
                view->endEditing(pick(2) == 0);
            break;
        case 16:
            anyPlace(true).layoutIfNeeded();
            break;
        case 17:
            CurrentUserInterfaceStyle::set(static_cast<UIUserInterfaceStyle>(1 + pick(2)));
            break;
        case 18:
            changeRecognizers(*view);
            break;
        case 19:
            if (pick(2) == 0)
                view->safeAreaLayoutGuide();
            else
                view->setLayoutMargins({ 1.0 + pick(9), 2, 3, 4 });
            break;
        default:
            moveFinger();
        }
    }
    void constrain(UIView& first, UIView& second)
    {
        if (&first == &second || commonAncestor(first, second) == nullptr)
            return;
        constraints.push_back(
            first.leftAnchor().constraintGreaterThanOrEqualToAnchor(second.leftAnchor(), -2000));
        constraints.back()->setActive(true);
    }
    void changeRecognizers(UIView& view)
    {
        if (gestures.empty())
            return;
        const auto& gesture = gestures[pick(gestures.size())];
        if (pick(3) == 0)
            gesture->setEnabled(pick(4) != 0);
        else if (pick(2) == 0 && gesture->view())
            gesture->view()->removeGestureRecognizer(*gesture);
        else
            view.addGestureRecognizer(gesture);
    }
    void moveFinger()
    {
        const int finger = pick(3);
        const CGPoint place(pick(390), pick(844));
        switch (pick(4)) {
        case 0:
            touch.down(place, finger);
            break;
        case 1:
            touch.up(finger);
            break;
        default:
            touch.moveTo(place, finger);
        }
    }
    // Each beginning has exactly one end. One that is cancelled may be so before its targets have heard of
    // it.
    void count(UIGestureRecognizer& recognizer)
    {
        using enum UIGestureRecognizerState;
        const bool lasts = dynamic_cast<UIPanGestureRecognizer*>(&recognizer) != nullptr;
        int& open = m_open[&recognizer];
        if (!lasts)
            return;
        if (recognizer.state() == Began)
            EXPECT_EQ(open++, 0);
        else if (recognizer.state() == Cancelled)
            open = 0;
        else if (recognizer.state() == Ended)
            EXPECT_EQ(open--, 1);
        else
            EXPECT_EQ(open, 1);
    }

    // --- What follows from the superviews -------------------------------------------------------------

    static std::vector<const UIView*> ancestorsOf(const UIView& view)
    {
        std::vector<const UIView*> ancestors;
        for (const UIView* one = &view; one; one = one->superview())
            ancestors.push_back(one);
        return ancestors;
    }
    static const UIView* commonAncestor(const UIView& first, const UIView& second)
    {
        const auto ancestors = ancestorsOf(second);
        for (const UIView* one : ancestorsOf(first))
            if (std::ranges::find(ancestors, one) != ancestors.end())
                return one;
        return nullptr;
    }
    bool isInWindow(const UIView& view) const { return ancestorsOf(view).back() == window.get(); }
    // By its own numbers: centre, bounds and transform, the anchor in the middle.
    static CGPoint into(const UIView& view, const CGPoint& inSuperview)
    {
        const CGRect bounds = view.bounds();
        return view.transform().inverted().map(inSuperview - view.center()) + bounds.center();
    }
    static bool lies(const CGPoint& point, const CGRect& rect)
    {
        return point.x() >= rect.left() && point.x() < rect.right() && point.y() >= rect.top()
            && point.y() < rect.bottom();
    }
    // All views in drawing order: the last whose superviews all contain the point is hit.
    static void findHit(UIView& view, const CGPoint& point, UIView*& hit)
    {
        if (view.isHidden() || view.alpha() < 0.01 || !view.isUserInteractionEnabled()
            || !lies(point, view.bounds()))
            return;
        hit = &view;
        for (const auto& subview : view.subviews())
            findHit(*subview, into(*subview, point), hit);
    }
    static bool isTouchable(const UIView& view)
    {
        return std::ranges::all_of(ancestorsOf(view), [](const UIView* one) {
            return !one->isHidden() && one->alpha() >= 0.01 && one->isUserInteractionEnabled();
        });
    }

    void expectAgreement()
    {
        expectTree(*window);
        for (const auto& view : views)
            expectAgreement(*view);
        expectConstraints();
        expectGestures();
        const auto* const responder = dynamic_cast<const UIView*>(window->firstResponder().get());
        EXPECT_TRUE(!responder || isInWindow(*responder));
        for (int count = 0; count < 5; ++count) {
            const CGPoint point(pick(390) + 0.37, pick(844) + 0.37);
            UIView* expected = nullptr;
            findHit(*window, point, expected);
            EXPECT_EQ(window->hitTest(point), expected);
        }
    }
    static void expectTree(const UIView& view)
    {
        std::vector<CALayer*> layersOfSubviews;
        for (const auto& subview : view.subviews()) {
            EXPECT_EQ(subview->superview(), &view);
            EXPECT_EQ(subview->layer()->superlayer(), view.layer().get());
            layersOfSubviews.push_back(subview->layer().get());
            expectTree(*subview);
        }
        std::vector<CALayer*> sublayers;
        for (const auto& sublayer : view.layer()->sublayers())
            sublayers.push_back(sublayer.get());
        EXPECT_EQ(sublayers, layersOfSubviews);
    }
    void expectAgreement(const TellingView& view) const
    {
        const bool isThere = isInWindow(view);
        EXPECT_EQ(view.window(), isThere ? window.get() : nullptr);
        EXPECT_EQ(view.windowTold, view.window());
        EXPECT_FALSE(view.isToMove) << "told what did not happen, and not of the contrary";
        EXPECT_EQ(view.nextResponder(), view.superview());
        EXPECT_EQ(view.isTouchable(), isTouchable(view));
        EXPECT_TRUE(view.styleTold != CurrentUserInterfaceStyle::get()
            || view.tintTold->isEqual(view.tintColor().get()))
            << "told of its tint";
        for (const UITouch* open : view.open) {
            EXPECT_EQ(open->view().get(), &view);
            EXPECT_TRUE(isThere && isTouchable(view));
        }
        if (!view.superview()) {
            EXPECT_EQ(view.layer()->superlayer(), nullptr);
            expectTree(view);
            return;
        }
        const auto& siblings = view.superview()->subviews();
        EXPECT_EQ(std::ranges::count_if(siblings, [&](const auto& one) { return one.get() == &view; }), 1);
    }
    void expectConstraints() const
    {
        for (const auto& constraint : constraints) {
            const auto& first = dynamic_cast<const UIView&>(*constraint->firstItem());
            const auto& second = dynamic_cast<const UIView&>(*constraint->secondItem());
            const UIView* const common = commonAncestor(first, second);
            const auto* const holder = dynamic_cast<const UIView*>(constraint->holder());
            EXPECT_EQ(constraint->isActive(), holder != nullptr);
            EXPECT_TRUE(!constraint->isActive() || (common && holder->containsView(*common)))
                << "active without a view that contains both";
        }
    }
    void expectGestures() const
    {
        for (const auto& gesture : gestures) {
            const bool isWatching = gesture->isRecognized() || gesture->numberOfTouches() > 0;
            const UIView* const view = gesture->view();
            EXPECT_TRUE(!isWatching || (view && isInWindow(*view) && isTouchable(*view)))
                << "goes on though nobody can touch its view";
            EXPECT_TRUE(!gesture->isRecognized() || gesture->numberOfTouches() > 0);
        }
    }

    std::vector<std::shared_ptr<TellingView>> views;
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::vector<std::shared_ptr<UIGestureRecognizer>> gestures;
    std::vector<std::shared_ptr<NSLayoutConstraint>> constraints;
    int meddled = 0;

private:
    std::mt19937 m_random;
    int m_depth = 0;
    std::map<UIGestureRecognizer*, int> m_open;
};

TEST_F(RandomTreeChangesTest, EndInAgreement)
{
    // Views cannot be put into themselves, and requirements at random contradict each other.
    const AssertionRecorder assertions;
    const NSLayoutConstraint::ConflictReplacement conflicts([](const auto&) {});
    constexpr unsigned seeds = 3000;
    for (unsigned seed = 1; seed <= seeds && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        start(seed);
        for (int step = 0; step < 30 && !HasFailure(); ++step) {
            SCOPED_TRACE(step);
            if (step % 2 == 0)
                changeSomething();
            else
                moveFinger();
            if (step % 5 == 0)
                scheduler.advance(1 / 60.0);
            expectAgreement();
        }
        end();
    }
    EXPECT_GT(meddled, static_cast<int>(15 * seeds));
}

} // namespace
