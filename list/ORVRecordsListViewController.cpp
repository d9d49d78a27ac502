#include "list/ORVRecordsListViewController.h"

#include "list/ORVRecordTableViewCell.h"
#include "platform/controls/UINavigationItem.h"
#include "platform/foundation/NSAssertionHandler.h"
#include "platform/foundation/NSBundle.h"

#include <algorithm>

namespace {

// The line that a report of a foreign cell names; tools that collect reports know the failure by it.
constexpr int foreignCellLine = 193;

} // namespace

void ORVRecordsListViewController::init()
{
    UIViewController::init();
    setTitle(NSBundle::mainBundle()->localizedStringForKey(QStringLiteral("Records List"), {}, {}));
    navigationItem()->setTitle({});
}

// --- The view ----------------------------------------------------------------------------------------

void ORVRecordsListViewController::loadView()
{
    m_tableView = make<UITableView>();
    setView(m_tableView);
}

void ORVRecordsListViewController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    m_cellConfigurator = make<ORVRecordTableViewCellConfigurator>();
    m_tableView->registerCell(
        ORVRecordTableViewCell::identifier, [] { return make<ORVRecordTableViewCell>(); });
    m_tableView->setRowHeight(ORVRecordTableViewCell::preferredHeight(false));
    m_tableView->setBackgroundColor(UIColor::systemBackgroundColor());
    m_tableView->setDataSource(weakSelf(this));
    m_tableView->setDelegate(weakSelf(this));
}

void ORVRecordsListViewController::viewDidAppear(Animated animated)
{
    UIViewController::viewDidAppear(animated);
    updateRecordsIfNecessary();
}

// --- Fetching ----------------------------------------------------------------------------------------

void ORVRecordsListViewController::setUserLocation(std::shared_ptr<CLLocation> location)
{
    m_userLocation = std::move(location);
    m_needsUpdateRecords = true;
    if (isViewLoaded() && view()->window())
        updateRecordsIfNecessary();
}

void ORVRecordsListViewController::updateRecordsIfNecessary()
{
    if (!m_needsUpdateRecords || !m_userLocation)
        return;
    const bool onScreen = isViewLoaded() && view()->window();
    updateRecordsForCenterCoordinate(
        m_userLocation->coordinate(), onScreen, onScreen ? Animated::Yes : Animated::No);
    m_needsUpdateRecords = false;
}

void ORVRecordsListViewController::updateRecordsForCenterCoordinate(
    const CLLocationCoordinate2D& coordinate, bool asynchronously, Animated animated)
{
    if (!m_recordsStorage)
        return;
    const auto completion = [weak = weakSelf(this), animated](const ORVRecordsStorage::Records& records) {
        if (const auto self = weak.lock())
            self->showRecords(records, animated);
    };
    if (asynchronously)
        m_recordsStorage->queryRecordsAroundCoordinate(coordinate, maximumRecords, completion);
    else
        completion(m_recordsStorage->recordsAroundCoordinate(coordinate, maximumRecords));
}

void ORVRecordsListViewController::showRecords(const ORVRecordsStorage::Records& records, Animated animated)
{
    m_fetchedRecords = records;
    if (!m_tableView)
        return; // the table asks when it is loaded
    if (animated == Animated::Yes)
        m_tableView->reloadSection(0, UITableViewRowAnimation::Fade);
    else
        m_tableView->reloadData();
}

std::optional<NSIndexPath> ORVRecordsListViewController::indexPathForRecord(const ORVRecord& record) const
{
    const auto found = std::find_if(m_fetchedRecords.begin(), m_fetchedRecords.end(),
        [&](const auto& fetched) { return fetched->isEqual(&record); });
    if (found == m_fetchedRecords.end())
        return {};
    return NSIndexPath { 0, static_cast<int>(found - m_fetchedRecords.begin()) };
}

std::shared_ptr<ORVRecordTableViewCell> ORVRecordsListViewController::cellForRecord(
    const ORVRecord& record) const
{
    const auto indexPath = indexPathForRecord(record);
    const auto cell = indexPath && m_tableView ? m_tableView->cellForRow(*indexPath) : nullptr;
    auto recordCell = std::dynamic_pointer_cast<ORVRecordTableViewCell>(cell);
    NSCAssertAtLine(!cell || recordCell, "ORVRecordsListViewController", foreignCellLine,
        QStringLiteral("Expected all cells to be ORVRecordTableViewCell's!"));
    return recordCell;
}

// --- Rows --------------------------------------------------------------------------------------------

int ORVRecordsListViewController::tableViewNumberOfRowsInSection(UITableView&, int)
{
    return static_cast<int>(m_fetchedRecords.size());
}

std::shared_ptr<UITableViewCell> ORVRecordsListViewController::tableViewCellForRowAtIndexPath(
    UITableView& tableView, NSIndexPath indexPath)
{
    const auto cell = std::dynamic_pointer_cast<ORVRecordTableViewCell>(
        tableView.dequeueReusableCell(ORVRecordTableViewCell::identifier, indexPath));
    const auto& record = m_fetchedRecords[static_cast<std::size_t>(indexPath.row)];
    if (cell)
        cell->setDelegate(weakSelf(this));
    m_cellConfigurator->configureCell(cell.get(), *record);
    m_cellConfigurator->configurePlaybackControlsInCell(
        cell.get(), isCurrent(*record) ? m_currentPlayer.get() : nullptr, Animated::No);
    return cell;
}

void ORVRecordsListViewController::tableViewWillDisplayCell(UITableView&, UITableViewCell& cell, NSIndexPath)
{
    m_cellConfigurator->configureCellSelectedState(
        dynamic_cast<ORVRecordTableViewCell*>(&cell), Animated::No);
}

std::shared_ptr<ORVRecord> ORVRecordsListViewController::recordForCell(
    const ORVRecordTableViewCell& cell) const
{
    const auto indexPath = m_tableView ? m_tableView->indexPathForCell(cell) : std::nullopt;
    if (!indexPath || static_cast<std::size_t>(indexPath->row) >= m_fetchedRecords.size())
        return nullptr;
    return m_fetchedRecords[static_cast<std::size_t>(indexPath->row)];
}

// --- Selection ---------------------------------------------------------------------------------------

std::optional<double> ORVRecordsListViewController::tableViewHeightForRowAtIndexPath(
    UITableView& tableView, NSIndexPath indexPath)
{
    return ORVRecordTableViewCell::preferredHeight(tableView.indexPathForSelectedRow() == indexPath);
}

// An update in which no row comes or goes: the table asks for every height anew and moves the rows.
void ORVRecordsListViewController::animateRowHeights()
{
    m_tableView->beginUpdates();
    m_tableView->endUpdates();
}

void ORVRecordsListViewController::updateSelectedStateInCellForRow(NSIndexPath indexPath, Animated animated)
{
    const auto cell = std::dynamic_pointer_cast<ORVRecordTableViewCell>(m_tableView->cellForRow(indexPath));
    m_cellConfigurator->configureCellSelectedState(cell.get(), animated);
}

// A tap on the selected row closes it.
std::optional<NSIndexPath> ORVRecordsListViewController::tableViewWillSelectRowAtIndexPath(
    UITableView& tableView, NSIndexPath indexPath)
{
    if (tableView.indexPathForSelectedRow() != indexPath)
        return indexPath;
    tableView.deselectRow(indexPath, Animated::Yes);
    animateRowHeights();
    updateSelectedStateInCellForRow(indexPath, Animated::Yes);
    return {};
}

void ORVRecordsListViewController::tableViewDidSelectRowAtIndexPath(
    UITableView& tableView, NSIndexPath indexPath)
{
    animateRowHeights();
    updateSelectedStateInCellForRow(indexPath, Animated::Yes);
    tableView.scrollToRow(indexPath, UITableViewScrollPosition::None, Animated::Yes);
}

void ORVRecordsListViewController::tableViewDidDeselectRowAtIndexPath(UITableView&, NSIndexPath indexPath)
{
    animateRowHeights();
    updateSelectedStateInCellForRow(indexPath, Animated::Yes);
}

// The table sends no message for a selection by code. The row that was selected before shrinks; its cell is
// configured when it is displayed again.
void ORVRecordsListViewController::selectRecord(const ORVRecord& record, Animated animated)
{
    const auto indexPath = indexPathForRecord(record);
    if (!indexPath || !m_tableView)
        return;
    if (m_tableView->indexPathForSelectedRow() != indexPath) {
        m_tableView->selectRow(*indexPath, animated, UITableViewScrollPosition::None);
        animateRowHeights();
        updateSelectedStateInCellForRow(*indexPath, Animated::Yes);
    }
    m_tableView->scrollToRow(*indexPath, UITableViewScrollPosition::None, animated);
}

// --- Playback ----------------------------------------------------------------------------------------

bool ORVRecordsListViewController::isCurrent(const ORVRecord& record) const
{
    return m_currentPlayer && m_currentPlayer->record()->isEqual(&record);
}

void ORVRecordsListViewController::recordTableViewCellRequestsPlayback(ORVRecordTableViewCell& cell)
{
    const auto record = recordForCell(cell);
    if (!record)
        return;
    selectRecord(*record, Animated::Yes);
    if (isCurrent(*record))
        m_currentPlayer->setPaused(false); // the next tick shows it
    else
        playRecord(record);
}

void ORVRecordsListViewController::recordTableViewCellRequestsPauseInterim(
    ORVRecordTableViewCell& cell, bool interim)
{
    const auto record = recordForCell(cell);
    if (!record || !isCurrent(*record))
        return;
    m_currentPlayer->setPaused(true);
    if (!interim)
        m_cellConfigurator->configurePlaybackControlsInCell(&cell, m_currentPlayer.get(), Animated::Yes);
}

void ORVRecordsListViewController::recordTableViewCellRequestsSeekPlaybackToPositionFraction(
    ORVRecordTableViewCell& cell, double fraction)
{
    const auto record = recordForCell(cell);
    if (record && isCurrent(*record))
        m_currentPlayer->setTimePosition(m_currentPlayer->recordDuration() * fraction);
}

void ORVRecordsListViewController::playRecord(const std::shared_ptr<ORVRecord>& record)
{
    stopCurrentRecordPlayer();
    m_currentPlayer = make<ORVRecordPlayer>(record);
    m_currentPlayer->setDelegate(weakSelf(this));
    m_currentPlayer->setPaused(false); // it starts once it is ready
    configureCellOfPlayer(*m_currentPlayer);
}

void ORVRecordsListViewController::stopCurrentRecordPlayer()
{
    const auto player = m_currentPlayer;
    if (!player)
        return;
    // This hides the thumb and so cancels a drag of it, whose end asks the player to go on.
    m_cellConfigurator->configurePlaybackControlsInCell(
        cellForRecord(*player->record()).get(), nullptr, Animated::Yes);
    player->setPaused(true);
    m_currentPlayer.reset();
}

void ORVRecordsListViewController::configureCellOfPlayer(const ORVRecordPlayer& player)
{
    m_cellConfigurator->configurePlaybackControlsInCell(
        cellForRecord(*player.record()).get(), &player, Animated::Yes);
}

// Messages of a player that is no longer the current one are ignored.

void ORVRecordsListViewController::recordPlayerDidBecomeReadyForPlayback(ORVRecordPlayer& player)
{
    if (&player == m_currentPlayer.get())
        configureCellOfPlayer(player);
}

void ORVRecordsListViewController::recordPlayerDidUpdatePlayingPosition(ORVRecordPlayer& player, double)
{
    if (&player == m_currentPlayer.get())
        configureCellOfPlayer(player);
}

void ORVRecordsListViewController::recordPlayerDidEndPlayback(ORVRecordPlayer& player)
{
    if (&player == m_currentPlayer.get())
        stopCurrentRecordPlayer();
}
