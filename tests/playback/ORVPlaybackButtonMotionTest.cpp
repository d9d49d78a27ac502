#include "platform/layers/CABasicAnimation.h"
#include "platform/tables/UIScrollView.h"
#include "tests/platform/controls/ControlLog.h"
#include "tests/playback/PlaybackButtonFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

// --- Switching ---------------------------------------------------------------------------------------

class ORVPlaybackButtonSwitchTest : public PlaybackButtonFixture { };

TEST_F(ORVPlaybackButtonSwitchTest, TheIconShrinksToNothingAndGrowsAgain)
{
    button->setPlaying(true);
    expectScale({ { 0, 1 }, { 0.075, 0.5 }, { 0.15, 0 }, { 0.225, 0.5 }, { 0.3, 1 } });
    const auto animation = std::dynamic_pointer_cast<const CABasicAnimation>(
        button->imageView()->layer()->animationForKey(QStringLiteral("imageViewSwitch")));
    ASSERT_TRUE(animation);
    EXPECT_EQ(animation->keyPath(), QStringLiteral("transform.scale.xy"));
    EXPECT_EQ(animation->toValue(), CAValue(0.0));
    EXPECT_FALSE(animation->hasFromValue());
    EXPECT_FALSE(animation->hasByValue());
    EXPECT_EQ(animation->duration(), 0.15);
    EXPECT_TRUE(animation->autoreverses());
}

TEST_F(ORVPlaybackButtonSwitchTest, TheNewIconAppearsWhenTheOldOneIsSmallest)
{
    button->setPlaying(true);
    scheduler.advance(0.149);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.001);
    EXPECT_TRUE(showsPause());
    EXPECT_TRUE(isSwitching()) << "it still has to grow";
    scheduler.advance(0.16);
    EXPECT_TRUE(showsPause());
    EXPECT_FALSE(isSwitching());
}

TEST_F(ORVPlaybackButtonSwitchTest, PlayingIsSwitchedWithAnimationUnlessToldOtherwise)
{
    button->setPlaying(true, Animated::No);
    EXPECT_FALSE(isSwitching());
    EXPECT_TRUE(showsPause());
    button->setPlaying(false);
    EXPECT_TRUE(isSwitching());
    EXPECT_TRUE(showsPause());
    scheduler.advance(0.15);
    EXPECT_TRUE(showsPlay());
}

TEST_F(ORVPlaybackButtonSwitchTest, TheSameValueAgainIsAnnouncedAndShownAtOnce)
{
    button->setPlaying(true);
    scheduler.advance(0.05);
    const auto log = logChanges(button, "playing", &ORVPlaybackButton::isPlaying);
    button->setPlaying(true);
    EXPECT_THAT(log->values, ElementsAre(true));
    EXPECT_TRUE(showsPause());
    EXPECT_FALSE(isSwitching());
    expectScale({ { 0, 1 } });
    button->imageView()->setImage(nullptr);
    scheduler.advance(0.2);
    EXPECT_TRUE(showsNoIcon()) << "the unlock no longer comes";
}

TEST_F(ORVPlaybackButtonSwitchTest, ASwitchWithoutAnimationEndsTheOneUnderWay)
{
    button->setPlaying(true);
    scheduler.advance(0.05);
    button->setPlaying(false, Animated::No);
    EXPECT_FALSE(isSwitching());
    EXPECT_TRUE(showsPlay());
    button->setImage(pause, UIControlState::Normal);
    EXPECT_TRUE(showsPause()) << "nothing is locked";
}

TEST_F(ORVPlaybackButtonSwitchTest, ASecondSwitchInMidFlightStartsAnewAndOnlyItsOwnUnlockComes)
{
    button->setPlaying(true);
    scheduler.advance(0.1);
    EXPECT_NEAR(iconIn(0).transform.m11(), 1.0 / 3, 1e-9);
    button->setPlaying(false);
    expectScale({ { 0, 1 }, { 0.15, 0 }, { 0.3, 1 } });
    EXPECT_EQ(button->imageView()->layer()->animationKeys().size(), 1U);
    button->setImage(pause, UIControlState::Normal);
    scheduler.advance(0.149); // the first switch's time is over
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.001);
    EXPECT_TRUE(showsPause());
}

TEST_F(ORVPlaybackButtonSwitchTest, WhileItSwitchesNoOtherStateChangesTheIcon)
{
    button->setPlaying(true);
    button->setEnabled(false); // disabled and playing has no icon
    EXPECT_TRUE(showsPlay());
    button->setSelected(true);
    button->setHighlighted(true);
    button->setHighlighted(false);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.15);
    EXPECT_TRUE(showsNoIcon());
}

TEST_F(ORVPlaybackButtonSwitchTest, AButtonThatIsTakenOutOfItsWindowWhileItSwitchesEndsUpRight)
{
    button->setPlaying(true);
    scheduler.advance(0.05);
    button->removeFromSuperview();
    scheduler.advance(1);
    EXPECT_TRUE(showsPause());
    EXPECT_FALSE(isSwitching());
    putBack();
    EXPECT_TRUE(showsPause());
    expectScale({ { 0, 1 } });
}

TEST_F(ORVPlaybackButtonSwitchTest, AButtonMayGoBeforeItsUnlockComes)
{
    button->setPlaying(true);
    const std::weak_ptr<ORVPlaybackButton> weak = button;
    std::exchange(button, nullptr)->removeFromSuperview();
    EXPECT_TRUE(weak.expired());
    scheduler.advance(1);
}

TEST_F(ORVPlaybackButtonSwitchTest, AButtonInNoWindowSwitchesAsWell)
{
    button = make<ORVPlaybackButton>(wholeButton);
    button->setImage(play, UIControlState::Normal);
    button->setImage(pause, UIControlState::Application);
    button->setPlaying(true);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.15);
    EXPECT_TRUE(showsPause());
}

TEST_F(ORVPlaybackButtonSwitchTest, TheNewLookIsAnnouncedWhenEverythingIsUnderWay)
{
    const auto log = make<ChangeLog<bool>>(
        button, QStringLiteral("playing"), [this] { return isSwitching() && showsPlay(); });
    button->setPlaying(true);
    scheduler.advance(1);
    button->setPlaying(true);
    EXPECT_THAT(log->values, ElementsAre(true, false)) << "the second time the new icon was there before";
}

TEST_F(ORVPlaybackButtonSwitchTest, TheIconChangesWhileAListScrollsAndAFingerIsDown)
{
    const auto list = addView<UIScrollView>({ 0, 300, 390, 400 });
    list->setContentSize({ 390, 4000 });
    runFrames();
    touch.down({ 200, 600 });
    touch.glideTo({ 200, 500 }, 0.1);
    ASSERT_TRUE(list->isDragging());
    button->setPlaying(true);
    touch.glideTo({ 200, 400 }, 0.14);
    EXPECT_TRUE(showsPlay());
    touch.glideTo({ 200, 390 }, 0.02);
    EXPECT_TRUE(showsPause());
    EXPECT_TRUE(list->isDragging());
    touch.up();
}

TEST_F(ORVPlaybackButtonSwitchTest, AnObserverMaySwitchBackAtOnce)
{
    const auto log = logChanges(button, "playing", &ORVPlaybackButton::isPlaying);
    log->whenTold = [this] {
        if (button->isPlaying())
            button->setPlaying(false, Animated::No);
    };
    button->setPlaying(true);
    EXPECT_THAT(log->values, ElementsAre(true, false));
    EXPECT_FALSE(isSwitching());
    for (const double seconds : { 0.0, 1.0 }) {
        scheduler.advance(seconds);
        EXPECT_TRUE(showsPlay());
    }
}

// --- Touches -----------------------------------------------------------------------------------------

class ORVPlaybackButtonTouchTest : public PlaybackButtonFixture {
protected:
    ORVPlaybackButtonTouchTest() { target->listenTo(*button); }

    void dropButton() { std::exchange(button, nullptr)->removeFromSuperview(); }

    // Far enough away that the finger no longer counts as on the button.
    static constexpr CGPoint outside { 122, 300 };

    const std::shared_ptr<ControlTarget> target = make<ControlTarget>();
};

TEST_F(ORVPlaybackButtonTouchTest, ATouchMakesItPaleAtOnceAndFadesWhenItEnds)
{
    touch.down(middle);
    expectAlpha(pale);
    EXPECT_EQ(button->progressView()->alpha(), pale);
    touch.up();
    EXPECT_EQ(button->imageView()->alpha(), 1);
    EXPECT_LT(iconIn(fade - 0.001).opacity, 1);
    expectAlpha({ { 0, pale }, { fade / 4, pale + (1 - pale) * easeInOut(0.25) },
        { fade / 2, pale + (1 - pale) * easeInOut(0.5) }, { fade, 1 } });
}

TEST_F(ORVPlaybackButtonTouchTest, AFingerThatLeavesAndComesBackFadesItBothWays)
{
    touch.down(middle);
    touch.moveTo(outside);
    EXPECT_FALSE(button->isHighlighted());
    expectAlpha({ { 0, pale }, { fade, 1 } });
    scheduler.advance(1);
    touch.moveTo(middle);
    expectAlpha({ { 0, 1 }, { fade / 2, 1 - (1 - pale) * easeInOut(0.5) }, { fade, pale } });
}

TEST_F(ORVPlaybackButtonTouchTest, ATouchThatIsTakenAwayEndsAtOnceUnlessTheFingerHasMoved)
{
    touch.down(middle);
    touch.cancel();
    expectAlpha(1);
    touch.down(middle);
    touch.moveTo(middle + CGPoint(1, 0));
    touch.cancel();
    expectAlpha({ { 0, pale }, { fade, 1 } });
}

TEST_F(ORVPlaybackButtonTouchTest, TheFadeLetsTouchesThrough)
{
    touch.tap(middle);
    scheduler.advance(fade / 2);
    touch.tap(middle);
    EXPECT_THAT(target->lines, ElementsAre("down", "up inside", "down", "up inside"));
}

TEST_F(ORVPlaybackButtonTouchTest, CodeHighlightsItAtOnceAfterATapToo)
{
    for (int times = 0; times < 2; ++times) {
        button->setHighlighted(true);
        expectAlpha(pale);
        button->setHighlighted(false);
        expectAlpha(1);
        EXPECT_FALSE(button->imageView()->layer()->hasAnimations());
        touch.tap(middle);
        scheduler.advance(1);
    }
}

TEST_F(ORVPlaybackButtonTouchTest, ADisabledButtonIsPaleAtOnceAndStaysSoWithoutAFinger)
{
    button->setEnabled(false);
    expectAlpha(pale);
    button->setHighlighted(true);
    button->setHighlighted(false);
    expectAlpha(pale);
    touch.tap(middle);
    expectAlpha(pale);
    button->setEnabled(true);
    expectAlpha(1);
}

TEST_F(ORVPlaybackButtonTouchTest, ASelectedButtonIsNotPale)
{
    button->setSelected(true);
    expectAlpha(1);
}

TEST_F(ORVPlaybackButtonTouchTest, ATapTellsTheTargetAndLeavesTheLookToIt)
{
    touch.tap(middle);
    EXPECT_THAT(target->lines, ElementsAre("down", "up inside"));
    EXPECT_FALSE(button->isPlaying());
    EXPECT_TRUE(showsPlay());
    target->onEvent = [this] { button->setPlaying(!button->isPlaying()); };
    touch.down(middle);
    EXPECT_TRUE(button->isPlaying());
}

TEST_F(ORVPlaybackButtonTouchTest, AButtonMayBeDroppedFromInsideItsOwnAction)
{
    const std::weak_ptr<ORVPlaybackButton> weak = button;
    target->onEvent = [this] {
        if (target->lines.back() != "up inside")
            return;
        button->setPlaying(true);
        dropButton();
    };
    touch.tap(middle);
    EXPECT_THAT(target->lines, ElementsAre("down", "up inside"));
    EXPECT_TRUE(weak.expired());
    scheduler.advance(1);
}

TEST_F(ORVPlaybackButtonTouchTest, AButtonMayBeDroppedByWhoHearsThatItsTouchIsTakenAway)
{
    const std::weak_ptr<ORVPlaybackButton> weak = button;
    touch.down(middle);
    target->onEvent = [this] { dropButton(); };
    weak.lock()->setEnabled(false);
    EXPECT_THAT(target->lines, ElementsAre("down", "cancel"));
    EXPECT_TRUE(weak.expired());
}

TEST_F(ORVPlaybackButtonTouchTest, AButtonThatIsTakenAwayUnderAFingerIsNotPressedAndComesBackWhole)
{
    touch.down(middle);
    button->removeFromSuperview();
    touch.up();
    EXPECT_THAT(target->lines, ElementsAre("down", "cancel"));
    EXPECT_FALSE(button->isHighlighted());
    putBack();
    expectAlpha(1);
    EXPECT_TRUE(showsPlay());
}

TEST_F(ORVPlaybackButtonTouchTest, AButtonThatIsTakenAwayWhileItFadesComesBackWhole)
{
    touch.tap(middle);
    scheduler.advance(0.1);
    button->removeFromSuperview();
    putBack();
    expectAlpha(1);
}

TEST_F(ORVPlaybackButtonTouchTest, OnceNothingMovesNoFrameIsAskedFor)
{
    touch.tap(middle);
    button->setPlaying(true);
    scheduler.advance(1);
    EXPECT_EQ(framesRunIn(10), 0);
}

} // namespace
