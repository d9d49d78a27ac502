#include "platform/layers/CABasicAnimation.h"
#include "platform/tables/UIScrollView.h"
#include "tests/platform/controls/ControlLog.h"
#include "tests/playback/PlaybackButtonFixture.h"

namespace {

class ORVPlaybackButtonMotionTest : public PlaybackButtonFixture {
protected:
    // Far enough away that the finger no longer counts as on the button.
    static constexpr CGPoint outside { 122, 300 };
};

// --- Switching ---------------------------------------------------------------------------------------

TEST_F(ORVPlaybackButtonMotionTest, TheIconShrinksToNothingAndGrowsAgain)
{
    button->setPlaying(true);
    EXPECT_NEAR(scaleIn(0), 1, 1e-9);
    EXPECT_NEAR(scaleIn(0.075), 0.5, 1e-9);
    EXPECT_NEAR(scaleIn(0.15), 0, 1e-9);
    EXPECT_NEAR(scaleIn(0.225), 0.5, 1e-9);
    EXPECT_NEAR(scaleIn(0.3), 1, 1e-9);
    EXPECT_NEAR(iconIn(0.075).transform.m22(), 0.5, 1e-9);
    scheduler.advance(0.31);
    EXPECT_FALSE(isSwitching());
    EXPECT_TRUE(showsPause());
}

TEST_F(ORVPlaybackButtonMotionTest, TheShrinkingGoesToNothingInFifteenHundredthsAndBack)
{
    button->setPlaying(true);
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

TEST_F(ORVPlaybackButtonMotionTest, TheNewIconAppearsWhenTheOldOneIsSmallest)
{
    button->setPlaying(true);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.149);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.001);
    EXPECT_TRUE(showsPause());
    EXPECT_TRUE(isSwitching()) << "it still has to grow";
}

TEST_F(ORVPlaybackButtonMotionTest, PlayingIsSwitchedWithAnimationUnlessToldOtherwise)
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

TEST_F(ORVPlaybackButtonMotionTest, TheSameValueAgainIsAnnouncedAndShownAtOnce)
{
    button->setPlaying(true);
    scheduler.advance(0.05);
    const auto log
        = make<ChangeLog<bool>>(button, QStringLiteral("playing"), [this] { return button->isPlaying(); });
    button->setPlaying(true);
    EXPECT_EQ(log->values, std::vector<bool> { true });
    EXPECT_TRUE(showsPause());
    EXPECT_FALSE(isSwitching());
    EXPECT_EQ(scaleIn(0), 1);
    button->imageView()->setImage(nullptr);
    scheduler.advance(0.2);
    EXPECT_EQ(button->imageView()->image(), nullptr) << "the unlock no longer comes";
}

TEST_F(ORVPlaybackButtonMotionTest, ASwitchWithoutAnimationEndsTheOneUnderWay)
{
    button->setPlaying(true);
    scheduler.advance(0.05);
    button->setPlaying(false, Animated::No);
    EXPECT_FALSE(isSwitching());
    EXPECT_TRUE(showsPlay());
    button->setImage(pause, UIControlState::Normal);
    EXPECT_TRUE(showsPause()) << "nothing is locked";
}

TEST_F(ORVPlaybackButtonMotionTest, ASecondSwitchInMidFlightStartsAnewAndOnlyItsOwnUnlockComes)
{
    button->setPlaying(true);
    scheduler.advance(0.1);
    EXPECT_NEAR(scaleIn(0), 1.0 / 3, 1e-9);
    button->setPlaying(false);
    EXPECT_NEAR(scaleIn(0), 1, 1e-9);
    EXPECT_NEAR(scaleIn(0.15), 0, 1e-9);
    EXPECT_EQ(button->imageView()->layer()->animationKeys().size(), 1U);
    button->setImage(pause, UIControlState::Normal);
    scheduler.advance(0.1); // the first switch's time is over
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.049);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.001);
    EXPECT_TRUE(showsPause());
}

TEST_F(ORVPlaybackButtonMotionTest, WhileItSwitchesNoOtherStateChangesTheIcon)
{
    button->setPlaying(true);
    button->setEnabled(false); // disabled and playing has no icon
    EXPECT_TRUE(showsPlay());
    button->setSelected(true);
    button->setHighlighted(true);
    button->setHighlighted(false);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.15);
    EXPECT_EQ(button->imageView()->image(), nullptr);
}

TEST_F(ORVPlaybackButtonMotionTest, AButtonThatIsTakenOutOfItsWindowWhileItSwitchesEndsUpRight)
{
    button->setPlaying(true);
    scheduler.advance(0.05);
    button->removeFromSuperview();
    scheduler.advance(1);
    EXPECT_TRUE(showsPause());
    EXPECT_FALSE(isSwitching());
    window->addSubview(button);
    runFrames();
    EXPECT_TRUE(showsPause());
    EXPECT_EQ(scaleIn(0), 1);
}

TEST_F(ORVPlaybackButtonMotionTest, AButtonMayGoBeforeItsUnlockComes)
{
    button->setPlaying(true);
    const std::weak_ptr<ORVPlaybackButton> weak = button;
    button->removeFromSuperview();
    button = nullptr;
    EXPECT_TRUE(weak.expired());
    scheduler.advance(1);
}

TEST_F(ORVPlaybackButtonMotionTest, AButtonInNoWindowSwitchesAsWell)
{
    button = make<ORVPlaybackButton>(CGRect(0, 0, 44, 44));
    button->setImage(play, UIControlState::Normal);
    button->setImage(pause, UIControlState::Application);
    button->setPlaying(true);
    EXPECT_TRUE(showsPlay());
    scheduler.advance(0.15);
    EXPECT_TRUE(showsPause());
}

TEST_F(ORVPlaybackButtonMotionTest, TheNewLookIsAnnouncedWhenEverythingIsUnderWay)
{
    const auto log = make<ChangeLog<bool>>(
        button, QStringLiteral("playing"), [this] { return isSwitching() && showsPlay(); });
    button->setPlaying(true);
    EXPECT_EQ(log->values, std::vector<bool> { true });
    scheduler.advance(1);
    button->setPlaying(true);
    EXPECT_EQ(log->values, (std::vector<bool> { true, false })) << "the new icon was there before";
}

TEST_F(ORVPlaybackButtonMotionTest, TheIconChangesWhileAListScrollsAndAFingerIsDown)
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

TEST_F(ORVPlaybackButtonMotionTest, AnObserverMaySwitchBackAtOnce)
{
    const auto log
        = make<ChangeLog<bool>>(button, QStringLiteral("playing"), [this] { return button->isPlaying(); });
    log->whenTold = [this] {
        if (button->isPlaying())
            button->setPlaying(false, Animated::No);
    };
    button->setPlaying(true);
    EXPECT_EQ(log->values, (std::vector<bool> { true, false }));
    EXPECT_TRUE(showsPlay());
    EXPECT_FALSE(isSwitching());
    scheduler.advance(1);
    EXPECT_TRUE(showsPlay());
}

// --- Touches -----------------------------------------------------------------------------------------

TEST_F(ORVPlaybackButtonMotionTest, ATouchMakesItPaleAtOnceAndFadesWhenItEnds)
{
    touch.down(middle);
    EXPECT_EQ(button->progressView()->alpha(), pale);
    EXPECT_EQ(alphaIn(0), pale);
    touch.up();
    EXPECT_EQ(button->imageView()->alpha(), 1);
    EXPECT_NEAR(alphaIn(0), pale, 1e-9);
    EXPECT_NEAR(alphaIn(fade / 4), pale + (1 - pale) * easeInOut(0.25), 1e-9);
    EXPECT_NEAR(alphaIn(fade / 2), pale + (1 - pale) * easeInOut(0.5), 1e-9);
    EXPECT_LT(alphaIn(fade - 0.001), 1);
    EXPECT_EQ(alphaIn(fade), 1);
}

TEST_F(ORVPlaybackButtonMotionTest, AFingerThatLeavesAndComesBackFadesItBothWays)
{
    touch.down(middle);
    touch.moveTo(outside);
    EXPECT_FALSE(button->isHighlighted());
    EXPECT_NEAR(alphaIn(0), pale, 1e-9);
    EXPECT_EQ(alphaIn(fade), 1);
    scheduler.advance(1);
    touch.moveTo(middle);
    EXPECT_NEAR(alphaIn(0), 1, 1e-9);
    EXPECT_NEAR(alphaIn(fade / 2), 1 - (1 - pale) * easeInOut(0.5), 1e-9);
    EXPECT_EQ(alphaIn(fade), pale);
}

TEST_F(ORVPlaybackButtonMotionTest, ATouchThatIsTakenAwayEndsAtOnceUnlessTheFingerHasMoved)
{
    touch.down(middle);
    touch.cancel();
    EXPECT_EQ(alphaIn(0), 1);
    touch.down(middle);
    touch.moveTo(middle + CGPoint(1, 0));
    touch.cancel();
    EXPECT_NEAR(alphaIn(0), pale, 1e-9);
    EXPECT_EQ(alphaIn(fade), 1);
}

TEST_F(ORVPlaybackButtonMotionTest, TheFadeLetsTouchesThrough)
{
    const auto target = make<ControlTarget>();
    target->listenTo(*button);
    touch.tap(middle);
    scheduler.advance(fade / 2);
    touch.tap(middle);
    EXPECT_EQ(target->lines, (Lines { "down", "up inside", "down", "up inside" }));
}

TEST_F(ORVPlaybackButtonMotionTest, CodeHighlightsItAtOnce)
{
    button->setHighlighted(true);
    EXPECT_EQ(alphaIn(0), pale);
    button->setHighlighted(false);
    EXPECT_EQ(alphaIn(0), 1);
    EXPECT_FALSE(button->imageView()->layer()->hasAnimations());
}

TEST_F(ORVPlaybackButtonMotionTest, ATapDoesNotMakeTheNextHighlightByCodeFade)
{
    touch.tap(middle);
    scheduler.advance(1);
    button->setHighlighted(true);
    EXPECT_EQ(alphaIn(0), pale);
}

TEST_F(ORVPlaybackButtonMotionTest, ADisabledButtonIsPaleAtOnceAndStaysSoWithoutAFinger)
{
    button->setEnabled(false);
    EXPECT_EQ(alphaIn(0), pale);
    button->setHighlighted(true);
    button->setHighlighted(false);
    EXPECT_EQ(alphaIn(0), pale);
    touch.tap(middle);
    EXPECT_EQ(alphaIn(0), pale);
    button->setEnabled(true);
    EXPECT_EQ(alphaIn(0), 1);
}

TEST_F(ORVPlaybackButtonMotionTest, ASelectedButtonIsNotPale)
{
    button->setSelected(true);
    EXPECT_EQ(alphaIn(0), 1);
}

TEST_F(ORVPlaybackButtonMotionTest, ATapTellsTheTargetAndLeavesTheLookToIt)
{
    const auto target = make<ControlTarget>();
    target->listenTo(*button);
    touch.tap(middle);
    EXPECT_EQ(target->lines, (Lines { "down", "up inside" }));
    EXPECT_FALSE(button->isPlaying());
    EXPECT_TRUE(showsPlay());
    target->onEvent = [this] { button->setPlaying(!button->isPlaying()); };
    target->lines = {};
    touch.down(middle);
    EXPECT_TRUE(button->isPlaying());
}

TEST_F(ORVPlaybackButtonMotionTest, AButtonMayBeDroppedFromInsideItsOwnAction)
{
    const std::weak_ptr<ORVPlaybackButton> weak = button;
    const auto target = make<ControlTarget>();
    button->addTarget(target->pressedAction(), UIControlEvents::TouchUpInside);
    target->onEvent = [this] {
        button->setPlaying(true);
        button->removeFromSuperview();
        button = nullptr;
    };
    touch.tap(middle);
    EXPECT_EQ(target->lines, Lines { "pressed" });
    EXPECT_TRUE(weak.expired());
    scheduler.advance(1);
}

TEST_F(ORVPlaybackButtonMotionTest, AButtonMayBeDroppedByWhoHearsThatItsTouchIsTakenAway)
{
    const std::weak_ptr<ORVPlaybackButton> weak = button;
    const auto target = make<ControlTarget>();
    button->addTarget(target->pressedAction(), UIControlEvents::TouchCancel);
    target->onEvent = [this] {
        button->removeFromSuperview();
        button = nullptr;
    };
    touch.down(middle);
    weak.lock()->setEnabled(false);
    EXPECT_TRUE(weak.expired());
}

TEST_F(ORVPlaybackButtonMotionTest, AButtonThatIsTakenAwayUnderAFingerIsNotPressedAndComesBackWhole)
{
    const auto target = make<ControlTarget>();
    target->listenTo(*button);
    touch.down(middle);
    button->removeFromSuperview();
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
    EXPECT_FALSE(button->isHighlighted());
    window->addSubview(button);
    runFrames();
    EXPECT_EQ(alphaIn(0), 1);
    EXPECT_TRUE(showsPlay());
}

TEST_F(ORVPlaybackButtonMotionTest, AButtonThatIsTakenAwayWhileItFadesComesBackWhole)
{
    touch.tap(middle);
    scheduler.advance(0.1);
    button->removeFromSuperview();
    window->addSubview(button);
    runFrames();
    EXPECT_EQ(alphaIn(0), 1);
}

TEST_F(ORVPlaybackButtonMotionTest, OnceNothingMovesNoFrameIsAskedFor)
{
    touch.tap(middle);
    button->setPlaying(true);
    scheduler.advance(1);
    const int frames = scheduler.framesRun();
    scheduler.advance(10);
    EXPECT_EQ(scheduler.framesRun(), frames);
}

} // namespace
