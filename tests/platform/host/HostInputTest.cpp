#include "platform/host/HostInput.h"

#include "platform/views/UIWindow.h"
#include "tests/support/ManualScheduler.h"

#include <QMouseEvent>
#include <QPointingDevice>
#include <QTest>
#include <QTouchEvent>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

class TouchLog final : public UIView {
public:
    using UIView::UIView;

    void touchesBegan(const UITouches& touches, UIEvent&) override { note("began", touches); }
    void touchesMoved(const UITouches& touches, UIEvent&) override { note("moved", touches); }
    void touchesEnded(const UITouches& touches, UIEvent&) override { note("ended", touches); }
    void touchesCancelled(const UITouches& touches, UIEvent&) override { note("cancelled", touches); }
    bool scrollWheel(const UIScrollEvent& event) override
    {
        scrolls.push_back(event);
        return true;
    }

    std::vector<std::string> lines;
    std::vector<UIScrollEvent> scrolls;

private:
    void note(const char* what, const UITouches& touches)
    {
        for (const auto& touch : touches) {
            const CGPoint at = touch->locationInView(this);
            lines.push_back(NSString("%1 %2,%3").arg(what).arg(at.x()).arg(at.y()).toStdString());
        }
    }
};

class HostInputTest : public testing::Test {
protected:
    HostInputTest()
    {
        UIScreen::mainScreen()->setGeometry({ .size = { 100, 100 }, .scale = 2, .safeAreaInsets = {} });
        window->makeKeyAndVisible();
        log->setMultipleTouchEnabled(true);
        window->addSubview(log);
    }

    void mouse(QEvent::Type type, const CGPoint& at, Qt::MouseButton button = Qt::LeftButton)
    {
        const bool isDown = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, at, type == QEvent::MouseMove ? Qt::NoButton : button,
            isDown ? button : Qt::NoButton, Qt::NoModifier);
        EXPECT_TRUE(input.handle(event));
    }

    // Real touch events, as the system sends them.
    QTest::QTouchEventSequence touch() { return QTest::touchEvent(&m_touchWindow, touchScreen()); }

    void wheel(const QPoint& pixels, const QPoint& angle, Qt::ScrollPhase phase)
    {
        QWheelEvent event({ 20, 40 }, { 20, 40 }, pixels, angle, Qt::NoButton, Qt::NoModifier, phase, false);
        EXPECT_TRUE(input.handle(event));
    }

    ManualScheduler scheduler;
    std::shared_ptr<UIWindow> window = make<UIWindow>(CGRect(0, 0, 100, 100));
    std::shared_ptr<TouchLog> log = make<TouchLog>(CGRect(0, 0, 100, 100));
    bool takesTouches = true;
    // The window counts twice as many pixels as the screen has points.
    HostInput input { [this] { return takesTouches ? &window->touches() : nullptr; },
        [](const CGPoint& position) { return position / 2; } };

private:
    // Hands what it gets on to the input under test.
    class EventWindow final : public QWindow {
    public:
        explicit EventWindow(HostInput& input)
            : m_input(input)
        {
            create();
        }

    private:
        bool event(QEvent* event) override { return m_input.handle(*event) || QWindow::event(event); }

        HostInput& m_input;
    };

    static QPointingDevice* touchScreen()
    {
        static QPointingDevice* const device = QTest::createTouchDevice();
        return device;
    }

    EventWindow m_touchWindow { input };
};

using Lines = std::vector<std::string>;

TEST_F(HostInputTest, TakesTheMouseForAFingerWhileItsLeftButtonIsDown)
{
    mouse(QEvent::MouseButtonPress, { 20, 40 });
    mouse(QEvent::MouseMove, { 40, 40 });
    mouse(QEvent::MouseButtonRelease, { 44, 40 });
    EXPECT_EQ(log->lines, (Lines { "began 10,20", "moved 20,20", "ended 22,20" }));
}

TEST_F(HostInputTest, TakesTheSecondPressOfADoubleClickForAPress)
{
    mouse(QEvent::MouseButtonPress, { 20, 40 });
    mouse(QEvent::MouseButtonRelease, { 20, 40 });
    mouse(QEvent::MouseButtonDblClick, { 20, 40 });
    mouse(QEvent::MouseButtonRelease, { 20, 40 });
    EXPECT_EQ(log->lines, (Lines { "began 10,20", "ended 10,20", "began 10,20", "ended 10,20" }));
}

TEST_F(HostInputTest, TakesNoOtherButtonAndNoHoveringMouse)
{
    mouse(QEvent::MouseButtonPress, { 20, 40 }, Qt::RightButton);
    mouse(QEvent::MouseMove, { 40, 40 }, Qt::RightButton);
    mouse(QEvent::MouseButtonRelease, { 40, 40 }, Qt::RightButton);
    mouse(QEvent::MouseMove, { 50, 40 }, Qt::NoButton);
    EXPECT_EQ(log->lines, Lines());
}

TEST_F(HostInputTest, FollowsSeveralFingers)
{
    touch().press(0, QPoint(20, 20));
    touch().stationary(0).press(1, QPoint(60, 60));
    touch().move(0, QPoint(22, 20)).release(1, QPoint(60, 60));
    touch().release(0, QPoint(24, 20));
    EXPECT_EQ(
        log->lines, (Lines { "began 10,10", "began 30,30", "moved 11,10", "ended 30,30", "ended 12,10" }));
}

TEST_F(HostInputTest, DoesNotRepeatAFingerThatComesAsAMouseToo)
{
    QMouseEvent event(QEvent::MouseButtonPress, { 20, 40 }, { 20, 40 }, { 20, 40 }, Qt::LeftButton,
        Qt::LeftButton, Qt::NoModifier, Qt::MouseEventSynthesizedByQt);
    EXPECT_TRUE(input.handle(event));
    EXPECT_EQ(log->lines, Lines());
}

TEST_F(HostInputTest, CancelsTouchesWhenTheWindowLosesThem)
{
    for (const QEvent::Type type :
        { QEvent::WindowDeactivate, QEvent::FocusOut, QEvent::UngrabMouse, QEvent::Hide }) {
        log->lines.clear();
        mouse(QEvent::MouseButtonPress, { 20, 40 });
        QEvent event(type);
        EXPECT_FALSE(input.handle(event)) << "the window needs it, too";
        mouse(QEvent::MouseMove, { 30, 40 });
        mouse(QEvent::MouseButtonRelease, { 30, 40 });
        EXPECT_EQ(log->lines, (Lines { "began 10,20", "cancelled 10,20" })) << type;
    }
}

TEST_F(HostInputTest, CancelsTouchesWhenTheSystemTakesThem)
{
    touch().press(0, QPoint(20, 20));
    QTouchEvent event(QEvent::TouchCancel);
    EXPECT_TRUE(input.handle(event));
    EXPECT_EQ(log->lines, (Lines { "began 10,10", "cancelled 10,10" }));
    touch().release(0, QPoint(20, 20));
}

TEST_F(HostInputTest, ScrollsByNotchesOfAWheel)
{
    wheel({}, { 0, -120 }, Qt::NoScrollPhase);
    ASSERT_EQ(log->scrolls.size(), 1u);
    EXPECT_EQ(log->scrolls[0].location, CGPoint(10, 20));
    EXPECT_EQ(log->scrolls[0].delta, CGPoint(0, -48));
    EXPECT_EQ(log->scrolls[0].phase, UIScrollPhase::Step);
}

TEST_F(HostInputTest, ScrollsAsFarAsTheFingersOnATouchPad)
{
    wheel({ 4, 10 }, { 0, 120 }, Qt::ScrollBegin);
    wheel({ 0, 6 }, {}, Qt::ScrollUpdate);
    wheel({ 0, 2 }, {}, Qt::ScrollMomentum);
    wheel({}, {}, Qt::ScrollEnd);
    ASSERT_EQ(log->scrolls.size(), 4u);
    EXPECT_EQ(log->scrolls[0].delta, CGPoint(2, 5));
    EXPECT_EQ(log->scrolls[0].phase, UIScrollPhase::Began);
    EXPECT_EQ(log->scrolls[1].delta, CGPoint(0, 3));
    EXPECT_EQ(log->scrolls[1].phase, UIScrollPhase::Changed);
    EXPECT_EQ(log->scrolls[2].phase, UIScrollPhase::Momentum);
    EXPECT_EQ(log->scrolls[3].delta, CGPoint());
    EXPECT_EQ(log->scrolls[3].phase, UIScrollPhase::Ended);
}

TEST_F(HostInputTest, DropsWhatNobodyTakes)
{
    takesTouches = false;
    mouse(QEvent::MouseButtonPress, { 20, 40 });
    touch().press(0, QPoint(20, 20));
    touch().release(0, QPoint(20, 20));
    wheel({}, { 0, 120 }, Qt::NoScrollPhase);
    QEvent lost(QEvent::FocusOut);
    input.handle(lost);
    EXPECT_EQ(log->lines, Lines());
    EXPECT_TRUE(log->scrolls.empty());
}

TEST_F(HostInputTest, LeavesOtherEventsToTheWindow)
{
    QEvent event(QEvent::UpdateRequest);
    EXPECT_FALSE(input.handle(event));
}

} // namespace
