// The arena's own rules; what recognisers do in it is told by their tests, and at random by
// RandomGesturesTest.
#include "platform/views/GestureArena.h"

#include "platform/views/UIPanGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

namespace {

using States = std::vector<int>;
using enum UIGestureRecognizerState;

// Begins with its first move and leaves all else to others.
class Careless : public UIGestureRecognizer {
public:
    using UIGestureRecognizer::UIGestureRecognizer;
    bool ignores = false;
    int resets = 0;

protected:
    void touchesBegan(const UITouches& touches, UIEvent&) override
    {
        if (ignores)
            ignoreTouch(*touches.front());
    }
    void touchesMoved(const UITouches&, UIEvent&) override
    {
        setState(state() == Possible ? Began : Changed);
    }
    void reset() override { ++resets; }
};

class GestureArenaTest : public SceneFixture {
protected:
    std::shared_ptr<LoggingView> view = addView<LoggingView>({ 100, 100, 200, 200 });
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<Careless> careless = make<Careless>(target->action());
    void SetUp() override { view->addGestureRecognizer(careless); }
};

TEST_F(GestureArenaTest, OneThatIsAheadWithoutATouchIsCancelled)
{
    touch.down({ 150, 150 });
    touch.moveTo({ 160, 150 });
    touch.up();
    EXPECT_EQ(target->states, (States { 1, 4 }));
    EXPECT_EQ(careless->state(), Possible);
    EXPECT_EQ(careless->resets, 1);
    EXPECT_FALSE(window->touches().isFollowingTouches());
}

TEST_F(GestureArenaTest, OneThatIgnoresItsOnlyTouchHasFailed)
{
    careless->ignores = true;
    careless->setDelaysTouchesBegan(true);
    touch.down({ 150, 150 });
    EXPECT_EQ(careless->resets, 1);
    EXPECT_EQ(view->lines, (Lines { "began 50 50" })) << "and holds no touch back";
    touch.up();
    EXPECT_FALSE(window->touches().isFollowingTouches());
}

TEST_F(GestureArenaTest, AChangeThatComesBeforeTheBeginningIsToldIsPartOfTheBeginning)
{
    CGPoint place;
    target->onAction = [&](UIGestureRecognizer& recognizer) { place = recognizer.locationInView(nullptr); };
    touch.down({ 150, 150 });
    TouchDispatcher& touches = window->touches();
    view->onCancel = [&] {
        touches.touchMoved(TouchID { 0 }, { 170, 150 });
    }; // as the gesture takes its touch
    touch.moveTo({ 160, 150 });
    EXPECT_EQ(target->states, (States { 1 }));
    EXPECT_EQ(place, CGPoint(170, 150));
    touch.moveTo({ 180, 150 });
    EXPECT_EQ(target->states, (States { 1, 2 }));
    target->onAction = [&](UIGestureRecognizer&) { touches.touchMoved(TouchID { 0 }, { 190, 150 }); };
    window = nullptr; // with its finger down
    EXPECT_EQ(target->states, (States { 1, 2, 4 }));
}

TEST_F(GestureArenaTest, AnEndThatComesBeforeTheBeginningIsToldComesAfterIt)
{
    view->removeGestureRecognizer(*careless);
    const auto pan = make<UIPanGestureRecognizer>(target->action());
    view->addGestureRecognizer(pan);
    view->onCancel = [&] { touch.up(); };
    touch.down({ 150, 150 });
    touch.moveTo({ 180, 150 });
    EXPECT_EQ(target->states, (States { 1, 3 }));
    EXPECT_EQ(pan->state(), Possible);
}

TEST_F(GestureArenaTest, ATouchThatADelegateCancelsWhenItIsAskedIsSeenByNobody)
{
    class Cancelling : public NSObject, public UIGestureRecognizerDelegate {
    public:
        explicit Cancelling(TouchScript& touch)
            : m_touch(touch)
        {
        }
        bool gestureRecognizerShouldReceiveTouch(UIGestureRecognizer&, UITouch&) override
        {
            m_touch.cancel();
            return true;
        }

    private:
        TouchScript& m_touch;
    };
    const auto cancelling = make<Cancelling>(touch);
    careless->setDelegate(cancelling);
    touch.down({ 150, 150 });
    EXPECT_TRUE(view->lines.empty());
    EXPECT_EQ(careless->numberOfTouches(), 0);
    EXPECT_FALSE(window->touches().isFollowingTouches());
}

TEST_F(GestureArenaTest, WhatAnActionEndsAndBeginsAnewIsNotTakenForTheOld)
{
    const auto second = make<GestureTarget>();
    careless->addTarget(second->action());
    target->onAction = [&](UIGestureRecognizer& recognizer) {
        if (target->states.size() > 1)
            return;
        recognizer.setEnabled(false);
        recognizer.setEnabled(true);
        touch.down({ 150, 150 }, 1);
        touch.moveTo({ 160, 150 }, 1);
    };
    touch.down({ 150, 150 });
    touch.moveTo({ 160, 150 });
    EXPECT_EQ(target->states, (States { 1, 4, 1 }));
    EXPECT_EQ(second->states, (States { 4, 1 })) << "told of the second beginning once";
}

} // namespace
