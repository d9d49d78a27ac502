// How bars look once the classes' load hooks have run, and how the auto-tint bars follow their superview.
#include "platform/foundation/ClassRegistry.h"
#include "platform/views/UIWindow.h"
#include "tests/support/ManualScheduler.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/ORVAutoTintToolbar.h"
#include "theme/UIColor+ORVTheme.h"
#include "theme/UIFont+ORVTheme.h"

#include <gtest/gtest.h>

namespace {

class BarAppearanceTest : public testing::Test {
protected:
    BarAppearanceTest() { ClassRegistry::runLoadHooks(); }

    template <typename View> std::shared_ptr<View> viewInWindow() const
    {
        const auto view = make<View>(CGRect(0, 0, 320, 44));
        window->addSubview(view);
        return view;
    }
    static bool isWhite(const std::shared_ptr<UIColor>& color)
    {
        return color && color->isEqual(orv_oruvaneNavigationBarItemsColor().get());
    }

    ManualScheduler scheduler;
    const std::shared_ptr<UIWindow> window = make<UIWindow>(CGRect(0, 0, 320, 480));
};

void expectThemedTitle(const NSTextAttributes& attributes)
{
    const NSTextAttributes themed {
        { NSFontAttributeName, orv_oruvaneNavigationBarTitleFont() },
        { NSForegroundColorAttributeName, orv_oruvaneNavigationBarItemsColor() },
    };
    ASSERT_EQ(attributes.size(), themed.size());
    for (const auto& [name, value] : themed)
        EXPECT_TRUE(attributes.at(name)->isEqual(value.get()));
}

TEST_F(BarAppearanceTest, NavigationBarsHaveWhiteItemsAndWhiteCondensedTitles)
{
    const auto bar = viewInWindow<UINavigationBar>();
    EXPECT_TRUE(isWhite(bar->tintColor()));
    expectThemedTitle(bar->titleTextAttributes());
}

TEST_F(BarAppearanceTest, NavigationBarsAreOpaqueInTheMainColourAlsoAtTheScrollEdge)
{
    const auto bar = viewInWindow<UINavigationBar>();
    for (const auto& appearance : { bar->standardAppearance(), bar->scrollEdgeAppearance() }) {
        ASSERT_TRUE(appearance);
        EXPECT_TRUE(appearance->backgroundColor()->isEqual(orv_oruvaneMainColor().get()));
        expectThemedTitle(appearance->titleTextAttributes());
    }
}

TEST_F(BarAppearanceTest, ToolbarsHaveWhiteItems)
{
    EXPECT_TRUE(isWhite(viewInWindow<UIToolbar>()->tintColor()));
}

TEST_F(BarAppearanceTest, AutoTintBarsHaveTheLooksOfTheirKind)
{
    EXPECT_TRUE(isWhite(viewInWindow<ORVAutoTintNavigationBar>()->tintColor()));
    EXPECT_TRUE(isWhite(viewInWindow<ORVAutoTintToolbar>()->tintColor()));
}

// --- Auto-tint bars --------------------------------------------------------------------------------------

template <typename Bar> class AutoTintBarTest : public testing::Test {
protected:
    ManualScheduler scheduler;
    const std::shared_ptr<UIView> holder = make<UIView>(CGRect(0, 0, 320, 480));
    const std::shared_ptr<Bar> bar = make<Bar>(CGRect(0, 0, 320, 44));
};

using AutoTintBars = testing::Types<ORVAutoTintNavigationBar, ORVAutoTintToolbar>;
TYPED_TEST_SUITE(AutoTintBarTest, AutoTintBars);

TYPED_TEST(AutoTintBarTest, TakesTheTintOfTheViewThatHoldsItWheneverThatChanges)
{
    this->holder->addSubview(this->bar);
    for (const auto& color : { orv_oruvaneMainColor(), UIColor::blackColor() }) {
        this->holder->setTintColor(color);
        ASSERT_TRUE(this->bar->barTintColor());
        EXPECT_TRUE(this->bar->barTintColor()->isEqual(color.get()));
    }
}

TYPED_TEST(AutoTintBarTest, GreysOutWithTheInterfaceAndComesBackWithIt)
{
    this->holder->setTintColor(orv_oruvaneMainColor());
    this->holder->addSubview(this->bar);
    this->holder->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    const auto dimmed = this->bar->barTintColor()->getWhite();
    ASSERT_TRUE(dimmed);
    EXPECT_NEAR(dimmed->white, 0.39319, 5e-6);
    EXPECT_NEAR(dimmed->alpha, 0.8, 1e-6);
    this->holder->setTintAdjustmentMode(UIViewTintAdjustmentMode::Normal);
    EXPECT_TRUE(this->bar->barTintColor()->isEqual(orv_oruvaneMainColor().get()));
}

TYPED_TEST(AutoTintBarTest, FollowsItsSuperviewEvenWithATintOfItsOwn)
{
    this->holder->setTintColor(orv_oruvaneMainColor());
    this->holder->addSubview(this->bar);
    this->bar->setTintColor(UIColor::whiteColor());
    EXPECT_TRUE(this->bar->barTintColor()->isEqual(orv_oruvaneMainColor().get()));
}

TYPED_TEST(AutoTintBarTest, WithoutASuperviewAChangeOfTintLeavesNoBarColour)
{
    this->bar->setBarTintColor(orv_oruvaneMainColor());
    this->bar->setTintColor(UIColor::blackColor());
    EXPECT_FALSE(this->bar->barTintColor());
}

} // namespace
