// The slider where it is used: in a list, under a finger or a mouse, on a screen.
#include "platform/host/FramePainter.h"
#include "platform/host/HostInput.h"
#include "platform/tables/UIScrollView.h"
#include "tests/playback/PlaybackSliderFixture.h"

#include <QMouseEvent>

namespace {

using ::testing::IsEmpty;

class ORVPlaybackSliderSceneTest : public PlaybackSliderFixture {
protected:
    // Moves the slider into a list that is twice as high as the screen.
    std::shared_ptr<UIScrollView> putIntoList()
    {
        UIScreen::mainScreen()->setGeometry({ screenGeometry.size, screenGeometry.scale, {} });
        auto list = addView<UIScrollView>({ 0, 0, 390, 844 });
        list->setContentSize({ 390, 1688 });
        list->addSubview(slider);
        runFrames();
        return list;
    }
    void mouse(QEvent::Type type, const CGPoint& at)
    {
        const bool moves = type == QEvent::MouseMove;
        const bool lifts = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, at, moves ? Qt::NoButton : Qt::LeftButton,
            lifts ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        EXPECT_TRUE(input.handle(event));
        scheduler.advance(scheduler.frameInterval());
    }
    QColor colorAt(double x) const
    {
        const CGPoint point = place(x) * 2;
        return FramePainter(frame).paintScreen().pixelColor(qRound(point.x()), qRound(point.y()));
    }

    HostInput input { [this] { return &window->touches(); }, [](const CGPoint& at) { return at; } };
};

TEST_F(ORVPlaybackSliderSceneTest, ADragOfTheThumbDoesNotScrollTheListAroundIt)
{
    const auto list = putIntoList();
    setPosition(0.5);
    touch.drag(place(width / 2 + 5), place(width / 2 + 105), 0.3);
    EXPECT_EQ(log->lines.front(), "begin");
    EXPECT_GT(slider->currentPosition(), 0.7);
    EXPECT_EQ(list->contentOffset(), CGPoint(0, 0));
    EXPECT_FALSE(list->isDragging());
}

TEST_F(ORVPlaybackSliderSceneTest, ATapInAListMovesTheThumb)
{
    putIntoList();
    touch.tap(place(280));
    EXPECT_EQ(slider->currentPosition(), 0.8);
}

TEST_F(ORVPlaybackSliderSceneTest, AListCanBeScrolledByTheBarBesideTheThumb)
{
    const auto list = putIntoList();
    touch.down(place(250));
    touch.glideTo(place(250) - CGPoint(0, 100), 0.3);
    EXPECT_GT(list->contentOffset().y(), 50);
    touch.up();
    EXPECT_THAT(log->lines, IsEmpty());
    EXPECT_EQ(slider->currentPosition(), 0);
}

TEST_F(ORVPlaybackSliderSceneTest, AMouseDragsTheThumbAndTheScreenShowsIt)
{
    const auto red = UIColor::colorWithRed(1, 0, 0, 1);
    window->setTintColor(red);
    setPosition(0.2);
    const CGPoint start = place(0.2 * width);
    mouse(QEvent::MouseButtonPress, start);
    EXPECT_EQ(colorAt(0.2 * width), QColor(255, 0, 0)) << "opaque under the finger";
    for (const double distance : { 11.0, 60.0, 200.0, 151.0 })
        mouse(QEvent::MouseMove, start + CGPoint(distance, 0));
    EXPECT_EQ(slider->currentPosition(), 0.6);
    EXPECT_EQ(colorAt(0.6 * width), QColor(255, 0, 0));
    EXPECT_EQ(colorAt(0.2 * width), QColor(Qt::black));
    mouse(QEvent::MouseButtonRelease, start + CGPoint(151, 0));
    EXPECT_EQ(log->lines.back(), "end 0.6");
    scheduler.advance(0.3);
    EXPECT_NEAR(colorAt(0.6 * width).red(), 128, 2) << "half transparent again";
}

} // namespace
