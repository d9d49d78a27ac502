#include "platform/foundation/ClassRegistry.h"
#include "platform/graphics/UIColor.h"
#include "tests/support/SceneFixture.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/ORVAutoTintToolbar.h"

namespace {

// The same rule holds for both bars and for what derives from them. The theme is in force: it gives every bar
// in a window a tint of its own, white.
template <typename Bar> class ORVAutoTintBarsTest : public SceneFixture {
protected:
    ORVAutoTintBarsTest() { ClassRegistry::runLoadHooks(); }

    const std::shared_ptr<Bar> bar = make<Bar>();
    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    const std::shared_ptr<UIColor> green = UIColor::colorWithRed(0, 1, 0, 1);
};

using Bars = ::testing::Types<ORVAutoTintNavigationBar, ORVAutoTintToolbar>;
TYPED_TEST_SUITE(ORVAutoTintBarsTest, Bars);

TYPED_TEST(ORVAutoTintBarsTest, FollowsTheTintOfItsSuperviewThoughTheThemeGivesItOneOfItsOwn)
{
    this->window->setTintColor(this->red);
    this->window->addSubview(this->bar);
    EXPECT_TRUE(this->bar->tintColor()->isEqual(UIColor::whiteColor().get()));
    EXPECT_EQ(this->bar->barTintColor(), this->red);
    this->window->setTintColor(this->green);
    EXPECT_EQ(this->bar->barTintColor(), this->green);
    EXPECT_TRUE(this->bar->tintColor()->isEqual(UIColor::whiteColor().get()));
}

TYPED_TEST(ORVAutoTintBarsTest, TakesTheTintOfTheViewIntoWhichItIsMoved)
{
    const auto other = this->addView({ 0, 100, 390, 100 });
    other->setTintColor(this->green);
    this->window->setTintColor(this->red);
    this->window->addSubview(this->bar);
    other->addSubview(this->bar);
    EXPECT_EQ(this->bar->barTintColor(), this->green);
}

TYPED_TEST(ORVAutoTintBarsTest, FollowsAViewFarAbove)
{
    const auto between = this->addView({ 0, 100, 390, 100 });
    between->addSubview(this->bar);
    this->window->setTintColor(this->green);
    EXPECT_EQ(this->bar->barTintColor(), this->green);
}

TYPED_TEST(ORVAutoTintBarsTest, ChangingTheTintWithoutASuperviewLeavesNoBarColour)
{
    this->bar->setBarTintColor(this->red);
    this->bar->setTintColor(this->green);
    EXPECT_EQ(this->bar->barTintColor(), nullptr);
}

TYPED_TEST(ORVAutoTintBarsTest, LosesTheBarColourWithTheSuperviewWhoseTintItHad)
{
    this->window->setTintColor(this->red);
    this->window->addSubview(this->bar);
    this->bar->removeFromSuperview();
    EXPECT_EQ(this->bar->barTintColor(), nullptr);
}

TYPED_TEST(ORVAutoTintBarsTest, WithATintOfItsOwnItsBarStillHasTheColourOfTheSuperview)
{
    this->window->setTintColor(this->red);
    this->window->addSubview(this->bar);
    this->bar->setTintColor(this->green);
    EXPECT_EQ(this->bar->tintColor(), this->green);
    EXPECT_EQ(this->bar->barTintColor(), this->red);
}

TYPED_TEST(ORVAutoTintBarsTest, DimsWithItsSuperviewAndComesBack)
{
    this->window->setTintColor(this->red);
    this->window->addSubview(this->bar);
    this->bar->setTintColor(this->green);
    this->window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    EXPECT_TRUE(this->bar->barTintColor()->isEqual(this->window->tintColor().get()));
    EXPECT_EQ(this->bar->barTintColor()->getWhite()->white, 0.2125999927520752);
    this->window->setTintAdjustmentMode(UIViewTintAdjustmentMode::Normal);
    EXPECT_EQ(this->bar->barTintColor(), this->red);
}

} // namespace
