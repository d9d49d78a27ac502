#include "platform/controls/UIControl.h"

#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITouch.h"
#include "tests/platform/controls/ControlLog.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

using enum UIControlEvents;

class TestControl : public UIControl {
public:
    using UIControl::UIControl;
    bool beginTrackingWithTouch(UITouch&, UIEvent&) override
    {
        tell("begin");
        return begins;
    }
    bool continueTrackingWithTouch(UITouch&, UIEvent&) override
    {
        tell("continue");
        return continues;
    }
    void endTrackingWithTouch(UITouch&, UIEvent&) override { tell("end"); }
    void cancelTracking() override { tell("cancel"); }
    void setHighlighted(bool highlighted) override
    {
        UIControl::setHighlighted(highlighted);
        tell(std::string(highlighted ? "on" : "off") + (isTracking() ? " tracking" : ""));
    }
    Lines lines;
    bool begins = true;
    bool continues = true;
    std::string meddleAt; // the line at which to meddle
    std::function<void()> meddle;

private:
    void tell(const std::string& line)
    {
        lines.push_back(line);
        if (meddle && line == meddleAt)
            std::exchange(meddle, nullptr)();
    }
};

class UIControlTest : public SceneFixture {
protected:
    void SetUp() override { target->listenTo(*control); }

    std::shared_ptr<TestControl> control = addView<TestControl>({ 100, 100, 100, 50 });
    std::shared_ptr<ControlTarget> target = make<ControlTarget>();
};

TEST_F(UIControlTest, APressIsHighlightedTrackedAndTold)
{
    touch.down({ 150, 120 });
    EXPECT_TRUE(control->isTracking());
    EXPECT_TRUE(control->isHighlighted());
    touch.up();
    EXPECT_FALSE(control->isTracking());
    EXPECT_FALSE(control->isHighlighted());
    EXPECT_EQ(target->lines, (Lines { "down", "up inside" }));
    EXPECT_EQ(control->lines, (Lines { "begin", "on tracking", "end", "off" }));
}

TEST_F(UIControlTest, AFingerThatLeavesAndReturnsSwitchesTheHighlight)
{
    touch.down({ 150, 120 });
    touch.moveTo({ 160, 120 });
    touch.moveTo({ 160, 230 });
    EXPECT_FALSE(control->isHighlighted());
    EXPECT_TRUE(control->isTracking());
    EXPECT_FALSE(control->isTouchInside());
    touch.moveTo({ 160, 120 });
    EXPECT_TRUE(control->isHighlighted());
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "exit", "enter", "up inside" }));
    EXPECT_EQ(control->lines,
        (Lines { "begin", "on tracking", "continue", "continue", "off tracking", "continue", "on tracking",
            "end", "off" }));
}

TEST_F(UIControlTest, AFingerMayStraySeventyPointsAroundTheControl)
{
    touch.down({ 150, 120 });
    touch.moveTo({ 150, 219 }); // the bottom edge lies at 150
    EXPECT_TRUE(control->isTouchInside());
    touch.moveTo({ 150, 221 });
    EXPECT_FALSE(control->isTouchInside());
    touch.moveTo({ 31, 31 });
    EXPECT_TRUE(control->isTouchInside());
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "exit", "enter", "up inside" }));
}

TEST_F(UIControlTest, ATouchThatBeginsBesideTheControlIsNotIts)
{
    touch.tap({ 150, 160 });
    EXPECT_TRUE(control->lines.empty());
}

TEST_F(UIControlTest, FollowsOneFingerEvenWhereItsViewHearsOfMore)
{
    control->setMultipleTouchEnabled(true);
    touch.down({ 150, 120 }, 1);
    touch.down({ 160, 120 }, 2);
    touch.moveTo({ 160, 400 }, 2);
    EXPECT_TRUE(control->isTouchInside());
    touch.up(2);
    EXPECT_TRUE(control->isTracking());
    touch.up(1);
    EXPECT_EQ(target->lines, (Lines { "down", "up inside" }));
}

TEST_F(UIControlTest, AFingerThatLeavesTheScreenOutsideDoesNotPress)
{
    touch.down({ 150, 120 });
    touch.moveTo({ 160, 230 });
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "exit", "up outside" }));
}

TEST_F(UIControlTest, ACancelledTouchIsTold)
{
    touch.down({ 150, 120 });
    touch.cancel();
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
    EXPECT_EQ(control->lines, (Lines { "begin", "on tracking", "cancel", "off" }));
}

TEST_F(UIControlTest, TellsOfEveryMove)
{
    const auto moves = make<ControlTarget>();
    control->addTarget(moves->pressedAction(), TouchDragInside | TouchDragOutside);
    touch.down({ 150, 120 });
    touch.moveTo({ 160, 120 });
    touch.moveTo({ 160, 230 });
    EXPECT_EQ(moves->lines.size(), 2u);
}

TEST_F(UIControlTest, ASubclassMayRefuseOrStopTracking)
{
    control->begins = false;
    touch.tap({ 150, 120 });
    EXPECT_EQ(control->lines, (Lines { "begin" }));
    control->begins = true;
    control->continues = false;
    control->lines.clear();
    touch.down({ 150, 120 });
    touch.moveTo({ 151, 120 });
    touch.up();
    EXPECT_EQ(control->lines, (Lines { "begin", "on tracking", "continue", "off" }));
    EXPECT_EQ(target->lines, (Lines { "down" }));
}

TEST_F(UIControlTest, ADisabledControlIsNotPressedAndKeepsTheTouchFromOthers)
{
    const auto outer = addView<TestControl>({ 0, 300, 200, 200 });
    outer->addSubview(control);
    control->setFrame({ 0, 0, 50, 50 });
    control->setEnabled(false);
    touch.tap({ 20, 320 });
    EXPECT_TRUE(target->lines.empty());
    EXPECT_TRUE(outer->lines.empty());
}

TEST_F(UIControlTest, DisablingLetsGoOfTheFinger)
{
    touch.down({ 150, 120 });
    control->setEnabled(false);
    EXPECT_FALSE(control->isTracking());
    EXPECT_FALSE(control->isHighlighted());
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
}

// --- Controls that go in the middle ----------------------------------------------------------------------

TEST_F(UIControlTest, HidingLetsGoOfTheFingerWithItsNextMove)
{
    touch.down({ 150, 120 });
    control->setHidden(true);
    touch.moveTo({ 151, 120 });
    EXPECT_FALSE(control->isTracking());
    EXPECT_FALSE(control->isHighlighted());
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
}

TEST_F(UIControlTest, AHiddenControlIsNotPressedByTheFingerThatLeaves)
{
    touch.down({ 150, 120 });
    control->setHidden(true);
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
}

TEST_F(UIControlTest, RemovingLetsGoOfTheFinger)
{
    touch.down({ 150, 120 });
    control->removeFromSuperview();
    EXPECT_FALSE(control->isTracking());
    EXPECT_FALSE(control->isHighlighted());
    touch.up();
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
}

TEST_F(UIControlTest, AControlThatGoesInATrackingCallHearsNothingThatWouldHaveFollowed)
{
    const struct {
        const char* at;
        Lines control;
        Lines target;
    } rows[] = {
        { "begin", { "begin", "cancel", "off" }, { "cancel" } },
        { "on tracking", { "begin", "on tracking", "cancel", "off" }, { "cancel" } },
        { "continue", { "begin", "on tracking", "continue", "cancel", "off" }, { "down", "cancel" } },
        { "off tracking", { "begin", "on tracking", "continue", "off tracking", "cancel", "off" },
            { "down", "cancel" } },
    };
    const std::function<void()> ways[] = {
        [this] { control->removeFromSuperview(); },
        [this] { control->setEnabled(false); },
        [this] {
            control->removeFromSuperview();
            control = nullptr;
        },
    };
    for (const auto& row : rows)
        for (const auto& way : ways) {
            control = addView<TestControl>({ 100, 100, 100, 50 });
            const auto held = control;
            target->lines.clear();
            target->listenTo(*control);
            control->meddleAt = row.at;
            control->meddle = way;
            touch.down({ 150, 120 });
            touch.moveTo({ 150, 300 });
            touch.up();
            EXPECT_EQ(held->lines, row.control) << row.at;
            EXPECT_EQ(target->lines, row.target) << row.at;
            EXPECT_FALSE(held->isTracking());
            EXPECT_FALSE(held->isHighlighted());
            held->removeFromSuperview();
        }
}

TEST_F(UIControlTest, AControlThatIsRemovedAsItsTrackingEndsIsPressedAllTheSame)
{
    control->meddleAt = "end";
    control->meddle = [this] { control->removeFromSuperview(); };
    touch.tap({ 150, 120 });
    EXPECT_EQ(target->lines, (Lines { "down", "up inside" }));
}

TEST_F(UIControlTest, AControlThatIsDisabledAsItsTrackingEndsIsNotPressed)
{
    control->meddleAt = "end";
    control->meddle = [this] { control->setEnabled(false); };
    touch.tap({ 150, 120 });
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
}

TEST_F(UIControlTest, AControlMayBeDisabledOrHiddenInItsOwnAction)
{
    const auto second = make<ControlTarget>();
    second->listenTo(*control);
    target->onEvent = [this] {
        control->setEnabled(false);
        control->setHidden(true);
    };
    touch.tap({ 150, 120 });
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" }));
    EXPECT_EQ(second->lines, (Lines { "cancel", "down" })); // the one inside the other
    EXPECT_FALSE(control->isHighlighted());
}

TEST_F(UIControlTest, TheStateIsWhatHoldsTogether)
{
    EXPECT_EQ(control->state(), UIControlState::Normal);
    control->setHighlighted(true);
    control->setSelected(true);
    EXPECT_EQ(static_cast<unsigned>(control->state()), 1u | 4u);
    control->setHighlighted(false);
    control->setEnabled(false);
    EXPECT_EQ(static_cast<unsigned>(control->state()), 2u | 4u);
    EXPECT_EQ(static_cast<unsigned>(UIControlState::Application), 0xFF0000u);
    EXPECT_EQ(static_cast<unsigned>(TouchUpInside), 64u);
}

// --- Targets ---------------------------------------------------------------------------------------------

TEST_F(UIControlTest, TheSenderIsTheControl)
{
    control->addTarget(target->pressedAction(), TouchUpInside);
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_EQ(target->sender, control.get());
}

TEST_F(UIControlTest, ATargetAddedTwiceIsToldOnce)
{
    const auto other = make<ControlTarget>();
    control->addTarget(other->pressedAction(), ValueChanged);
    control->addTarget(other->pressedAction(), ValueChanged | TouchUpInside);
    control->sendActionsForControlEvents(ValueChanged);
    EXPECT_EQ(other->lines.size(), 1u);
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_EQ(other->lines.size(), 2u);
}

TEST_F(UIControlTest, ATargetIsRemovedForTheGivenEventsOnly)
{
    const auto other = make<ControlTarget>();
    control->addTarget(other->pressedAction(), ValueChanged | TouchUpInside);
    control->removeTarget(other->pressedAction(), ValueChanged);
    control->sendActionsForControlEvents(ValueChanged);
    EXPECT_TRUE(other->lines.empty());
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_EQ(other->lines.size(), 1u);
}

TEST_F(UIControlTest, TargetsRemovedWhileOthersAreToldHearNothing)
{
    const auto other = make<ControlTarget>();
    target->onEvent = [&] { control->removeTarget(other->pressedAction(), TouchUpInside); };
    control->addTarget(other->pressedAction(), TouchUpInside);
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_TRUE(other->lines.empty());
}

TEST_F(UIControlTest, TargetsAddedWhileOthersAreToldHearTheNextEvent)
{
    const auto other = make<ControlTarget>();
    target->onEvent = [&] { control->addTarget(other->pressedAction(), TouchUpInside); };
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_TRUE(other->lines.empty());
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_EQ(other->lines.size(), 1u);
}

TEST_F(UIControlTest, ATargetThatLeavesAndComesBackWhileOthersAreToldHearsTheNextEvent)
{
    const auto second = make<ControlTarget>();
    control->addTarget(target->pressedAction(), TouchUpInside);
    control->addTarget(second->pressedAction(), TouchUpInside);
    target->onEvent = [&] {
        control->removeTarget(second->pressedAction(), TouchUpInside);
        control->addTarget(second->pressedAction(), TouchUpInside);
    };
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_EQ(second->lines, Lines {});
    target->onEvent = nullptr;
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_EQ(second->lines, Lines { "pressed" });
}

TEST_F(UIControlTest, AnEventAddedWhileItIsToldCountsFromTheNextOne)
{
    const auto other = make<ControlTarget>();
    control->addTarget(other->pressedAction(), ValueChanged);
    target->onEvent = [&] { control->addTarget(other->pressedAction(), TouchUpInside); };
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_TRUE(other->lines.empty());
    control->sendActionsForControlEvents(TouchUpInside);
    EXPECT_EQ(other->lines.size(), 1u);
}

TEST_F(UIControlTest, TargetsThatAreGoneAreNotTold)
{
    target = nullptr;
    touch.tap({ 150, 120 });
    EXPECT_FALSE(control->isTracking());
}

TEST_F(UIControlTest, DisablingItCancelsTheGesturesOnIt)
{
    const auto gestures = make<GestureTarget>();
    const auto pan = make<UIPanGestureRecognizer>(gestures->action());
    control->addGestureRecognizer(pan);
    touch.down({ 110, 110 });
    touch.moveTo({ 140, 110 });
    UIView::animate(1, [&] { control->setEnabled(false); });
    EXPECT_EQ(gestures->states, (std::vector<int> { 1, 4 }));
    touch.up();
    touch.drag({ 110, 110 }, { 190, 110 }, 0.1);
    EXPECT_EQ(gestures->states.size(), 2u) << "on a disabled control none begins";
    EXPECT_EQ(window->hitTest({ 110, 110 }), control.get()) << "yet nothing goes through it";
}

TEST_F(UIControlTest, TheControlMayBeDroppedFromInsideItsAction)
{
    const std::weak_ptr<TestControl> watched = control;
    target->onEvent = [&] {
        if (control)
            control->removeFromSuperview();
        control = nullptr;
    };
    touch.tap({ 150, 120 });
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(target->lines, (Lines { "down", "cancel" })); // dropped at the first of its actions
}

} // namespace
