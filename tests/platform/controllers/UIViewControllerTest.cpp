#include "platform/controllers/UIViewController.h"

#include "platform/controls/UINavigationItem.h"
#include "tests/platform/controllers/ControllerLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UIViewControllerTest : public SceneFixture {
protected:
    std::shared_ptr<LoggingController> makeController(const std::string& name)
    {
        return make<LoggingController>(name, log);
    }
    Lines told() { return std::exchange(log, {}); }

    Lines log;
    std::shared_ptr<LoggingController> controller = makeController("it");
};

// --- Loading -----------------------------------------------------------------------------------------

TEST_F(UIViewControllerTest, LoadsItsViewWhenItIsFirstAskedForAndOnce)
{
    EXPECT_FALSE(controller->isViewLoaded());
    EXPECT_EQ(controller->viewIfLoaded(), nullptr);
    const auto view = controller->view();
    ASSERT_TRUE(view);
    EXPECT_EQ(controller->view(), view);
    EXPECT_EQ(controller->viewIfLoaded(), view);
    EXPECT_THAT(told(), ElementsAre("it did load"));
}

TEST_F(UIViewControllerTest, ShowsTheViewThatItsClassMakes)
{
    class WithOwnView final : public UIViewController {
    public:
        void loadView() override { setView(made); }
        const std::shared_ptr<UIView> made = make<UIView>();
    };
    const auto own = make<WithOwnView>();
    EXPECT_EQ(own->view(), own->made);
    EXPECT_EQ(own->made->owner(), own.get());
}

TEST_F(UIViewControllerTest, AClassThatMakesNoViewIsAnErrorAndGetsAPlainOne)
{
    class WithoutView final : public UIViewController {
    public:
        void loadView() override { }
    };
    const AssertionRecorder assertions;
    EXPECT_TRUE(make<WithoutView>()->view());
    EXPECT_THAT(assertions.messages(), ElementsAre(QStringLiteral("loadView set no view.")));
}

TEST_F(UIViewControllerTest, MayBeDroppedWhileItsViewLoads)
{
    controller->reactions["did load"] = [this] { controller = nullptr; };
    EXPECT_TRUE(controller->view());
    EXPECT_FALSE(controller);
}

TEST_F(UIViewControllerTest, LeavesItsViewBehindWithoutAnOwner)
{
    const auto view = controller->view();
    window->addSubview(view);
    controller = nullptr;
    EXPECT_EQ(view->owner(), nullptr);
    view->removeFromSuperview();
    runFrames();
}

// --- Appearance --------------------------------------------------------------------------------------

TEST_F(UIViewControllerTest, AppearsAfterTheFirstLayoutInTheWindow)
{
    window->setRootViewController(controller);
    EXPECT_THAT(told(), ElementsAre("it did load", "it will appear"));
    runFrames();
    EXPECT_THAT(told(), ElementsAre("it will lay out", "it did lay out", "it did appear"));
    controller->view()->setNeedsLayout();
    runFrames();
    EXPECT_THAT(told(), ElementsAre("it will lay out", "it did lay out"));
}

TEST_F(UIViewControllerTest, AViewThatNeedsNoLayoutAppearsToo)
{
    const auto view = controller->view();
    window->addSubview(view);
    runFrames();
    view->removeFromSuperview();
    runFrames();
    told();
    window->addSubview(view);
    EXPECT_THAT(told(), ElementsAre("it will appear"));
    runFrames();
    EXPECT_THAT(told(), ElementsAre("it will lay out", "it did lay out", "it did appear"));
}

TEST_F(UIViewControllerTest, DisappearsWithItsViewOrAViewAroundIt)
{
    const auto around = addView<UIView>({ 0, 0, 100, 100 });
    around->addSubview(controller->view());
    runFrames();
    told();
    around->removeFromSuperview();
    EXPECT_THAT(told(), ElementsAre("it will disappear", "it did disappear"));
    controller->view()->removeFromSuperview();
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(UIViewControllerTest, IsInTheWindowUntilItHasBeenToldThatItWillDisappear)
{
    window->setRootViewController(controller);
    runFrames();
    const auto isInWindow = [this] { return controller->view()->window() == window.get(); };
    controller->reactions["will disappear"] = [&] { EXPECT_TRUE(isInWindow()); };
    controller->reactions["did disappear"] = [&] { EXPECT_FALSE(isInWindow()); };
    window->setRootViewController(nullptr);
    EXPECT_EQ(log.back(), "it did disappear");
}

TEST_F(UIViewControllerTest, DisappearsBeforeAnotherAppearsInItsPlace)
{
    const auto next = makeController("next");
    window->setRootViewController(controller);
    runFrames();
    told();
    window->setRootViewController(next);
    EXPECT_THAT(
        told(), ElementsAre("it will disappear", "it did disappear", "next did load", "next will appear"));
}

TEST_F(UIViewControllerTest, DisappearsOnceThoughItRemovesItsViewItself)
{
    window->addSubview(controller->view());
    runFrames();
    told();
    controller->reactions["will disappear"] = [this] { controller->view()->removeFromSuperview(); };
    controller->view()->removeFromSuperview();
    EXPECT_THAT(told(), ElementsAre("it will disappear", "it did disappear"));
}

TEST_F(UIViewControllerTest, MovingToAnotherWindowIsNoDisappearance)
{
    const auto other = make<UIWindow>(CGRect(0, 0, 390, 844));
    window->addSubview(controller->view());
    runFrames();
    told();
    other->addSubview(controller->view());
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(UIViewControllerTest, WhatHasNotAppearedDoesNotDisappear)
{
    window->addSubview(controller->view());
    controller->view()->removeFromSuperview();
    runFrames();
    EXPECT_THAT(told(), ElementsAre("it did load", "it will appear"));
}

TEST_F(UIViewControllerTest, MovingWithinTheWindowIsNoAppearance)
{
    const auto around = addView<UIView>({ 0, 0, 100, 100 });
    window->addSubview(controller->view());
    runFrames();
    told();
    around->addSubview(controller->view());
    runFrames();
    EXPECT_THAT(told(), ::testing::Each(::testing::Not(::testing::HasSubstr("appear"))));
}

TEST_F(UIViewControllerTest, AViewThatIsReplacedInTheWindowIsGone)
{
    window->addSubview(controller->view());
    runFrames();
    told();
    const auto old = controller->view();
    controller->setView(make<UIView>());
    EXPECT_THAT(told(), ElementsAre("it will disappear", "it did disappear"));
    old->removeFromSuperview();
    EXPECT_THAT(told(), IsEmpty());
    window->addSubview(controller->view());
    EXPECT_THAT(told(), ElementsAre("it will appear"));
}

TEST_F(UIViewControllerTest, MayRemoveItsViewWhileItAppears)
{
    controller->reactions["did appear"] = [this] { controller->view()->removeFromSuperview(); };
    window->addSubview(controller->view());
    runFrames();
    EXPECT_EQ(controller->view()->superview(), nullptr);
    EXPECT_EQ(log.back(), "it did disappear");
}

TEST_F(UIViewControllerTest, MayBeDroppedFromInsideEachOfItsMessages)
{
    for (const char* message :
        { "will appear", "will lay out", "did lay out", "did appear", "will disappear", "did disappear" }) {
        auto dropped = makeController("it");
        const std::weak_ptr<LoggingController> watch = dropped;
        const auto view = dropped->view();
        dropped->reactions[message] = [&] { dropped = nullptr; };
        window->addSubview(view);
        runFrames();
        view->removeFromSuperview();
        runFrames();
        EXPECT_TRUE(watch.expired()) << message;
        EXPECT_EQ(view->owner(), nullptr) << message;
    }
}

TEST_F(UIViewControllerTest, SuperviewsControllersAppearFirst)
{
    const auto inner = makeController("inner");
    controller->addChildViewController(inner);
    controller->view()->addSubview(inner->view());
    told();
    window->addSubview(controller->view());
    EXPECT_THAT(told(), ElementsAre("it will appear", "inner will appear"));
}

// --- Containment -------------------------------------------------------------------------------------

TEST_F(UIViewControllerTest, AChildIsToldBeforeItMovesIn)
{
    const auto child = makeController("child");
    child->reactions["will move in"] = [&] { EXPECT_EQ(child->parentViewController(), nullptr); };
    controller->addChildViewController(child);
    EXPECT_THAT(told(), ElementsAre("child will move in"));
    EXPECT_EQ(child->parentViewController(), controller.get());
    EXPECT_THAT(controller->childViewControllers(), ElementsAre(child));
    controller->addChildViewController(child);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(UIViewControllerTest, AChildIsToldAfterItHasMovedOut)
{
    const auto child = makeController("child");
    controller->addChildViewController(child);
    told();
    child->reactions["did move out"] = [&] { EXPECT_EQ(child->parentViewController(), nullptr); };
    child->removeFromParentViewController();
    EXPECT_THAT(told(), ElementsAre("child did move out"));
    EXPECT_THAT(controller->childViewControllers(), IsEmpty());
    child->removeFromParentViewController();
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(UIViewControllerTest, AChildOfAnotherParentComesOver)
{
    const auto child = makeController("child");
    const auto other = makeController("other");
    other->addChildViewController(child);
    controller->addChildViewController(child);
    EXPECT_THAT(other->childViewControllers(), IsEmpty());
    EXPECT_EQ(child->parentViewController(), controller.get());
}

TEST_F(UIViewControllerTest, RefusesItselfNothingAndThoseAroundIt)
{
    const AssertionRecorder assertions;
    const auto inner = makeController("inner");
    controller->addChildViewController(inner);
    controller->addChildViewController(nullptr);
    controller->addChildViewController(controller);
    inner->addChildViewController(controller);
    EXPECT_THAT(controller->childViewControllers(), ElementsAre(inner));
    EXPECT_THAT(inner->childViewControllers(), IsEmpty());
    EXPECT_THAT(assertions.messages(),
        ::testing::Each(
            QStringLiteral("Invalid parameter not satisfying: childController is another controller")));
    EXPECT_EQ(assertions.failures().size(), 3U);
}

TEST_F(UIViewControllerTest, AParentThatGoesLeavesItsChildrenWithoutOne)
{
    const auto child = makeController("child");
    controller->addChildViewController(child);
    controller = nullptr;
    EXPECT_EQ(child->parentViewController(), nullptr);
    child->removeFromParentViewController();
}

TEST_F(UIViewControllerTest, AChildMayBeDroppedByItsParentAlone)
{
    auto child = makeController("child");
    const std::weak_ptr<LoggingController> watch = child;
    controller->addChildViewController(child);
    child = nullptr;
    const auto& onlyReference = controller->childViewControllers().front();
    onlyReference->removeFromParentViewController();
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(log.back(), "child did move out");
}

// --- Title and responders ----------------------------------------------------------------------------

TEST_F(UIViewControllerTest, ItsTitleIsAlsoThatOfItsNavigationItem)
{
    controller->setTitle(QStringLiteral("Here"));
    EXPECT_EQ(controller->navigationItem()->title(), QStringLiteral("Here"));
    controller->navigationItem()->setTitle({});
    EXPECT_EQ(controller->title(), QStringLiteral("Here"));
}

TEST_F(UIViewControllerTest, StandsBetweenItsViewAndTheSuperview)
{
    window->addSubview(controller->view());
    EXPECT_EQ(controller->view()->nextResponder(), controller.get());
    EXPECT_EQ(controller->nextResponder(), window.get());
}

} // namespace
