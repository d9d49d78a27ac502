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
    EXPECT_EQ(table->contentInset().bottom, screenGeometry.safeAreaInsets.bottom);
    table->scrollToRow({ 0, 29 }, UITableViewScrollPosition::None, Animated::No);
    runFrames();
    EXPECT_EQ(cellAt(29)->convertRectToView(cellAt(29)->bounds(), nullptr).bottom(), 844 - 34);
}

// --- Playing -----------------------------------------------------------------------------------------

TEST_F(ORVRecordsListViewControllerTest, PlaysTheRecordOfTheRowThatIsTapped)
{
    open();
    tapRow(2);
    ASSERT_NE(controller->currentPlayer(), nullptr);
    EXPECT_EQ(controller->currentPlayer()->record(), controller->fetchedRecords()[2]);
    EXPECT_TRUE(controller->currentPlayer()->isReadyForPlayback());
    EXPECT_TRUE(showsPause(2));
    EXPECT_FALSE(showsPause(1));
    EXPECT_TRUE(cellAt(2)->isSelected());
    ASSERT_EQ(device.runs().size(), 1u);
}

TEST_F(ORVRecordsListViewControllerTest, ShowsAPreparingPlayerWithoutAPosition)
{
    open();
    touch.down(centerOfRow(0));
    touch.up(); // the sound is not loaded before the queues run
    EXPECT_FALSE(controller->currentPlayer()->isReadyForPlayback());
    EXPECT_TRUE(positionAt(0).isEmpty());
    EXPECT_FALSE(showsPause(0));
}

TEST_F(ORVRecordsListViewControllerTest, ShowsTheSecondsThatHaveBeenHeard)
{
    open();
    tapRow(0);
    const int duration = static_cast<int>(std::ceil(controller->currentPlayer()->recordDuration()));
    const auto text = [&](int seconds) {
        return QStringLiteral("0:0%1 / 0:%2").arg(seconds).arg(duration, 2, 10, QLatin1Char('0'));
    };
    std::set<NSString> shown;
    for (int tick = 0; tick < 25; ++tick) {
        scheduler.advance(0.1);
        shown.insert(positionAt(0));
    }
    EXPECT_THAT(shown, testing::ElementsAre(text(0), text(1), text(2)));
}

TEST_F(ORVRecordsListViewControllerTest, PausesAndGoesOnWhenThePlayingRowIsTapped)
{
    open();
    tapRow(0);
    const auto player = controller->currentPlayer();
    scheduler.advance(1.5);
    tapRow(0);
    EXPECT_TRUE(player->isPaused());
    EXPECT_FALSE(showsPause(0));
    const NSString position = positionAt(0);
    scheduler.advance(2);
    EXPECT_EQ(positionAt(0), position);
    tapRow(0);
    EXPECT_EQ(controller->currentPlayer(), player);
    EXPECT_FALSE(player->isPaused());
    EXPECT_TRUE(showsPause(0));
    scheduler.advance(1);
    EXPECT_NE(positionAt(0), position);
}

TEST_F(ORVRecordsListViewControllerTest, LetsAnotherRowTakeOver)
{
    open();
    tapRow(0);
    scheduler.advance(0.5);
    const auto first = controller->currentPlayer();
    tapRow(1);
    EXPECT_TRUE(first->isPaused());
    EXPECT_NE(controller->currentPlayer(), first);
    EXPECT_EQ(controller->currentPlayer()->record(), controller->fetchedRecords()[1]);
    EXPECT_FALSE(showsPause(0));
    EXPECT_TRUE(positionAt(0).isEmpty());
    EXPECT_TRUE(showsPause(1));
}

TEST_F(ORVRecordsListViewControllerTest, IsIdleAgainAtTheEndOfTheSound)
{
    open();
    tapRow(0);
    scheduler.advance(controller->currentPlayer()->recordDuration() + 0.2);
    EXPECT_EQ(controller->currentPlayer(), nullptr);
    EXPECT_FALSE(showsPause(0));
    EXPECT_TRUE(positionAt(0).isEmpty());
    tapRow(0); // and plays again from the start
    EXPECT_TRUE(showsPause(0));
    EXPECT_TRUE(positionAt(0).startsWith(QStringLiteral("0:00")));
}

TEST_F(ORVRecordsListViewControllerTest, ShowsThePlayingStateOnARowThatComesBack)
{
    open();
    tapRow(0);
    scheduler.advance(0.3);
    controller->tableView()->setContentOffset({ 0, 1000 });
    scheduler.advance(0.2);
    for (const auto& cell : controller->tableView()->visibleCells())
        EXPECT_TRUE(
            std::static_pointer_cast<ORVRecordTableViewCell>(cell)->positionLabel()->text().isEmpty());
    scheduler.advance(1);
    controller->tableView()->setContentOffset({ 0, 0 });
    scheduler.advance(0.2);
    EXPECT_TRUE(showsPause(0));
    EXPECT_TRUE(positionAt(0).startsWith(QStringLiteral("0:01")));
    EXPECT_TRUE(cellAt(0)->isSelected());
}

TEST_F(ORVRecordsListViewControllerTest, GoesOnWhenARecordsSoundCannotBePlayed)
{
    open();
    controller->fetchedRecords()[0]->setSoundFileURL(NSURL::fromLocalFile(QStringLiteral("/missing.m4a")));
    tapRow(0);
    scheduler.advance(1);
    EXPECT_FALSE(controller->currentPlayer()->isReadyForPlayback());
    EXPECT_FALSE(showsPause(0));
    EXPECT_TRUE(device.runs().empty());
    tapRow(0); // neither tap makes it play
    tapRow(1);
    scheduler.advance(0.5);
    EXPECT_TRUE(showsPause(1));
    EXPECT_EQ(device.runs().size(), 1u);
}

TEST_F(ORVRecordsListViewControllerTest, SpeaksToNoPlayerButTheCurrentOne)
{
    open();
    tapRow(0);
    const auto former = controller->currentPlayer();
    tapRow(1);
    const NSString position = positionAt(1);
    controller->recordPlayerDidBecomeReadyForPlayback(*former);
    controller->recordPlayerDidUpdatePlayingPosition(*former, 3);
    controller->recordPlayerDidEndPlayback(*former);
    EXPECT_NE(controller->currentPlayer(), nullptr);
    EXPECT_EQ(positionAt(1), position);
    EXPECT_TRUE(positionAt(0).isEmpty());
}

TEST_F(ORVRecordsListViewControllerTest, DrawsOnlyWhileSomethingMoves)
{
    open();
    scheduler.advance(2);
    int before = scheduler.framesRun();
    scheduler.advance(10);
    EXPECT_EQ(scheduler.framesRun(), before);
    tapRow(0);
    scheduler.advance(1);
    before = scheduler.framesRun();
    scheduler.advance(2);
    EXPECT_LE(scheduler.framesRun() - before, 3); // one for each new second
}

} // namespace
