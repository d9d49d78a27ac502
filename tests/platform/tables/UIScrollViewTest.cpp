#include "platform/tables/UIScrollView.h"

#include "platform/layers/CAMotionGroup.h"
#include "tests/support/AssertionRecorder.h"
#include "tests/support/SceneFixture.h"

#include <cmath>

namespace {

using Lines = std::vector<std::string>;

class ScrollLog final : public NSObject, public UIScrollViewDelegate {
public:
    void scrollViewDidScroll(UIScrollView&) override { ++scrolls; }
    void scrollViewWillBeginDragging(UIScrollView&) override { lines.push_back("begin"); }
    void scrollViewDidEndDragging(UIScrollView&, bool decelerates) override
    {
        lines.push_back(decelerates ? "end, decelerates" : "end");
    }
    void scrollViewDidEndDecelerating(UIScrollView&) override { lines.push_back("rest"); }
    void scrollViewDidEndScrollingAnimation(UIScrollView&) override { lines.push_back("arrived"); }

    int scrolls = 0;
    Lines lines;
};

class OffsetWatcher final : public UIScrollView {
public:
    using UIScrollView::UIScrollView;
    std::function<void()> onScroll = [] {};

protected:
    void contentOffsetDidChange() override { onScroll(); }
};

class UIScrollViewTest : public SceneFixture {
protected:
    UIScrollViewTest()
    {
        UIScreen::mainScreen()->setGeometry({ screenGeometry.size, screenGeometry.scale, {} });
        view->setContentSize({ 320, 2000 });
        view->setDelegate(log);
        window->addSubview(view);
        runFrames();
        log->scrolls = 0;
    }

    double offset() const { return view->contentOffset().y(); }

    std::shared_ptr<OffsetWatcher> view = make<OffsetWatcher>(CGRect(0, 0, 320, 480));
    std::shared_ptr<ScrollLog> log = make<ScrollLog>();
};

TEST_F(UIScrollViewTest, OneThatLeavesDuringADragComesToRestAtOnce)
{
    touch.down({ 100, 100 });
    touch.moveTo({ 100, 120 });
    touch.moveTo({ 100, 250 });
    ASSERT_LT(offset(), 0) << "pulled beyond the top";
    view->removeFromSuperview();
    EXPECT_EQ(log->lines, (Lines { "begin", "end" }));
    EXPECT_FALSE(view->isDragging());
    EXPECT_FALSE(view->isDecelerating());
    EXPECT_EQ(offset(), 0);
}

TEST_F(UIScrollViewTest, FollowsTheFingerExactlyOnceItDrags)
{
    touch.down({ 100, 400 });
    touch.moveTo({ 100, 390 });
    touch.moveTo({ 100, 350 });
    EXPECT_EQ(offset(), 40);
    touch.moveTo({ 100, 250.25 });
    EXPECT_EQ(offset(), 140); // to the device pixel, of which there are two in a point
    touch.moveTo({ 100, 380 });
    EXPECT_EQ(offset(), 10);
}

TEST_F(UIScrollViewTest, DoesNotMoveForATap)
{
    touch.down({ 100, 400 });
    touch.moveTo({ 103, 395 });
    touch.up();
    EXPECT_EQ(offset(), 0);
    EXPECT_EQ(log->scrolls, 0);
}

TEST_F(UIScrollViewTest, ResistsPastItsTopAndSpringsBack)
{
    touch.down({ 100, 100 });
    touch.moveTo({ 100, 110 });
    touch.moveTo({ 100, 210 });
    EXPECT_LT(offset(), -40);
    EXPECT_GT(offset(), -60);
    scheduler.advance(0.2); // rests before it lifts
    touch.up();
    EXPECT_TRUE(view->isDecelerating());
    scheduler.advance(1);
    EXPECT_EQ(offset(), 0);
    EXPECT_EQ(log->lines, (Lines { "begin", "end, decelerates", "rest" }));
}

TEST_F(UIScrollViewTest, FliesOnWithTheFingersVelocity)
{
    touch.down({ 100, 400 });
    touch.glideTo({ 100, 200 }, 0.2); // 1000 points a second
    const double released = offset();
    touch.up();
    scheduler.advance(0.5);
    const double friction = -1000 * std::log(0.998);
    EXPECT_NEAR(offset() - released, 1000 / friction * (1 - std::exp(-friction * 0.5)), 8);
    scheduler.advance(5);
    EXPECT_NEAR(offset() - released, 1000 / friction, 8);
    EXPECT_FALSE(view->isDecelerating());
    EXPECT_FALSE(scheduler.isFrameRequested());
}

TEST_F(UIScrollViewTest, IsStoppedByATouchWhichIsThenNoTap)
{
    touch.drag({ 100, 400 }, { 100, 200 }, 0.2);
    scheduler.advance(0.1);
    touch.down({ 100, 300 });
    const double caught = offset();
    scheduler.advance(0.3);
    EXPECT_EQ(offset(), caught);
    EXPECT_TRUE(view->isDragging());
    touch.up();
    scheduler.advance(1);
    EXPECT_EQ(offset(), caught);
}

TEST_F(UIScrollViewTest, GoesOnFromWhereAFingerCatchesItPastTheEnd)
{
    touch.down({ 100, 100 });
    touch.moveTo({ 100, 110 });
    touch.moveTo({ 100, 310 });
    scheduler.advance(0.2);
    touch.up();
    scheduler.advance(0.05);
    const double caught = offset();
    ASSERT_LT(caught, -5);
    touch.down({ 100, 310 });
    touch.moveTo({ 100, 311 });
    EXPECT_NEAR(offset(), caught, 1);
}

TEST_F(UIScrollViewTest, ReachesItsLastRowAndNoFurther)
{
    for (int fling = 0; fling < 8; ++fling) {
        touch.drag({ 100, 400 }, { 100, 100 }, 0.1);
        scheduler.advance(3);
    }
    EXPECT_EQ(offset(), 2000 - 480);
}

TEST_F(UIScrollViewTest, ScrollsWithTheWheelUpToItsEnds)
{
    EXPECT_TRUE(touch.wheel({ 100, 100 }, { 0, -120 }));
    EXPECT_EQ(offset(), 120);
    touch.wheel({ 100, 100 }, { 0, 5000 });
    EXPECT_EQ(offset(), 0);
    EXPECT_FALSE(touch.wheel({ 100, 100 }, { 50, 0 }));
}

TEST_F(UIScrollViewTest, MovesToAnOffsetInThreeTenthsOfASecond)
{
    view->setContentOffset({ 0, 600 }, Animated::Yes);
    EXPECT_EQ(offset(), 0);
    scheduler.advance(0.15);
    EXPECT_NEAR(offset(), 300, 40);
    scheduler.advance(0.2);
    EXPECT_EQ(offset(), 600);
    EXPECT_EQ(log->lines, (Lines { "arrived" }));
}

TEST_F(UIScrollViewTest, ArrivesNeitherSoonerNorLaterThanAfterThreeTenths)
{
    view->setContentOffset({ 0, 600 }, Animated::Yes);
    scheduler.advance(0.28);
    EXPECT_TRUE(log->lines.empty());
    scheduler.advance(0.04);
    EXPECT_EQ(log->lines, (Lines { "arrived" }));
}

TEST_F(UIScrollViewTest, AFingerThatLeavesAtLessThanThirtyPointsASecondThrowsNothing)
{
    for (const double speed : { 28.5, 31.5 }) {
        log->lines.clear();
        touch.drag({ 100, 300 }, { 100, 300 - speed }, 1);
        scheduler.advance(3);
        EXPECT_EQ(log->lines,
            speed < 30 ? (Lines { "begin", "end" }) : (Lines { "begin", "end, decelerates", "rest" }));
    }
}

TEST_F(UIScrollViewTest, ScrollsAsLittleAsShowsARectangle)
{
    view->setContentInset({ 0, 0, 100, 0 });
    view->scrollRectToVisible({ 0, 100, 320, 64 }, Animated::No);
    EXPECT_EQ(offset(), 0); // shows already
    view->scrollRectToVisible({ 0, 350, 320, 64 }, Animated::No);
    EXPECT_EQ(offset(), 350 + 64 - 380); // clear of the inset
    view->scrollRectToVisible({ 0, 10, 320, 64 }, Animated::No);
    EXPECT_EQ(offset(), 10);
    view->scrollRectToVisible({ 0, 1990, 320, 64 }, Animated::No);
    EXPECT_EQ(offset(), 2000 + 100 - 480);
}

TEST_F(UIScrollViewTest, StaysInRangeWhenItsContentShrinks)
{
    view->setContentOffset({ 0, 1500 });
    view->setContentSize({ 320, 700 });
    EXPECT_EQ(offset(), 220);
    view->setContentSize({ 320, 100 });
    EXPECT_EQ(offset(), 0);
}

TEST_F(UIScrollViewTest, AnOffsetThatACancelledMotionTakesBackIsToldLikeAnyOther)
{
    view->setContentOffset({ 0, 300 });
    const auto group = make<CAMotionGroup>();
    {
        const CAMotionGroup::Collection collection(group);
        UIView::animate(0.2, [this] { view->setContentOffset({ 0, 1000 }); });
    }
    group->cancel();
    scheduler.advance(0.3);
    double told = 0;
    view->onScroll = [&] { told = offset(); };
    log->scrolls = 0;
    group->settle(CAMotionGroup::Outcome::TakenBack);
    EXPECT_EQ(told, 300);
    EXPECT_EQ(log->scrolls, 1);
}

TEST_F(UIScrollViewTest, KeepsRestingAtItsTopWhenTheInsetGrows)
{
    view->setContentInset({ 50, 0, 0, 0 });
    EXPECT_EQ(offset(), -50);
    view->setContentOffset({ 0, 300 });
    view->setContentInset({ 80, 0, 0, 0 });
    EXPECT_EQ(offset(), 300);
}

TEST_F(UIScrollViewTest, IgnoresOffsetsThatAreNoNumbers)
{
    view->setContentOffset({ 0, 200 });
    view->setContentOffset({ 0, std::numeric_limits<double>::quiet_NaN() });
    view->setContentOffset({ 0, std::numeric_limits<double>::infinity() });
    EXPECT_EQ(offset(), 200);
}

TEST_F(UIScrollViewTest, SizesAndInsetsThatAreNotFiniteAreProgrammingErrorsAndChangeNothing)
{
    view->setContentInset({ 1, 0, 2, 0 });
    view->setScrollIndicatorInsets({ 3, 0, 4, 0 });
    const AssertionRecorder assertions;
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double number : { std::nan(""), infinity, -infinity }) {
        view->setContentSize({ 320, number });
        view->setContentInset({ 0, 0, number, 0 });
        view->setScrollIndicatorInsets({ number, 0, 0, 0 });
    }
    std::vector<NSString> expected;
    for (int round = 0; round < 3; ++round)
        for (const char* name : { "contentSize", "contentInset", "scrollIndicatorInsets" })
            expected.push_back(
                QStringLiteral("Invalid parameter not satisfying: isfinite(%1)").arg(QLatin1String(name)));
    EXPECT_EQ(assertions.messages(), expected);
    EXPECT_EQ(view->contentSize(), CGSize(320, 2000));
    EXPECT_EQ(view->contentInset(), (UIEdgeInsets { 1, 0, 2, 0 }));
    EXPECT_EQ(view->scrollIndicatorInsets(), (UIEdgeInsets { 3, 0, 4, 0 }));
}

TEST_F(UIScrollViewTest, CountsTheSafeAreaByItself)
{
    view->setContentInset({ 1, 2, 3, 4 });
    view->setScrollIndicatorInsets({ 5, 6, 7, 8 });
    view->setFrame(window->bounds());
    UIScreen::mainScreen()->setGeometry(screenGeometry);
    runFrames();
    EXPECT_EQ(view->contentInset(), (UIEdgeInsets { 1, 2, 3, 4 })) << "reads as it was set";
    EXPECT_EQ(view->scrollIndicatorInsets(), (UIEdgeInsets { 5, 6, 7, 8 }));
    EXPECT_EQ(view->adjustedContentInset(), (UIEdgeInsets { 48, 2, 37, 4 }));
    EXPECT_EQ(view->adjustedScrollIndicatorInsets(), (UIEdgeInsets { 52, 6, 41, 8 }));
    EXPECT_EQ(offset(), -48) << "content that rests at its top goes on resting there";
    touch.drag({ 100, 700 }, { 100, 100 }, 0.05);
    touch.drag({ 100, 700 }, { 100, 100 }, 0.05);
    scheduler.advance(10);
    EXPECT_EQ(offset(), 2000 + 37 - 844) << "the end of the content comes clear of the home indicator";
    view->scrollRectToVisible({ 0, 0, 10, 10 }, Animated::No);
    EXPECT_EQ(offset(), -48);
    const auto& indicator = view->subviews().back();
    EXPECT_EQ(indicator->frame().top(), -48 + 52 + 3) << "and the indicator stays clear of both, too";
}

TEST_F(UIScrollViewTest, CountsTheSafeAreaOfTheSidesOnlyForContentThatIsWider)
{
    UIScreen::mainScreen()->setGeometry({ { 844, 390 }, 2, { 0, 47, 21, 47 } });
    view->setFrame(window->bounds());
    view->setContentSize({ 844, 2000 });
    EXPECT_EQ(view->adjustedContentInset(), (UIEdgeInsets { 0, 0, 21, 0 }));
    touch.drag({ 400, 200 }, { 300, 200 }, 0.1);
    scheduler.advance(2);
    EXPECT_EQ(view->contentOffset().x(), 0) << "does not scroll sideways";
    view->setContentSize({ 1000, 2000 });
    EXPECT_EQ(view->adjustedContentInset(), (UIEdgeInsets { 0, 47, 21, 47 }));
    EXPECT_EQ(view->contentOffset().x(), -47);
}

TEST_F(UIScrollViewTest, FollowsTheSafeAreaWhereverItIsMoved)
{
    UIScreen::mainScreen()->setGeometry(screenGeometry);
    EXPECT_EQ(view->adjustedContentInset(), (UIEdgeInsets { 47, 0, 0, 0 }));
    const auto outer = addView({ 0, 20, 390, 800 });
    outer->addSubview(view);
    EXPECT_EQ(view->adjustedContentInset(), (UIEdgeInsets { 27, 0, 0, 0 }));
    outer->setCenter({ 195, 844 });
    EXPECT_EQ(view->adjustedContentInset(), (UIEdgeInsets { 0, 0, 114, 0 }));
    EXPECT_EQ(offset(), 0);
    view->setContentOffset({ 0, 2000 });
    runFrames();
    EXPECT_EQ(offset(), 2000 + 114 - 480);
    outer->removeFromSuperview();
    EXPECT_EQ(offset(), 2000 + 114 - 480) << "is found where it was when it comes back";
    window->addSubview(outer);
    runFrames();
    EXPECT_EQ(offset(), 2000 + 114 - 480);
}

TEST_F(UIScrollViewTest, HugeSizesAndInsetsHarmNothing)
{
    for (const double number : { 1e12, 1e300 }) {
        view->setContentSize({ 320, number });
        view->setContentInset({ 0, 0, number, 0 });
        runFrames();
        touch.drag({ 100, 400 }, { 100, 100 }, 0.1);
        scheduler.advance(1);
        view->setContentInset({});
        view->setContentSize({ 320, 2000 });
        view->setContentOffset({ 0, 100 });
        runFrames();
        EXPECT_EQ(offset(), 100) << number;
        touch.drag({ 100, 400 }, { 100, 100 }, 0.1);
        scheduler.advance(5);
        EXPECT_GT(offset(), 300);
        EXPECT_LE(offset(), 2000 - 480);
        view->setContentOffset({ 0, 0 });
    }
}

TEST_F(UIScrollViewTest, IsAtItsDestinationWhenItLeavesTheWindow)
{
    view->setContentOffset({ 0, 600 }, Animated::Yes);
    scheduler.advance(0.1);
    view->removeFromSuperview();
    EXPECT_EQ(offset(), 600);
    window->addSubview(view);
    scheduler.advance(1);
    EXPECT_EQ(offset(), 600);
}

TEST_F(UIScrollViewTest, ReleasedWhileTheTouchIsCancelledSettles)
{
    touch.down({ 100, 100 });
    touch.moveTo({ 100, 110 });
    touch.moveTo({ 100, 250 });
    window->touches().cancelAllTouches();
    EXPECT_FALSE(view->isDragging());
    scheduler.advance(1);
    EXPECT_EQ(offset(), 0);
}

TEST_F(UIScrollViewTest, ShowsAnIndicatorThatFadesAtRest)
{
    const auto indicator = view->subviews().back();
    EXPECT_EQ(indicator->alpha(), 0);
    view->setContentOffset({ 0, 760 });
    runFrames();
    EXPECT_EQ(indicator->alpha(), 1);
    const double track = 480 - 6;
    const double length = track * 480 / 2000;
    EXPECT_NEAR(indicator->frame().height(), length, 0.01);
    EXPECT_NEAR(indicator->frame().top() - 760, 3 + (track - length) / 2, 0.01);
    const auto shown = [&] { return indicator->layer()->presentationValues().opacity; };
    scheduler.advance(0.48);
    EXPECT_EQ(shown(), 1) << "rests for half a second";
    scheduler.advance(0.04);
    EXPECT_LT(shown(), 1);
    scheduler.advance(0.26);
    EXPECT_GT(shown(), 0) << "and fades for three tenths";
    scheduler.advance(0.04);
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(indicator->alpha(), 0);
    EXPECT_FALSE(scheduler.isFrameRequested());
}

// Drops the view from inside its own message.
class DroppingDelegate final : public NSObject, public UIScrollViewDelegate {
public:
    void scrollViewDidScroll(UIScrollView&) override
    {
        if (view)
            view->removeFromSuperview();
        view.reset();
    }
    std::shared_ptr<UIScrollView> view;
};

TEST_F(UIScrollViewTest, MayBeDroppedFromInsideItsMessage)
{
    const auto delegate = make<DroppingDelegate>();
    view->setDelegate(delegate);
    delegate->view = std::move(view);
    delegate->view->setContentOffset({ 0, 500 }, Animated::Yes);
    scheduler.advance(1);
    EXPECT_EQ(delegate->view, nullptr);
}

TEST_F(UIScrollViewTest, MayBeDroppedFromInsideTheMessageOfEverythingThatMovesIt)
{
    using Change = std::function<void(UIScrollView&)>;
    const Change changes[] = {
        [](UIScrollView& moved) {
            moved.setContentOffset({ 0, 500 });
        },
        [](UIScrollView& moved) {
            moved.setContentSize({ 320, 500 });
        },
        [](UIScrollView& moved) {
            moved.setContentInset({ 0, 0, -1000, 0 });
        },
        [](UIScrollView& moved) {
            moved.scrollRectToVisible({ 0, 0, 1, 1 }, Animated::No);
        },
    };
    for (const Change& change : changes) {
        const auto delegate = make<DroppingDelegate>();
        delegate->view = make<UIScrollView>(CGRect(0, 0, 320, 480));
        window->addSubview(delegate->view);
        delegate->view->setContentSize({ 320, 2000 });
        delegate->view->setContentOffset({ 0, 1200 });
        delegate->view->setDelegate(delegate);
        const std::weak_ptr<UIScrollView> weak = delegate->view;
        change(*delegate->view);
        EXPECT_TRUE(weak.expired());
    }
}

} // namespace
