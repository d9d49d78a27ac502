#include "platform/graphics/UIColor.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/Pictures.h"
#include "tests/support/SceneFixture.h"

namespace {

class TintedView : public UIView {
public:
    using UIView::UIView;
    void tintColorDidChange() override
    {
        ++changes;
        if (onChange)
            onChange();
    }
    int changes = 0;
    std::function<void()> onChange;
};

class UIViewTintTest : public SceneFixture {
protected:
    UIViewTintTest()
    {
        outer->addSubview(inner);
        outer->changes = inner->changes = 0;
    }
    const std::shared_ptr<UIColor> red = UIColor::colorWithRed(1, 0, 0, 1);
    const std::shared_ptr<UIColor> green = UIColor::colorWithRed(0, 1, 0, 1);
    const std::shared_ptr<TintedView> outer = addView<TintedView>({ 0, 0, 100, 100 });
    const std::shared_ptr<TintedView> inner = make<TintedView>(CGRect(0, 0, 50, 50));
};

TEST_F(UIViewTintTest, WithoutAnyItIsTheSystemsBlue)
{
    EXPECT_TRUE(inner->tintColor()->isEqual(UIColor::systemBlueColor().get()));
}

TEST_F(UIViewTintTest, IsInheritedUntilSetAndAgainAfterNil)
{
    window->setTintColor(red);
    EXPECT_EQ(inner->tintColor(), red);
    inner->setTintColor(green);
    EXPECT_EQ(inner->tintColor(), green);
    inner->setTintColor(nullptr);
    EXPECT_EQ(inner->tintColor(), red);
}

TEST_F(UIViewTintTest, TellsEveryViewWhoseTintChanges)
{
    outer->setTintColor(red);
    EXPECT_EQ(outer->changes, 1);
    EXPECT_EQ(inner->changes, 1);
    inner->setTintColor(green);
    outer->setTintColor(green);
    EXPECT_EQ(outer->changes, 2);
    EXPECT_EQ(inner->changes, 2); // its own tint, and nothing of its superview's
}

TEST_F(UIViewTintTest, TellsAViewThatFollowsTheInheritedTintOfItThoughItHasOneOfItsOwn)
{
    class FollowingView : public TintedView {
    public:
        using TintedView::TintedView;
        bool followsInheritedTint() const override { return true; }
    };
    const auto following = make<FollowingView>(CGRect(0, 0, 50, 50));
    outer->addSubview(following);
    following->setTintColor(green);
    following->addSubview(inner);
    following->changes = inner->changes = 0;
    outer->setTintColor(red);
    EXPECT_EQ(following->changes, 1);
    EXPECT_EQ(following->tintColor(), green);
    EXPECT_EQ(inner->changes, 0); // nothing has changed for it
    window->setTintColor(green); // which does not reach it
    EXPECT_EQ(following->changes, 1);
}

TEST_F(UIViewTintTest, AnEqualColourIsNoChange)
{
    outer->setTintColor(red);
    outer->setTintColor(UIColor::colorWithRed(1, 0, 0, 1));
    EXPECT_EQ(outer->changes, 1);
}

TEST_F(UIViewTintTest, ReachesHiddenAndZeroSizeViews)
{
    outer->setHidden(true);
    inner->setFrame({});
    window->setTintColor(red);
    EXPECT_EQ(outer->changes, 1);
    EXPECT_EQ(inner->changes, 1);
}

TEST_F(UIViewTintTest, DimmedShowsTheGreyOfTheSameLuminance)
{
    outer->setTintColor(UIColor::colorWithRed(1.0, 55 / 255.0, 93 / 255.0, 1));
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    const auto parts = inner->tintColor()->getWhite();
    ASSERT_TRUE(parts);
    EXPECT_NEAR(parts->white, 0.39319, 0.00001);
    EXPECT_EQ(parts->alpha, 0.800000011920929);
}

TEST_F(UIViewTintTest, DimmedTakesTheWhiteOfAGrey)
{
    outer->setTintColor(UIColor::colorWithWhite(0.25, 0.5));
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    const auto parts = outer->tintColor()->getWhite();
    ASSERT_TRUE(parts);
    EXPECT_EQ(parts->white, 0.25);
    EXPECT_NEAR(parts->alpha, 0.4, 1e-7);
}

TEST_F(UIViewTintTest, AColourWithoutOneValueIsNotDimmed)
{
    const auto pattern = UIColor::colorWithPatternImage(plainImage({ 2, 2 }, Qt::red));
    outer->setTintColor(pattern);
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    EXPECT_EQ(inner->tintColor(), pattern);
}

TEST_F(UIViewTintTest, DimmedFollowsTheColourThatChangesMeanwhile)
{
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    inner->changes = 0;
    outer->setTintColor(green);
    EXPECT_EQ(inner->changes, 1);
    EXPECT_NEAR(inner->tintColor()->getWhite()->white, 0.7152, 0.0001);
}

TEST_F(UIViewTintTest, TheSameModeAgainAndAutomaticUnderNormalTellNobody)
{
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Normal);
    EXPECT_EQ(outer->changes, 0);
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    EXPECT_EQ(outer->changes, 1);
    EXPECT_EQ(static_cast<int>(outer->tintAdjustmentMode()), 2);
}

TEST_F(UIViewTintTest, DimmingReachesViewsWithATintOfTheirOwnAndAutomaticRestores)
{
    inner->setTintColor(green);
    inner->changes = 0;
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    EXPECT_EQ(inner->changes, 1);
    EXPECT_EQ(inner->tintAdjustmentMode(), UIViewTintAdjustmentMode::Dimmed);
    EXPECT_FALSE(inner->tintColor()->isEqual(green.get()));
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Automatic);
    EXPECT_EQ(inner->changes, 2);
    EXPECT_EQ(inner->tintAdjustmentMode(), UIViewTintAdjustmentMode::Normal);
    EXPECT_EQ(inner->tintColor(), green);
}

TEST_F(UIViewTintTest, ANormalModeInsideADimmedOneIsNotDimmed)
{
    inner->setTintAdjustmentMode(UIViewTintAdjustmentMode::Normal);
    outer->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    EXPECT_EQ(inner->changes, 0);
    EXPECT_EQ(inner->tintAdjustmentMode(), UIViewTintAdjustmentMode::Normal);
}

TEST_F(UIViewTintTest, AnotherSuperviewMayBringAnotherTint)
{
    const auto elsewhere = addView({ 0, 0, 10, 10 });
    elsewhere->addSubview(inner);
    EXPECT_EQ(inner->changes, 0); // the same blue
    elsewhere->setTintColor(red);
    inner->removeFromSuperview();
    EXPECT_EQ(inner->changes, 2);
    elsewhere->setTintAdjustmentMode(UIViewTintAdjustmentMode::Dimmed);
    elsewhere->addSubview(inner);
    EXPECT_EQ(inner->changes, 3); // once for colour and mode together
}

TEST_F(UIViewTintTest, AViewThatASiblingTakesOutBeforeItIsToldIsToldOnce)
{
    const auto sibling = make<TintedView>();
    const auto elsewhere = make<UIView>();
    elsewhere->setTintColor(red);
    outer->addSubview(sibling);
    inner->onChange = [&] { elsewhere->addSubview(sibling); };
    outer->setTintColor(red);
    EXPECT_EQ(sibling->superview(), elsewhere.get());
    EXPECT_EQ(sibling->changes, 1); // it was blue when it was last told
}

TEST_F(UIViewTintTest, AViewThatComesInBeforeTheMoveIsToldMissesNoChange)
{
    class Moving : public TintedView {
    public:
        using TintedView::TintedView;
        void didMoveToSuperview() override
        {
            if (onMove)
                onMove();
        }
        std::function<void()> onMove;
    };
    outer->setTintColor(red);
    const auto elsewhere = addView<UIView>({ 0, 0, 10, 10 });
    elsewhere->setTintColor(red);
    elsewhere->addSubview(inner);
    const auto moving = addView<Moving>({ 0, 0, 10, 10 });
    inner->changes = 0;
    moving->onMove = [&] { // it is blue as far as it was told, lies in a red one, and so will the inner one
        moving->addSubview(inner);
        outer->setTintColor(nullptr);
    };
    outer->addSubview(moving);
    EXPECT_EQ(inner->changes, 1) << "from red to blue";
}

TEST_F(UIViewTintTest, ViewsMayLeaveFromInsideTheMessage)
{
    outer->onChange = [&] { inner->removeFromSuperview(); };
    outer->setTintColor(red);
    EXPECT_EQ(inner->superview(), nullptr);
    EXPECT_EQ(inner->changes, 0); // it was blue when it was last told, and is blue again
}

} // namespace
