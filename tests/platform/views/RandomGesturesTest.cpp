// Fingers, recognisers and those who hear of them, all at random: whatever happens, everything agrees in the
// end.
#include "platform/views/UILongPressGestureRecognizer.h"
#include "platform/views/UIPanGestureRecognizer.h"
#include "platform/views/UIPinchGestureRecognizer.h"
#include "platform/views/UITapGestureRecognizer.h"
#include "tests/platform/views/ViewLog.h"
#include "tests/support/SceneFixture.h"

#include <random>
#include <set>

namespace {

using State = UIGestureRecognizerState;

// Counts what it hears of touches, and meddles.
class CountingView : public UIView {
public:
    using UIView::UIView;
    void touchesBegan(const UITouches& touches, UIEvent& event) override
    {
        EXPECT_TRUE(open.insert(touches.front().get()).second) << "begins once";
        EXPECT_EQ(touches.front()->phase(), UITouchPhase::Began);
        expectPart(*touches.front(), event);
        meddle();
    }
    void touchesMoved(const UITouches& touches, UIEvent& event) override
    {
        EXPECT_TRUE(open.contains(touches.front().get())) << "moves between beginning and end";
        expectPart(*touches.front(), event);
        meddle();
    }
    void touchesEnded(const UITouches& touches, UIEvent&) override { end(*touches.front()); }
    void touchesCancelled(const UITouches& touches, UIEvent&) override { end(*touches.front()); }

    std::set<const UITouch*> open;
    std::function<void()> meddle;

private:
    void end(const UITouch& touch)
    {
        EXPECT_EQ(open.erase(&touch), 1u) << "ends once, and not without a beginning";
        meddle();
    }
    static void expectPart(const UITouch& touch, const UIEvent& event)
    {
        EXPECT_TRUE(
            std::ranges::any_of(event.allTouches(), [&](const auto& one) { return one.get() == &touch; }));
    }
};

class RandomGesturesTest : public SceneFixture, public ::testing::WithParamInterface<unsigned> {
protected:
    class Delegate : public NSObject, public UIGestureRecognizerDelegate {
    public:
        explicit Delegate(RandomGesturesTest& test)
            : m_test(test)
        {
        }
        bool gestureRecognizerShouldReceiveTouch(UIGestureRecognizer&, UITouch&) override
        {
            return m_test.answer(9);
        }
        bool gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer) override
        {
            EXPECT_EQ(recognizer.state(), State::Possible);
            return m_test.answer(9);
        }
        bool gestureRecognizerShouldRecognizeSimultaneously(
            UIGestureRecognizer& first, UIGestureRecognizer& second) override
        {
            EXPECT_NE(&first, &second);
            return m_test.answer(3);
        }
        bool gestureRecognizerShouldRequireFailure(UIGestureRecognizer&, UIGestureRecognizer&) override
        {
            return m_test.answer(2);
        }
        bool gestureRecognizerShouldBeRequiredToFail(UIGestureRecognizer&, UIGestureRecognizer&) override
        {
            return m_test.answer(2);
        }

    private:
        RandomGesturesTest& m_test;
    };
    struct Watched {
        std::shared_ptr<UIGestureRecognizer> recognizer;
        bool lasts = false; // by its nature
        bool isOpen = false;
        int begins = 0;
    };

    void SetUp() override
    {
        for (int index = 0; index < 8; ++index) {
            UIView& superview = index < 2 ? static_cast<UIView&>(*window) : *views[pick(views.size())];
            auto view = make<CountingView>(QRectF(pick(100), pick(200), 100 + pick(250), 150 + pick(500)));
            view->meddle = [this] { meddle(); };
            view->setMultipleTouchEnabled(pick(2) == 0);
            superview.addSubview(view);
            views.push_back(view);
        }
        for (int index = 0; index < 16; ++index)
            addRecognizer();
        for (int index = 0; index < 5; ++index) {
            const auto& first = watched[pick(watched.size())].recognizer;
            const auto& second = watched[pick(watched.size())].recognizer;
            if (first != second)
                first->requireGestureRecognizerToFail(second);
        }
        target->onAction = [this](UIGestureRecognizer& recognizer) {
            count(recognizer);
            meddle();
        };
    }
    void TearDown() override
    {
        for (const auto& view : views)
            view->meddle = [] {};
        target->onAction = nullptr;
        SceneFixture::TearDown();
    }
    void addRecognizer()
    {
        const Action action = target->action();
        Watched added;
        switch (pick(6)) {
        case 0: {
            const auto tap = make<UITapGestureRecognizer>(action);
            tap->setNumberOfTapsRequired(1 + pick(2));
            tap->setNumberOfTouchesRequired(1 + pick(2));
            added = { tap, false };
            break;
        }
        case 1:
            added = { make<UITapGestureRecognizer>(action), false };
            break;
        case 2:
            added = { make<UILongPressGestureRecognizer>(action), true };
            break;
        case 3:
            added = { make<UIPinchGestureRecognizer>(action), true };
            break;
        default:
            added = { make<UIPanGestureRecognizer>(action), true };
        }
        added.recognizer->setCancelsTouchesInView(pick(2) == 0);
        added.recognizer->setDelaysTouchesBegan(pick(4) == 0);
        if (pick(3) != 0)
            added.recognizer->setDelegate(delegate);
        views[pick(views.size())]->addGestureRecognizer(added.recognizer);
        watched.push_back(added);
    }
    template <typename Count> Count pick(Count count)
    {
        return static_cast<Count>(m_random() % static_cast<unsigned>(count));
    }
    // Yes in so many of ten cases; somebody who is asked may do anything first.
    bool answer(int yesOfTen)
    {
        meddle();
        return pick(10) < yesOfTen;
    }
    void meddle()
    {
        if (!window || isQuiet || m_depth >= 3 || pick(5) != 0)
            return;
        ++m_depth;
        const auto view = views[pick(views.size())];
        const auto& recognizer = watched[pick(watched.size())].recognizer;
        switch (pick(10)) {
        case 0:
            view->setHidden(!view->isHidden());
            break;
        case 1:
            view->setAlpha(view->alpha() > 0 ? 0 : 1);
            break;
        case 2:
            view->setUserInteractionEnabled(!view->isUserInteractionEnabled());
            break;
        case 3:
            view->removeFromSuperview();
            break;
        case 4:
            window->addSubview(view);
            break;
        case 5:
            recognizer->setEnabled(!recognizer->isEnabled());
            break;
        case 6:
            if (recognizer->view())
                recognizer->view()->removeGestureRecognizer(*recognizer);
            break;
        case 7:
            view->addGestureRecognizer(recognizer);
            break;
        case 8:
            moveFinger();
            break;
        default:
            window->touches().touchCancelled(TouchID { pick(3) });
        }
        --m_depth;
    }
    void moveFinger()
    {
        const int finger = pick(3);
        switch (pick(5)) {
        case 0:
            places[finger] = QPointF(pick(390), pick(844));
            touch.down(places[finger], finger);
            break;
        case 1:
            touch.up(finger);
            break;
        case 2:
            touch.down(places[finger], finger);
            if (window)
                touch.up(finger);
            break;
        default:
            places[finger] += QPointF(pick(31) - 15, pick(31) - 15);
            touch.moveTo(places[finger], finger);
        }
    }
    void restore()
    {
        for (const auto& view : views) {
            view->setHidden(false);
            view->setAlpha(1);
            view->setUserInteractionEnabled(true);
            if (!view->window())
                window->addSubview(view);
        }
        for (const auto& one : watched) {
            one.recognizer->setEnabled(true);
            if (!one.recognizer->view())
                views[pick(views.size())]->addGestureRecognizer(one.recognizer);
        }
    }
    void count(UIGestureRecognizer& recognizer)
    {
        const auto one = std::ranges::find_if(
            watched, [&](const Watched& known) { return known.recognizer.get() == &recognizer; });
        ASSERT_NE(one, watched.end());
        switch (recognizer.state()) {
        case State::Began:
            EXPECT_FALSE(std::exchange(one->isOpen, true)) << "one beginning for each end";
            ++one->begins;
            break;
        case State::Changed:
            EXPECT_TRUE(one->isOpen) << "changes between beginning and end";
            break;
        case State::Ended:
            EXPECT_EQ(std::exchange(one->isOpen, false), one->lasts) << "what lasts ends what has begun";
            break;
        case State::Cancelled:
            one->isOpen = false; // a beginning may be stopped before the targets have heard of it
            break;
        default:
            ADD_FAILURE() << "told of a state that nobody is told of";
        }
    }

    std::vector<std::shared_ptr<CountingView>> views;
    std::vector<Watched> watched;
    std::map<int, CGPoint> places;
    bool isQuiet = false;
    std::shared_ptr<GestureTarget> target = make<GestureTarget>();
    std::shared_ptr<Delegate> delegate = make<Delegate>(*this);

private:
    std::mt19937 m_random { GetParam() };
    int m_depth = 0;
};

TEST_P(RandomGesturesTest, EndInAgreement)
{
    for (int round = 0; round < 20 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        restore();
        for (int step = 0; step < 40; ++step) {
            moveFinger();
            if (pick(3) == 0)
                scheduler.advance(pick(20) / 60.0);
        }
        for (const int finger : { 0, 1, 2 })
            touch.up(finger);
        isQuiet = true; // those who are told of the ends have put fingers down again
        for (const int finger : { 0, 1, 2 })
            touch.up(finger);
        EXPECT_FALSE(window->touches().hasTouches());
        scheduler.advance(2); // longer than anybody waits for a further touch
        EXPECT_FALSE(window->touches().isFollowingTouches());
        for (const Watched& one : watched) {
            EXPECT_EQ(one.recognizer->state(), State::Possible);
            EXPECT_EQ(one.recognizer->numberOfTouches(), 0);
            EXPECT_FALSE(one.isOpen) << "each beginning has an end";
        }
        for (const auto& view : views)
            EXPECT_TRUE(view->open.empty());
        isQuiet = false;
    }
}

TEST_P(RandomGesturesTest, TheWindowMayGoAtAnyMoment)
{
    for (int step = 0; step < 30; ++step)
        moveFinger();
    int countdown = pick(10);
    target->onAction = [&](UIGestureRecognizer&) {
        if (window && countdown-- == 0)
            window = nullptr;
    };
    for (const auto& view : views)
        view->meddle = [&] {
            if (window && countdown-- == 0)
                window = nullptr;
        };
    for (int step = 0; step < 200 && window; ++step) {
        [[maybe_unused]] const auto held = step % 2 == 0 ? window : nullptr;
        moveFinger();
        if (window && pick(3) == 0)
            scheduler.advance(pick(20) / 60.0);
    }
    window = nullptr;
    scheduler.advance(2);
    for (const Watched& one : watched)
        EXPECT_EQ(one.recognizer->numberOfTouches(), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomGesturesTest, ::testing::Range(1u, 61u));

} // namespace
