// A view waits for a double tap to fail before it hears of the touches.

#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

using States = std::vector<int>;

class HeldBackTouchTest : public SceneFixture {
protected:
    void SetUp() override
    {
        doubleTap->setNumberOfTapsRequired(2);
        doubleTap->setDelaysTouchesBegan(true);
        view->addGestureRecognizer(doubleTap);
    }

    std::shared_ptr<LoggingView> view = addView<LoggingView>({ 100, 100, 200, 200 });
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<UITapGestureRecognizer> doubleTap = make<UITapGestureRecognizer>(target->action());
};

TEST_F(HeldBackTouchTest, AViewHearsOfAWholeTouchWhenTheDoubleTapThatHeldItBackFails)
{
    touch.tap({ 150, 150 });
    EXPECT_TRUE(view->lines.empty());
    touch.wait(0.4);
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50" }));
}

TEST_F(HeldBackTouchTest, AViewNeverHearsOfTouchesThatBecameADoubleTap)
{
    touch.tap({ 150, 150 });
    touch.tap({ 150, 150 });
    touch.wait(1);
    EXPECT_EQ(target->states, (States { 3 }));
    EXPECT_TRUE(view->lines.empty());
}

TEST_F(HeldBackTouchTest, AViewHearsOfTheTouchesOfADoubleTapThatCancelsNothing)
{
    doubleTap->setCancelsTouchesInView(false);
    touch.tap({ 150, 150 });
    touch.tap({ 160, 150 });
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50", "began 60 50", "ended 60 50" }));
}

TEST_F(HeldBackTouchTest, AViewThatLeavesDoesNotHearOfTouchesThatWereHeldBack)
{
    touch.tap({ 150, 150 });
    view->removeFromSuperview();
    touch.wait(1);
    EXPECT_TRUE(view->lines.empty());
}

TEST_F(HeldBackTouchTest, WhenTheScreenIsLostTheViewNeverHearsOfTheTouch)
{
    touch.tap({ 150, 150 });
    window->touches().cancelAllTouches();
    touch.wait(1);
    EXPECT_TRUE(view->lines.empty());
}

TEST_F(HeldBackTouchTest, TheViewMayBeDroppedFromInsideTheLateTouch)
{
    const std::weak_ptr<LoggingView> watched = view;
    view->onEnd = [this] {
        view->removeFromSuperview();
        view = nullptr;
    };
    touch.tap({ 150, 150 });
    touch.wait(0.4);
    EXPECT_TRUE(watched.expired());
}

TEST_F(HeldBackTouchTest, TheWindowMayBeDroppedFromInsideTheLateTouch)
{
    const std::weak_ptr<UIWindow> watched = window;
    view->onEnd = [this] { window = nullptr; };
    touch.tap({ 150, 150 });
    touch.wait(0.4);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50" }));
}

} // namespace
