#include "platform/controls/UINavigationItem.h"
#include "tests/list/RecordsListFixture.h"

#include <gmock/gmock.h>

#include <set>

namespace {

class ORVRecordsListViewControllerTest : public RecordsListFixture { };

// --- Fetching ----------------------------------------------------------------------------------------

TEST_F(ORVRecordsListViewControllerTest, IsTitledForTheSystemButNotInItsBar)
{
    EXPECT_EQ(controller->title(), QStringLiteral("Records List"));
    EXPECT_TRUE(controller->navigationItem()->title().isNull());
}

TEST_F(ORVRecordsListViewControllerTest, ShowsTheThirtyNearestRecordsNearestFirst)
{
    open();
    const auto& records = controller->fetchedRecords();
    ASSERT_EQ(records.size(), 30u);
    const auto center = storage->fakeUserLocation()->coordinate();
    for (std::size_t index = 1; index < records.size(); ++index)
        EXPECT_LE(geodesicDistance(center, records[index - 1]->coordinate()),
            geodesicDistance(center, records[index]->coordinate()));
    EXPECT_EQ(controller->tableView()->numberOfRows(), 30);
}

TEST_F(ORVRecordsListViewControllerTest, IsFilledInItsFirstFrameWhenItWasFetchedBefore)
{
    controller->setUserLocation(storage->fakeUserLocation());
    EXPECT_TRUE(controller->fetchedRecords().empty()); // only remembered
    controller->updateRecordsIfNecessary();
    EXPECT_EQ(controller->fetchedRecords().size(), 30u);
    EXPECT_FALSE(controller->isViewLoaded());
    window->setRootViewController(controller);
    runFrames();
    EXPECT_EQ(cellAt(0)->layer()->presentationValues().opacity, 1);
    EXPECT_EQ(cellAt(0)->locationNameLabel()->text(), controller->fetchedRecords()[0]->locationName());
}

TEST_F(ORVRecordsListViewControllerTest, FetchesInTheBackgroundAndFadesWhenItAppears)
{
    controller->setUserLocation(storage->fakeUserLocation());
    window->setRootViewController(controller);
    runFrames();
    EXPECT_TRUE(controller->fetchedRecords().empty());
    EXPECT_EQ(executor.global().size(), 1u);
    executor.runAll();
    ASSERT_EQ(controller->fetchedRecords().size(), 30u);
    scheduler.advance(0.15);
    EXPECT_NEAR(cellAt(0)->layer()->presentationValues().opacity, 0.5, 0.1);
    scheduler.advance(0.3);
    EXPECT_EQ(cellAt(0)->layer()->presentationValues().opacity, 1);
}

TEST_F(ORVRecordsListViewControllerTest, DoesNotFetchAgainWhenItAppearsAgainWithoutANewLocation)
{
    open();
    window->setRootViewController(nullptr);
    window->setRootViewController(controller);
    runFrames();
    EXPECT_EQ(executor.global().size(), 0u);
}

TEST_F(ORVRecordsListViewControllerTest, WaitsForItsNextAppearanceWithALocationSetOffTheScreen)
{
    open();
    window->setRootViewController(nullptr);
    controller->setUserLocation(make<CLLocation>(-37.8304, 144.98));
    EXPECT_EQ(executor.global().size(), 0u);
    window->setRootViewController(controller);
    runFrames();
    EXPECT_EQ(executor.global().size(), 1u);
}

TEST_F(ORVRecordsListViewControllerTest, FollowsANewLocationAtOnceWhileItIsOnTheScreen)
{
    open();
    const auto before = controller->fetchedRecords();
    controller->setUserLocation(make<CLLocation>(-37.8304, 144.98));
    executor.runAll();
    scheduler.advance(1);
    EXPECT_NE(controller->fetchedRecords(), before);
    EXPECT_EQ(cellAt(0)->locationNameLabel()->text(), controller->fetchedRecords()[0]->locationName());
}

TEST_F(ORVRecordsListViewControllerTest, MayBeDroppedWhileAQueryIsUnderWay)
{
    controller->setUserLocation(storage->fakeUserLocation());
    window->setRootViewController(controller);
    runFrames();
    ASSERT_EQ(executor.global().size(), 1u);
    const std::weak_ptr<ORVRecordsListViewController> dropped = controller;
    window->setRootViewController(nullptr);
    controller.reset();
    executor.runAll();
    EXPECT_TRUE(dropped.expired());
}

TEST_F(ORVRecordsListViewControllerTest, FindsRowsByTheIdentityOfTheirRecords)
{
    open();
    const auto& record = controller->fetchedRecords()[4];
    EXPECT_EQ(controller->indexPathForRecord(*record), (NSIndexPath { 0, 4 }));
    EXPECT_EQ(controller->indexPathForRecord(*make<ORVRecord>(record->recordID())), (NSIndexPath { 0, 4 }));
    EXPECT_EQ(controller->indexPathForRecord(*make<ORVRecord>()), std::nullopt);
    EXPECT_EQ(controller->cellForRecord(*record), cellAt(4));
    EXPECT_EQ(controller->cellForRecord(*controller->fetchedRecords()[29]), nullptr); // off the screen
}

// A table whose rows are no record cells.
class PlainRows final : public NSObject, public UITableViewDataSource {
public:
    int tableViewNumberOfRowsInSection(UITableView&, int) override { return 30; }
    std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(UITableView&, NSIndexPath) override
    {
        return make<UITableViewCell>();
    }
};

// More rows than there are records.
class ManyRows final : public NSObject, public UITableViewDataSource {
public:
    int tableViewNumberOfRowsInSection(UITableView&, int) override { return 100; }
    std::shared_ptr<UITableViewCell> tableViewCellForRowAtIndexPath(
        UITableView& table, NSIndexPath path) override
    {
        return table.dequeueReusableCell(ORVRecordTableViewCell::identifier, path);
    }
};

TEST_F(ORVRecordsListViewControllerTest, HasNoRecordForARowThatIsGone)
{
    open();
    const auto more = make<ManyRows>();
    controller->tableView()->setDataSource(more);
    controller->tableView()->reloadData();
    controller->tableView()->scrollToRow({ 0, 30 }, UITableViewScrollPosition::Middle, Animated::No);
    runFrames();
    EXPECT_EQ(controller->recordForCell(*cellAt(29)), controller->fetchedRecords().back());
    EXPECT_EQ(controller->recordForCell(*cellAt(30)), nullptr);
    controller->recordTableViewCellRequestsPlayback(*cellAt(30));
    controller->recordTableViewCellRequestsPauseInterim(*cellAt(30), false);
    controller->recordTableViewCellRequestsSeekPlaybackToPositionFraction(*cellAt(30), 0.5);
    EXPECT_EQ(controller->currentPlayer(), nullptr);
    EXPECT_EQ(controller->tableView()->indexPathForSelectedRow(), std::nullopt);
    EXPECT_EQ(controller->recordForCell(*make<ORVRecordTableViewCell>()), nullptr) << "of no row";
}

TEST_F(ORVRecordsListViewControllerTest, ReportsACellThatIsNoRecordCell)
{
    open();
    const auto foreign = make<PlainRows>();
    controller->tableView()->setDataSource(foreign);
    controller->tableView()->reloadData();
    runFrames();
    const AssertionRecorder recorder;
    EXPECT_EQ(controller->cellForRecord(*controller->fetchedRecords()[0]), nullptr);
    ASSERT_EQ(recorder.failures().size(), 1u);
    EXPECT_EQ(
        recorder.failures()[0].message, QStringLiteral("Expected all cells to be ORVRecordTableViewCell's!"));
    EXPECT_EQ(recorder.failures()[0].source, QStringLiteral("ORVRecordsListViewController"));
    EXPECT_EQ(recorder.failures()[0].line, 193);
}

TEST_F(ORVRecordsListViewControllerTest, ScrollsItsLastRowClearOfTheHomeIndicator)
{
    open();
    const auto& table = controller->tableView();
    EXPECT_EQ(table->contentInset(), UIEdgeInsets()) << "the table counts the safe area by itself";
    EXPECT_EQ(table->adjustedContentInset().bottom, screenGeometry.safeAreaInsets.bottom);
    EXPECT_EQ(table->adjustedScrollIndicatorInsets().bottom, screenGeometry.safeAreaInsets.bottom);
    table->scrollToRow({ 0, 29 }, UITableViewScrollPosition::None, Animated::No);
    runFrames();
    EXPECT_EQ(cellAt(29)->convertRectToView(cellAt(29)->bounds(), nullptr).bottom(), 844 - 34);
}

// --- Selecting ---------------------------------------------------------------------------------------

TEST_F(ORVRecordsListViewControllerTest, GrowsTheRowThatIsTappedAndShowsItsSlider)
{
    open();
    tapRow(2);
    const auto& table = controller->tableView();
    EXPECT_TRUE(cellAt(2)->isSelected());
    EXPECT_EQ(table->rectForRow({ 0, 2 }).height(), 108);
    EXPECT_EQ(table->rectForRow({ 0, 3 }).top(), 2 * 64 + 108);
    EXPECT_TRUE(showsSlider(2));
    EXPECT_FALSE(showsSlider(1));
    EXPECT_EQ(controller->currentPlayer(), nullptr) << "selecting plays nothing";
    scheduler.advance(1);
    EXPECT_EQ(cellAt(2)->playbackSlider()->alpha(), 1);
    EXPECT_EQ(cellAt(2)->playbackSlider()->frame(), CGRect(0, 64, 390, 44));
}

TEST_F(ORVRecordsListViewControllerTest, ClosesTheSelectedRowWhenItIsTappedAgainAndPlaysOn)
{
    open();
    tapButton(2);
    const auto player = controller->currentPlayer();
    scheduler.advance(0.5);
    tapRow(2);
    scheduler.advance(1);
    EXPECT_FALSE(cellAt(2)->isSelected());
    EXPECT_FALSE(showsSlider(2));
    EXPECT_EQ(controller->tableView()->rectForRow({ 0, 2 }).height(), 64);
    EXPECT_EQ(controller->currentPlayer(), player);
    EXPECT_FALSE(player->isPaused());
}

TEST_F(ORVRecordsListViewControllerTest, MovesTheSliderToTheRowThatIsTappedNext)
{
    open();
    tapRow(2);
    scheduler.advance(1);
    tapRow(4);
    scheduler.advance(1);
    EXPECT_FALSE(showsSlider(2));
    EXPECT_TRUE(showsSlider(4));
    EXPECT_EQ(controller->tableView()->rectForRow({ 0, 2 }).height(), 64);
    EXPECT_EQ(controller->tableView()->rectForRow({ 0, 4 }).height(), 108);
}

TEST_F(ORVRecordsListViewControllerTest, SelectsARecordByCodeAndScrollsItIntoView)
{
    open();
    controller->selectRecord(*controller->fetchedRecords()[20], Animated::No);
    scheduler.advance(1);
    ASSERT_NE(cellAt(20), nullptr);
    EXPECT_TRUE(cellAt(20)->isSelected());
    EXPECT_TRUE(showsSlider(20));
    const auto offset = controller->tableView()->contentOffset();
    controller->selectRecord(*make<ORVRecord>(), Animated::No);
    EXPECT_EQ(controller->tableView()->contentOffset(), offset) << "one that is not in the list";
}

TEST_F(ORVRecordsListViewControllerTest, ShowsTheSliderOfASelectedRowThatComesBack)
{
    open();
    tapRow(0);
    scheduler.advance(1);
    controller->tableView()->setContentOffset({ 0, 1000 });
    scheduler.advance(0.2);
    for (const auto& cell : controller->tableView()->visibleCells())
        EXPECT_EQ(
            std::static_pointer_cast<ORVRecordTableViewCell>(cell)->playbackSlider()->superview(), nullptr);
    controller->tableView()->setContentOffset({ 0, 0 });
    scheduler.advance(0.2);
    EXPECT_TRUE(showsSlider(0));
    EXPECT_FALSE(showsSlider(1));
}

// --- Playing -----------------------------------------------------------------------------------------

TEST_F(ORVRecordsListViewControllerTest, PlaysTheRecordWhoseButtonIsTapped)
{
    open();
    tapButton(2);
    ASSERT_NE(controller->currentPlayer(), nullptr);
    EXPECT_EQ(controller->currentPlayer()->record(), controller->fetchedRecords()[2]);
    EXPECT_TRUE(controller->currentPlayer()->isReadyForPlayback());
    EXPECT_TRUE(showsPause(2));
    EXPECT_FALSE(showsPause(1));
    EXPECT_TRUE(cellAt(2)->isSelected());
    EXPECT_TRUE(showsSlider(2));
    ASSERT_EQ(device.runs().size(), 1u);
}

TEST_F(ORVRecordsListViewControllerTest, SpinsTheRingWhileThePlayerPrepares)
{
    open();
    touch.down(centerOf(*cellAt(0)->playbackButton()));
    touch.up(); // the sound is not loaded before the queues run
    EXPECT_FALSE(controller->currentPlayer()->isReadyForPlayback());
    EXPECT_TRUE(isSpinning(0));
    EXPECT_FALSE(showsPause(0));
    EXPECT_TRUE(cellAt(0)->playbackSlider()->isThumbHidden());
    executor.runAll();
    EXPECT_FALSE(isSpinning(0));
    EXPECT_TRUE(showsPause(0));
    EXPECT_FALSE(cellAt(0)->playbackSlider()->isThumbHidden());
}

TEST_F(ORVRecordsListViewControllerTest, ShowsOnRingAndSliderHowMuchHasBeenHeard)
{
    open();
    tapButton(0);
    const auto player = controller->currentPlayer();
    double last = 0;
    for (int tick = 0; tick < 25; ++tick) {
        scheduler.advance(0.1);
        EXPECT_NEAR(positionAt(0), player->timePosition() / player->recordDuration(),
            0.11 / player->recordDuration());
        EXPECT_EQ(cellAt(0)->playbackSlider()->currentPosition(), positionAt(0));
        EXPECT_GE(positionAt(0), last);
        last = positionAt(0);
    }
    EXPECT_NEAR(last, 2.5 / player->recordDuration(), 0.11 / player->recordDuration());
}

TEST_F(ORVRecordsListViewControllerTest, PausesAndGoesOnWhenTheButtonIsTapped)
{
    open();
    tapButton(0);
    const auto player = controller->currentPlayer();
    scheduler.advance(1.5);
    tapButton(0);
    EXPECT_TRUE(player->isPaused());
    EXPECT_FALSE(showsPause(0));
    EXPECT_FALSE(cellAt(0)->playbackSlider()->isThumbHidden());
    const double position = positionAt(0);
    scheduler.advance(2);
    EXPECT_EQ(positionAt(0), position);
    tapButton(0);
    EXPECT_EQ(controller->currentPlayer(), player);
    EXPECT_FALSE(player->isPaused());
    scheduler.advance(1);
    EXPECT_TRUE(showsPause(0));
    EXPECT_FALSE(isSpinning(0));
    EXPECT_GT(positionAt(0), position);
}

TEST_F(ORVRecordsListViewControllerTest, LetsAnotherRowTakeOver)
{
    open();
    tapButton(0);
    scheduler.advance(0.5);
    const auto first = controller->currentPlayer();
    tapButton(1);
    EXPECT_TRUE(first->isPaused());
    EXPECT_NE(controller->currentPlayer(), first);
    EXPECT_EQ(controller->currentPlayer()->record(), controller->fetchedRecords()[1]);
    EXPECT_FALSE(showsPause(0));
    EXPECT_EQ(positionAt(0), 0);
    EXPECT_TRUE(showsPause(1));
}

TEST_F(ORVRecordsListViewControllerTest, IsIdleAgainAtTheEndOfTheSound)
{
    open();
    tapButton(0);
    scheduler.advance(controller->currentPlayer()->recordDuration() + 0.2);
    EXPECT_EQ(controller->currentPlayer(), nullptr);
    EXPECT_FALSE(showsPause(0));
    EXPECT_EQ(positionAt(0), 0);
    EXPECT_TRUE(cellAt(0)->playbackSlider()->isThumbHidden());
    tapButton(0); // and plays again from the start
    EXPECT_TRUE(showsPause(0));
    EXPECT_LT(positionAt(0), 0.1);
}

TEST_F(ORVRecordsListViewControllerTest, ShowsThePlayingStateOnARowThatComesBack)
{
    open();
    tapButton(0);
    scheduler.advance(0.3);
    controller->tableView()->setContentOffset({ 0, 1000 });
    scheduler.advance(0.2);
    for (const auto& cell : controller->tableView()->visibleCells())
        EXPECT_FALSE(std::static_pointer_cast<ORVRecordTableViewCell>(cell)->playbackButton()->isPlaying());
    scheduler.advance(1);
    controller->tableView()->setContentOffset({ 0, 0 });
    scheduler.advance(0.2);
    EXPECT_TRUE(showsPause(0));
    EXPECT_GT(positionAt(0), 0.1);
    EXPECT_TRUE(cellAt(0)->isSelected());
}

TEST_F(ORVRecordsListViewControllerTest, GoesOnWhenARecordsSoundCannotBePlayed)
{
    open();
    controller->fetchedRecords()[0]->setSoundFileURL(NSURL::fromLocalFile(QStringLiteral("/missing.m4a")));
    tapButton(0);
    scheduler.advance(1);
    const auto player = controller->currentPlayer();
    EXPECT_FALSE(player->isReadyForPlayback());
    EXPECT_FALSE(showsPause(0));
    EXPECT_TRUE(isSpinning(0));
    EXPECT_TRUE(device.runs().empty());
    tapButton(0); // neither tap makes it play
    EXPECT_EQ(controller->currentPlayer(), player);
    tapButton(1);
    scheduler.advance(0.5);
    EXPECT_TRUE(showsPause(1));
    EXPECT_FALSE(isSpinning(0));
    EXPECT_EQ(device.runs().size(), 1u);
}

TEST_F(ORVRecordsListViewControllerTest, SpeaksToNoPlayerButTheCurrentOne)
{
    open();
    tapButton(0);
    const auto former = controller->currentPlayer();
    tapButton(1);
    const double position = positionAt(1);
    controller->recordPlayerDidBecomeReadyForPlayback(*former);
    controller->recordPlayerDidUpdatePlayingPosition(*former, 3);
    controller->recordPlayerDidEndPlayback(*former);
    EXPECT_NE(controller->currentPlayer(), nullptr);
    EXPECT_EQ(positionAt(1), position);
    EXPECT_EQ(positionAt(0), 0);
}

TEST_F(ORVRecordsListViewControllerTest, IgnoresRequestsOfRowsThatDoNotPlay)
{
    open();
    tapButton(0);
    scheduler.advance(0.3);
    const double time = controller->currentPlayer()->timePosition();
    controller->recordTableViewCellRequestsSeekPlaybackToPositionFraction(*cellAt(1), 0.9);
    controller->recordTableViewCellRequestsPauseInterim(*cellAt(1), false);
    controller->recordTableViewCellRequestsPlayback(*make<ORVRecordTableViewCell>()); // in no row
    EXPECT_EQ(controller->currentPlayer()->timePosition(), time);
    EXPECT_FALSE(controller->currentPlayer()->isPaused());
    EXPECT_EQ(controller->recordForCell(*cellAt(1)), controller->fetchedRecords()[1]);
    EXPECT_EQ(controller->recordForCell(*make<ORVRecordTableViewCell>()), nullptr);
}

TEST_F(ORVRecordsListViewControllerTest, AButtonThatIsScrolledAwayUnderAFingerPlaysNothing)
{
    open();
    touch.down(centerOf(*cellAt(0)->playbackButton()));
    scheduler.advance(0.2);
    controller->tableView()->setContentOffset({ 0, 640 }); // a row of the same place is under the finger
    runFrames();
    for (const auto& cell : controller->tableView()->visibleCells())
        EXPECT_FALSE(
            std::static_pointer_cast<ORVRecordTableViewCell>(cell)->playbackButton()->isHighlighted());
    touch.up();
    executor.runAll();
    EXPECT_EQ(controller->currentPlayer(), nullptr);
}

TEST_F(ORVRecordsListViewControllerTest, DrawsOnlyWhileSomethingMoves)
{
    open();
    scheduler.advance(2);
    int before = scheduler.framesRun();
    scheduler.advance(10);
    EXPECT_EQ(scheduler.framesRun(), before);
    tapButton(0);
    scheduler.advance(1);
    tapButton(0); // paused
    scheduler.advance(2);
    before = scheduler.framesRun();
    scheduler.advance(10);
    EXPECT_EQ(scheduler.framesRun(), before);
}

} // namespace
