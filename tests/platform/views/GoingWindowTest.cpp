// A window that its last owner lets go tells its views, which may do anything to it from inside: it is whole
// until they have been told, and gone afterwards.
#include "platform/layout/NSLayoutConstraint.h"
#include "platform/layout/UILayoutGuide.h"
#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "platform/views/UIViewOwner.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

// Calls a function in every message that comes with the end of its window.
class LeavingView : public UIView {
public:
    using UIView::UIView;
    void willMoveToSuperview(UIView*) override { tell(); }
    void didMoveToSuperview() override { tell(); }
    void willMoveToWindow(UIWindow*) override { tell(); }
    void didMoveToWindow() override
    {
        windowTold = window();
        tell();
    }
    void willRemoveSubview(UIView&) override { tell(); }
    void tintColorDidChange() override { tell(); }
    void touchesBegan(const UITouches&, UIEvent&) override
    {
        ++begun;
        tell();
    }
    void touchesEnded(const UITouches&, UIEvent&) override { end(); }
    void touchesCancelled(const UITouches&, UIEvent&) override { end(); }
    bool canBecomeFirstResponder() const override { return true; }
    bool resignFirstResponder() override
    {
        tell();
        return UIView::resignFirstResponder();
    }

    std::function<void()> onMessage;
    UIWindow* windowTold = nullptr;
    int begun = 0;
    int ended = 0;

private:
    void end()
    {
        ++ended;
        tell();
    }
    void tell() const
    {
        if (onMessage)
            onMessage();
    }
};

class Root : public UIViewOwner {
public:
    std::shared_ptr<UIView> view() override { return m_view; }

private:
    std::shared_ptr<UIView> m_view = make<UIView>();
};

// A window of a class of its own, whose part is gone before the rest of the window is.
class OwnWindow final : public UIWindow {
public:
    using UIWindow::UIWindow;
    ~OwnWindow() override { *m_isGone = true; }
    void willRemoveSubview(UIView&) override { EXPECT_FALSE(*m_isGone); }
    std::shared_ptr<bool> isGone() const { return m_isGone; }

private:
    const std::shared_ptr<bool> m_isGone = std::make_shared<bool>(false);
};

class GoingWindowTest : public SceneFixture {
protected:
    struct Act {
        const char* name;
        void (GoingWindowTest::*perform)();
    };

    void SetUp() override { makeScene(); }
    void TearDown() override
    {
        for (const auto& view : views)
            view->onMessage = nullptr;
        target->onAction = nullptr;
        SceneFixture::TearDown();
    }
    void startAgain()
    {
        for (const auto& view : views)
            view->onMessage = nullptr;
        target->onAction = nullptr;
        views.clear();
        pans.clear();
        other = make<UIWindow>(CGRect(0, 0, 100, 100));
        EXPECT_GT(std::exchange(m_acts, 0), 0);
        m_count = 0;
        makeScene();
    }
    void makeScene()
    {
        const auto own = make<OwnWindow>(UIScreen::mainScreen()->bounds());
        m_isGone = own->isGone();
        window = own;
        own->makeKeyAndVisible();
        own->setRootViewController(make<Root>());
        dying = own.get();
        outer = addLeaving(*own, { 0, 0, 390, 400 });
        inner = addLeaving(*outer, { 10, 10, 200, 200 });
        beside = addLeaving(*own, { 0, 400, 390, 400 });
        for (const auto& view : views) {
            view->setMultipleTouchEnabled(true);
            pans.push_back(make<UIPanGestureRecognizer>(target->action()));
            pans.back()->setCancelsTouchesInView(false);
            view->addGestureRecognizer(pans.back());
        }
        runFrames();
        for (const int finger : { 0, 1 }) {
            touch.down({ 50.0 + finger * 20, 50 }, finger);
            touch.moveTo({ 80.0 + finger * 20, 80 }, finger);
        }
        touch.down({ 50, 500 }, 2); // undecided
        EXPECT_TRUE(inner->becomeFirstResponder());
    }
    std::shared_ptr<LeavingView> addLeaving(UIView& superview, const CGRect& place)
    {
        auto view = make<LeavingView>(place);
        views.push_back(view);
        superview.addSubview(view);
        return view;
    }
    TouchDispatcher& touches() const { return dying->touches(); }
    std::shared_ptr<UIWindow> held() const
    {
        return std::static_pointer_cast<UIWindow>(dying->shared_from_this());
    }

    // --- What those who are told do ------------------------------------------------------------------

    void nothing() { }
    void touchNew() { touches().touchBegan(TouchID { 7 }, { 50, 50 }); }
    void touchAndTap()
    {
        touches().touchBegan(TouchID { 7 }, { 50, 500 });
        touches().touchMoved(TouchID { 7 }, { 90, 590 });
        touches().touchEnded(TouchID { 7 }, { 50, 500 });
    }
    void moveTouches()
    {
        for (const int finger : { 0, 1, 2 })
            touches().touchMoved(TouchID { finger }, { 120.0 + static_cast<double>(++m_count), 110 });
    }
    void endTouches()
    {
        for (const int finger : { 2, 1, 0 })
            touches().touchEnded(TouchID { finger }, { 120, 110 });
    }
    void putFingersDownAgain()
    {
        for (const int finger : { 0, 1, 2 })
            touches().touchBegan(TouchID { finger }, { 60, 60 });
    }
    void cancelTouches() { touches().cancelAllTouches(); }
    void scroll() { touches().scroll({ .location = { 50, 50 }, .delta = { 5, 5 } }); }
    void removeViews()
    {
        for (const auto& view : views)
            view->removeFromSuperview();
    }
    void addViews()
    {
        for (const auto& view : views)
            dying->addSubview(view);
    }
    void addNewViews()
    {
        if (views.size() < 40) {
            addLeaving(*dying, { 0, 0, 50, 50 });
            addLeaving(*inner, { 0, 0, 50, 50 });
        }
    }
    void exchangeViews()
    {
        outer->addSubview(beside);
        beside->addSubview(inner);
        dying->addSubview(inner);
    }
    void moveToAnotherWindow()
    {
        other->addSubview(inner);
        other->insertSubview(beside, 0);
    }
    void moveToAnotherWindowAndBack()
    {
        other->addSubview(inner);
        dying->addSubview(inner);
    }
    void addRecognizers()
    {
        if (pans.size() > 40)
            return;
        for (UIView* view : { static_cast<UIView*>(inner.get()), static_cast<UIView*>(dying) }) {
            pans.push_back(make<UIPanGestureRecognizer>(target->action()));
            view->addGestureRecognizer(pans.back());
        }
        touchAndTap();
    }
    void removeRecognizers()
    {
        for (const auto& pan : pans)
            if (pan->view())
                pan->view()->removeGestureRecognizer(*pan);
    }
    void askForResponder()
    {
        inner->becomeFirstResponder();
        beside->becomeFirstResponder();
        if (dying->firstResponder())
            dying->firstResponder()->isFirstResponder();
        dying->endEditing(true);
    }
    void setAnotherRoot()
    {
        dying->setRootViewController(make<Root>());
        EXPECT_NE(dying->rootViewController(), nullptr);
    }
    void showAgain()
    {
        dying->makeKeyAndVisible();
        dying->screenDidChange();
    }
    void runFrame()
    {
        inner->setNeedsFrameUpdate();
        dying->setNeedsLayout();
        if (!m_inFrame) {
            m_inFrame = true;
            dying->performFrame();
            m_inFrame = false;
        }
    }
    void constrain()
    {
        const auto anchor = dying->leftAnchor();
        if (inner->window() == dying)
            inner->leftAnchor().constraintGreaterThanOrEqualToAnchor(anchor, -500)->setActive(true);
        dying->safeAreaLayoutGuide();
        dying->layoutIfNeeded();
    }
    void changeLooks()
    {
        dying->setTintColor(++m_count % 2 == 0 ? UIColor::blackColor() : UIColor::whiteColor());
        dying->setHidden(m_count % 3 == 0);
        outer->setUserInteractionEnabled(m_count % 2 == 0);
        dying->setAlpha(m_count % 2);
    }
    void animate()
    {
        UIView::animate(0.1, [this] {
            dying->setAlpha(0.5);
            inner->setCenter({ 1, 2 });
            outer->removeFromSuperview();
        });
    }
    void keepAndDrop()
    {
        auto kept = held();
        EXPECT_EQ(kept.get(), dying);
        kept = nullptr;
    }

    static std::vector<Act> acts()
    {
        using Test = GoingWindowTest;
        return { { "nothing", &Test::nothing }, { "touchNew", &Test::touchNew },
            { "touchAndTap", &Test::touchAndTap }, { "moveTouches", &Test::moveTouches },
            { "endTouches", &Test::endTouches }, { "putFingersDownAgain", &Test::putFingersDownAgain },
            { "cancelTouches", &Test::cancelTouches }, { "scroll", &Test::scroll },
            { "removeViews", &Test::removeViews }, { "addViews", &Test::addViews },
            { "addNewViews", &Test::addNewViews }, { "exchangeViews", &Test::exchangeViews },
            { "moveToAnotherWindow", &Test::moveToAnotherWindow },
            { "moveToAnotherWindowAndBack", &Test::moveToAnotherWindowAndBack },
            { "addRecognizers", &Test::addRecognizers }, { "removeRecognizers", &Test::removeRecognizers },
            { "askForResponder", &Test::askForResponder }, { "setAnotherRoot", &Test::setAnotherRoot },
            { "showAgain", &Test::showAgain }, { "runFrame", &Test::runFrame },
            { "constrain", &Test::constrain }, { "changeLooks", &Test::changeLooks },
            { "animate", &Test::animate }, { "keepAndDrop", &Test::keepAndDrop } };
    }
    void actInEveryMessage(const Act& first, const Act& second)
    {
        for (const auto& view : views)
            view->onMessage = [=, this] { act(first, second); };
        target->onAction = [=, this](UIGestureRecognizer&) { act(first, second); };
    }
    // Up to three deep.
    void act(const Act& first, const Act& second)
    {
        if (*m_isGone || m_depth >= 3)
            return;
        ++m_depth;
        ++m_acts;
        (this->*first.perform)();
        (this->*second.perform)();
        --m_depth;
    }
    void expectAllGone()
    {
        scheduler.advance(2);
        EXPECT_TRUE(*m_isGone);
        for (const auto& view : views) {
            EXPECT_TRUE(!view->window() || view->window() == other.get());
            EXPECT_TRUE(!view->superview() || view->superview()->window() == view->window());
            EXPECT_EQ(view->windowTold, view->window());
            EXPECT_EQ(view->begun, view->ended);
        }
        for (const auto& pan : pans) {
            EXPECT_EQ(pan->state(), UIGestureRecognizerState::Possible);
            EXPECT_EQ(pan->numberOfTouches(), 0);
        }
    }

    UIWindow* dying = nullptr;
    std::shared_ptr<UIWindow> other = make<UIWindow>(CGRect(0, 0, 100, 100));
    std::shared_ptr<LeavingView> outer;
    std::shared_ptr<LeavingView> inner;
    std::shared_ptr<LeavingView> beside;
    std::vector<std::shared_ptr<LeavingView>> views;
    std::vector<std::shared_ptr<UIPanGestureRecognizer>> pans;
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<bool> m_isGone;

private:
    int m_depth = 0;
    int m_acts = 0;
    int m_count = 0;
    bool m_inFrame = false;
};

TEST_F(GoingWindowTest, CancelsItsTouchesAndRemovesItsViews)
{
    const auto root = window->rootViewController();
    target->states.clear();
    window = nullptr;
    EXPECT_EQ(target->states, std::vector<int> { 4 }) << "of the one that has begun";
    EXPECT_EQ(root->view()->superview(), nullptr);
    EXPECT_EQ(outer->superview(), nullptr);
    EXPECT_EQ(inner->superview(), outer.get());
    expectAllGone();
}

TEST_F(GoingWindowTest, StaysWholeWhileItTells)
{
    int told = 0;
    outer->onMessage = [&] {
        ++told;
        EXPECT_EQ(held().get(), dying);
        EXPECT_TRUE(held()->isGoing());
        EXPECT_FALSE(held()->isKeyWindow());
    };
    window = nullptr;
    EXPECT_GT(told, 3);
    expectAllGone();
}

TEST_F(GoingWindowTest, WhoKeepsItHasAnEmptyWindowThatTakesNothing)
{
    std::shared_ptr<UIWindow> kept;
    outer->onMessage = [&] { kept = held(); };
    window = nullptr;
    ASSERT_FALSE(*m_isGone);
    EXPECT_TRUE(kept->subviews().empty());
    kept->addSubview(outer);
    kept->setRootViewController(make<Root>());
    kept->makeKeyAndVisible();
    kept->performFrame();
    kept->touches().touchBegan(TouchID { 1 }, { 50, 50 });
    EXPECT_TRUE(kept->subviews().empty());
    EXPECT_FALSE(kept->touches().isFollowingTouches());
    outer->onMessage = nullptr;
    kept = nullptr;
    expectAllGone();
}

TEST_F(GoingWindowTest, ViewsMayMoveToAnotherWindow)
{
    outer->onMessage = [this] {
        outer->onMessage = nullptr;
        moveToAnotherWindow();
    };
    window = nullptr;
    EXPECT_EQ(inner->window(), other.get());
    EXPECT_EQ(beside->superview(), other.get());
    EXPECT_EQ(outer->window(), nullptr);
    expectAllGone();
}

TEST_F(GoingWindowTest, ViewsThatOnlyItHoldsGoWithIt)
{
    const std::weak_ptr<UIView> held = inner;
    pans.clear();
    views.clear();
    outer = inner = beside = nullptr;
    window = nullptr;
    EXPECT_TRUE(held.expired());
    expectAllGone();
}

// Every pair of acts, in every message.
TEST_F(GoingWindowTest, TakesWhateverThoseDoWhoAreTold)
{
    for (const Act& first : acts())
        for (const Act& second : acts()) {
            SCOPED_TRACE(std::string(first.name) + " and " + second.name);
            actInEveryMessage(first, second);
            window = nullptr;
            ASSERT_FALSE(HasFailure());
            expectAllGone();
            startAgain();
        }
}

TEST_F(GoingWindowTest, MayBeLetGoInsideATouch)
{
    for (const Act& first : acts())
        for (const Act& second : acts()) {
            SCOPED_TRACE(std::string(first.name) + " and " + second.name);
            target->onAction = [&](UIGestureRecognizer&) {
                window = nullptr;
                act(first, second);
            };
            outer->onMessage = [&] { act(first, second); };
            touch.moveTo({ 140, 140 });
            EXPECT_EQ(window, nullptr);
            expectAllGone();
            startAgain();
        }
}

} // namespace
