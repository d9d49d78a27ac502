#include "platform/controllers/UINavigationController.h"

#include "platform/controls/UILabel.h"
#include "tests/platform/controllers/ControllerLog.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;

class UINavigationControllerTest : public SceneFixture {
protected:
    std::shared_ptr<LoggingController> makeController(const std::string& name)
    {
        return make<LoggingController>(name, log);
    }
    void show()
    {
        window->setRootViewController(navigation);
        runFrames();
        log.clear();
    }
    Lines told() { return std::exchange(log, {}); }
    NSString shownTitle() const
    {
        for (const auto& view : navigation->navigationBar()->subviews())
            if (const auto* label = dynamic_cast<const UILabel*>(view.get()))
                return label->text();
        return {};
    }

    Lines log;
    const std::shared_ptr<UINavigationController> navigation = make<UINavigationController>();
    const std::shared_ptr<LoggingController> first = makeController("first");
    const std::shared_ptr<LoggingController> second = makeController("second");
};

TEST_F(UINavigationControllerTest, MakesABarOfTheClassItWasGiven)
{
    class OwnBar final : public UINavigationBar { };
    const auto made = make<UINavigationController>([] { return make<OwnBar>(); });
    EXPECT_TRUE(made->navigationBar()->isMemberOfClass<OwnBar>());
    EXPECT_TRUE(navigation->navigationBar()->isMemberOfClass<UINavigationBar>());
    const auto withoutBar = make<UINavigationController>([] { return std::shared_ptr<UINavigationBar>(); });
    EXPECT_TRUE(withoutBar->navigationBar()->isMemberOfClass<UINavigationBar>());
}

TEST_F(UINavigationControllerTest, WithoutControllersShowsAnEmptyBar)
{
    show();
    EXPECT_EQ(navigation->topViewController(), nullptr);
    EXPECT_THAT(navigation->view()->subviews(), ElementsAre(navigation->navigationBar()));
    EXPECT_TRUE(shownTitle().isNull());
}

TEST_F(UINavigationControllerTest, ShowsTheLastControllerOnlyAndLoadsNoOther)
{
    navigation->setViewControllers({ first, second });
    show();
    EXPECT_EQ(navigation->topViewController(), second);
    EXPECT_EQ(second->view()->superview(), navigation->view().get());
    EXPECT_FALSE(first->isViewLoaded());
    EXPECT_EQ(first->navigationController(), navigation.get());
}

TEST_F(UINavigationControllerTest, LaysOutTheBarBelowTheStatusBarAndTheViewBelowTheBar)
{
    navigation->setViewControllers({ first });
    show();
    EXPECT_EQ(navigation->navigationBar()->frame(), CGRect(0, 47, 390, 44));
    EXPECT_EQ(first->view()->frame(), CGRect(0, 91, 390, 844 - 91));
    EXPECT_EQ(first->view()->safeAreaInsets(), (UIEdgeInsets { 0, 0, 34, 0 }));
    const auto& subviews = navigation->view()->subviews();
    EXPECT_EQ(subviews.back(), navigation->navigationBar());
}

TEST_F(UINavigationControllerTest, FollowsTheScreen)
{
    navigation->setViewControllers({ first });
    show();
    UIScreen::mainScreen()->setGeometry({ { 844, 390 }, 2, { 20, 0, 0, 0 } });
    runFrames();
    EXPECT_EQ(navigation->navigationBar()->frame(), CGRect(0, 20, 844, 44));
    EXPECT_EQ(first->view()->frame(), CGRect(0, 64, 844, 326));
}

TEST_F(UINavigationControllerTest, TheBarFollowsTheTitleOfTheTopController)
{
    first->setTitle(QStringLiteral("First"));
    second->setTitle(QStringLiteral("Second"));
    navigation->setViewControllers({ first });
    show();
    EXPECT_EQ(shownTitle(), QStringLiteral("First"));
    first->setTitle(QStringLiteral("Renamed"));
    EXPECT_EQ(shownTitle(), QStringLiteral("Renamed"));
    first->navigationItem()->setTitle({});
    EXPECT_TRUE(shownTitle().isNull());
    navigation->setViewControllers({ first, second });
    EXPECT_EQ(shownTitle(), QStringLiteral("Second"));
    navigation->setViewControllers({});
    EXPECT_TRUE(shownTitle().isNull());
}

TEST_F(UINavigationControllerTest, ControllersAreToldWhenTheyComeAndGo)
{
    navigation->setViewControllers({ first });
    EXPECT_THAT(told(), ElementsAre("first will move in", "first did move in"));
    show();
    navigation->setViewControllers({ second });
    EXPECT_THAT(told(),
        ElementsAre("first will move out", "first will disappear", "first did disappear",
            "first did move out", "second will move in", "second did move in", "second did load",
            "second will appear"));
    runFrames();
    EXPECT_EQ(log.back(), "second did appear");
    EXPECT_THAT(navigation->childViewControllers(), ElementsAre(second));
}

TEST_F(UINavigationControllerTest, WhatStaysInTheStackStaysAChild)
{
    navigation->setViewControllers({ first });
    show();
    navigation->setViewControllers({ first, second });
    EXPECT_THAT(told(),
        ElementsAre("second will move in", "second did move in", "second did load", "first will disappear",
            "first did disappear", "second will appear"));
    navigation->setViewControllers({ first });
    runFrames();
    EXPECT_EQ(log.back(), "first did appear");
    EXPECT_EQ(second->navigationController(), nullptr);
}

TEST_F(UINavigationControllerTest, NullsAreAnErrorAndLeftOut)
{
    const AssertionRecorder assertions;
    navigation->setViewControllers({ nullptr, first });
    EXPECT_THAT(navigation->viewControllers(), ElementsAre(first));
    EXPECT_THAT(assertions.messages(),
        ElementsAre(QStringLiteral("Invalid parameter not satisfying: controllers are no nulls")));
}

TEST_F(UINavigationControllerTest, AnotherStackMaySetItselfFromInsideEveryMessage)
{
    for (const char* message : { "will move in", "did move in", "did load", "will appear", "did appear" }) {
        const auto old = makeController("old");
        const auto next = makeController("next");
        old->reactions[message] = [&] { navigation->setViewControllers({ next }); };
        navigation->setViewControllers({ old });
        show();
        EXPECT_THAT(navigation->viewControllers(), ElementsAre(next)) << message;
        EXPECT_THAT(navigation->childViewControllers(), ElementsAre(next)) << message;
        EXPECT_EQ(old->parentViewController(), nullptr) << message;
        EXPECT_THAT(navigation->view()->subviews(), ElementsAre(next->view(), navigation->navigationBar()))
            << message;
        window->setRootViewController(nullptr);
    }
}

TEST_F(UINavigationControllerTest, AnotherStackMaySetItselfWhileOneLeaves)
{
    for (const char* message : { "will move out", "will disappear", "did disappear", "did move out" }) {
        const auto old = makeController("old");
        const auto other = makeController("other");
        const auto next = makeController("next");
        navigation->setViewControllers({ other, old });
        show();
        old->reactions[message] = [&] { navigation->setViewControllers({ next }); };
        navigation->setViewControllers({ other });
        runFrames();
        EXPECT_THAT(navigation->childViewControllers(), ElementsAre(next)) << message;
        EXPECT_THAT(navigation->view()->subviews(), ElementsAre(next->view(), navigation->navigationBar()))
            << message;
        EXPECT_EQ(other->parentViewController(), nullptr) << message;
        window->setRootViewController(nullptr);
    }
}

TEST_F(UINavigationControllerTest, MayBeDroppedFromInsideAControllersMessage)
{
    auto dropped = make<UINavigationController>();
    const std::weak_ptr<UINavigationController> watch = dropped;
    dropped->setViewControllers({ first });
    window->setRootViewController(dropped);
    runFrames();
    first->reactions["did disappear"] = [&] {
        window->setRootViewController(nullptr);
        dropped = nullptr;
    };
    dropped->setViewControllers({ second });
    EXPECT_TRUE(watch.expired());
    runFrames();
}

} // namespace
