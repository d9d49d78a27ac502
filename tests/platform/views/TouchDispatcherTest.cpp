#include "platform/views/TouchDispatcher.h"

#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

#include <limits>

namespace {

// Lets the content wait, as a scrolling view does, and takes the wheel.
class DelayingView : public UIView {
public:
    using UIView::UIView;
    double delayForContentTouches() const override { return 0.15; }
    bool scrollWheel(const UIScrollEvent& event) override
    {
        events.push_back(event);
        return takesWheel;
    }
    std::vector<UIScrollEvent> events;
    bool takesWheel = true;
};

class TouchDispatcherTest : public SceneFixture {
protected:
    std::shared_ptr<LoggingView> view = addView<LoggingView>({ 100, 100, 100, 100 });
};

TEST_F(TouchDispatcherTest, ATouchGoesToTheDeepestViewAndStaysWithIt)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 300, 20 });
    touch.up();
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "moved 200 -80", "ended 200 -80" }));
    EXPECT_FALSE(window->touches().hasTouches());
}

TEST_F(TouchDispatcherTest, TheTopmostOfOverlappingViewsIsHit)
{
    const auto above = addView<LoggingView>({ 150, 150, 100, 100 });
    touch.tap({ 160, 160 });
    EXPECT_EQ(above->lines.size(), 2u);
    EXPECT_TRUE(view->lines.empty());
}

TEST_F(TouchDispatcherTest, WhatCannotBeTouchedIsPassedBy)
{
    const auto hits = [&] { return window->hitTest({ 150, 150 }) == view.get(); };
    EXPECT_TRUE(hits());
    view->setHidden(true);
    EXPECT_FALSE(hits());
    view->setHidden(false);
    view->setAlpha(0.009);
    EXPECT_FALSE(hits());
    view->setAlpha(0.01);
    EXPECT_TRUE(hits());
    view->setUserInteractionEnabled(false);
    EXPECT_FALSE(hits());
}

TEST_F(TouchDispatcherTest, TheEdgeBetweenTwoViewsBelongsToTheSecond)
{
    const auto right = addView({ 200, 100, 100, 100 });
    window->bringSubviewToFront(*view);
    EXPECT_EQ(window->hitTest({ 200, 150 }), right.get());
    EXPECT_EQ(window->hitTest({ 100, 100 }), view.get());
}

TEST_F(TouchDispatcherTest, AFarEdgeWithoutANeighbourBelongsToTheView)
{
    EXPECT_EQ(window->hitTest({ 200, 150 }), view.get());
    EXPECT_EQ(window->hitTest({ 150, 200 }), view.get());
    EXPECT_EQ(window->hitTest({ 200, 200 }), view.get());
    EXPECT_EQ(window->hitTest({ 200.01, 150 }), window.get());
    EXPECT_EQ(window->hitTest({ 200, 201 }), window.get()) << "in line with the edge, beyond the corner";
    const auto deep = make<LoggingView>(CGRect(0, 0, 390, 50));
    const auto row = addView({ 0, 300, 390, 50 });
    row->addSubview(deep);
    touch.down({ 390, 325 });
    touch.up();
    EXPECT_EQ(deep->lines, (Lines { "began 390 25", "ended 390 25" })) << "the touch is where the finger is";
    const auto below = addView({ 0, 350, 390, 50 });
    window->bringSubviewToFront(*row);
    EXPECT_EQ(window->hitTest({ 100, 350 }), below.get());
    touch.down({ 391, 325 });
    EXPECT_FALSE(window->touches().hasTouches()) << "beyond the window there is nothing";
}

TEST_F(TouchDispatcherTest, PartsOutsideOfTheSuperviewAreNotHit)
{
    const auto outside = make<LoggingView>(CGRect(80, 80, 100, 100));
    view->addSubview(outside);
    EXPECT_EQ(window->hitTest({ 190, 190 }), outside.get());
    EXPECT_EQ(window->hitTest({ 230, 230 }), window.get());
}

TEST_F(TouchDispatcherTest, ATouchKnowsWhereItIsAndWasAndWhen)
{
    class Watching : public UIView {
    public:
        using UIView::UIView;
        void touchesMoved(const UITouches& touches, UIEvent& event) override
        {
            seen = touches.front();
            at = seen->locationInView(this);
            before = seen->previousLocationInView(this);
            time = event.timestamp();
            fingers = event.allTouches().size();
        }
        std::shared_ptr<UITouch> seen;
        CGPoint at;
        CGPoint before;
        double time = 0;
        std::size_t fingers = 0;
    };
    const auto watching = addView<Watching>({ 10, 10, 50, 50 });
    touch.wait(1);
    touch.down({ 20, 20 });
    touch.wait(0.5);
    touch.moveTo({ 30, 25 });
    EXPECT_EQ(watching->at, CGPoint(20, 15));
    EXPECT_EQ(watching->before, CGPoint(10, 10));
    EXPECT_EQ(watching->time, scheduler.now());
    EXPECT_EQ(watching->seen->timestamp(), scheduler.now());
    EXPECT_EQ(watching->seen->locationInView(nullptr), CGPoint(30, 25));
    EXPECT_EQ(watching->seen->phase(), UITouchPhase::Moved);
    EXPECT_EQ(watching->seen->view(), watching);
    EXPECT_EQ(watching->fingers, 1u);
}

TEST_F(TouchDispatcherTest, UnknownFingersChangeNothing)
{
    touch.moveTo({ 150, 150 }, 5);
    touch.up(5);
    touch.cancel(5);
    EXPECT_TRUE(view->lines.empty());
}

TEST_F(TouchDispatcherTest, PlacesThatAreNotFiniteAreNotTouched)
{
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    touch.down({ notANumber, 150 });
    EXPECT_FALSE(window->touches().hasTouches());
    touch.down({ 150, 150 });
    touch.moveTo({ 150, infinity });
    touch.moveTo({ notANumber, notANumber });
    touch.up(); // where it was last known
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50" }));
    EXPECT_FALSE(window->touches().hasTouches());
}

TEST_F(TouchDispatcherTest, AFingerMayMoveVeryFar)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 1e9, -1e9 });
    touch.up();
    EXPECT_EQ(view->lines.size(), 3u);
}

TEST_F(TouchDispatcherTest, AMoveToTheSamePlaceIsNone)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 150, 150 });
    EXPECT_EQ(view->lines.size(), 1u);
}

TEST_F(TouchDispatcherTest, AFingerThatTouchesTwiceWithoutLeavingIsCancelledFirst)
{
    touch.down({ 150, 150 });
    touch.down({ 160, 160 });
    touch.up();
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "cancelled 50 50", "began 60 60", "ended 60 60" }));
}

TEST_F(TouchDispatcherTest, AFingerThatIsPutDownAgainInsideItsCancellationIsThereOnce)
{
    touch.down({ 150, 150 });
    view->onCancel = [this] {
        view->onCancel = nullptr;
        touch.down({ 170, 170 });
    };
    touch.down({ 160, 160 });
    touch.up();
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "cancelled 50 50", "began 70 70", "ended 70 70" }));
    EXPECT_FALSE(window->touches().hasTouches());
}

TEST_F(TouchDispatcherTest, AViewHearsOfOneFingerAtATimeUnlessItWantsMore)
{
    touch.down({ 150, 150 }, 1);
    touch.down({ 160, 160 }, 2);
    EXPECT_EQ(view->lines.size(), 1u);
    touch.up(2);
    touch.up(1);
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50" }));
    view->lines.clear();
    view->setMultipleTouchEnabled(true);
    touch.down({ 150, 150 }, 1);
    touch.down({ 160, 160 }, 2);
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "began 60 60" }));
}

TEST_F(TouchDispatcherTest, CancellingAllTouchesTellsTheViews)
{
    const auto other = addView<LoggingView>({ 0, 0, 50, 50 });
    touch.down({ 150, 150 }, 1);
    touch.down({ 10, 10 }, 2);
    window->touches().cancelAllTouches();
    EXPECT_EQ(view->lines.back(), "cancelled 50 50");
    EXPECT_EQ(other->lines.back(), "cancelled 10 10");
    EXPECT_FALSE(window->touches().hasTouches());
}

// --- Views that go ---------------------------------------------------------------------------------------

TEST_F(TouchDispatcherTest, ATouchIsCancelledWhenItsViewLeavesTheWindow)
{
    touch.down({ 150, 150 });
    view->removeFromSuperview();
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "cancelled 50 50" }));
    touch.moveTo({ 160, 160 });
    touch.up();
    EXPECT_EQ(view->lines.size(), 2u);
}

TEST_F(TouchDispatcherTest, ATouchIsCancelledWhenAViewAroundItsViewLeavesTheWindow)
{
    const auto inner = make<LoggingView>(CGRect(0, 0, 50, 50));
    view->addSubview(inner);
    touch.down({ 110, 110 });
    view->removeFromSuperview();
    EXPECT_EQ(inner->lines, (Lines { "began 10 10", "cancelled 10 10" }));
}

TEST_F(TouchDispatcherTest, ATouchGoesOnWhenItsViewMovesWithinTheWindow)
{
    touch.down({ 150, 150 });
    const auto other = addView({ 0, 0, 390, 844 });
    other->addSubview(view);
    touch.up();
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "ended 50 50" }));
}

TEST_F(TouchDispatcherTest, ATouchOfAViewThatIsHiddenIsCancelledInThatMoment)
{
    touch.down({ 150, 150 });
    view->setHidden(true);
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "cancelled 50 50" }));
    touch.moveTo({ 160, 150 });
    view->setHidden(false);
    touch.moveTo({ 170, 150 });
    touch.up();
    EXPECT_EQ(view->lines.size(), 2u);
}

TEST_F(TouchDispatcherTest, ATouchOfAViewInsideAHiddenOneEndsAsCancelled)
{
    const auto inner = make<LoggingView>(CGRect(0, 0, 50, 50));
    view->addSubview(inner);
    touch.down({ 110, 110 });
    view->setHidden(true);
    touch.up();
    EXPECT_EQ(inner->lines, (Lines { "began 10 10", "cancelled 10 10" }));
}

TEST_F(TouchDispatcherTest, AViewMayBeDroppedFromInsideItsTouch)
{
    std::weak_ptr<LoggingView> watched = view;
    view->onEnd = [&] {
        view->removeFromSuperview();
        view = nullptr;
    };
    touch.tap({ 150, 150 });
    EXPECT_TRUE(watched.expired());
}

TEST_F(TouchDispatcherTest, TheWindowMayBeDroppedFromInsideATouch)
{
    view->onEnd = [&] { window = nullptr; };
    touch.down({ 150, 150 });
    const auto held = window;
    touch.up();
    EXPECT_EQ(window, nullptr);
    EXPECT_FALSE(held->touches().hasTouches());
}

TEST_F(TouchDispatcherTest, EverythingMayBeCancelledFromInsideACancellation)
{
    view->onCancel = [&] { window->touches().cancelAllTouches(); };
    touch.down({ 150, 150 });
    touch.cancel();
    EXPECT_EQ(view->lines, (Lines { "began 50 50", "cancelled 50 50" }));
}

// --- Touches that wait -----------------------------------------------------------------------------------

class DelayedTouchTest : public SceneFixture {
protected:
    std::shared_ptr<DelayingView> outer = addView<DelayingView>({ 100, 100, 200, 200 });
    std::shared_ptr<LoggingView> view = make<LoggingView>(CGRect(0, 0, 100, 100));
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    void SetUp() override { outer->addSubview(view); }
    std::shared_ptr<UIPanGestureRecognizer> addPan()
    {
        const auto pan = make<UIPanGestureRecognizer>(target->action());
        outer->addGestureRecognizer(pan);
        return pan;
    }
};

TEST_F(DelayedTouchTest, ContentHearsOfATouchAfterTheDelay)
{
    touch.down({ 110, 110 });
    touch.wait(0.149);
    EXPECT_TRUE(view->lines.empty());
    touch.wait(0.002);
    EXPECT_EQ(view->lines, (Lines { "began 10 10" }));
    touch.up();
    EXPECT_EQ(view->lines.back(), "ended 10 10");
}

TEST_F(DelayedTouchTest, AQuickTouchIsToldWholeWhenItEnds)
{
    touch.down({ 110, 110 });
    touch.wait(0.05);
    touch.up();
    EXPECT_EQ(view->lines, (Lines { "began 10 10", "ended 10 10" }));
    touch.wait(1);
    EXPECT_EQ(view->lines.size(), 2u);
}

TEST_F(DelayedTouchTest, ATouchThatStartsScrollingIsNeverTold)
{
    addPan();
    touch.down({ 110, 110 });
    touch.moveTo({ 110, 140 });
    touch.wait(1);
    touch.up();
    EXPECT_TRUE(view->lines.empty());
    EXPECT_EQ(target->states, (std::vector<int> { 1, 3 }));
}

TEST_F(DelayedTouchTest, ATouchThatScrollsAfterTheDelayIsCancelled)
{
    addPan();
    touch.down({ 110, 110 });
    touch.wait(0.2);
    touch.moveTo({ 110, 140 });
    touch.up();
    EXPECT_EQ(view->lines, (Lines { "began 10 10", "cancelled 10 40" }));
}

TEST_F(DelayedTouchTest, ATouchThatWaitedForAHiddenViewIsNeverTold)
{
    touch.down({ 110, 110 });
    view->setHidden(true);
    touch.up();
    touch.wait(1);
    EXPECT_TRUE(view->lines.empty());
}

TEST_F(DelayedTouchTest, ACancelledTouchThatWaitedIsNeverTold)
{
    touch.down({ 110, 110 });
    touch.cancel();
    touch.wait(1);
    EXPECT_TRUE(view->lines.empty());
}

TEST_F(DelayedTouchTest, TheViewThatDelaysHearsItsOwnTouchesAtOnce)
{
    class Own : public LoggingView {
    public:
        using LoggingView::LoggingView;
        double delayForContentTouches() const override { return 0.15; }
    };
    const auto own = addView<Own>({ 0, 400, 50, 50 });
    touch.down({ 10, 410 });
    EXPECT_EQ(own->lines, (Lines { "began 10 10" }));
}

TEST_F(DelayedTouchTest, ARecogniserMayMakeTheViewWaitUntilItFails)
{
    const auto plain = addView<LoggingView>({ 0, 400, 100, 100 });
    const auto pan = make<UIPanGestureRecognizer>(target->action());
    pan->setDelaysTouchesBegan(true);
    plain->addGestureRecognizer(pan);
    touch.down({ 10, 410 });
    touch.wait(1);
    EXPECT_TRUE(plain->lines.empty());
    pan->setEnabled(false);
    EXPECT_EQ(plain->lines, (Lines { "began 10 10" }));
}

TEST_F(DelayedTouchTest, TheWindowMayGoWhileATouchWaits)
{
    touch.down({ 110, 110 });
    window = nullptr;
    scheduler.advance(1);
    EXPECT_TRUE(view->lines.empty());
}

// --- The wheel -------------------------------------------------------------------------------------------

TEST_F(DelayedTouchTest, TurnsOfTheWheelThatAreNotFiniteAreNotOffered)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(touch.wheel({ 110, 110 }, { 0, infinity }));
    EXPECT_FALSE(touch.wheel({ -infinity, 110 }, { 0, 1 }));
    EXPECT_TRUE(outer->events.empty());
}

TEST_F(DelayedTouchTest, TheWheelGoesToTheDeepestViewThatTakesIt)
{
    const auto inner = make<DelayingView>(CGRect(0, 0, 50, 50));
    view->addSubview(inner);
    EXPECT_TRUE(touch.wheel({ 110, 110 }, { 0, -30 }));
    ASSERT_EQ(inner->events.size(), 1u);
    EXPECT_EQ(inner->events[0].delta, CGPoint(0, -30));
    EXPECT_EQ(inner->events[0].timestamp, scheduler.now());
    EXPECT_TRUE(outer->events.empty());
    inner->takesWheel = false;
    EXPECT_TRUE(touch.wheel({ 110, 110 }, { 0, -30 }));
    EXPECT_EQ(outer->events.size(), 1u);
    EXPECT_FALSE(touch.wheel({ 10, 10 }, { 0, -30 }));
}

} // namespace
