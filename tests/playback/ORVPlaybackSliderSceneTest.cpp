// The slider where it is used: in a list, under a finger or a mouse, on a screen.
#include "platform/host/HostInput.h"
#include "platform/tables/UIScrollView.h"
#include "tests/playback/PlaybackSliderFixture.h"

#include <QMouseEvent>

namespace {

using ::testing::IsEmpty;

// --- In a list ---------------------------------------------------------------------------------------

// The slider in a list that is twice as high as the screen.
class ORVPlaybackSliderInListTest : public PlaybackSliderFixture {
protected:
    ORVPlaybackSliderInListTest()
    {
        UIScreen::mainScreen()->setGeometry({ screenGeometry.size, screenGeometry.scale, {} });
        list = addView<UIScrollView>({ 0, 0, 390, 844 });
        list->setContentSize({ 390, 1688 });
        list->addSubview(slider);
        setPosition(0.5);
    }
    double scrolled() const { return list->contentOffset().y(); }

    std::shared_ptr<UIScrollView> list;
};

TEST_F(ORVPlaybackSliderInListTest, ADragOfTheThumbDoesNotScrollTheList)
{
    takeThumb();
    touch.glideTo(finger + CGPoint(70, -150), 0.2);
    EXPECT_TRUE(slider->isDraggingThumb());
    EXPECT_FALSE(list->isDragging());
    EXPECT_EQ(scrolled(), 0);
    EXPECT_EQ(letGo().back(), "end 0.7");
    scheduler.advance(0.5);
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(ORVPlaybackSliderInListTest, ATapMovesTheThumb)
{
    tap(280);
    EXPECT_EQ(slider->currentPosition(), 0.8);
}

TEST_F(ORVPlaybackSliderInListTest, TheListCanBeScrolledAndThrownByTheBarBesideTheThumb)
{
    touch.drag(place(290), place(290) - CGPoint(0, 150), 0.1);
    const double atRelease = scrolled();
    EXPECT_GT(atRelease, 100);
    scheduler.advance(0.3);
    EXPECT_GT(scrolled(), atRelease + 50);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0.5);
}

TEST_F(ORVPlaybackSliderInListTest, AListThatScrollsUnderADragLetsItGoOn)
{
    takeThumb();
    list->setContentOffset({ 0, 60 });
    EXPECT_EQ(moveThumb(35), Lines { "drag 0.6" });
    EXPECT_EQ(letGo(), (Lines { "drag 0.6", "end 0.6" }));
}

// --- On a screen -------------------------------------------------------------------------------------

class ORVPlaybackSliderSceneTest : public PlaybackSliderFixture {
protected:
    void mouse(QEvent::Type type, const CGPoint& at)
    {
        const bool moves = type == QEvent::MouseMove;
        const bool lifts = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, at, moves ? Qt::NoButton : Qt::LeftButton,
            lifts ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        EXPECT_TRUE(input.handle(event));
        scheduler.advance(scheduler.frameInterval());
    }

    HostInput input { [this] { return &window->touches(); }, [](const CGPoint& at) { return at; } };
};

TEST_F(ORVPlaybackSliderSceneTest, AMouseDragsTheThumbAndTheScreenShowsIt)
{
    window->setTintColor(red);
    setPosition(0.2);
    const CGPoint start = place(0.2 * width);
    mouse(QEvent::MouseButtonPress, start);
    EXPECT_EQ(shownColor(0.2 * width), QColor(Qt::red)) << "opaque under the finger";
    for (const double distance : { 11.0, 60.0, 200.0, 151.0 })
        mouse(QEvent::MouseMove, start + CGPoint(distance, 0));
    EXPECT_EQ(slider->currentPosition(), 0.6);
    EXPECT_EQ(shownColor(0.6 * width), QColor(Qt::red));
    EXPECT_EQ(shownColor(0.2 * width), QColor(Qt::black));
    mouse(QEvent::MouseButtonRelease, start + CGPoint(151, 0));
    EXPECT_EQ(heard().back(), "end 0.6");
    scheduler.advance(0.3);
    EXPECT_NEAR(shownColor(0.6 * width).red(), 128, 2) << "half transparent again";
}

TEST_F(ORVPlaybackSliderSceneTest, TheHalvesHaveTheInheritedTintAndTheirOwn)
{
    window->setTintColor(red);
    slider->setMaximumWaveformTintColor(UIColor::colorWithRed(0, 0, 1, 1));
    slider->setThumbHidden(true);
    showPicture();
    setPosition(0.4);
    const double split = 0.4 * width;
    for (const double x : { 0.0, 1.0, 70.0, split - 1 })
        EXPECT_EQ(shownColor(x), QColor(Qt::red)) << x;
    for (const double x : { split, split + 1, 300.0, width - 1 })
        EXPECT_EQ(shownColor(x), QColor(Qt::blue)) << x;
    EXPECT_EQ(shownColor(-1), QColor(Qt::black));
    EXPECT_EQ(shownColor(width), QColor(Qt::black));
}

} // namespace
