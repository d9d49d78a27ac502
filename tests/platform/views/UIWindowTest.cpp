#include "platform/views/UIWindow.h"

#include "platform/views/UIViewOwner.h"
#include "tests/support/SceneFixture.h"

namespace {

class UIWindowTest : public SceneFixture { };

class Root : public UIViewOwner {
public:
    std::shared_ptr<UIView> view() override { return m_view; }

private:
    std::shared_ptr<UIView> m_view = make<UIView>();
};

TEST_F(UIWindowTest, IsHiddenUntilItIsMadeVisible)
{
    const auto other = make<UIWindow>(CGRect(0, 0, 10, 10));
    EXPECT_TRUE(other->isHidden());
    EXPECT_FALSE(other->isKeyWindow());
    EXPECT_TRUE(window->isKeyWindow());
    other->makeKeyAndVisible();
    EXPECT_FALSE(other->isHidden());
    EXPECT_EQ(UIWindow::keyWindow(), other);
}

TEST_F(UIWindowTest, NoWindowIsKeyOnceItIsGone)
{
    window = nullptr;
    EXPECT_EQ(UIWindow::keyWindow(), nullptr);
}

TEST_F(UIWindowTest, IsItsOwnWindow) { EXPECT_EQ(window->window(), window.get()); }

TEST_F(UIWindowTest, TheRootControllersViewFillsItBelowTheRest)
{
    const auto above = addView({ 0, 0, 10, 10 });
    const auto root = make<Root>();
    window->setRootViewController(root);
    EXPECT_EQ(window->subviews().front(), root->view());
    EXPECT_EQ(root->view()->frame(), window->bounds());
    root->view()->setFrame({ 0, 0, 1, 1 });
    window->setFrame({ 0, 0, 844, 390 });
    runFrames();
    EXPECT_EQ(root->view()->frame(), CGRect(0, 0, 844, 390));
}

TEST_F(UIWindowTest, AnotherRootTakesThePlaceOfTheFirst)
{
    const auto first = make<Root>();
    const auto second = make<Root>();
    window->setRootViewController(first);
    window->setRootViewController(second);
    EXPECT_EQ(first->view()->superview(), nullptr);
    EXPECT_EQ(second->view()->superview(), window.get());
    window->setRootViewController(nullptr);
    EXPECT_TRUE(window->subviews().empty());
}

TEST_F(UIWindowTest, AFrameListsTheTreeInDrawingOrder)
{
    window->setBackgroundColor(UIColor::whiteColor());
    const auto lower = addView({ 10, 20, 100, 100 });
    lower->setBackgroundColor(UIColor::blackColor());
    const auto inner = make<UIView>(CGRect(5, 5, 10, 10));
    inner->setBackgroundColor(UIColor::whiteColor());
    lower->addSubview(inner);
    const auto upper = addView({ 30, 40, 50, 50 });
    upper->setBackgroundColor(UIColor::blackColor());
    runFrames();
    std::vector<LayerID> order;
    for (const FrameItem& item : frame.items)
        order.push_back(item.layer);
    EXPECT_EQ(order,
        (std::vector<LayerID> { window->layer()->layerID(), lower->layer()->layerID(),
            inner->layer()->layerID(), upper->layer()->layerID() }));
    EXPECT_EQ(frame.size, CGSize(390, 844));
    EXPECT_EQ(frame.scale, 2);
}

TEST_F(UIWindowTest, MayGoFromInsideItsOwnFrame)
{
    class Dropping : public UIView {
    public:
        using UIView::UIView;
        void layoutSubviews() override
        {
            if (onLayout)
                onLayout();
        }
        std::function<void()> onLayout;
    };
    const auto view = addView<Dropping>({ 0, 0, 10, 10 });
    view->onLayout = [this] { window = nullptr; };
    window->performFrame(); // whose answer has gone with the window
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(view->window(), nullptr);
}

TEST_F(UIWindowTest, AnIdleWindowAsksForNoFrame)
{
    runFrames();
    const int before = scheduler.framesRun();
    scheduler.advance(10);
    EXPECT_EQ(scheduler.framesRun(), before);
}

} // namespace
