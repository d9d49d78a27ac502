#include "tests/repetition/RepetitionFixture.h"

namespace {

class ListRepetitionTest : public RepetitionFixture {
protected:
    UITableView& table() const { return *list->tableView(); }
    void play(int row)
    {
        tapButton(row);
        ASSERT_FALSE(list->currentPlayer()->isPaused());
    }
    // At the same place each time, and at rest.
    void pause(int row)
    {
        tapButton(row);
        ASSERT_TRUE(list->currentPlayer()->isPaused());
        list->currentPlayer()->setTimePosition(1);
        settle(1);
    }
};

TEST_F(ListRepetitionTest, OpeningAndClosingARow)
{
    repeat([this] {
        tapRow(1);
        tapRow(1);
    });
    EXPECT_EQ(table().indexPathForSelectedRow(), std::nullopt);
}

TEST_F(ListRepetitionTest, OpeningAnotherRow)
{
    repeat([this] {
        tapRow(0);
        tapRow(1);
    });
    EXPECT_EQ(table().indexPathForSelectedRow(), (NSIndexPath { 0, 1 }));
}

TEST_F(ListRepetitionTest, OpeningAndClosingARowAtOnce)
{
    repeat([this] {
        touch.tap({ 100, 120 });
        touch.tap({ 100, 120 });
        settle();
    });
}

TEST_F(ListRepetitionTest, PlayingAndPausing)
{
    repeat([this] {
        play(0);
        pause(0);
    });
    EXPECT_TRUE(list->currentPlayer()->isReadyForPlayback());
}

TEST_F(ListRepetitionTest, PlayingAnotherRecord)
{
    repeat([this] {
        play(0);
        play(1);
        pause(1);
    });
    EXPECT_TRUE(list->currentPlayer()->isReadyForPlayback());
}

TEST_F(ListRepetitionTest, PlayingToTheEnd)
{
    repeat([this] {
        play(0);
        list->currentPlayer()->setTimePosition(9.9);
        settle(2);
    });
    EXPECT_FALSE(list->currentPlayer());
}

TEST_F(ListRepetitionTest, ScrubbingBackAndForthWhileARecordPlays)
{
    repeat([this] {
        play(0);
        const CGPoint thumb = centerOf(*cellAt(0)->playbackSlider()->thumbView());
        touch.down(thumb);
        for (const double x : { 100.0, 250.0, 60.0 })
            touch.moveTo({ x, thumb.y() });
        touch.up();
        pause(0);
    });
    EXPECT_GT(cellAt(0)->playbackSlider()->currentPosition(), 0);
}

TEST_F(ListRepetitionTest, TappingOnTheSlider)
{
    play(0);
    pause(0);
    repeat([this] {
        const double y = centerOf(*cellAt(0)->playbackSlider()).y();
        for (const double x : { 200.0, 50.0 }) {
            touch.tap({ x, y });
            settle();
        }
    });
}

TEST_F(ListRepetitionTest, ScrollingWithAFinger)
{
    repeat([this] {
        touch.drag({ 160, 260 }, { 160, 120 }, 0.3);
        settle(3);
        touch.drag({ 160, 120 }, { 160, 260 }, 0.3);
        settle(3);
    });
}

TEST_F(ListRepetitionTest, ScrollingWithTheWheel)
{
    repeat([this] {
        touch.wheel({ 160, 200 }, { 0, -300 });
        settle(1);
        touch.wheel({ 160, 200 }, { 0, 300 });
        settle(1);
    });
}

TEST_F(ListRepetitionTest, ScrollingByCode)
{
    repeat([this] {
        for (const int row : { 4, 0 }) {
            table().scrollToRow({ 0, row }, UITableViewScrollPosition::Top, Animated::Yes);
            settle(1);
        }
    });
}

TEST_F(ListRepetitionTest, ReloadingWithAFade)
{
    repeat([this] {
        list->setUserLocation(list->userLocation());
        settle();
    });
}

TEST_F(ListRepetitionTest, ReloadingAtOnce)
{
    repeat([this] {
        table().reloadData();
        settle();
    });
}

TEST_F(ListRepetitionTest, TurningTheDevice)
{
    tapRow(1);
    repeat([this] {
        for (const auto& geometry : { turned, upright }) {
            UIScreen::mainScreen()->setGeometry(geometry);
            settle();
        }
    });
}

TEST_F(ListRepetitionTest, SwitchingBetweenLightAndDark)
{
    repeat([this] {
        for (const auto style : { UIUserInterfaceStyle::Dark, UIUserInterfaceStyle::Light }) {
            application->setUserInterfaceStyle(style);
            settle();
        }
    });
}

TEST_F(ListRepetitionTest, GoingToTheBackgroundAndBackWhileARecordPlays)
{
    repeat([this] {
        play(0);
        application->enterBackground();
        settle();
        application->enterForeground();
        pause(0);
    });
}

TEST_F(ListRepetitionTest, LeavingTheScreenAndComingBack)
{
    tapRow(1);
    const auto root = window->rootViewController();
    repeat([&] {
        window->setRootViewController(nullptr);
        settle();
        window->setRootViewController(root);
        settle();
    });
}

} // namespace
