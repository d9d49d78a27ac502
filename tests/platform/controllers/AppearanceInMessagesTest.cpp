// Controllers that change the tree from inside the messages of their appearance, and from inside those of
// others: each is told of its coming and going in order, and in the end what it was told is so.
#include "platform/controllers/UINavigationController.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <random>

namespace {

enum class Told { Nothing, WillAppear, DidAppear, WillDisappear, DidDisappear };

// Holds every message against the one before.
class CheckingController : public UIViewController {
public:
    void loadView() override { setView(make<UIView>(CGRect(0, 0, 100, 100))); }
    void viewDidLoad() override { tell(); }
    void viewWillAppear(Animated) override
    {
        // Again after it was told to leave and stayed, or has left before its first layout.
        EXPECT_NE(told, Told::DidAppear);
        hear(Told::WillAppear, InWindow::Yes);
    }
    void viewDidAppear(Animated) override
    {
        EXPECT_EQ(told, Told::WillAppear);
        hear(Told::DidAppear, InWindow::Yes);
    }
    void viewWillDisappear(Animated) override
    {
        EXPECT_EQ(told, Told::DidAppear);
        hear(Told::WillDisappear, InWindow::Either);
    }
    void viewDidDisappear(Animated) override
    {
        EXPECT_EQ(told, Told::WillDisappear);
        hear(Told::DidDisappear, InWindow::No);
    }
    void viewWillLayoutSubviews() override { tell(); }
    void viewDidLayoutSubviews() override
    {
        UIViewController::viewDidLayoutSubviews();
        tell();
    }
    void willMoveToParentViewController(UIViewController*) override { tell(); }
    void didMoveToParentViewController(UIViewController*) override { tell(); }
    // At rest, after a layout.
    void expectTruth() const
    {
        const bool isThere = viewIfLoaded() && viewIfLoaded()->window();
        EXPECT_EQ(told == Told::DidAppear, isThere);
        EXPECT_NE(told, Told::WillDisappear);
    }

    std::function<void()> onMessage;
    Told told = Told::Nothing;
    int count = 0;

private:
    enum class InWindow { No, Yes, Either };

    void hear(Told message, InWindow expected)
    {
        const bool isThere = viewIfLoaded() && viewIfLoaded()->window();
        EXPECT_TRUE(expected == InWindow::Either || isThere == (expected == InWindow::Yes));
        told = message;
        ++count;
        tell();
    }
    void tell() const
    {
        const auto kept = onMessage;
        if (kept)
            kept();
    }
};

class AppearanceInMessagesTest : public SceneFixture {
protected:
    std::shared_ptr<CheckingController> add(UIView& superview)
    {
        const auto controller = make<CheckingController>();
        controllers.push_back(controller);
        superview.addSubview(controller->view());
        return controller;
    }
    void TearDown() override
    {
        for (const auto& controller : controllers)
            controller->onMessage = nullptr;
        SceneFixture::TearDown();
    }
    void expectTruth() const
    {
        for (const auto& controller : controllers)
            controller->expectTruth();
    }
    // Does something in the next of its messages that is of the kind.
    static void once(CheckingController& controller, Told message, const std::function<void()>& act)
    {
        controller.onMessage = [&controller, message, act] {
            if (controller.told != message)
                return;
            controller.onMessage = nullptr;
            act();
        };
    }

    std::vector<std::shared_ptr<CheckingController>> controllers;
};

TEST_F(AppearanceInMessagesTest, AViewThatIsMovedWithinTheWindowAsItIsToLeaveAppearsAgain)
{
    const auto around = addView<UIView>({ 0, 0, 200, 200 });
    const auto controller = add(*around);
    runFrames();
    once(*controller, Told::WillDisappear, [&] { window->addSubview(controller->view()); });
    around->removeFromSuperview();
    EXPECT_EQ(controller->told, Told::WillAppear);
    runFrames();
    EXPECT_EQ(controller->told, Told::DidAppear);
    EXPECT_EQ(controller->count, 5);
}

TEST_F(AppearanceInMessagesTest, AViewThatComesIntoALeavingViewIsToldOfBothInOrder)
{
    const auto around = addView<UIView>({ 0, 0, 200, 200 });
    const auto leaving = add(*around);
    const auto late = add(*window);
    runFrames();
    once(*leaving, Told::WillDisappear, [&] { around->insertSubview(late->view(), 0); });
    around->removeFromSuperview();
    EXPECT_EQ(late->told, Told::DidDisappear);
    EXPECT_EQ(late->count, 4);
    EXPECT_EQ(leaving->count, 4);
}

TEST_F(AppearanceInMessagesTest, AViewThatIsLaidOutOutsideAndComesBackAppears)
{
    class Leaving : public UIView {
    public:
        using UIView::UIView;
        void didMoveToWindow() override
        {
            const auto act = window() ? nullptr : std::exchange(onLeave, nullptr);
            if (act)
                act();
        }
        std::function<void()> onLeave;
    };
    const auto around = addView<Leaving>({ 0, 0, 200, 200 });
    const auto controller = add(*around);
    around->onLeave = [&] {
        controller->view()->layoutIfNeeded();
        window->addSubview(around);
    };
    around->removeFromSuperview();
    EXPECT_EQ(controller->told, Told::WillAppear);
    runFrames();
    EXPECT_EQ(controller->told, Told::DidAppear);
}

TEST_F(AppearanceInMessagesTest, AParentIsRemovedInsideAMessageOfItsChild)
{
    for (const Told message :
        { Told::WillAppear, Told::DidAppear, Told::WillDisappear, Told::DidDisappear }) {
        const auto parent = add(*window);
        const auto first = add(*parent->view());
        const auto second = add(*parent->view());
        once(*first, message, [&] { parent->view()->removeFromSuperview(); });
        runFrames();
        parent->view()->removeFromSuperview();
        runFrames();
        window->addSubview(parent->view());
        once(*first, message, [&] { parent->view()->removeFromSuperview(); });
        runFrames();
        parent->view()->removeFromSuperview();
        expectTruth();
        for (const auto& one : { parent, first, second })
            EXPECT_EQ(one->view()->window(), nullptr);
    }
}

TEST_F(AppearanceInMessagesTest, TheWindowGoesInsideEachMessage)
{
    for (const Told message :
        { Told::WillAppear, Told::DidAppear, Told::WillDisappear, Told::DidDisappear }) {
        const auto root = make<CheckingController>();
        controllers.push_back(root);
        const auto child = add(*root->view());
        const auto letGo = [&] { window = nullptr; };
        once(*root, message, letGo);
        window->setRootViewController(root);
        runFrames();
        if (window)
            window->setRootViewController(nullptr);
        window = nullptr;
        expectTruth();
        for (const auto& one : { root, child })
            EXPECT_TRUE(one->told == Told::DidDisappear || one->told == Told::WillAppear);
        window = make<UIWindow>(UIScreen::mainScreen()->bounds());
        window->makeKeyAndVisible();
    }
}

TEST_F(AppearanceInMessagesTest, ARootThatOnlyTheWindowHoldsHearsOfItsEnd)
{
    auto root = make<CheckingController>();
    int told = 0;
    root->onMessage = [&] { ++told; };
    window->setRootViewController(root);
    runFrames();
    root = nullptr;
    const int before = told;
    window = nullptr;
    EXPECT_EQ(told, before + 2) << "will and did disappear";
}

TEST_F(AppearanceInMessagesTest, ARootThatIsReplacedHearsOfItThoughOnlyTheWindowHeldIt)
{
    auto root = make<CheckingController>();
    int told = 0;
    root->onMessage = [&] { ++told; };
    window->setRootViewController(root);
    runFrames();
    root = nullptr;
    const int before = told;
    window->setRootViewController(make<CheckingController>());
    EXPECT_EQ(told, before + 2) << "will and did disappear";
}

TEST_F(AppearanceInMessagesTest, ARootThatIsSetWhileTheOneBeforeLeavesIsTheRoot)
{
    const auto first = make<CheckingController>();
    const auto second = make<CheckingController>();
    const auto third = make<CheckingController>();
    controllers = { first, second, third };
    window->setRootViewController(first);
    runFrames();
    once(*first, Told::WillDisappear, [&] { window->setRootViewController(third); });
    window->setRootViewController(second);
    EXPECT_EQ(window->rootViewController(), third);
    ASSERT_EQ(window->subviews().size(), 1u);
    EXPECT_EQ(window->subviews().front(), third->view());
    runFrames();
    expectTruth();
    window->setRootViewController(nullptr);
    EXPECT_TRUE(window->subviews().empty());
}

// --- At random -------------------------------------------------------------------------------------------

class RandomAppearanceTest : public AppearanceInMessagesTest {
protected:
    void run(unsigned seed)
    {
        m_random.seed(seed);
        navigation = make<UINavigationController>();
        controllers.clear();
        for (int index = 0; index < 6; ++index) {
            controllers.push_back(make<CheckingController>());
            controllers.back()->onMessage = [this] { meddle(); };
        }
        for (int step = 0; step < 12; ++step) {
            changeSomething();
            if (pick(2) == 0)
                scheduler.advance(1 / 60.0);
        }
        const int depth = std::exchange(m_depth, 100); // from here on they only listen
        runFrames();
        expectTruth();
        window = nullptr;
        expectTruth();
        m_depth = depth;
        renewWindow();
        for (const auto& controller : controllers) {
            told += controller->count;
            controller->onMessage = nullptr;
        }
    }
    void renewWindow()
    {
        window = make<UIWindow>(UIScreen::mainScreen()->bounds());
        window->makeKeyAndVisible();
    }
    template <typename Count> Count pick(Count count)
    {
        return static_cast<Count>(m_random() % static_cast<unsigned>(count));
    }
    std::shared_ptr<CheckingController> any() { return controllers[pick(controllers.size())]; }
    void meddle()
    {
        if (m_depth >= 3 || pick(3) != 0)
            return;
        ++m_depth;
        changeSomething();
        --m_depth;
    }
    void changeSomething()
    {
        const auto one = any();
        const auto other = any();
        switch (pick(12)) {
        case 0:
        case 1:
            one->view()->removeFromSuperview();
            break;
        case 2:
        case 3:
            one->view()->insertSubview(other->view(), pick(3));
            break;
        case 4:
        case 5: {
            const auto view = one->view(); // loading it may bring another window
            window->addSubview(view);
            break;
        }
        case 6:
            window->setRootViewController(pick(2) == 0 ? one : nullptr);
            break;
        case 7:
            window->setRootViewController(navigation);
            break;
        case 8:
            navigation->setViewControllers({ one });
            break;
        case 9:
            if (pick(4) == 0)
                renewWindow();
            break;
        case 10:
            one->view()->layoutIfNeeded();
            break;
        default:
            if (pick(3) == 0)
                one->setView(make<UIView>(CGRect(0, 0, 50, 50)));
            else
                window->layoutIfNeeded();
        }
    }

    std::shared_ptr<UINavigationController> navigation;
    int told = 0;

private:
    std::mt19937 m_random;
    int m_depth = 0;
};

TEST_F(RandomAppearanceTest, IsToldInOrderAndTruly)
{
    const AssertionRecorder assertions; // views cannot be put into themselves
    constexpr unsigned seeds = 3000;
    for (unsigned seed = 1; seed <= seeds && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        run(seed);
    }
    EXPECT_GT(told, static_cast<int>(20 * seeds)) << "much has happened";
}

} // namespace
