// The commonest actions with fingers that come by the window.
#include "tests/repetition/RepetitionFixture.h"
#include "tests/repetition/WindowFingers.h"

namespace {

class WindowInputRepetitionTest : public RepetitionFixture {
protected:
    static QPoint pixelOf(const CGPoint& place) { return place.toPoint(); } // the screen has one a point

    WindowFingers fingers { scheduler, [this] { return application->touches(); } };
};

TEST_F(WindowInputRepetitionTest, OpeningAndClosingARow)
{
    int openings = 0;
    repeat([&] {
        for (int taps = 0; taps < 2; ++taps) {
            fingers.tap({ 100, 150 });
            settle();
            openings += list->tableView()->indexPathForSelectedRow() ? 1 : 0;
        }
    });
    EXPECT_EQ(openings, repetitions + roundsBefore) << "each second tap closes it";
}

TEST_F(WindowInputRepetitionTest, ScrubbingWhileARecordPlays)
{
    fingers.tap(pixelOf(centerOf(*cellAt(0)->playbackButton())));
    settle();
    const auto player = list->currentPlayer();
    ASSERT_TRUE(player && !player->isPaused());
    repeat([&] {
        const QPoint thumb = pixelOf(centerOf(*cellAt(0)->playbackSlider()->thumbView()));
        fingers.down(thumb);
        for (const int x : { 100, 250, 60 })
            fingers.moveTo({ x, thumb.y() });
        EXPECT_TRUE(player->isPaused());
        fingers.up({ 60, thumb.y() });
        player->setTimePosition(1); // at the same place each time
        settle();
        EXPECT_FALSE(player->isPaused());
    });
    EXPECT_EQ(list->currentPlayer(), player);
}

TEST_F(WindowInputRepetitionTest, Scrolling)
{
    double farthest = 0;
    repeat([&] {
        fingers.drag({ 160, 260 }, { 160, 120 }, 0.3);
        settle(3);
        farthest = list->tableView()->contentOffset().y();
        fingers.drag({ 160, 120 }, { 160, 260 }, 0.3);
        settle(3);
    });
    EXPECT_GT(farthest, 100);
}

} // namespace
