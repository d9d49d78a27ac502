#include "platform/graphics/UIColor.h"
#include "platform/views/UIAppearance.h"
#include "tests/support/SceneFixture.h"
#include "theme/ORVAutoTintNavigationBar.h"
#include "theme/ORVAutoTintToolbar.h"

namespace {

// Both bars keep the same promise. No looks are recorded here: the bars have no tint of their own.
template <typename Bar> class ORVAutoTintBarsTest : public SceneFixture {
protected:
    const UIAppearance::Replacement nothingRecorded;
    const std::shared_ptr<Bar> bar = make<Bar>();
    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    const std::shared_ptr<UIColor> green = UIColor::colorWithRed(0, 1, 0, 1);
};

using Bars = ::testing::Types<ORVAutoTintNavigationBar, ORVAutoTintToolbar>;
TYPED_TEST_SUITE(ORVAutoTintBarsTest, Bars);

TYPED_TEST(ORVAutoTintBarsTest, FollowsTheTintOfItsSuperview)
{
    this->window->setTintColor(this->red);
    this->window->addSubview(this->bar);
    EXPECT_EQ(this->bar->barTintColor(), this->red);
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
